#include "dictionaryrecord.h"
#include "examdataset.h"
#include "faultyservices.h"
#include "hoststate.h"
#include "orgoperations.h"
#include "patientdetailrecord.h"
#include "scopedservices.h"
#include "server.h"
#include "session.h"
#include "stubservices.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// A working patient service: knows one patient, links anything.
class OnePatientService : public StubPatientManagementService
{
public:
    int GetPatient(const ACE_CString& key, PatientDetailRecord* record, const ACE_CString&) override
    {
        if (!(key == "PK1"))
            return 4;
        record->SetPatientKey(key);
        record->SetPatientID("MRN1");
        return 0;
    }
    bool CanLinkPatients(const ACE_CString&, const ACE_CString&) override { return true; }
    int UnLinkPatient(const ACE_CString&, const ACE_CString&) override { return 0; }
};

class SexDictionary : public StubDictionaryService
{
public:
    SexDictionary() : m_m("M", "Male"), m_f("F", "Female"), m_codes{&m_m, &m_f} {}
    const std::vector<DictionaryRecord*>& GetDictionary(eTOPICCODE topic) override
    {
        return topic == eSEX ? m_codes : m_empty;
    }

private:
    DictionaryRecord m_m, m_f;
    std::vector<DictionaryRecord*> m_codes;
};

class OneOrganization : public StubOrgOperationsCollection
{
public:
    OneOrganization() : m_org("K1", "ORG1") {}
    const OrgOperations* GetOrgFromKey(const ACE_CString& key) override { return key == "K1" ? &m_org : nullptr; }
    ACE_CString GetOrgIdFromKey(const ACE_CString& key) override { return key == "K1" ? ACE_CString("ORG1") : ACE_CString(); }

private:
    OrgOperations m_org;
};

class ServiceKitTest : public ::testing::Test
{
protected:
    void SetUp() override { ResetHostState(); }
    void TearDown() override { ResetHostState(); }
};

} // namespace

TEST_F(ServiceKitTest, ForwardsAndRecordsCallsInOrder)
{
    OnePatientService inner;
    ServiceFaults faults;
    FaultyPatientManagementService svc(&inner, faults);
    PatientDetailRecord p;
    EXPECT_EQ(svc.GetPatient("PK1", &p, ""), 0);
    EXPECT_STREQ(p.GetPatientID().c_str(), "MRN1");
    EXPECT_EQ(svc.GetPatient("PK2", &p, "ORG9"), 4);
    EXPECT_TRUE(svc.CanLinkPatients("A", "B"));
    EXPECT_EQ(svc.UnLinkPatient("A", "K1"), 0);
    EXPECT_EQ(faults.CallStrings(),
              (std::vector<std::string>{"GetPatient(PK1,)", "GetPatient(PK2,ORG9)", "CanLinkPatients(A,B)",
                                        "UnLinkPatient(A,K1)"}));
    EXPECT_EQ(faults.Count("GetPatient"), 2);
    EXPECT_EQ(faults.Count("MergePatients"), 0);
}

TEST_F(ServiceKitTest, FailsEveryChosenCallWithTheCode)
{
    OnePatientService inner;
    ServiceFaults faults;
    FaultyPatientManagementService svc(&inner, faults);
    faults.FailOn("GetPatient", 17);
    PatientDetailRecord p;
    EXPECT_EQ(svc.GetPatient("PK1", &p, ""), 17);
    EXPECT_EQ(svc.GetPatient("PK1", &p, ""), 17);
    // The record was not filled: the call never reached the service.
    EXPECT_STREQ(p.GetPatientID().c_str(), "");
    // Other operations are untouched.
    EXPECT_EQ(svc.UnLinkPatient("A", "K1"), 0);
    faults.ClearFaults();
    EXPECT_EQ(svc.GetPatient("PK1", &p, ""), 0);
    EXPECT_EQ(faults.Count("GetPatient"), 3);
}

TEST_F(ServiceKitTest, FailsOnlyTheNthCall)
{
    OnePatientService inner;
    ServiceFaults faults;
    FaultyPatientManagementService svc(&inner, faults);
    faults.FailOn("GetPatient", 9, 2);
    PatientDetailRecord p;
    EXPECT_EQ(svc.GetPatient("PK1", &p, ""), 0);
    EXPECT_EQ(svc.GetPatient("PK1", &p, ""), 9);
    EXPECT_EQ(svc.GetPatient("PK1", &p, ""), 0);
}

TEST_F(ServiceKitTest, ThrowsTheServerExceptionWithItsText)
{
    OnePatientService inner;
    ServiceFaults faults;
    FaultyPatientManagementService svc(&inner, faults);
    faults.ThrowOn("UnLinkPatient", "connection lost", 1);
    try {
        svc.UnLinkPatient("A", "K1");
        FAIL() << "no exception";
    } catch (const Framework::Server& e) {
        EXPECT_STREQ(e.what(), "connection lost");
    }
    EXPECT_EQ(svc.UnLinkPatient("A", "K1"), 0);
    // A thrown call is still recorded.
    EXPECT_EQ(faults.Operations(), (std::vector<std::string>{"UnLinkPatient", "UnLinkPatient"}));
}

TEST_F(ServiceKitTest, NonIntOperationsFailWithTheirEmptyAnswer)
{
    OnePatientService patients;
    SexDictionary dictionary;
    OneOrganization organizations;
    ServiceFaults faults;
    FaultyPatientManagementService p(&patients, faults);
    FaultyDictionaryService d(&dictionary, faults);
    FaultyOrgOperationsCollection o(&organizations, faults);
    EXPECT_EQ(d.GetDictionary(DictionaryService::eSEX).size(), 2u);
    EXPECT_NE(o.GetOrgFromKey("K1"), nullptr);
    faults.FailOn("CanLinkPatients", 1);
    faults.FailOn("GetDictionary", 1);
    faults.FailOn("GetOrgFromKey", 1);
    faults.FailOn("GetOrgIdFromKey", 1);
    EXPECT_FALSE(p.CanLinkPatients("A", "B"));
    EXPECT_TRUE(d.GetDictionary(DictionaryService::eSEX).empty());
    EXPECT_EQ(o.GetOrgFromKey("K1"), nullptr);
    EXPECT_STREQ(o.GetOrgIdFromKey("K1").c_str(), "");
    EXPECT_EQ(faults.Calls().back().ToString(), "GetOrgIdFromKey(K1)");
    EXPECT_EQ(faults.Calls()[1].ToString(), "GetOrgFromKey(K1)");
    EXPECT_EQ(faults.Calls()[0].ToString(), "GetDictionary(4)");
}

TEST_F(ServiceKitTest, WithoutAWrappedServiceEveryCallFails)
{
    ServiceFaults faults;
    FaultyExamService exams(nullptr, faults);
    ExamDataSet e;
    e.SetAccessionNumber("ACC1");
    ACE_CString key;
    EXPECT_EQ(exams.CreateExam(&e, key), STUB_FAILURE);
    EXPECT_EQ(exams.DeleteExam("E1", "K1", "wrong patient", true), STUB_FAILURE);
    EXPECT_EQ(faults.CallStrings(), (std::vector<std::string>{"CreateExam(ACC1,)", "DeleteExam(E1,K1,wrong patient,1)"}));
}

TEST_F(ServiceKitTest, ScopedServicesInstallAndRestore)
{
    OnePatientService first, second;
    SexDictionary dictionary;
    ServiceRegistry* registry = Session::ServiceInstance();
    registry->SetPatientManagementService(&first);
    {
        ScopedServices scope(&second, nullptr, &dictionary);
        EXPECT_EQ(registry->GetPatientManagementService(), &second);
        EXPECT_EQ(registry->GetDictionaryService(), &dictionary);
        EXPECT_EQ(registry->GetExamService(), nullptr);
        scope.Patients(nullptr);
        EXPECT_EQ(registry->GetPatientManagementService(), nullptr);
    }
    EXPECT_EQ(registry->GetPatientManagementService(), &first);
    EXPECT_EQ(registry->GetDictionaryService(), nullptr);
}

TEST_F(ServiceKitTest, FaultyServicesWrapWhatIsInstalled)
{
    OnePatientService patients;
    OneOrganization organizations;
    ScopedServices installed(&patients, nullptr, nullptr, nullptr, &organizations);
    {
        FaultyServices faulty;
        faulty.faults.FailOn("GetPatient", 3);
        ServiceRegistry* registry = Session::ServiceInstance();
        EXPECT_EQ(registry->GetPatientManagementService(), &faulty.Patients());
        PatientDetailRecord p;
        EXPECT_EQ(registry->GetPatientManagementService()->GetPatient("PK1", &p, ""), 3);
        EXPECT_STREQ(registry->GetOrgOperationsCollection()->GetOrgIdFromKey("K1").c_str(), "ORG1");
        EXPECT_EQ(faulty.faults.CallStrings(),
                  (std::vector<std::string>{"GetPatient(PK1,)", "GetOrgIdFromKey(K1)"}));
    }
    EXPECT_EQ(Session::ServiceInstance()->GetPatientManagementService(), &patients);
    EXPECT_EQ(Session::ServiceInstance()->GetOrgOperationsCollection(), &organizations);
}

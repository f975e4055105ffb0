#include "boundary/mergepatientsdlgcreator.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/dialogfooter.h"
#include "boundary/dialogheader.h"
#include "boundary/resource.h"
#include "mergelink/mergepatientsdlg.h"
#include "mergelink/mergepatientsdlgimpl.h"

#include "linkedpatientinfo.h"
#include "messagebox.h"
#include "orgoperations.h"
#include "orgoperationscollection.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "serviceregistry.h"
#include "session.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <algorithm>
#include <exception>

namespace {

// Frees what GetLinkedPatientsForMergeCandidates handed over, however the
// launch ends.
struct LinkedRecords
{
    std::vector<PatientDetailRecord*> target;
    std::vector<PatientDetailRecord*> source;
    ~LinkedRecords()
    {
        for (PatientDetailRecord* p : target)
            delete p;
        for (PatientDetailRecord* p : source)
            delete p;
    }
};

bool hasOrganization(const std::vector<PatientDetailRecord*>& records, const ACE_CString& organizationID)
{
    return std::any_of(records.begin(), records.end(),
                       [&](const PatientDetailRecord* r) { return r && r->GetOrganizationID() == organizationID; });
}

int reportFailure(const char* function, int line, const char* what)
{
    ACE_LOG_MSG->file(__FILE__);
    ACE_LOG_MSG->linenum(line);
    ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, the merge could not start: %s\n"), function, line, what));
    return IDCANCEL;
}

} // namespace

namespace TavCreator {

MergePatientsDlgCreator::MergePatientsDlgCreator() : m_pTargetPatient(new PatientDetailRecord()) {}

MergePatientsDlgCreator::~MergePatientsDlgCreator()
{
    ClearSelection();
    delete m_pTargetPatient;
}

void MergePatientsDlgCreator::ClearSelection()
{
    for (LinkedPatientInfo* info : m_linkedPatientSelection)
        delete info;
    m_linkedPatientSelection.clear();
}

CString MergePatientsDlgCreator::GetReasonForMergerFailure(CString reason) const
{
    BRAVIK_MANAGE_STATE();
    CString text;
    text.Format(LoadString(IDS_DUP_ERR_MERGE).GetString(), reason.GetString());
    return text;
}

int MergePatientsDlgCreator::DisplayDialog(const ACE_CString& targetPatientKey, const ACE_CString& sourcePatientKey,
                                           CWnd* parent)
{
    BRAVIK_MANAGE_STATE();
    LinkedRecords linked;
    try {
        ServiceRegistry* registry = Session::ServiceInstance();
        PatientManagementService* patients = registry ? registry->GetPatientManagementService() : nullptr;
        const int rc = patients ? patients->GetLinkedPatientsForMergeCandidates(targetPatientKey, sourcePatientKey,
                                                                                linked.target, linked.source)
                                : -1;
        if (rc != 0) {
            AfxMessageBox(IDS_ERR_PATIENT_ACCESS, MB_OK);
            return IDCANCEL;
        }
    } catch (const std::exception& e) {
        // A fault while loading reads to the user as records that are gone.
        reportFailure("TavCreator::MergePatientsDlgCreator::DisplayDialog", __LINE__, e.what());
        AfxMessageBox(IDS_ERR_PATIENT_ACCESS, MB_OK);
        return IDCANCEL;
    }

    if (linked.target.size() != linked.source.size()) {
        // Different lengths are allowed; this is only a trace.
        ACE_DEBUG((LM_DEBUG,
                   ACE_TEXT("TavCreator::MergePatientsDlgCreator::DisplayDialog Target(%d) and source(%d) linked "
                            "patients count\n"),
                   static_cast<int>(linked.target.size()), static_cast<int>(linked.source.size())));
    }

    try {
        if (!CheckOrgsAndDisplayWarning(linked.target, linked.source))
            return IDCANCEL;

        // The longer list is shown first; on a tie the source's.
        const bool targetFirst = linked.target.size() > linked.source.size();
        std::vector<PatientDetailRecord*>& first = targetFirst ? linked.target : linked.source;
        std::vector<PatientDetailRecord*>& second = targetFirst ? linked.source : linked.target;
        if (first.empty() || second.empty()) {
            AfxMessageBox(IDS_ERR_PATIENT_ACCESS, MB_OK);
            return IDCANCEL;
        }
        return RunDialog(first, second, parent);
    } catch (const std::exception& e) {
        return reportFailure("TavCreator::MergePatientsDlgCreator::DisplayDialog", __LINE__, e.what());
    }
}

int MergePatientsDlgCreator::RunDialog(std::vector<PatientDetailRecord*>& first,
                                       std::vector<PatientDetailRecord*>& second, CWnd* parent)
{
    auto* header = new DialogHeader();
    header->SetHeaderText(LoadString(IDS_MERGE_HEADER_TEXT));
    auto* footer = new DialogFooter(nullptr);
    auto* panel = new MergePatientsDlgImpl(first, second, &m_nonDemoUpdateOrgs, 0);
    MergePatientsDlg dlg(header, footer, panel, parent);
    const int result = dlg.DoModal();
    if (result == IDOK) {
        // The dialog decides which record survives.
        m_strSourcePatientKey = dlg.GetSourcePatientKey();
        *m_pTargetPatient = dlg.GetTargetPatient();
        ClearSelection();
        for (const LinkedPatientInfo* info : dlg.GetLinkedPatientSelection())
            m_linkedPatientSelection.push_back(new LinkedPatientInfo(*info));
    }
    return result;
}

void MergePatientsDlgCreator::InitNonDemoUpdateOrgsAndGetUserPermission(
    const std::vector<PatientDetailRecord*>& targetLinked, const std::vector<PatientDetailRecord*>& sourceLinked,
    bool& mayLink, bool& mayMerge)
{
    mayLink = true;
    mayMerge = true;
    ServiceRegistry* registry = Session::ServiceInstance();
    if (!registry)
        return;
    OrgOperationsCollection* organizations = registry->GetOrgOperationsCollection();
    const UserRights& rights = Session::Instance().GetUserRights();

    auto check = [&](const PatientDetailRecord* record, const std::vector<PatientDetailRecord*>& others) {
        if (!record)
            return;
        const ACE_CString& id = record->GetOrganizationID();
        if (organizations) {
            const OrgOperations* org = organizations->GetOrgFromKey(record->GetOrganizationKey());
            if (org && !org->AcceptsDemographicsUpdate()
                && std::find(m_nonDemoUpdateOrgs.begin(), m_nonDemoUpdateOrgs.end(), id) == m_nonDemoUpdateOrgs.end())
                m_nonDemoUpdateOrgs.push_back(id);
        }
        if (!rights.HasLinkPatientRight(id)) {
            mayLink = false;
            ACE_DEBUG((LM_DEBUG,
                       ACE_TEXT("TavCreator::MergePatientsDlgCreator::InitNonDemoUpdateOrgsAndGetUserPermission logged "
                                "in user does not have permission to Link Patient on OrgID:%s\n"),
                       id.c_str()));
        }
        if (hasOrganization(others, id) && !rights.HasMergePatientRight(id)) {
            mayMerge = false;
            ACE_DEBUG((LM_DEBUG,
                       ACE_TEXT("TavCreator::MergePatientsDlgCreator::InitNonDemoUpdateOrgsAndGetUserPermission logged "
                                "in user does not have permission to merge Patient on OrgID:%s\n"),
                       id.c_str()));
        }
    };

    for (const PatientDetailRecord* record : targetLinked)
        check(record, sourceLinked);
    if (!mayLink || !mayMerge)
        return;
    for (const PatientDetailRecord* record : sourceLinked)
        check(record, targetLinked);
}

bool MergePatientsDlgCreator::CheckOrgsAndDisplayWarning(const std::vector<PatientDetailRecord*>& targetLinked,
                                                         const std::vector<PatientDetailRecord*>& sourceLinked)
{
    bool mayLink = true;
    bool mayMerge = true;
    InitNonDemoUpdateOrgsAndGetUserPermission(targetLinked, sourceLinked, mayLink, mayMerge);

    // Only the last record of the target's list decides whether the two
    // share an organization; that has always been so and stays.
    const bool shared = !targetLinked.empty() && targetLinked.back()
        && hasOrganization(sourceLinked, targetLinked.back()->GetOrganizationID());

    if (mayMerge && shared)
        return true;
    if (!mayLink) {
        AfxMessageBox(IDS_MERGE_NO_LINK_RIGHT, MB_OK);
        return false;
    }
    if (!mayMerge) {
        AfxMessageBox(IDS_MERGE_NO_MERGE_RIGHT, MB_OK);
        return false;
    }
    if (m_nonDemoUpdateOrgs.empty())
        return true;
    return AfxMessageBox(IDS_MERGE_NO_DEMOGRAPHICS_UPDATE, MB_OKCANCEL) == IDOK;
}

} // namespace TavCreator

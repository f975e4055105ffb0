// Every exported operation runs with the module's resources current and
// gives the caller's back on return, exceptions included.
#include "boundary/bravikapp.h"
#include "boundary/bravikmodulestate.h"
#include "boundary/deleteexamparamdlgcreator.h"
#include "boundary/detachstudyparamdlgcreator.h"
#include "boundary/patientdeleteparamdlgcreator.h"
#include "boundary/registercontrols.h"
#include "boundary/tavhelper.h"

#include "dialogdriver.h"
#include "scopedservices.h"
#include "scripteduser.h"
#include "stubservices.h"

#include "ccombobox.h"
#include "coccmanager.h"
#include "modalrunner.h"
#include "modulestate.h"
#include "screen.h"
#include "server.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <vector>

namespace {

bool ModuleIsCurrent() { return &CurrentModuleState() == &BravikModuleState(); }
bool HostIsCurrent() { return &CurrentModuleState() == &HostModuleState(); }

// Remembers which resources were current whenever the module asked it for a
// dictionary; can throw the framework's server exception instead.
class RecordingDictionaryService : public StubDictionaryService
{
public:
    std::vector<bool> moduleCurrent;
    bool fail = false;

    const std::vector<DictionaryRecord*>& Record()
    {
        moduleCurrent.push_back(ModuleIsCurrent());
        if (fail)
            throw Framework::Server("The archive cannot be reached.");
        return m_empty;
    }
    const std::vector<DictionaryRecord*>& GetDictionary(eTOPICCODE) override { return Record(); }
    const std::vector<DictionaryRecord*>& GetDeleteExamReasonDictionary() override { return Record(); }
    const std::vector<DictionaryRecord*>& GetCancelExamReasonDictionary() override { return Record(); }
    const std::vector<DictionaryRecord*>& GetDeletePatientsReasonDictionary() override { return Record(); }
    const std::vector<DictionaryRecord*>& GetDetachStudyReasonDictionary() override { return Record(); }
    const std::vector<DictionaryRecord*>& GetLinkMergeReasonDictionary() override { return Record(); }
    const std::vector<DictionaryRecord*>& GetExamPriorityCodes() override { return Record(); }
    const std::vector<DictionaryRecord*>& GetDiagnosticImageStatusCodes() override { return Record(); }
};

// Runs no dialog: throws what it is told to, after noting the resources.
class ThrowingRunner : public ModalRunner
{
public:
    std::function<void()> thrower;
    std::vector<bool> moduleCurrent;
    int Run(CDialog&) override
    {
        moduleCurrent.push_back(ModuleIsCurrent());
        thrower();
        return IDOK;
    }
};

struct NotAStdException
{
};

// The three reason creators, each run once.
using CreatorCall = std::function<int()>;
std::vector<std::pair<const char*, CreatorCall>> ReasonCreatorCalls()
{
    return {
        {"DetachStudyParamDlgCreator",
         [] { return TavCreator::DetachStudyParamDlgCreator().DisplayModal("Detach", "ACC1", nullptr); }},
        {"DeleteExamParamDlgCreator(DELETE_EXAM)",
         [] {
             return TavCreator::DeleteExamParamDlgCreator().DisplayModal("Delete", "ACC1", TavCreator::DELETE_EXAM,
                                                                         true, false, nullptr);
         }},
        {"DeleteExamParamDlgCreator(CANCEL_EXAM)",
         [] {
             return TavCreator::DeleteExamParamDlgCreator().DisplayModal("Cancel", "ACC1", TavCreator::CANCEL_EXAM,
                                                                         true, false, nullptr);
         }},
        {"PatientDeleteParamDlgCreator",
         [] { return TavCreator::PatientDeleteParamDlgCreator().DisplayModal("Delete", "MRN1", true, nullptr); }},
    };
}

class ResourceScope : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(HostIsCurrent()); }
    RecordingDictionaryService m_dictionaries;
    ScopedServices m_services{nullptr, nullptr, &m_dictionaries};
};

TEST_F(ResourceScope, ReasonCreatorsRunTheirDialogsWithTheModulesResources)
{
    for (const auto& [name, call] : ReasonCreatorCalls()) {
        SCOPED_TRACE(name);
        m_dictionaries.moduleCurrent.clear();
        ScriptedUser user;
        bool inside = false;
        user.OnNextDialog([&](CDialog& dlg) {
            inside = ModuleIsCurrent();
            dlg.OnCancel();
        });
        EXPECT_EQ(IDCANCEL, call());
        EXPECT_TRUE(inside);
        EXPECT_TRUE(HostIsCurrent());
        for (bool b : m_dictionaries.moduleCurrent)
            EXPECT_TRUE(b);
    }
}

TEST_F(ResourceScope, RestoredWhenAnExceptionLeavesTheCreator)
{
    for (const auto& [name, call] : ReasonCreatorCalls()) {
        SCOPED_TRACE(name);
        ThrowingRunner runner;
        runner.thrower = [] { throw NotAStdException(); };
        ModalRunner* previous = SetModalRunner(&runner);
        EXPECT_THROW(call(), NotAStdException);
        SetModalRunner(previous);
        ASSERT_EQ(1u, runner.moduleCurrent.size());
        EXPECT_TRUE(runner.moduleCurrent[0]);
        EXPECT_TRUE(HostIsCurrent());
    }
}

TEST_F(ResourceScope, RestoredWhenTheCreatorTurnsAFailureIntoACancel)
{
    for (const auto& [name, call] : ReasonCreatorCalls()) {
        SCOPED_TRACE(name);
        ThrowingRunner runner;
        runner.thrower = [] { throw std::runtime_error("the dialog could not run"); };
        ModalRunner* previous = SetModalRunner(&runner);
        EXPECT_EQ(IDCANCEL, call());
        SetModalRunner(previous);
        EXPECT_TRUE(HostIsCurrent());
    }
}

TEST_F(ResourceScope, RestoredWhenAServiceThrows)
{
    m_dictionaries.fail = true;
    for (const auto& [name, call] : ReasonCreatorCalls()) {
        SCOPED_TRACE(name);
        m_dictionaries.moduleCurrent.clear();
        // The reasons are read while the dialog initialises: it never shows.
        ScriptedUser user;
        EXPECT_EQ(IDCANCEL, call());
        EXPECT_TRUE(HostIsCurrent());
        ASSERT_FALSE(m_dictionaries.moduleCurrent.empty());
        EXPECT_TRUE(m_dictionaries.moduleCurrent[0]);
    }
}

TEST_F(ResourceScope, ModuleEntryOperations)
{
    SetScreenDpiOverride(120);
    {
        CBravikApp app;
        EXPECT_EQ(1, app.InitInstance());
        EXPECT_TRUE(HostIsCurrent());
        app.ExitInstance();
        EXPECT_TRUE(HostIsCurrent());
    }
    ClearScreenDpiOverride();
    AfxEnableControlContainer(nullptr);

    EXPECT_FALSE(CBravikApp::GetUnlinkPatientConfirmationMsg().IsEmpty());
    EXPECT_TRUE(HostIsCurrent());

    TavCreator::RegisterControls::RegisterPicker();
    EXPECT_TRUE(HostIsCurrent());
    TavCreator::RegisterControls::UnRegisterPicker();
    EXPECT_TRUE(HostIsCurrent());
}

TEST_F(ResourceScope, NestedCallsFromAnotherModuleGetTheirOwnStateBack)
{
    ModuleState other("other-module");
    {
        ModuleResourceScope scope(other);
        EXPECT_FALSE(CBravikApp::GetUnlinkPatientConfirmationMsg().IsEmpty());
        EXPECT_EQ(&other, &CurrentModuleState());
    }
    EXPECT_TRUE(HostIsCurrent());
}

TEST_F(ResourceScope, TavHelperSwitchesForEveryDictionaryFill)
{
    TavHelper helper;
    CComboBox box;
    const std::vector<std::pair<const char*, std::function<void()>>> calls = {
        {"InitSexCombo", [&] { helper.InitSexCombo(box); }},
        {"InitSexDescriptionCombo", [&] { helper.InitSexDescriptionCombo(box); }},
        {"InitExamStatusCombo", [&] { helper.InitExamStatusCombo(box); }},
        {"InitPriorityCombo", [&] { helper.InitPriorityCombo(box); }},
        {"InitMergeLinkReasonCombo", [&] { helper.InitMergeLinkReasonCombo(box); }},
        {"GetSexCodeDescription", [&] { helper.GetSexCodeDescription("M"); }},
    };
    for (const auto& [name, call] : calls) {
        SCOPED_TRACE(name);
        m_dictionaries.moduleCurrent.clear();
        call();
        EXPECT_TRUE(HostIsCurrent());
        for (bool b : m_dictionaries.moduleCurrent)
            EXPECT_TRUE(b);
    }
}

} // namespace

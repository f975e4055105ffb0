// The History, Providers and Links tabs.
#include "examfixture.h"

#include "boundary/examdlgcreator.h"
#include "exam/examdlg.h"
#include "exam/historypage.h"
#include "exam/linkedexamspage.h"
#include "exam/providerdetailspage.h"

#include "dialogdriver.h"
#include "faultyservices.h"
#include "uiinput.h"

#include "localefunctions.h"
#include "providerrecord.h"
#include "providerservice.h"
#include "serviceregistry.h"
#include "session.h"
#include "examservice.h"

#include "cbutton.h"
#include "column.h"
#include "contactinfo.h"
#include "listctrlex.h"
#include "listsubitem.h"
#include "picker.h"
#include "scrolledit.h"

#include <SQLiteCpp/Statement.h>

#include <QPlainTextEdit>

namespace {

class ExamPagesTest : public ExamFixture
{
protected:
    int RunEdit(const std::string& exam, ScriptedUser::DialogScript script, const char* shot = nullptr)
    {
        user->OnNextDialog(std::move(script), shot);
        return creator.DisplayExamDlg(exam.c_str(), nullptr);
    }
    // An exam whose referring physician is the given provider.
    std::string ExamReferredBy(const std::string& providerKey, const std::string& id)
    {
        const std::string exam = SavedExam("ACC1");
        ExamDataSet e = Stored(exam);
        ProviderRecord p;
        p.SetKey(providerKey.c_str());
        p.SetProviderID(id.c_str());
        p.SetProviderType(ProviderRecord::eREFERRING);
        e.AddProvider(p);
        EXPECT_EQ(Session::ServiceInstance()->GetExamService()->UpdateExam(&e), 0);
        return exam;
    }
    // ACC1, linked with ACC2; returns ACC1's key.
    std::string LinkedPair()
    {
        const std::string a = SavedExam("ACC1"), b = SavedExam("ACC2");
        LinkExams(a, b);
        return a;
    }
    TavCreator::ExamDlgCreator creator;
};

// ---- History

TEST_F(ExamPagesTest, TheHistoryTextsAreHeldToTheirLimitsAndSaved)
{
    const std::string exam = SavedExam("ACC1");
    RunEdit(
        exam,
        [&](CDialog& dlg) {
            ExamForm form(dlg);
            form.Tab(IDS_TAB_HISTORY);
            DialogDriver d(dlg);
            for (const auto& [id, limit] : {std::pair{IDC_HISTORY_SIGNS, 255}, std::pair{IDC_HISTORY_HISTORY, 1024},
                                            std::pair{IDC_HISTORY_COMMENTS, 2048}}) {
                auto* edit = d.ItemAs<ScrollEdit>(id);
                ASSERT_NE(edit, nullptr);
                edit->textEdit()->setPlainText(QString());
                ::TypeText(edit, QString(limit + 5, QChar('x')).left(limit - 2) + "abcdefg");
            }
            form.ClickOK();
        });
    const ExamDataSet saved = Stored(exam);
    EXPECT_EQ(saved.GetSignsAndSymptoms().length(), 255u);
    EXPECT_EQ(saved.GetHistory().length(), 1024u);
    EXPECT_EQ(saved.GetComments().length(), 2048u);
    EXPECT_STREQ(saved.GetComments().c_str() + 2046, "ab");
}

TEST_F(ExamPagesTest, TheHistoryTabShowsTheExamsTexts)
{
    const std::string exam = SavedExam("ACC1");
    ExamDataSet e = Stored(exam);
    e.SetSignsAndSymptoms("headache");
    e.SetHistory("fell off a ladder");
    e.SetComments("claustrophobic");
    ASSERT_EQ(Session::ServiceInstance()->GetExamService()->UpdateExam(&e), 0);
    std::vector<CString> texts;
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.Tab(IDS_TAB_HISTORY);
        for (int id : {IDC_HISTORY_SIGNS, IDC_HISTORY_HISTORY, IDC_HISTORY_COMMENTS})
            texts.push_back(form.Text(id));
        form.Cancel();
    });
    EXPECT_EQ(texts, (std::vector<CString>{"headache", "fell off a ladder", "claustrophobic"}));
}

// ---- Providers

TEST_F(ExamPagesTest, AnExamWithoutAReferringPhysicianShowsAnEmptyPickerAndNA)
{
    const std::string exam = SavedExam("ACC1");
    CString name, id;
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.Tab(IDS_TAB_PROVIDERS);
        name = form.Text(IDC_PROVIDER_PICKER);
        id = form.Text(IDC_PROVIDER_ID);
        form.Cancel();
    });
    EXPECT_STREQ(name, "");
    EXPECT_STREQ(id, "NA");
}

TEST_F(ExamPagesTest, TheReferringPhysicianIsShownWithIdAddressAndWorkPhone)
{
    const std::string exam = ExamReferredBy(m_doctor, "PRV1");
    Db().Handle().exec("UPDATE providers SET address1 = '1 Main St', city = 'Springfield', state_code = 'IL', "
                       "postal_code = '62701', phone = '' WHERE provider_id = 'PRV1'");
    CString name, id, address, phone;
    RunEdit(
        exam,
        [&](CDialog& dlg) {
            ExamForm form(dlg);
            form.Tab(IDS_TAB_PROVIDERS);
            name = form.Text(IDC_PROVIDER_PICKER);
            id = form.Text(IDC_PROVIDER_ID);
            auto* contact = dlg.findChild<ContactInfo*>();
            address = contact->GetAddress();
            phone = contact->GetWPhone();
            form.Cancel();
        });
    EXPECT_STREQ(name, "House^Gregory");
    EXPECT_STREQ(id, "PRV1");
    EXPECT_EQ(address.Find("1 Main St"), 0);
    EXPECT_GE(address.Find("Springfield, IL 62701"), 0);
    EXPECT_STREQ(phone, "N/A");
}

TEST_F(ExamPagesTest, PickingAPhysicianMakesItTheReferringOneAndSavesIt)
{
    const std::string exam = SavedExam("ACC1");
    CString search;
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.Tab(IDS_TAB_PROVIDERS);
        form.TypeInPicker(IDC_PROVIDER_PICKER, "wil, j");
        user->OnNextDialog(
            [&](CDialog& picker) {
                search = PickerForm(picker).SearchText();
                ChooseInPicker("Wilson")(picker);
            },
            "exam_picker_providers");
        form.Pick(IDC_PROVIDER_PICKER);
        form.ClickOK();
    });
    EXPECT_STREQ(search, "wil");
    const ExamDataSet saved = Stored(exam);
    const ProviderRecord* referring = saved.FindProvider(ProviderRecord::eREFERRING);
    ASSERT_NE(referring, nullptr);
    EXPECT_STREQ(referring->GetProviderID().c_str(), "PRV2");
    EXPECT_EQ(saved.GetProviders().size(), 1u);
}

TEST_F(ExamPagesTest, ANameThatMatchesNobodyAndACancelledPickerChangeNothingAndDoNotBlockOk)
{
    const std::string exam = ExamReferredBy(m_doctor, "PRV1");
    const int result = RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.Tab(IDS_TAB_PROVIDERS);
        form.TypeInPicker(IDC_PROVIDER_PICKER, "Nobody, Such");
        user->OnNextDialog(CancelPicker());
        form.ClickOK();
    });
    EXPECT_EQ(result, IDOK);
    const ExamDataSet saved = Stored(exam);
    ASSERT_EQ(saved.GetProviders().size(), 1u);
    EXPECT_STREQ(saved.GetProviders()[0].GetProviderID().c_str(), "PRV1");
}

TEST_F(ExamPagesTest, TooManyMatchesShowTheCurrentPhysicianAgain)
{
    const std::string exam = ExamReferredBy(m_doctor, "PRV1");
    FaultyServices faulty;
    faulty.faults.FailOn("QueryProviders", ProviderService::TOO_MANY_MATCHES);
    CString name;
    const int result = RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.Tab(IDS_TAB_PROVIDERS);
        form.TypeInPicker(IDC_PROVIDER_PICKER, "H");
        form.ClickOK();
        name = form.Text(IDC_PROVIDER_PICKER);
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_STREQ(name, "House^Gregory");
}

TEST_F(ExamPagesTest, TypedNamesAreReadAsLastFirstMiddleOrAsOneLastName)
{
    const BPersonName full = ProviderDetailsImplDlg::ParseName(" House , Gregory , M ", false);
    EXPECT_STREQ(full.GetLastName().c_str(), "House");
    EXPECT_STREQ(full.GetFirstName().c_str(), "Gregory");
    EXPECT_STREQ(full.GetMiddleName().c_str(), "M");
    EXPECT_STREQ(ProviderDetailsImplDlg::ParseName("  van Dyke  ", false).GetLastName().c_str(), "van Dyke");
    EXPECT_STREQ(ProviderDetailsImplDlg::ParseName("van Dyke, Dick", true).GetLastName().c_str(), "van");
    EXPECT_STREQ(ProviderDetailsImplDlg::ParseName("House^Gregory", false).GetFirstName().c_str(), "Gregory");
    EXPECT_STREQ(ProviderDetailsImplDlg::PickName(" House , Gregory", false), "House");
    EXPECT_STREQ(ProviderDetailsImplDlg::PickName("van Dyke, Dick", true), "van");
    EXPECT_STREQ(ProviderDetailsImplDlg::PickName("X", true), "X");
}

// ---- Links

TEST_F(ExamPagesTest, AnExamThatIsNotLinkedShowsAnEmptyListADisabledButtonAndAsksNothing)
{
    const std::string exam = SavedExam("ACC1");
    FaultyServices faulty;
    int rows = -1;
    bool enabled = true;
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.Tab(IDS_TAB_LINKS);
        rows = DialogDriver(dlg).ItemAs<ListCtrlEx>(IDC_LINKED_EXAMS_LIST)->GetItemCount();
        enabled = form.Enabled(IDC_REMOVE_FROM_LINK);
        form.Cancel();
    });
    EXPECT_EQ(rows, 0);
    EXPECT_FALSE(enabled);
    EXPECT_EQ(faulty.faults.Count("GetLinkedExams"), 0);
}

TEST_F(ExamPagesTest, TheLinksTabListsTheOtherExamsOfTheGroupInFiveColumns)
{
    const std::string a = SavedExam("ACC1"), b = SavedExam("ACC2"), c = SavedExam("ACC3");
    LinkExams(a, b);
    LinkExams(a, c);
    std::vector<CString> titles, accessions;
    RunEdit(
        a,
        [&](CDialog& dlg) {
            ExamForm form(dlg);
            form.Tab(IDS_TAB_LINKS);
            auto* list = DialogDriver(dlg).ItemAs<ListCtrlEx>(IDC_LINKED_EXAMS_LIST);
            for (int i = 0; i < list->GetColumnCount(); ++i)
                titles.push_back(list->GetColumn(i)->GetTitle());
            for (int r = 0; r < list->GetItemCount(); ++r)
                accessions.push_back(list->GetSubItemAt(r, 0)->GetText());
            form.Cancel();
        });
    EXPECT_EQ(titles, (std::vector<CString>{"Accession #: ", "Exam Code", "Exam Description", "Modality", "Body Part"}));
    EXPECT_EQ(accessions, (std::vector<CString>{"ACC2", "ACC3"}));
}

TEST_F(ExamPagesTest, RemoveFromLinkAnsweredNoChangesNothing)
{
    const std::string a = LinkedPair();
    user->ExpectMessage("Are you sure you want to remove the current link for the exam? ACC1", IDNO);
    RunEdit(a, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.RemoveFromLink();
        form.Cancel();
    });
    EXPECT_EQ(Stored(a).GetLinkedFlag(), "true");
}

TEST_F(ExamPagesTest, RemoveFromLinkTakesTheExamOutEmptiesTheListAndReloadsTheExam)
{
    const std::string a = SavedExam("ACC1"), b = SavedExam("ACC2"), c = SavedExam("ACC3");
    LinkExams(a, b);
    LinkExams(a, c);
    int rows = -1;
    bool enabled = true;
    ACE_CString flag;
    user->ExpectMessage("Are you sure you want to remove the current link for the exam? ACC1", IDYES);
    RunEdit(a, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.RemoveFromLink();
        rows = DialogDriver(dlg).ItemAs<ListCtrlEx>(IDC_LINKED_EXAMS_LIST)->GetItemCount();
        enabled = form.Enabled(IDC_REMOVE_FROM_LINK);
        flag = form.Exam().GetLinkedFlag();
        form.ClickOK();
    });
    EXPECT_EQ(rows, 0);
    EXPECT_FALSE(enabled);
    EXPECT_STREQ(flag.c_str(), "false");
    EXPECT_EQ(Stored(a).GetLinkedFlag(), "false");
    // The other two stay linked to each other.
    EXPECT_EQ(Stored(b).GetLinkedFlag(), "true");
}

TEST_F(ExamPagesTest, UnlinkingAReadExamAsksTheCatalogueWarningToo)
{
    const std::string a = LinkedPair();
    ExamDataSet e = Stored(a);
    e.SetMarkedRead(true);
    ASSERT_EQ(Session::ServiceInstance()->GetExamService()->UpdateExam(&e), 0);
    const CString warning = Locale::LoadMessage(Locale::MSG_LINK_UNLINK_WARNING);
    ASSERT_FALSE(warning.IsEmpty());
    user->ExpectMessage("Are you sure you want to remove the current link for the exam? ACC1", IDYES);
    user->ExpectMessage(warning, IDNO);
    RunEdit(a, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.RemoveFromLink();
        form.Cancel();
    });
    EXPECT_EQ(Stored(a).GetLinkedFlag(), "true");
}

TEST_F(ExamPagesTest, AFailedLinkedExamsQueryIsReportedAndTheButtonDisabled)
{
    const std::string a = LinkedPair();
    FaultyServices faulty;
    faulty.faults.ThrowOn("GetLinkedExams", "no route to server");
    bool enabled = true;
    user->ExpectMessage("Error getting linked exams.  Reason: no route to server");
    RunEdit(a, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.Tab(IDS_TAB_LINKS);
        enabled = form.Enabled(IDC_REMOVE_FROM_LINK);
        form.Cancel();
    });
    EXPECT_FALSE(enabled);
}

TEST_F(ExamPagesTest, AFailedUnlinkIsReportedAndNothingElseHappens)
{
    const std::string a = LinkedPair();
    FaultyServices faulty;
    faulty.faults.ThrowOn("UnLinkExam", "locked");
    int rows = 0;
    user->ExpectMessage("Are you sure you want to remove the current link for the exam? ACC1", IDYES);
    user->ExpectMessage("Error unlinking exam with Accession Number ACC1.  Reason: locked");
    RunEdit(a, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.RemoveFromLink();
        rows = DialogDriver(dlg).ItemAs<ListCtrlEx>(IDC_LINKED_EXAMS_LIST)->GetItemCount();
        form.Cancel();
    });
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(faulty.faults.Count("GetExamDataSet"), 1);
}

TEST_F(ExamPagesTest, AFailedReloadAfterTheUnlinkIsReportedAsAnUpdateError)
{
    const std::string a = LinkedPair();
    FaultyServices faulty;
    faulty.faults.ThrowOn("GetExamDataSet", "gone", 2);
    user->ExpectMessage("Are you sure you want to remove the current link for the exam? ACC1", IDYES);
    user->ExpectMessage("Error updating exam with Accession Number ACC1.  Reason: gone");
    RunEdit(a, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.RemoveFromLink();
        form.Cancel();
    });
    EXPECT_EQ(Stored(a).GetLinkedFlag(), "false");
}

} // namespace

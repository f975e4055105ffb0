#include "examfixture.h"

#include "boundary/registercontrols.h"
#include "exam/examdetailspage.h"
#include "exam/examdlg.h"

#include "dialogdriver.h"
#include "uiinput.h"

#include "dictionarytopic.h"
#include "examservice.h"
#include "providerrecord.h"
#include "serviceregistry.h"
#include "session.h"

#include "cedit.h"
#include "combobox.h"
#include "datetimeeditctrl.h"
#include "hftabbeddlg.h"
#include "listctrlex.h"
#include "listtextsubitem.h"
#include "picker.h"
#include "pickerdlg.h"
#include "stringtable.h"
#include "tabbutton.h"

#include <SQLiteCpp/Statement.h>

#include <QLineEdit>
#include <QTest>

#include <iostream>

void ExamFixture::SetUp()
{
    ArchiveFixture::SetUp();
    m_patient = Build().Patient(m_north, "MRN100", "Smith", "Ann", "F", "19700101", "");
    m_otherPatient = Build().Patient(m_north, "MRN200", "Jones", "Bob", "M", "19800202", "");
    m_ctHead = Build().ExamCode("CTHEAD", "CT HEAD WITHOUT CONTRAST");
    Build().ExamCode("CTHEADW", "CT HEAD WITH CONTRAST");
    Build().ExamCode("MRKNEE", "MR KNEE");
    m_doctor = Build().Provider("PRV1", "House", "Gregory");
    Build().Provider("PRV2", "Wilson", "James");
    m_modifier = Build().Modifier("LT", "Left");
    Build().Modifier("RT", "Right");
    m_location = Build().Location("ER", "Emergency Department");
    Build().Location("ICU", "Intensive Care Unit");
    m_resource = Build().Resource("CT1", "CT Scanner 1");
    Build().Resource("MR1", "MRI 1.5T");
    ASSERT_TRUE(Arc().InstallIntoSession("admin"));
    TavCreator::RegisterControls::RegisterPicker();
    user = std::make_unique<ScriptedUser>();
    log = std::make_unique<LogCapture>();
}

void ExamFixture::TearDown()
{
    // What the module logged helps to read a failure.
    if (HasFailure() && log)
        for (const std::string& line : log->Texts())
            std::cerr << "log: " << line;
    log.reset();
    if (user)
        user->VerifyAllConsumed();
    user.reset();
    TavCreator::RegisterControls::UnRegisterPicker();
    Arc().Uninstall();
    ArchiveFixture::TearDown();
}

std::string ExamFixture::SavedExam(const std::string& accession, const std::string& patient, bool withCode)
{
    ExamDataSet e;
    e.SetPatientKey((patient.empty() ? m_patient : patient).c_str());
    e.SetOrganizationKey(m_north.c_str());
    e.SetAccessionNumber(accession.c_str());
    e.SetPriorityCode("S");
    e.SetStatusCode("SC");
    e.SetScheduledDT(BDateTime(BDate(2024, 3, 4), BTime(9, 30, 0)));
    if (withCode) {
        e.SetExamCode("CTHEAD");
        e.SetExamCodeKey(m_ctHead.c_str());
        e.SetModality("CT");
        e.SetBodyPart("HEAD");
        e.SetDescription("CT HEAD WITHOUT CONTRAST");
    }
    ACE_CString key;
    EXPECT_EQ(Session::ServiceInstance()->GetExamService()->CreateExam(&e, key), 0);
    return key.c_str();
}

ExamDataSet ExamFixture::Stored(const std::string& examKey)
{
    ExamDataSet e;
    EXPECT_EQ(Session::ServiceInstance()->GetExamService()->GetExamDataSet(examKey.c_str(), &e), 0);
    return e;
}

std::vector<std::pair<int, std::string>> ExamFixture::AuditRows()
{
    std::vector<std::pair<int, std::string>> rows;
    SQLite::Statement q(Db().Handle(), "SELECT event_code, record_key FROM audit ORDER BY audit_id");
    while (q.executeStep())
        rows.emplace_back(q.getColumn(0).getInt(), q.getColumn(1).getString());
    return rows;
}

void ExamFixture::Reinstall()
{
    Arc().Uninstall();
    ASSERT_TRUE(Arc().InstallIntoSession("admin"));
}

void ExamFixture::LinkExams(const std::string& a, const std::string& b)
{
    ASSERT_EQ(Session::ServiceInstance()->GetExamService()->LinkExams(a.c_str(), "", b.c_str(), ""), 0);
}

// ---- ExamForm

ExamForm::ExamForm(CDialog& dlg) : m_dlg(dynamic_cast<ExamDlg&>(dlg)) {}

ExamDetailsImplDlg& ExamForm::Info() const { return *m_dlg.GetDetailsPage()->GetDetails(); }
ExamDataSet& ExamForm::Exam() const { return m_dlg.GetExamDataSet(); }

std::vector<CString> ExamForm::TabTitles() const
{
    std::vector<CString> titles;
    for (int i = 0; i < m_dlg.GetFrame()->GetPageCount(); ++i)
        titles.push_back(m_dlg.GetFrame()->GetTab(i)->GetWindowText());
    return titles;
}

CString ExamForm::ActiveTab() const
{
    const int active = m_dlg.GetFrame()->GetActiveIndex();
    return active < 0 ? CString() : m_dlg.GetFrame()->GetTab(active)->GetWindowText();
}

void ExamForm::Tab(UINT titleId) const
{
    const int index = m_dlg.GetFrame()->FindPage(LoadString(titleId));
    ASSERT_GE(index, 0);
    ClickButton(m_dlg.GetFrame()->GetTab(index));
}

CString ExamForm::Text(int id) const
{
    if (Picker* picker = PickerAt(id))
        return picker->GetWindowText();
    if (auto* date = qobject_cast<DateTimeEditCtrl*>(DialogDriver(m_dlg).Item(id)))
        return date->GetWindowText();
    return DialogDriver(m_dlg).Text(id);
}

bool ExamForm::Enabled(int id) const { return DialogDriver(m_dlg).Item(id)->isEnabled(); }
bool ExamForm::Shown(int id) const { return DialogDriver(m_dlg).IsShown(id); }

Picker* ExamForm::PickerAt(int id) const { return qobject_cast<Picker*>(DialogDriver(m_dlg).Item(id)); }

void ExamForm::TypeAccession(const QString& text) const { ::ReplaceText(DialogDriver(m_dlg).Item(IDC_EXAM_ACCESSION), text); }
void ExamForm::Generate() const { DialogDriver(m_dlg).Click(IDC_EXAM_GENERATE); }

void ExamForm::ChoosePriority(const QString& itemText) const
{
    ChooseComboItem(DialogDriver(m_dlg).ItemAs<CComboBox>(IDC_EXAM_PRIORITY), itemText);
}

void ExamForm::TypeInPicker(int id, const QString& text) const
{
    Picker* picker = PickerAt(id);
    ASSERT_NE(picker, nullptr);
    ::ReplaceText(picker->Edit(), text);
}

void ExamForm::EnterInPicker(int id) const
{
    Picker* picker = PickerAt(id);
    ASSERT_NE(picker, nullptr);
    QTest::keyClick(picker->Edit(), Qt::Key_Return);
}

void ExamForm::Pick(int id) const
{
    Picker* picker = PickerAt(id);
    ASSERT_NE(picker, nullptr);
    QTest::keyClick(picker->Edit(), Qt::Key_F4);
}

void ExamForm::TypeText(int id, const QString& text) const
{
    QWidget* target = DialogDriver(m_dlg).Item(id);
    if (auto* date = qobject_cast<DateTimeEditCtrl*>(target))
        target = date->lineEdit();
    ::ReplaceText(target, text);
}

void ExamForm::RemoveFromLink() const
{
    Tab(IDS_TAB_LINKS);
    DialogDriver(m_dlg).Click(IDC_REMOVE_FROM_LINK);
}

bool ExamForm::OKEnabled() const { return m_dlg.GetFooter()->GetOKButton().isEnabled(); }
void ExamForm::ClickOK() const { ClickButton(&m_dlg.GetFooter()->GetOKButton()); }
void ExamForm::Cancel() const { ClickButton(&m_dlg.GetFooter()->GetCancelButton()); }
CString ExamForm::ExamLine() const { return m_dlg.GetHeader()->GetFirstText(); }
CString ExamForm::PatientLine() const { return m_dlg.GetHeader()->GetSecondText(); }

// ---- PickerForm

PickerForm::PickerForm(CDialog& dlg) : m_dlg(dynamic_cast<PickerDlg&>(dlg)) {}

CString PickerForm::SearchText() const { return DialogDriver(m_dlg).Text(IDC_PICKER_SEARCH); }
CString PickerForm::Caption() const { return m_dlg.GetWindowText(); }
CString PickerForm::Note() const { return m_dlg.GetNote(); }

std::vector<CString> PickerForm::FirstColumn() const
{
    std::vector<CString> texts;
    ListCtrlEx* list = m_dlg.GetList();
    for (int row = 0; row < list->GetItemCount(); ++row)
        texts.push_back(list->GetSubItemAt(row, 0)->GetText());
    return texts;
}

int PickerForm::SelectedRow() const { return m_dlg.GetList()->GetFirstSelectedItem(); }

void PickerForm::Type(const QString& text) const { ::TypeText(DialogDriver(m_dlg).Item(IDC_PICKER_SEARCH), text); }
void PickerForm::Replace(const QString& text) const { ::ReplaceText(DialogDriver(m_dlg).Item(IDC_PICKER_SEARCH), text); }

void PickerForm::Key(int key) const
{
    auto* edit = DialogDriver(m_dlg).ItemAs<CEdit>(IDC_PICKER_SEARCH);
    QTest::keyClick(edit->lineEdit(), static_cast<Qt::Key>(key));
}

void PickerForm::Escape() const { DialogDriver(m_dlg).PressEscape(); }

ScriptedUser::DialogScript ChooseInPicker(const QString& search, int downPresses)
{
    return [search, downPresses](CDialog& dlg) {
        PickerForm picker(dlg);
        picker.Replace(search);
        for (int i = 0; i < downPresses; ++i)
            picker.Key(Qt::Key_Down);
        picker.Enter();
    };
}

ScriptedUser::DialogScript CancelPicker()
{
    return [](CDialog& dlg) { DialogDriver(dlg).Click(IDCANCEL); };
}

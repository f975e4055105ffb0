#include "patientfixture.h"

#include "boundary/patientdlgcreator.h"
#include "patient/clinkpatientimpl.h"
#include "patient/createlinkedpatientsimpl.h"
#include "patient/createlinkedpatientspage.h"
#include "patient/linkedrecordspage.h"
#include "patient/patientdemographicsimpl.h"
#include "patient/patientdemographicspage.h"
#include "patient/patientdlg.h"
#include "patient/patientdlgheader.h"

#include "hftabbeddlg.h"
#include "sqlitepatientservice.h"
#include "listctrlex.h"
#include "listctrlmodel.h"
#include "listsubitem.h"
#include "tabbutton.h"
#include "uiinput.h"
#include "xpbutton.h"

#include <QApplication>
#include <QTest>

#include <stdexcept>

void PatientFixture::SetUp()
{
    ArchiveFixture::SetUp();
    ASSERT_TRUE(Arc().InstallIntoSession("admin"));
    user = std::make_unique<ScriptedUser>();
    log = std::make_unique<LogCapture>();
}

void PatientFixture::TearDown()
{
    log.reset();
    user.reset();
    if (Arc().Installed())
        Arc().Uninstall();
    ArchiveFixture::TearDown();
}

std::string PatientFixture::Patient(const std::string& orgKey, const std::string& mrn, const std::string& last,
                                    const std::string& first, const std::string& dob, const std::string& sex)
{
    return Build().Patient(orgKey, mrn, last, first, sex, dob, "");
}

PatientDetailRecord PatientFixture::Read(const std::string& key)
{
    PatientDetailRecord r;
    EXPECT_EQ(0, Arc().Patients().GetPatient(key.c_str(), &r, ""));
    return r;
}

void PatientFixture::Grant(const std::string& userName, const std::vector<std::string>& createIn,
                           const std::vector<std::string>& linkIn)
{
    Build().User(userName);
    std::set<std::string> orgs(createIn.begin(), createIn.end());
    orgs.insert(linkIn.begin(), linkIn.end());
    for (const std::string& org : orgs) {
        const bool create = std::find(createIn.begin(), createIn.end(), org) != createIn.end();
        const bool link = std::find(linkIn.begin(), linkIn.end(), org) != linkIn.end();
        Build().Grant(userName, org, create, link, false);
    }
}

int PatientFixture::RunDialog(const std::string& key, const std::function<void(PatientForm&)>& script,
                              TavCreator::PatientDlgCreator* creator, const char* firstTab)
{
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        if (firstTab)
            f.Tab(firstTab);
        script(f);
        if (!dlg.HasEnded())
            f.ClickCancel();
    });
    TavCreator::PatientDlgCreator own;
    return (creator ? creator : &own)->DisplayPatientDlg(key.c_str(), nullptr);
}

void PatientFixture::LogInAs(const std::string& userName)
{
    Arc().Uninstall();
    ASSERT_TRUE(Arc().InstallIntoSession(userName));
}

PatientForm::PatientForm(CDialog& dlg) : m_dlg(dynamic_cast<PatientDlg*>(&dlg)), m_driver(dlg)
{
    if (!m_dlg)
        throw std::logic_error("not the patient dialog");
}

PatientDemographicsImpl& PatientForm::Demographics() const { return *m_dlg->GetDemographicsPage()->GetImpl(); }

CLinkPatientImpl& PatientForm::Links() const
{
    if (!m_dlg->GetLinksPage())
        throw std::logic_error("no Links page");
    return *m_dlg->GetLinksPage()->GetImpl();
}

CreateLinkedPatientsImpl& PatientForm::CreateLinked() const
{
    if (!m_dlg->GetCreateLinkedPage())
        throw std::logic_error("no Create Linked Patient page");
    return *m_dlg->GetCreateLinkedPage()->GetImpl();
}

bool PatientForm::Tab(const char* name)
{
    HFTabbedDlg* frame = m_dlg->GetFrame();
    const int index = frame->FindPage(name);
    if (index < 0) {
        ADD_FAILURE() << "no tab " << name;
        return false;
    }
    return ClickButton(frame->GetTab(index));
}

CString PatientForm::ActiveTab() const
{
    HFTabbedDlg* frame = m_dlg->GetFrame();
    TabButton* tab = frame->GetTab(frame->GetActiveIndex());
    return tab ? tab->GetWindowText() : CString();
}

bool PatientForm::OKEnabled() const { return m_dlg->GetFooter()->GetOKButton().isEnabled(); }

bool PatientForm::HasFocus(int id) const
{
    CWnd* control = m_driver.Item(id);
    QWidget* focus = QApplication::focusWidget();
    return control && focus && (focus == control || control->isAncestorOf(focus));
}

std::vector<CString> PatientForm::HeaderLines() const
{
    const PatientDlg::Header* h = m_dlg->GetHeader();
    std::vector<CString> lines{h->GetPatientIDText()};
    if (!h->GetDemographicsText().IsEmpty())
        lines.push_back(h->GetDemographicsText());
    if (!h->GetVIPText().IsEmpty())
        lines.push_back(h->GetVIPText());
    return lines;
}

int PatientForm::LinkedRows() const { return Links().GetList()->GetItemCount(); }

CString PatientForm::LinkedCell(int row, int column) const
{
    ListSubItem* cell = Links().GetList()->GetSubItemAt(row, column);
    return cell ? cell->GetText() : CString("<none>");
}

bool PatientForm::SelectLinkedRow(int row)
{
    ListCtrlEx* list = Links().GetList();
    const QRect cell = list->visualRect(list->Model()->index(row, CLinkPatientImpl::COL_FIRST_NAME));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    return list->IsItemSelected(row);
}

bool PatientForm::EditLinkedMRN(int row, const QString& text)
{
    ListCtrlEx* list = Links().GetList();
    const QRect cell = list->visualRect(list->Model()->index(row, CLinkPatientImpl::COL_MRN));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    CEdit* editor = Links().GetMRNEditor();
    if (!editor) {
        ADD_FAILURE() << "no MRN editor opened on row " << row;
        return false;
    }
    return ReplaceText(editor, text);
}

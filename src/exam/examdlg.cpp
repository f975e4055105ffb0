#include "exam/examdlg.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"
#include "boundary/tavhelper.h"
#include "exam/examdetailspage.h"
#include "exam/historypage.h"
#include "exam/linkedexamspage.h"
#include "exam/providerdetailspage.h"

#include "auditandlogparams.h"
#include "errormanager.h"
#include "examdataset.h"
#include "examservice.h"
#include "localefunctions.h"
#include "orgoperations.h"
#include "orgoperationscollection.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "serviceregistry.h"
#include "session.h"

#include "drawmaster.h"
#include "edit.h"
#include "hftabbeddlg.h"
#include "messagebox.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <exception>

namespace {

constexpr int kHeaderHeight = 64;
constexpr int kFooterHeight = 50;
constexpr COLORREF kHeaderBackground = 0xFFFFFF;
constexpr COLORREF kFooterBackground = 0xD4D4D4;

ServiceRegistry* Registry() { return Session::ServiceInstance(); }

CString Text(const ACE_CString& s) { return CString(s.c_str()); }
CString OrNA(const CString& s) { return s.IsEmpty() ? LoadString(IDS_NOT_AVAILABLE) : s; }

// The frame holds no controls of its own: its client area is the tabbed frame.
DialogTemplate FrameTemplate()
{
    DialogTemplate tpl;
    tpl.cx = 540;
    tpl.cy = 400;
    tpl.fontFace = "Arial";
    tpl.fontPointSize = 9;
    return tpl;
}

void LogException(const char* function, int line, const char* what)
{
    ACE_LOG_MSG->file(__FILE__);
    ACE_LOG_MSG->linenum(line);
    ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, %s\n"), function, line, what));
}

} // namespace

ExamDlg::ExamDlg(CWnd* parent) : ExamDlg(CString(), CString(), parent) {}

ExamDlg::ExamDlg(const CString& examKey, CWnd* parent) : ExamDlg(CString(), examKey, parent) {}

ExamDlg::ExamDlg(const CString& patientKey, const CString& examKey, CWnd* parent)
    : ControlParentModalDlg(FrameTemplate(), parent),
      m_pFrame(new HFTabbedDlg()),
      m_pHeader(new Header()),
      m_pFooter(new Footer(this)),
      m_strExamKey(examKey),
      m_strPatientKey(patientKey),
      m_pExam(std::make_unique<ExamDataSet>()),
      m_pPatient(std::make_unique<PatientDetailRecord>())
{
    setObjectName(QStringLiteral("ExamDlg"));
}

ExamDlg::~ExamDlg()
{
    if (m_pDetailsPage && m_pDetailsPage->GetPublisher())
        m_pDetailsPage->GetPublisher()->Unsubscribe(this);
    // Pages, bands and frame: the dialog made them, so it deletes each once.
    for (QWidget* w : std::initializer_list<QWidget*>{m_pDetailsPage, m_pProvidersPage, m_pHistoryPage, m_pLinksPage})
        delete w;
    for (QWidget* w : std::initializer_list<QWidget*>{m_pHeader, m_pFooter})
        w->setParent(nullptr);
    delete m_pHeader;
    delete m_pFooter;
    delete m_pFrame;
}

bool ExamDlg::LoadExam()
{
    ExamService* exams = Registry() ? Registry()->GetExamService() : nullptr;
    if (m_strExamKey.IsEmpty() || !exams)
        return false;
    m_bExamLoaded = exams->GetExamDataSet(m_strExamKey.GetString(), m_pExam.get()) == 0;
    return m_bExamLoaded;
}

bool ExamDlg::LoadPatient()
{
    PatientManagementService* patients = Registry() ? Registry()->GetPatientManagementService() : nullptr;
    if (m_strPatientKey.IsEmpty() || !patients)
        return false;
    m_bPatientLoaded = patients->GetPatient(m_strPatientKey.GetString(), m_pPatient.get(), "") == 0;
    return m_bPatientLoaded;
}

BOOL ExamDlg::OnInitDialog()
{
    BRAVIK_MANAGE_STATE();
    ControlParentModalDlg::OnInitDialog();
    SetWindowText(LoadString(IsCreateMode() ? IDS_CREATE_EXAM_CAPTION : IDS_EDIT_EXAM_CAPTION));
    CreateFrame();
    ShowExam();
    ShowPatient();
    ApplyBands();
    AddPages();
    m_pFrame->ActivatePage(LoadString(IDS_TAB_INFO));
    UpdateOK();
    if (!IsCreateMode())
        AuditEdit();
    return TRUE;
}

void ExamDlg::CreateFrame()
{
    const QPoint topLeft = pos();
    resize(kWidth, kHeight);
    move(topLeft);
    CRect client;
    GetClientRect(client);
    m_pFrame->Create(this, client);
    m_pFrame->ShowWindow(SW_SHOW);
    m_pFrame->setEnabled(true);
}

void ExamDlg::ShowExam()
{
    if (!IsCreateMode()) {
        if (!m_bExamLoaded)
            LoadExam();
        // The patient shown is always the exam's own.
        if (m_bExamLoaded) {
            m_strPatientKey = Text(m_pExam->GetPatientKey());
            m_bPatientLoaded = false;
        }
    }
    UpdateExamLine();
}

void ExamDlg::ShowPatient()
{
    if (m_strPatientKey.IsEmpty())
        return;
    if (!m_bPatientLoaded && !LoadPatient())
        return;
    m_pExam->SetPatientKey(m_pPatient->GetPatientKey());
    m_pExam->SetOrganizationKey(m_pPatient->GetOrganizationKey());
    if (IsCreateMode()) {
        // A new exam starts in the status its organization gives new orders.
        OrgOperationsCollection* orgs = Registry() ? Registry()->GetOrgOperationsCollection() : nullptr;
        const OrgOperations* org = orgs ? orgs->GetOrgFromKey(m_pExam->GetOrganizationKey()) : nullptr;
        if (org && org->GetDefaultExamStatusCode().length())
            m_pExam->SetStatusCode(org->GetDefaultExamStatusCode());
    }
    m_pHeader->SetPatientLine(PatientLine());
}

CString ExamDlg::PatientLine() const
{
    const PatientDetailRecord& p = *m_pPatient;
    const CString name = p.IsNameNull() ? LoadString(IDS_NOT_AVAILABLE) : Text(p.GetPatientName());
    const CString sex = p.GetSexCode().length() ? TavHelper().GetSexCodeDescription(p.GetSexCode())
                                                 : LoadString(IDS_NOT_AVAILABLE);
    const CString dob = p.GetDOB().IsValid() ? Locale::FormatDate(p.GetDOB(), Locale::eLong)
                                             : LoadString(IDS_NOT_AVAILABLE);
    // The fifth item is the patient's organization.
    return name + ", " + Text(p.GetPatientID()) + ", " + sex + ", " + dob + ", " + OrNA(Text(p.GetOrganizationID()));
}

void ExamDlg::UpdateExamLine()
{
    // The prefix's trailing blank is the separator.
    m_pHeader->SetExamLine(LoadString(IDS_ACCESSION_PREFIX) + OrNA(Text(m_pExam->GetAccessionNumber())));
}

void ExamDlg::ApplyBands()
{
    m_pHeader->SetHeight(kHeaderHeight);
    m_pHeader->m_clrBackground = kHeaderBackground;
    m_pHeader->m_clrText = 0;
    m_pHeader->SetIcon(LoadHeaderIcon());
    m_pHeader->setFont(DrawMaster::GetNormalFont());
    m_pFrame->SetHeader(m_pHeader);
    m_pFooter->SetHeight(kFooterHeight);
    m_pFooter->SetOKText(LoadString(IDS_OK));
    m_pFooter->SetCancelText(LoadString(IDS_CANCEL));
    m_pFrame->SetFooter(m_pFooter);
    m_pFooter->SetOwner(this);
    QPalette pal = m_pFooter->palette();
    pal.setColor(QPalette::Window, toQColor(kFooterBackground));
    m_pFooter->setPalette(pal);
    m_pFooter->setAutoFillBackground(true);
    CRect client;
    GetClientRect(client);
    HFDlg::PlaceWindow(m_pFrame, client.toQRect());
    m_pFrame->RecalcLayout();
}

void ExamDlg::AddPages()
{
    m_pDetailsPage = new ExamDetailsPage(m_pExam.get());
    m_pFrame->AddPage(m_pDetailsPage, LoadString(IDS_TAB_INFO));
    m_pDetailsPage->GetPublisher()->Subscribe(this);
    m_pProvidersPage = new ProviderDetailsPage(m_pExam.get(), m_pPatient.get());
    m_pFrame->AddPage(m_pProvidersPage, LoadString(IDS_TAB_PROVIDERS));
    m_pHistoryPage = new HistoryPage(m_pExam.get());
    m_pFrame->AddPage(m_pHistoryPage, LoadString(IDS_TAB_HISTORY));
    if (!IsCreateMode()) {
        m_pLinksPage = new LinkedExamsPage(m_pExam.get());
        m_pFrame->AddPage(m_pLinksPage, LoadString(IDS_TAB_LINKS));
    }
    m_pFrame->RecalcLayout();
}

bool ExamDlg::IsComplete() const
{
    const bool codeRequired = !m_pDetailsPage || !m_pDetailsPage->GetDetails()
                              || m_pDetailsPage->GetDetails()->IsExamCodeRequired();
    return m_pExam->GetAccessionNumber().length() > 0 && m_pExam->GetPriorityCode().length() > 0
           && (!codeRequired || m_pExam->GetExamCode().length() > 0);
}

void ExamDlg::UpdateOK() { m_pFooter->GetOKButton().setEnabled(IsComplete()); }

void ExamDlg::OnPublish(Publisher<long, long>*, long first, long, const char*)
{
    if (first != EXAM_DETAILS_CHANGED)
        return;
    UpdateExamLine();
    UpdateOK();
    m_pHeader->update();
    m_pFooter->update();
}

void ExamDlg::AuditEdit()
{
    try {
        const AuditAndLogParams params(m_strExamKey, AuditAndLogParams::EXAM_OPENED_FOR_EDIT);
        Session::Instance().AuditAndLog(params, "");
    } catch (const std::exception& e) {
        // An audit trail that cannot be written must not keep the user out.
        LogException("ExamDlg::OnInitDialog", __LINE__, e.what());
    }
}

// ---- OK

bool ExamDlg::ValidatePages()
{
    ExamPage* pages[] = {m_pDetailsPage, m_pProvidersPage, m_pHistoryPage};
    for (int i = 0; i < 3; ++i) {
        if (!pages[i]->ValidateAndSave()) {
            m_pFrame->SetActivePage(i);
            return false;
        }
    }
    return true;
}

bool ExamDlg::CheckAccessionLength()
{
    const ACE_CString& accession = m_pExam->GetAccessionNumber();
    if (!IsCreateMode() || static_cast<int>(accession.length()) <= kMaxAccessionLength)
        return true;
    CString message;
    message.Format(LoadString(IDS_ERR_CREATE_EXAM), accession.c_str(), LoadString(IDS_ACC_EXCEEDS_LIMIT).GetString());
    AfxMessageBox(message);
    if (Edit* edit = m_pDetailsPage->GetDetails()->GetAccessionEdit()) {
        m_pFrame->SetActivePage(0);
        edit->SetSel(0, -1);
        edit->SetFocus();
    }
    return false;
}

bool ExamDlg::Save()
{
    ExamService* exams = Registry() ? Registry()->GetExamService() : nullptr;
    if (!exams)
        return false;
    const bool creating = IsCreateMode();
    try {
        if (creating) {
            ACE_CString key;
            if (exams->CreateExam(m_pExam.get(), key) != 0)
                return false;
            m_strExamKey = Text(key);
            m_pExam->SetKey(key);
            return true;
        }
        return exams->UpdateExam(m_pExam.get()) == 0;
    } catch (const std::exception& e) {
        Framework::ErrorManager::Instance().CommunicationSuccess();
        CString message;
        message.Format(LoadString(creating ? IDS_ERR_CREATE_EXAM : IDS_ERR_UPDATE_EXAM),
                       m_pExam->GetAccessionNumber().c_str(), e.what());
        AfxMessageBox(message);
        return false;
    }
}

void ExamDlg::OnOK()
{
    BRAVIK_MANAGE_STATE();
    if (!ValidatePages() || !CheckAccessionLength())
        return;
    // A non-zero answer without an exception leaves the dialog open, silently.
    if (Save())
        EndDialog(IDOK);
}

void ExamDlg::OnSize(UINT, int cx, int cy)
{
    if (m_pFrame && m_pFrame->IsCreated())
        HFDlg::PlaceWindow(m_pFrame, QRect(0, 0, cx, cy));
}

#include "exam/createpatientandexamdlg.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"
#include "exam/examdetailspage.h"
#include "exam/examframe.h"
#include "exam/examheadertext.h"
#include "patient/patientdemographicsimpl.h"
#include "patient/patientdemographicspage.h"
#include "patient/patientservices.h"

#include "errormanager.h"
#include "examdataset.h"
#include "examservice.h"
#include "patientdetailrecord.h"

#include "drawmaster.h"
#include "drawtext.h"
#include "hftabbeddlg.h"
#include "messagebox.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <QPainter>

#include <exception>

using PatientServices::Organizations;
using PatientServices::Patients;

namespace {

constexpr int kTextGap = 12;
constexpr int kLineGap = 2;

ExamService* Exams()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetExamService() : nullptr;
}

void LogFailure(const char* function, int line, const char* what)
{
    ACE_LOG_MSG->file(__FILE__);
    ACE_LOG_MSG->linenum(line);
    ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, %s\n"), function, line, what));
}

} // namespace

// ---- Header and Footer

CreatePatientAndExamDlg::Header::Header() { setObjectName(QStringLiteral("CreatePatientAndExamDlgHeader")); }

void CreatePatientAndExamDlg::Header::SetLines(const CString& mrn, const CString& patient, const CString& exam)
{
    m_lines[0] = mrn;
    m_lines[1] = patient;
    m_lines[2] = exam;
    update();
}

void CreatePatientAndExamDlg::Header::OnPaint(QPainter& dc)
{
    const int left = std::max(0, GetIconPos().x) + ICON_SIZE + kTextGap;
    const int right = width() - kTextGap;
    if (right <= left)
        return;
    const QFont* fonts[3] = {&DrawMaster::GetBoldFont(), &DrawMaster::GetNormalFont(), &DrawMaster::GetNormalFont()};
    int total = 0;
    for (const QFont* font : fonts)
        total += QFontMetrics(*font).height() + kLineGap;
    int y = std::max(2, (height() - total + kLineGap) / 2);
    dc.setBackgroundMode(Qt::TransparentMode);
    dc.setPen(toQColor(m_clrText));
    for (int i = 0; i < 3; ++i) {
        dc.setFont(*fonts[i]);
        const int h = QFontMetrics(*fonts[i]).height();
        CRect line(left, y, right, y + h);
        DrawText(dc, m_lines[i], line, DT_LEFT | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        y += h + kLineGap;
    }
}

CreatePatientAndExamDlg::Footer::Footer(CreatePatientAndExamDlg* owner) : DialogFooter(owner), m_pDlg(owner)
{
    setObjectName(QStringLiteral("CreatePatientAndExamDlgFooter"));
}

void CreatePatientAndExamDlg::Footer::OnCancel()
{
    // Unlike the other dialogs' footers: Cancel may have a patient to take back.
    if (m_pDlg)
        m_pDlg->OnCancel();
}

// ---- the dialog

CreatePatientAndExamDlg::CreatePatientAndExamDlg(const PatientDetailRecord& patient, const ExamDataSet& exam,
                                                 CWnd* parent)
    : ControlParentModalDlg(IDD_PATIENT_DLG, parent),
      m_pFrame(new HFTabbedDlg),
      m_pHeader(new Header),
      m_pFooter(new Footer(this)),
      m_pPatient(std::make_unique<PatientDetailRecord>(patient)),
      m_pExam(std::make_unique<ExamDataSet>(exam))
{
    setObjectName(QStringLiteral("CreatePatientAndExamDlg"));
    m_pExam->SetOrganizationKey(m_pPatient->GetOrganizationKey());
}

CreatePatientAndExamDlg::~CreatePatientAndExamDlg()
{
    if (m_pExamPage && m_pExamPage->GetPublisher())
        m_pExamPage->GetPublisher()->Unsubscribe(this);
    if (m_pPatientPage)
        m_pPatientPage->GetPublisher().Unsubscribe(this);
    // Pages and bands are children of the frame; the dialog made them, so it
    // takes each out and deletes it once, pages first.
    for (QWidget* w : std::initializer_list<QWidget*>{m_pExamPage, m_pPatientPage, m_pFooter, m_pHeader})
        if (w)
            w->setParent(nullptr);
    delete m_pExamPage;
    delete m_pPatientPage;
    delete m_pFooter;
    delete m_pHeader;
    delete m_pFrame;
}

BOOL CreatePatientAndExamDlg::OnInitDialog()
{
    BRAVIK_MANAGE_STATE();
    ControlParentModalDlg::OnInitDialog();
    CreateFrame();
    ApplyBands();
    AddPages();
    UpdateHeader();
    m_pFrame->ActivatePage(LoadString(IDS_TAB_PATIENT));
    SetWindowText(LoadString(IDS_CREATE_PATIENT_EXAM_CAPTION));
    return TRUE;
}

void CreatePatientAndExamDlg::CreateFrame() { ExamFrame::Create(*this, *m_pFrame, kWidth, kHeight); }

void CreatePatientAndExamDlg::ApplyBands() { ExamFrame::ApplyBands(*this, *m_pFrame, *m_pHeader, *m_pFooter); }

void CreatePatientAndExamDlg::AddPages()
{
    m_pPatientPage = new PatientDemographicsPage(m_pPatient.get(), false);
    m_pFrame->AddPage(m_pPatientPage, LoadString(IDS_TAB_PATIENT));
    m_pPatientPage->GetPublisher().Subscribe(this);
    // The form chose the patient's organization as it started: the exam
    // starts in the same one.
    m_pExam->SetOrganizationKey(m_pPatient->GetOrganizationKey());
    m_pExamPage = new ExamDetailsPage(m_pExam.get());
    m_pFrame->AddPage(m_pExamPage, LoadString(IDS_TAB_EXAM));
    m_pExamPage->GetPublisher()->Subscribe(this);
    m_pFrame->RecalcLayout();
}

void CreatePatientAndExamDlg::UpdateHeader()
{
    const ACE_CString& mrn = m_pPatient->GetPatientID();
    m_pHeader->SetLines(LoadString(IDS_MRN_PREFIX) + (mrn.length() ? CString(mrn.c_str()) : LoadString(IDS_NOT_AVAILABLE)),
                        ExamHeaderText::PatientLine(*m_pPatient, false), ExamHeaderText::ExamLine(*m_pExam));
}

void CreatePatientAndExamDlg::FollowPatientOrganization()
{
    // An exam belongs to its patient's organization: it moves along while the
    // patient is being registered.
    m_pExam->SetOrganizationKey(m_pPatient->GetOrganizationKey());
    ExamDetailsImplDlg* details = m_pExamPage ? m_pExamPage->GetDetails() : nullptr;
    if (details)
        details->SetDlgItemText(IDC_EXAM_ORGANIZATION, CString(m_pPatient->GetOrganizationID().c_str()));
}

void CreatePatientAndExamDlg::OnPublish(Publisher<long, long>* source, long kind, long, const char*)
{
    BRAVIK_MANAGE_STATE();
    const bool fromPatient = m_pPatientPage && source == &m_pPatientPage->GetPublisher();
    if (fromPatient && kind == 2)
        FollowPatientOrganization();
    if ((fromPatient && (kind == 1 || kind == 2)) || (!fromPatient && kind == EXAM_DETAILS_CHANGED))
        UpdateHeader();
}

// ---- OK and Cancel

void CreatePatientAndExamDlg::OnOK()
{
    BRAVIK_MANAGE_STATE();
    if (!m_pPatientPage->ValidateData()) {
        m_pFrame->ActivatePage(LoadString(IDS_TAB_PATIENT));
        return;
    }
    if (!m_pExamPage->ValidateAndSave()) {
        m_pFrame->ActivatePage(LoadString(IDS_TAB_EXAM));
        return;
    }
    // A refused exam leaves the dialog open with the patient already created.
    if (SavePatient() && CreateExam())
        EndDialog(IDOK);
}

void CreatePatientAndExamDlg::ShowServiceError(UINT messageId, const char* identifier, const char* reason)
{
    Framework::ErrorManager::Instance().CommunicationSuccess();
    CString text;
    text.Format(LoadString(messageId).GetString(), identifier, reason);
    AfxMessageBox(text.GetString(), MB_OK);
}

bool CreatePatientAndExamDlg::SavePatient()
{
    PatientManagementService* patients = Patients();
    if (!patients)
        return false;
    const bool creating = m_pPatient->GetPatientKey().length() == 0;
    try {
        if (!creating)
            return patients->ModifyPatient(m_pPatient.get()) == 0;
        ACE_CString key;
        if (patients->CreatePatient(m_pPatient.get(), key) != 0)
            return false;
        m_strCreatedPatientKey = key.c_str();
        m_pPatient->SetPatientKey(key);
        // As when editing: an existing patient's organization stays.
        if (CWnd* organizations = m_pPatientPage->GetImpl()->GetDlgItem(IDC_PAT_ORGANIZATION))
            organizations->setEnabled(false);
        return true;
    } catch (const std::exception& e) {
        ShowServiceError(creating ? IDS_PATIENT_ERR_CREATE : IDS_PATIENT_ERR_UPDATE, m_pPatient->GetPatientID().c_str(),
                         e.what());
        return false;
    }
}

bool CreatePatientAndExamDlg::CreateExam()
{
    ExamService* exams = Exams();
    if (!exams)
        return false;
    m_pExam->SetPatientKey(m_pPatient->GetPatientKey());
    ACE_CString key = m_pExam->GetKey();
    int result = -1;
    try {
        result = exams->CreateExam(m_pExam.get(), key);
    } catch (const std::exception& e) {
        ShowServiceError(IDS_ERR_CREATE_EXAM, m_pExam->GetAccessionNumber().c_str(), e.what());
    }
    m_pExam->SetKey(key);
    return result == 0;
}

void CreatePatientAndExamDlg::OnCancel()
{
    BRAVIK_MANAGE_STATE();
    // Only a patient this dialog created is taken back; what the delete
    // answers changes nothing for the user.
    PatientManagementService* patients = Patients();
    if (patients && !m_strCreatedPatientKey.IsEmpty()) {
        try {
            patients->DeletePatient(m_pPatient->GetPatientKey(), m_pPatient->GetOrganizationKey(),
                                    LoadString(IDS_REASON_CANCELLED_AFTER_CREATE).GetString());
        } catch (const std::exception& e) {
            LogFailure("CreatePatientAndExamDlg::OnCancel", __LINE__, e.what());
        }
    }
    EndDialog(IDCANCEL);
}

void CreatePatientAndExamDlg::OnSize(UINT, int cx, int cy)
{
    if (m_pFrame && m_pFrame->IsCreated())
        HFDlg::PlaceWindow(m_pFrame, QRect(0, 0, cx, cy));
}

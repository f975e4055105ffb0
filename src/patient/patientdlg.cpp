#include "patient/patientdlg.h"

#include "patient/clinkpatientimpl.h"
#include "patient/contactinfopage.h"
#include "patient/createlinkedpatientsimpl.h"
#include "patient/createlinkedpatientspage.h"
#include "patient/createlinkedpatientsrowdlg.h"
#include "patient/linkedrecordspage.h"
#include "patient/patientdemographicsimpl.h"
#include "patient/patientdemographicspage.h"
#include "patient/patientdlgheader.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"
#include "patient/patientservices.h"

#include "errormanager.h"
#include "patientmanagementservice.h"
#include "serviceregistry.h"
#include "session.h"
#include "userrights.h"

#include "hftabbeddlg.h"
#include "messagebox.h"
#include "stringtable.h"

#include <exception>
#include <memory>

using PatientServices::Patients;

namespace {

// Frees what GetLinkedPatients handed over.
struct OwnedRecords
{
    std::vector<PatientDetailRecord*> records;
    ~OwnedRecords()
    {
        for (PatientDetailRecord* r : records)
            delete r;
    }
};

} // namespace

PatientDlg::PatientDlg(UINT templateId, const char* patientKey, CWnd* parent)
    : ControlParentModalDlg(IDD_PATIENT_DLG, parent),
      m_nTemplateId(templateId),
      m_strPatientKey(patientKey ? patientKey : ""),
      m_pFrame(new HFTabbedDlg),
      m_pHeader(new Header),
      m_pFooter(new Footer(this))
{
    setObjectName(QStringLiteral("PatientDlg"));
    resize(DIALOG_WIDTH, DIALOG_HEIGHT);
}

PatientDlg::~PatientDlg()
{
    // The pages, header and footer are children of the frame; the dialog made
    // them, so it takes them out and deletes them, pages first.
    for (QWidget* w : std::initializer_list<QWidget*>{m_pCreateLinkedPage, m_pLinksPage, m_pContactPage,
                                                      m_pDemographicsPage, m_pFooter, m_pHeader})
        if (w)
            w->setParent(nullptr);
    delete m_pCreateLinkedPage;
    delete m_pLinksPage;
    delete m_pContactPage;
    delete m_pDemographicsPage;
    delete m_pFooter;
    delete m_pHeader;
    delete m_pFrame;
}

bool PatientDlg::Load()
{
    PatientManagementService* patients = Patients();
    if (!patients || patients->GetPatient(m_strPatientKey.GetString(), &m_record, ACE_CString()) != 0)
        return false;
    m_bLoaded = true;
    return true;
}

BOOL PatientDlg::OnInitDialog()
{
    BRAVIK_MANAGE_STATE();
    ControlParentModalDlg::OnInitDialog();
    SetWindowText(LoadString(IsCreateMode() ? IDS_PATIENT_CAPTION_CREATE : IDS_PATIENT_CAPTION_EDIT));
    resize(DIALOG_WIDTH, DIALOG_HEIGHT);
    CreateFrame();
    if (!IsCreateMode() && !m_bLoaded)
        Load();
    ApplyHeader();
    ApplyFooter();
    AddPages();
    UpdateHeader();
    m_pFrame->ActivatePage(LoadString(IDS_PATIENT_TAB_DEMOGRAPHICS));
    UpdateOKButton();
    LayOutFrame();
    return TRUE;
}

void PatientDlg::CreateFrame()
{
    m_pFrame->Create(this, CRect(0, 0, DIALOG_WIDTH, DIALOG_HEIGHT));
    m_pFrame->setEnabled(true);
    m_pFrame->ShowWindow(SW_SHOW);
}

void PatientDlg::ApplyHeader()
{
    m_pHeader->SetIcon(LoadHeaderIcon());
    m_pHeader->SetSummary(m_record);
    m_pHeader->SetHeight(HEADER_HEIGHT);
    m_pFrame->SetHeader(m_pHeader);
}

void PatientDlg::ApplyFooter()
{
    m_pFooter->SetHeight(FOOTER_HEIGHT);
    m_pFrame->SetFooter(m_pFooter);
}

void PatientDlg::AddPages()
{
    const bool edit = !IsCreateMode();
    m_pDemographicsPage = new PatientDemographicsPage(&m_record, edit);
    m_pFrame->AddPage(m_pDemographicsPage, LoadString(IDS_PATIENT_TAB_DEMOGRAPHICS));
    m_pContactPage = new ContactInfoPage(&m_record, edit);
    m_pFrame->AddPage(m_pContactPage, LoadString(IDS_PATIENT_TAB_CONTACT));
    if (edit) {
        m_pLinksPage = new LinkedRecordsPage(&m_record);
        m_pFrame->AddPage(m_pLinksPage, LoadString(IDS_PATIENT_TAB_LINKS));
        m_pLinksPage->GetImpl()->GetPublisher().Subscribe(this);
    } else {
        m_pCreateLinkedPage = new CreateLinkedPatientsPage;
        m_pFrame->AddPage(m_pCreateLinkedPage, LoadString(IDS_PATIENT_TAB_CREATE_LINKED));
        m_pContactPage->ApplyOrganizationDefaults(m_record.GetOrganizationKey());
        m_pCreateLinkedPage->GetImpl()->FollowPatient(m_record.GetOrganizationID().c_str(),
                                                      m_record.GetPatientID().c_str());
    }
    m_pDemographicsPage->GetPublisher().Subscribe(this);
}

void PatientDlg::LayOutFrame()
{
    HFDlg::PlaceWindow(m_pFrame, QRect(0, 0, width(), height()));
    m_pFrame->RecalcLayout();
}

void PatientDlg::OnSize(UINT, int cx, int cy)
{
    if (m_pFrame->IsCreated())
        HFDlg::PlaceWindow(m_pFrame, QRect(0, 0, cx, cy));
}

void PatientDlg::OnPublish(Publisher<long, long>*, long kind, long id, const char* text)
{
    BRAVIK_MANAGE_STATE();
    if (kind == PatientDemographicsImpl::PUBLISH_LINKED_MRN && m_pDemographicsPage) {
        // The patient's own MRN corrected in the Links list: the form follows.
        m_pDemographicsPage->GetImpl()->SetDlgItemText(IDC_PAT_MRN, CString(text));
    }
    if (m_pCreateLinkedPage && (kind == PatientDemographicsImpl::PUBLISH_ORGANIZATION || id == IDC_PAT_MRN))
        m_pCreateLinkedPage->GetImpl()->FollowPatient(m_record.GetOrganizationID().c_str(),
                                                      m_record.GetPatientID().c_str());
    UpdateHeader();
    UpdateOKButton();
}

void PatientDlg::UpdateHeader() { m_pHeader->SetSummary(m_record); }

bool PatientDlg::IsOKEnabled() const
{
    return m_record.GetPatientID().length() > 0 && m_record.GetLastName().length() > 0
           && PatientManagementService::IsPatientFirstNameValid(&m_record);
}

void PatientDlg::UpdateOKButton()
{
    if (m_pFooter->GetOKButton().IsCreated())
        m_pFooter->GetOKButton().EnableWindow(IsOKEnabled() ? TRUE : FALSE);
}

bool PatientDlg::HasRemovedLink() const { return m_pLinksPage && m_pLinksPage->GetImpl()->HasRemovedLink(); }

void PatientDlg::GetLinkedPatientKeys(std::set<ACE_CString>& keys) const
{
    if (!m_pLinksPage)
        return;
    for (const PatientDetailRecord* r : m_pLinksPage->GetImpl()->GetLinkedRecords())
        keys.insert(r->GetPatientKey());
}

void PatientDlg::ShowServiceError(UINT messageId, const char* reason)
{
    CString text;
    text.Format(LoadString(messageId).GetString(), m_record.GetPatientID().c_str(), reason);
    AfxMessageBox(text.GetString(), MB_OK);
}

void PatientDlg::OnOK()
{
    BRAVIK_MANAGE_STATE();
    if (!IsOKEnabled())
        return;
    if (HasRemovedLink())
        UnlinkRemovedRecord();
    if (ValidatePages() && Save())
        EndDialog(IDOK);
}

void PatientDlg::UnlinkRemovedRecord()
{
    PatientManagementService* patients = Patients();
    if (!patients)
        return;
    const ACE_CString key = m_strPatientKey.GetString();
    const ACE_CString org = m_record.GetOrganizationKey();
    try {
        OwnedRecords linked;
        patients->GetLinkedPatients(key, org, linked.records);
        if (linked.records.size() > 2) {
            const PatientDetailRecord* removed = m_pLinksPage->GetImpl()->GetRemovedRecord();
            if (removed) {
                patients->UnLinkPatient(removed->GetPatientKey(), removed->GetOrganizationKey());
                if (removed->GetPatientKey() == key)
                    patients->GetPatient(key, &m_record, ACE_CString());
            }
        } else {
            // Two records: the link group dissolves by taking the patient out.
            patients->UnLinkPatient(key, org);
            patients->GetPatient(key, &m_record, ACE_CString());
        }
    } catch (const std::exception& e) {
        ShowServiceError(IDS_PATIENT_ERR_UPDATE, e.what());
    }
}

bool PatientDlg::ValidatePages()
{
    if (!m_pDemographicsPage->ValidateData()) {
        m_pFrame->ActivatePage(LoadString(IDS_PATIENT_TAB_DEMOGRAPHICS));
        return false;
    }
    if (!m_pContactPage->ValidateData()) {
        m_pFrame->ActivatePage(LoadString(IDS_PATIENT_TAB_CONTACT));
        return false;
    }
    if (m_pCreateLinkedPage && !m_pCreateLinkedPage->ValidateData()) {
        m_pFrame->ActivatePage(LoadString(IDS_PATIENT_TAB_CREATE_LINKED));
        return false;
    }
    if (m_pLinksPage && !HasRemovedLink() && !m_pLinksPage->ValidateData()) {
        m_pFrame->ActivatePage(LoadString(IDS_PATIENT_TAB_LINKS));
        return false;
    }
    return true;
}

bool PatientDlg::Save() { return IsCreateMode() ? CreatePatient() : ModifyPatient(); }

bool PatientDlg::CreatePatient()
{
    PatientManagementService* patients = Patients();
    if (!patients)
        return false;
    try {
        ACE_CString newKey;
        const bool created = patients->CreatePatient(&m_record, newKey) == 0;
        if (created) {
            m_strPatientKey = newKey.c_str();
            m_record.SetPatientKey(newKey);
        }
        if (m_pCreateLinkedPage && created)
            CreateLinkedPatients();
        return created;
    } catch (const std::exception& e) {
        Framework::ErrorManager::Instance().CommunicationSuccess();
        ShowServiceError(IDS_PATIENT_ERR_CREATE, e.what());
        return false;
    }
}

void PatientDlg::ShowLinkRightMissing(const ACE_CString& organizationID)
{
    CString text = LoadString(IDS_PATIENT_ERR_NO_LINK_RIGHT);
    text += " ";
    text += organizationID.c_str();
    AfxMessageBox(text.GetString(), MB_OK);
}

void PatientDlg::CreateLinkedPatients()
{
    const std::vector<CreateLinkedPatientsRowDlg*>& rows = CreateLinkedPatientsImpl::GetRows();
    m_linkedRecords.clear();
    for (size_t i = 1; i < rows.size(); ++i) {
        PatientDetailRecord copy = m_record;
        copy.SetOrganizationID(rows[i]->GetOrganizationID().GetString());
        copy.SetOrganizationKey(rows[i]->GetOrganizationKey().GetString());
        copy.SetPatientID(rows[i]->GetMRN().GetString());
        m_linkedRecords.push_back(copy);
    }
    if (m_linkedRecords.empty())
        return;
    const UserRights& rights = Session::Instance().GetUserRights();
    if (!rights.HasLinkPatientRight(m_record.GetOrganizationID()))
        ShowLinkRightMissing(m_record.GetOrganizationID());
    PatientManagementService* patients = Patients();
    for (PatientDetailRecord& linked : m_linkedRecords) {
        ACE_CString key;
        if (patients->CreatePatient(&linked, key) != 0)
            continue;
        linked.SetPatientKey(key);
        if (!rights.HasLinkPatientRight(linked.GetOrganizationID())) {
            ShowLinkRightMissing(linked.GetOrganizationID());
            continue;
        }
        ACE_CString linkId;
        if (patients->LinkPatients(m_record.GetPatientKey(), m_record.GetOrganizationKey(), key,
                                   linked.GetOrganizationKey(), &linkId) == 0) {
            linked.SetLinkID(linkId);
            m_record.SetLinkID(linkId);
        }
    }
}

bool PatientDlg::ModifyPatient()
{
    PatientManagementService* patients = Patients();
    if (!patients)
        return false;
    try {
        if (patients->ModifyPatient(&m_record) != 0)
            return false;
        if (!m_pLinksPage || HasRemovedLink())
            return true;
        bool all = true;
        for (const PatientDetailRecord* shown : m_pLinksPage->GetImpl()->GetLinkedRecords()) {
            if (shown->GetPatientKey() == m_record.GetPatientKey())
                continue;
            PatientDetailRecord linked;
            if (patients->GetPatient(shown->GetPatientKey(), &linked, ACE_CString()) != 0) {
                all = false;
                continue;
            }
            linked.SetPatientID(shown->GetPatientID());
            if (patients->ModifyPatient(&linked) != 0)
                all = false;
        }
        return all;
    } catch (const std::exception& e) {
        ShowServiceError(IDS_PATIENT_ERR_UPDATE, e.what());
        return false;
    }
}

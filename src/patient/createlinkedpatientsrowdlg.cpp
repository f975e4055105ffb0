#include "patient/createlinkedpatientsrowdlg.h"

#include "boundary/resource.h"
#include "boundary/tavhelper.h"

#include "session.h"
#include "userrights.h"

#include "edit.h"
#include "normaleditvalidator.h"

CreateLinkedPatientsRowDlg::CreateLinkedPatientsRowDlg(CWnd* parent)
    : CDialog(IDD_PATIENT_CREATE_LINKED_ROW, parent), m_validator(std::make_unique<NormalEditValidator>(nullptr, false, true))
{
    setObjectName(QStringLiteral("CreateLinkedPatientsRowDlg"));
    if (auto* edit = GetDlgItemAs<Edit>(IDC_CL_ROW_MRN))
        edit->SetValidator(m_validator.get());
    if (CComboBox* box = GetOrganizationBox())
        connect(box, &CComboBox::selectionChanged, this, &CreateLinkedPatientsRowDlg::OnSelchangeOrganization);
}

CreateLinkedPatientsRowDlg::~CreateLinkedPatientsRowDlg() = default;

CComboBox* CreateLinkedPatientsRowDlg::GetOrganizationBox() const
{
    return GetDlgItemAs<CComboBox>(IDC_CL_ROW_ORGANIZATION);
}

CEdit* CreateLinkedPatientsRowDlg::GetMRNEdit() const { return GetDlgItemAs<CEdit>(IDC_CL_ROW_MRN); }

bool CreateLinkedPatientsRowDlg::IsMarked() const { return IsDlgButtonChecked(IDC_CL_ROW_CHECK) == BST_CHECKED; }

void CreateLinkedPatientsRowDlg::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_CL_ROW_MRN, m_strMRN);
    DDV_MaxChars(pDX, m_strMRN, 45);
}

BOOL CreateLinkedPatientsRowDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    CComboBox* box = GetOrganizationBox();
    if (!box)
        return TRUE;
    TavHelper helper;
    helper.InitOrganizationCombo(*box, true);
    const UserRights& rights = Session::Instance().GetUserRights();
    for (int i = box->GetCount() - 1; i >= 0; --i)
        if (!rights.HasCreatePatientRight(box->GetLBText(i).GetString()))
            box->DeleteString(static_cast<UINT>(i));
    if (box->GetCount() > 0) {
        box->SetCurSel(0);
        TakeSelection();
    }
    return TRUE;
}

void CreateLinkedPatientsRowDlg::TakeSelection()
{
    CComboBox* box = GetOrganizationBox();
    const int sel = box ? box->GetCurSel() : CB_ERR;
    const auto* key = sel == CB_ERR ? nullptr : static_cast<const char*>(box->GetItemDataPtr(sel));
    m_strOrganizationID = sel == CB_ERR ? CString() : box->GetLBText(sel);
    m_strOrganizationKey = key ? CString(key) : CString();
    m_pKeyData = key;
}

void CreateLinkedPatientsRowDlg::OnSelchangeOrganization()
{
    const CString previous = m_strOrganizationID;
    TakeSelection();
    emit organizationChosen(this, previous);
}

void CreateLinkedPatientsRowDlg::SetMRN(const CString& mrn)
{
    m_strMRN = mrn;
    SetDlgItemText(IDC_CL_ROW_MRN, mrn);
}

BOOL CreateLinkedPatientsRowDlg::SaveMRN()
{
    if (!UpdateData(TRUE))
        return FALSE;
    m_strMRN.Trim();
    return m_strMRN.IsEmpty() ? FALSE : TRUE;
}

void CreateLinkedPatientsRowDlg::RemoveOrganization(const CString& id)
{
    CComboBox* box = GetOrganizationBox();
    if (!box || id.IsEmpty())
        return;
    for (int i = box->GetCount() - 1; i >= 0; --i)
        if (box->GetLBText(i) == id)
            box->DeleteString(static_cast<UINT>(i));
}

void CreateLinkedPatientsRowDlg::AddOrganization(const CString& id, const char* key)
{
    CComboBox* box = GetOrganizationBox();
    if (!box || id.IsEmpty() || box->FindStringExact(-1, id) != CB_ERR)
        return;
    const int at = box->AddString(id);
    if (at >= 0)
        box->SetItemDataPtr(at, const_cast<char*>(key));
}

#include "patient/contactpageimpl.h"

#include "boundary/resource.h"
#include "patient/patientservices.h"
#include "boundary/tavhelper.h"

#include "dictionaryrecord.h"
#include "orgoperations.h"
#include "orgoperationscollection.h"
#include "patientdetailrecord.h"
#include "serviceregistry.h"
#include "session.h"

#include "combobox.h"
#include "edit.h"
#include "normaleditvalidator.h"

#include <exception>

using PatientServices::Organizations;
using PatientServices::Patients;

namespace {

constexpr int kEdits[] = {IDC_CON_ADDRESS1,   IDC_CON_ADDRESS2,   IDC_CON_CITY, IDC_CON_POSTAL_CODE,
                          IDC_CON_HOME_PHONE, IDC_CON_WORK_PHONE, IDC_CON_EMAIL};

ACE_CString A(const CString& s) { return ACE_CString(s.GetString()); }

} // namespace

ContactPageImpl::ContactPageImpl(PatientDetailRecord* record, bool editMode, CWnd* parent)
    : CDialog(IDD_PATIENT_CONTACT, parent),
      m_bEditMode(editMode),
      m_pRecord(record),
      m_strAddress1(record->GetAddressLine1().c_str()),
      m_strAddress2(record->GetAddressLine2().c_str()),
      m_strCity(record->GetCity().c_str()),
      m_strPostalCode(record->GetPostalCode().c_str()),
      m_strHomeNumber(record->GetHomeNumber().c_str()),
      m_strWorkNumber(record->GetWorkNumber().c_str()),
      m_strEmail(record->GetEmailAddress().c_str())
{
    setObjectName(QStringLiteral("ContactPageImpl"));
    m_validators = PlainValidators(*this, kEdits);
    if (ComboBox* box = Countries())
        connect(box, &CComboBox::selectionChanged, this, &ContactPageImpl::OnSelchangeCountry);
}

ContactPageImpl::~ContactPageImpl() = default;

ComboBox* ContactPageImpl::Countries() const { return GetDlgItemAs<ComboBox>(IDC_CON_COUNTRY); }
ComboBox* ContactPageImpl::States() const { return GetDlgItemAs<ComboBox>(IDC_CON_STATE); }

void ContactPageImpl::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_CON_ADDRESS1, m_strAddress1);
    DDV_MaxChars(pDX, m_strAddress1, 199);
    DDX_Text(pDX, IDC_CON_ADDRESS2, m_strAddress2);
    DDV_MaxChars(pDX, m_strAddress2, 199);
    DDX_Text(pDX, IDC_CON_CITY, m_strCity);
    DDV_MaxChars(pDX, m_strCity, 199);
    DDX_Text(pDX, IDC_CON_POSTAL_CODE, m_strPostalCode);
    DDV_MaxChars(pDX, m_strPostalCode, 199);
    DDX_Text(pDX, IDC_CON_HOME_PHONE, m_strHomeNumber);
    DDV_MaxChars(pDX, m_strHomeNumber, 30);
    DDX_Text(pDX, IDC_CON_WORK_PHONE, m_strWorkNumber);
    DDV_MaxChars(pDX, m_strWorkNumber, 30);
    DDX_Text(pDX, IDC_CON_EMAIL, m_strEmail);
    DDV_MaxChars(pDX, m_strEmail, 199);
}

BOOL ContactPageImpl::OnInitDialog()
{
    CDialog::OnInitDialog();
    ComboBox* country = Countries();
    ComboBox* state = States();
    if (!country || !state)
        return TRUE;
    TavHelper helper;
    helper.InitCombo(*country, DictionaryService::eTOPICCODE(2), DictionaryService::eFORMAT(1));
    const int us = country->FindStringExact(0, "UNITED STATES");
    if (us != CB_ERR)
        country->SetCurSel(us);
    if (m_bEditMode) {
        country->SetCurSel(-1);
        if (m_pRecord->GetCountryCode().length() > 0) {
            helper.SetCurSelDictionaryCombo(*country, m_pRecord->GetCountryCode());
            helper.UpdateProvinceCombo(*state, m_pRecord->GetCountryCode());
            state->SetCurSel(-1);
            if (m_pRecord->GetStateCode().length() > 0) {
                helper.SetCurSelDictionaryCombo(*state, m_pRecord->GetStateCode());
                return TRUE;
            }
        }
    }
    state->SetCurSel(0);
    return TRUE;
}

void ContactPageImpl::ApplyOrganizationDefaults(const ACE_CString& organizationKey)
{
    if (m_bEditMode)
        return;
    ComboBox* country = Countries();
    ComboBox* state = States();
    OrgOperationsCollection* orgs = Organizations();
    if (!country || !state || !orgs)
        return;
    try {
        const OrgOperations* org = orgs->GetOrgFromKey(organizationKey);
        if (!org)
            return;
        TavHelper helper;
        helper.SetCurSelDictionaryCombo(*country, org->GetDefaultCountryCode());
        state->ResetContent();
        helper.UpdateProvinceCombo(*state, SelectedCode(country));
        helper.SetCurSelDictionaryCombo(*state, org->GetDefaultStateCode());
        if (state->GetCount() > 0 && state->GetCurSel() == CB_ERR)
            state->SetCurSel(0);
    } catch (const std::exception&) {
        // The defaults are a convenience; the user picks by hand.
    }
}

ACE_CString ContactPageImpl::SelectedCode(ComboBox* box) const
{
    const int sel = box ? box->GetCurSel() : CB_ERR;
    const auto* record = sel == CB_ERR ? nullptr : static_cast<const DictionaryRecord*>(box->GetItemDataPtr(sel));
    return record ? record->GetCode() : ACE_CString();
}

void ContactPageImpl::OnSelchangeCountry()
{
    if (ComboBox* state = States()) {
        TavHelper helper;
        helper.UpdateProvinceCombo(*state, SelectedCode(Countries()));
    }
}

BOOL ContactPageImpl::ValidateData()
{
    if (!UpdateData(TRUE))
        return FALSE;
    for (CString* s : {&m_strAddress1, &m_strAddress2, &m_strCity, &m_strPostalCode, &m_strHomeNumber, &m_strWorkNumber})
        s->Trim();
    // Leading blanks of an e-mail address are kept.
    m_strEmail.TrimRight();
    m_pRecord->SetAddressLine1(A(m_strAddress1));
    m_pRecord->SetAddressLine2(A(m_strAddress2));
    m_pRecord->SetCity(A(m_strCity));
    m_pRecord->SetPostalCode(A(m_strPostalCode));
    m_pRecord->SetHomeNumber(A(m_strHomeNumber));
    m_pRecord->SetWorkNumber(A(m_strWorkNumber));
    m_pRecord->SetEmailAddress(A(m_strEmail));
    m_pRecord->SetCountryCode(SelectedCode(Countries()));
    m_pRecord->SetStateCode(SelectedCode(States()));
    return TRUE;
}

#include "patient/patientdemographicsimpl.h"

#include "boundary/resource.h"
#include "patient/patientservices.h"
#include "boundary/tavhelper.h"

#include "bdate.h"
#include "bpersonname.h"
#include "bsnmodifier.h"
#include "dictionaryrecord.h"
#include "localefunctions.h"
#include "orgoperations.h"
#include "orgoperationscollection.h"
#include "paramutils.h"
#include "patientdetailrecord.h"
#include "patientgidformatter.h"
#include "patientmanagementservice.h"
#include "serviceregistry.h"
#include "session.h"
#include "userrights.h"

#include "combobox.h"
#include "datepickerctrl.h"
#include "datetimeeditctrl.h"
#include "edit.h"
#include "messagebox.h"
#include "normaleditvalidator.h"
#include "qtconvert.h"
#include "stringtable.h"

#include <QCalendarWidget>

#include <exception>

using PatientServices::Patients;

namespace {

constexpr int kTextEdits[] = {IDC_PAT_MRN,         IDC_PAT_TITLE,       IDC_PAT_FIRST,      IDC_PAT_MIDDLE,
                              IDC_PAT_LAST,        IDC_PAT_SUFFIX,      IDC_PAT_GID,        IDC_PAT_ALIAS_FIRST,
                              IDC_PAT_ALIAS_MIDDLE, IDC_PAT_ALIAS_LAST, IDC_PAT_MAIDEN_NAME};

ACE_CString A(const CString& s) { return ACE_CString(s.GetString()); }

QDate ToQDate(const BDate& d) { return d.IsValid() ? QDate(int(d.GetYear()), int(d.GetMonth()), int(d.GetDay())) : QDate(); }

BDate ToBDate(const QDate& d)
{
    return d.isValid() ? BDate(unsigned(d.year()), unsigned(d.month()), unsigned(d.day())) : BDate();
}

} // namespace

PatientDemographicsImpl::PatientDemographicsImpl(PatientDetailRecord* record, bool editMode, CWnd* parent)
    : CDialog(IDD_PATIENT_DEMOGRAPHICS, parent), m_pRecord(record), m_bEditMode(editMode)
{
    setObjectName(QStringLiteral("PatientDemographicsImpl"));
    m_validators = PlainValidators(*this, kTextEdits);
}

PatientDemographicsImpl::~PatientDemographicsImpl() = default;

ComboBox* PatientDemographicsImpl::Organizations() const { return GetDlgItemAs<ComboBox>(IDC_PAT_ORGANIZATION); }
ComboBox* PatientDemographicsImpl::Sexes() const { return GetDlgItemAs<ComboBox>(IDC_PAT_SEX); }
ComboBox* PatientDemographicsImpl::Genders() const { return GetDlgItemAs<ComboBox>(IDC_PAT_GENDER); }
DatePickerCtrl* PatientDemographicsImpl::BirthDate() const { return GetDlgItemAs<DatePickerCtrl>(IDC_PAT_DOB); }
DateTimeEditCtrl* PatientDemographicsImpl::DeathDate() const { return GetDlgItemAs<DateTimeEditCtrl>(IDC_PAT_DOD); }

void PatientDemographicsImpl::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_PAT_MRN, m_strMRN);
    DDV_MaxChars(pDX, m_strMRN, 64);
    DDX_Text(pDX, IDC_PAT_TITLE, m_strTitle);
    DDV_MaxChars(pDX, m_strTitle, 50);
    DDX_Text(pDX, IDC_PAT_FIRST, m_strFirst);
    DDV_MaxChars(pDX, m_strFirst, 50);
    DDX_Text(pDX, IDC_PAT_MIDDLE, m_strMiddle);
    DDV_MaxChars(pDX, m_strMiddle, 50);
    DDX_Text(pDX, IDC_PAT_LAST, m_strLast);
    DDV_MaxChars(pDX, m_strLast, 50);
    DDX_Text(pDX, IDC_PAT_SUFFIX, m_strSuffix);
    DDV_MaxChars(pDX, m_strSuffix, 50);
    DDX_Text(pDX, IDC_PAT_GID, m_strGID);
    // The identifier's limit has always been checked against the last name:
    // the identifier itself is never length-checked.
    DDV_MaxChars(pDX, m_strLast, 50);
    DDX_Text(pDX, IDC_PAT_ALIAS_FIRST, m_strAliasFirst);
    DDV_MaxChars(pDX, m_strAliasFirst, 50);
    DDX_Text(pDX, IDC_PAT_ALIAS_MIDDLE, m_strAliasMiddle);
    DDV_MaxChars(pDX, m_strAliasMiddle, 50);
    DDX_Text(pDX, IDC_PAT_ALIAS_LAST, m_strAliasLast);
    DDV_MaxChars(pDX, m_strAliasLast, 50);
    DDX_Text(pDX, IDC_PAT_MAIDEN_NAME, m_strMaidenName);
    DDV_MaxChars(pDX, m_strMaidenName, 50);
}

BOOL PatientDemographicsImpl::OnInitDialog()
{
    m_bInitialising = true;
    m_strMRN = m_pRecord->GetPatientID().c_str();
    m_strTitle = m_pRecord->GetTitle().c_str();
    m_strFirst = m_pRecord->GetFirstName().c_str();
    m_strMiddle = m_pRecord->GetMiddleName().c_str();
    m_strLast = m_pRecord->GetLastName().c_str();
    m_strSuffix = m_pRecord->GetSuffix().c_str();
    m_strGID = m_pRecord->GetPatientGID().c_str();
    m_strAliasFirst = m_pRecord->GetAliasFirstName().c_str();
    m_strAliasMiddle = m_pRecord->GetAliasMiddleName().c_str();
    m_strAliasLast = m_pRecord->GetAliasLastName().c_str();
    m_strMaidenName = m_pRecord->GetMothersMaidenName().c_str();
    CDialog::OnInitDialog();

    InitLabels();
    InitRequiredMarks();
    InitOrganizations();
    InitSexAndGender();
    InitDates();
    ConnectHandlers();
    m_bInitialising = false;

    // The record and the other pages start in step with the form.
    OnSelchangeSex();
    OnSelchangeOrganization();
    OnDateTimeChangeDOB();
    return TRUE;
}

void PatientDemographicsImpl::InitLabels()
{
    SetDlgItemText(IDC_PAT_GID_LABEL, PatientGIDFormatter::GetPatientIDColumnName() + ":");
    if (Framework::BSNModifier::isEnableBsn() && !Framework::BSNModifier::isEnableBsnCreateEdit())
        if (auto* gid = GetDlgItemAs<Edit>(IDC_PAT_GID))
            gid->SetReadOnly(TRUE);
}

void PatientDemographicsImpl::InitRequiredMarks()
{
    if (auto* e = GetDlgItemAs<Edit>(IDC_PAT_MRN))
        e->SetRequiredFlag(true);
    if (auto* e = GetDlgItemAs<Edit>(IDC_PAT_FIRST))
        e->SetRequiredFlag(!PatientManagementService::IsEmptyPatientFirstNameAllowed());
    if (auto* e = GetDlgItemAs<Edit>(IDC_PAT_LAST))
        e->SetRequiredFlag(true);
}

void PatientDemographicsImpl::InitOrganizations()
{
    ComboBox* box = Organizations();
    if (!box)
        return;
    TavHelper helper;
    helper.InitOrganizationCombo(*box, false);
    if (m_pRecord->GetPatientKey().length() == 0) {
        // Only organizations in which the user may create patients.
        const UserRights& rights = Session::Instance().GetUserRights();
        for (int i = box->GetCount() - 1; i >= 0; --i)
            if (!rights.HasCreatePatientRight(box->GetLBText(i).GetString()))
                box->DeleteString(static_cast<UINT>(i));
        if (box->GetCount() > 0) {
            const int match = m_pRecord->GetOrganizationID().length() == 0
                                  ? CB_ERR
                                  : box->FindStringExact(-1, m_pRecord->GetOrganizationID().c_str());
            const bool exact = match != CB_ERR && box->GetLBText(match) == m_pRecord->GetOrganizationID().c_str();
            box->SetCurSel(exact ? match : 0);
        }
    } else {
        const CString id = helper.OrganizationKeysToIDs(m_pRecord->GetOrganizationKey().c_str());
        box->SetCurSel(box->FindStringExact(-1, id));
        m_pRecord->SetOrganizationID(A(id));
    }
    if (m_bEditMode)
        box->EnableWindow(FALSE); // a patient's organization cannot be changed
}

void PatientDemographicsImpl::InitSexAndGender()
{
    ComboBox* sex = Sexes();
    ComboBox* gender = Genders();
    if (!sex || !gender)
        return;
    TavHelper helper;
    helper.InitCombo(*sex, DictionaryService::eTOPICCODE(4), DictionaryService::eFORMAT(2));
    int sexIndex = 0;
    if (m_pRecord->GetSexCode().length() == 0) {
        if (sex->GetCount() > 0)
            sex->SetCurSel(0);
    } else {
        sexIndex = helper.SetCurSelDictionaryCombo(*sex, m_pRecord->GetSexCode());
    }
    helper.InitCombo(*gender, DictionaryService::eTOPICCODE(4), DictionaryService::eFORMAT(2));
    if (m_pRecord->GetGenderCode().length() == 0)
        gender->SetCurSel(sexIndex);
    else
        helper.SetCurSelDictionaryCombo(*gender, m_pRecord->GetGenderCode());
}

void PatientDemographicsImpl::InitDates()
{
    const QString pattern = toQString(Locale::GetDatePattern());
    if (DatePickerCtrl* dob = BirthDate()) {
        dob->SetDatePattern(pattern);
        const BDate& d = m_pRecord->GetDOB();
        dob->SetDate(d.IsValid() ? ToQDate(d) : QDate(1800, 1, 1));
    }
    if (DateTimeEditCtrl* dod = DeathDate()) {
        dod->SetDatePattern(pattern);
        if (!m_pRecord->HasDateOfDeath()) {
            dod->SetEmpty();
            m_nDeathState = GDT_NONE;
        } else {
            dod->SetDate(ToQDate(m_pRecord->GetDateOfDeath()));
            m_nDeathState = dod->GetDate(m_dtDeath);
        }
    }
}

void PatientDemographicsImpl::ConnectHandlers()
{
    for (int id : kTextEdits)
        if (auto* e = GetDlgItemAs<Edit>(id))
            connect(e, &CEdit::changed, this, [this, id] { OnChangeText(id); });
    if (ComboBox* box = Sexes())
        connect(box, &CComboBox::selectionChanged, this, &PatientDemographicsImpl::OnSelchangeSex);
    if (ComboBox* box = Genders())
        connect(box, &CComboBox::selectionChanged, this, &PatientDemographicsImpl::OnSelchangeGender);
    if (ComboBox* box = Organizations())
        connect(box, &CComboBox::selectionChanged, this, &PatientDemographicsImpl::OnSelchangeOrganization);
    if (DatePickerCtrl* dob = BirthDate()) {
        connect(dob, &QDateEdit::dateChanged, this, &PatientDemographicsImpl::OnDateTimeChangeDOB);
        connect(dob, &DatePickerCtrl::droppedDown, this, &PatientDemographicsImpl::OnDropDownDOB);
    }
    if (DateTimeEditCtrl* dod = DeathDate())
        connect(dod, &DateTimeEditCtrl::changed, this, &PatientDemographicsImpl::OnChangeDOD);
    connect(this, &CDialog::command, this, [this](int id) {
        if (id == IDC_PAT_GENERATE)
            OnGenerate();
    });
}

void PatientDemographicsImpl::ReadFields()
{
    m_strMRN = GetDlgItemText(IDC_PAT_MRN);
    m_strTitle = GetDlgItemText(IDC_PAT_TITLE);
    m_strFirst = GetDlgItemText(IDC_PAT_FIRST);
    m_strMiddle = GetDlgItemText(IDC_PAT_MIDDLE);
    m_strLast = GetDlgItemText(IDC_PAT_LAST);
    m_strSuffix = GetDlgItemText(IDC_PAT_SUFFIX);
    m_strGID = GetDlgItemText(IDC_PAT_GID);
    m_strAliasFirst = GetDlgItemText(IDC_PAT_ALIAS_FIRST);
    m_strAliasMiddle = GetDlgItemText(IDC_PAT_ALIAS_MIDDLE);
    m_strAliasLast = GetDlgItemText(IDC_PAT_ALIAS_LAST);
    m_strMaidenName = GetDlgItemText(IDC_PAT_MAIDEN_NAME);
}

void PatientDemographicsImpl::StoreName()
{
    const BPersonName name(A(m_strLast), A(m_strFirst), A(m_strMiddle), A(m_strTitle), A(m_strSuffix));
    m_pRecord->SetName(name.ToDICOMName());
}

void PatientDemographicsImpl::Publish(long kind, int id, const CString& text)
{
    if (!m_bInitialising)
        m_publisher.Publish(kind, id, text.GetString());
}

CString PatientDemographicsImpl::SelectedCode(ComboBox* box) const
{
    const int sel = box ? box->GetCurSel() : CB_ERR;
    const auto* record = sel == CB_ERR ? nullptr : static_cast<const DictionaryRecord*>(box->GetItemDataPtr(sel));
    return record ? CString(record->GetCode().c_str()) : CString();
}

CString PatientDemographicsImpl::SelectedOrganizationKey() const
{
    ComboBox* box = Organizations();
    const int sel = box ? box->GetCurSel() : CB_ERR;
    const auto* key = sel == CB_ERR ? nullptr : static_cast<const char*>(box->GetItemDataPtr(sel));
    return key ? CString(key) : CString();
}

void PatientDemographicsImpl::OnChangeText(int id)
{
    if (m_bInitialising)
        return;
    ReadFields();
    CString text;
    switch (id) {
    case IDC_PAT_MRN:
        m_pRecord->SetPatientID(A(m_strMRN));
        text = m_strMRN;
        break;
    case IDC_PAT_ALIAS_FIRST:
        m_pRecord->SetAliasFirstName(A(m_strAliasFirst));
        text = m_strAliasFirst;
        break;
    case IDC_PAT_ALIAS_MIDDLE:
        m_pRecord->SetAliasMiddleName(A(m_strAliasMiddle));
        text = m_strAliasMiddle;
        break;
    case IDC_PAT_ALIAS_LAST:
        m_pRecord->SetAliasLastName(A(m_strAliasLast));
        text = m_strAliasLast;
        break;
    case IDC_PAT_MAIDEN_NAME:
        m_pRecord->SetMothersMaidenName(A(m_strMaidenName));
        text = m_strMaidenName;
        break;
    case IDC_PAT_GID:
        m_pRecord->SetPatientGID(A(m_strGID));
        text = m_strGID;
        break;
    default:
        StoreName();
        text = GetDlgItemText(id);
        break;
    }
    Publish(PUBLISH_FIELD, id, text);
}

void PatientDemographicsImpl::OnSelchangeSex()
{
    ReadFields();
    const CString code = SelectedCode(Sexes());
    m_pRecord->SetSexCode(A(code));
    // The gender follows the sex until the user chooses one.
    if (m_pRecord->GetGenderCode().length() == 0 && !m_bGenderChosen)
        if (ComboBox* gender = Genders())
            gender->SetCurSel(Sexes()->GetCurSel());
    Publish(PUBLISH_FIELD, IDC_PAT_SEX, code);
}

void PatientDemographicsImpl::OnSelchangeGender()
{
    ReadFields();
    m_bGenderChosen = true;
    const CString code = SelectedCode(Genders());
    m_pRecord->SetGenderCode(A(code));
    Publish(PUBLISH_FIELD, IDC_PAT_GENDER, code);
}

void PatientDemographicsImpl::OnSelchangeOrganization()
{
    ReadFields();
    ComboBox* box = Organizations();
    const int sel = box ? box->GetCurSel() : CB_ERR;
    const CString key = SelectedOrganizationKey();
    const CString id = sel == CB_ERR ? CString() : box->GetLBText(sel);
    m_pRecord->SetOrganizationKey(A(key));
    m_pRecord->SetOrganizationID(A(id));
    const OrgOperations* org = nullptr;
    if (OrgOperationsCollection* orgs = PatientServices::Organizations())
        org = orgs->GetOrgFromKey(A(key));
    if (CWnd* generate = GetDlgItem(IDC_PAT_GENERATE))
        ::EnableWindow(generate, org && org->IsMRNAutoGenerated() ? TRUE : FALSE);
    Publish(PUBLISH_ORGANIZATION, IDC_PAT_ORGANIZATION, id);
}

void PatientDemographicsImpl::OnDateTimeChangeDOB()
{
    ReadFields();
    DatePickerCtrl* dob = BirthDate();
    const BDate date = dob ? ToBDate(dob->GetDate()) : BDate();
    if (!date.IsValid()) {
        // The same text as the future-date check, as it has always been.
        AfxMessageBox(LoadString(IDS_PATIENT_ERR_DOB_FUTURE).GetString(), MB_OK | MB_ICONSTOP);
        return;
    }
    m_pRecord->SetDOB(date);
    Publish(PUBLISH_FIELD, IDC_PAT_DOB, date.ToString().c_str());
}

void PatientDemographicsImpl::OnDropDownDOB()
{
    if (DatePickerCtrl* dob = BirthDate())
        if (QCalendarWidget* calendar = dob->calendar())
            calendar->setFocus(Qt::PopupFocusReason);
}

void PatientDemographicsImpl::OnChangeDOD()
{
    if (DateTimeEditCtrl* dod = DeathDate())
        m_nDeathState = dod->GetDate(m_dtDeath);
}

void PatientDemographicsImpl::OnGenerate()
{
    const CString key = SelectedOrganizationKey();
    OrgOperationsCollection* orgs = PatientServices::Organizations();
    PatientManagementService* patients = Patients();
    ACE_CString mrn;
    int rc = -1;
    try {
        if (orgs && patients)
            rc = patients->GetAutogeneratedMRN(orgs->GetOrgIdFromKey(A(key)), mrn);
    } catch (const std::exception&) {
        rc = -1;
    }
    if (rc != 0) {
        AfxMessageBox(IDS_PATIENT_ERR_GENERATE_MRN, MB_OK);
        return;
    }
    // Setting the text runs the MRN change: record and notice.
    SetDlgItemText(IDC_PAT_MRN, CString(mrn.c_str()));
}

BOOL PatientDemographicsImpl::Refuse(UINT messageId, CWnd* focus, UINT type)
{
    if (messageId)
        AfxMessageBox(LoadString(messageId).GetString(), type);
    if (focus)
        GotoDlgCtrl(focus);
    return FALSE;
}

BOOL PatientDemographicsImpl::ValidateData()
{
    if (!UpdateData(TRUE))
        return FALSE;
    for (CString* s : {&m_strMRN, &m_strFirst, &m_strMiddle, &m_strLast, &m_strGID, &m_strAliasFirst, &m_strAliasMiddle,
                       &m_strAliasLast, &m_strMaidenName, &m_strTitle, &m_strSuffix})
        s->Trim();

    m_pRecord->SetPatientID(A(m_strMRN));
    if (m_strMRN.IsEmpty())
        return Refuse(IDS_PATIENT_ERR_MRN_EMPTY, GetDlgItem(IDC_PAT_MRN));
    if (m_strLast.IsEmpty())
        return Refuse(IDS_PATIENT_ERR_LAST_EMPTY, GetDlgItem(IDC_PAT_LAST));
    if (m_strFirst.IsEmpty() && !PatientManagementService::IsEmptyPatientFirstNameAllowed())
        return Refuse(IDS_PATIENT_ERR_FIRST_EMPTY, GetDlgItem(IDC_PAT_FIRST));

    const BPersonName typed(A(m_strLast), A(m_strFirst), A(m_strMiddle), m_pRecord->GetTitle(), m_pRecord->GetSuffix());
    m_pRecord->SetName(typed.ToDICOMName());
    m_pRecord->SetPatientGID(A(m_strGID));
    m_pRecord->SetSexCode(A(SelectedCode(Sexes())));
    if (m_bGenderChosen)
        m_pRecord->SetGenderCode(A(SelectedCode(Genders())));
    m_pRecord->SetOrganizationKey(A(SelectedOrganizationKey()));

    if (!ValidateDates())
        return FALSE;
    if (m_pRecord->GetOrganizationKey().length() == 0)
        return Refuse(0, Organizations());
    CString mrn = m_strMRN;
    if (!ParamUtils::VerifyAndCorrectMRN(mrn))
        return Refuse(0, GetDlgItem(IDC_PAT_MRN));
    if (m_pRecord->GetSexCode().length() == 0)
        return Refuse(0, Sexes());

    m_pRecord->SetAliasFirstName(A(m_strAliasFirst));
    m_pRecord->SetAliasMiddleName(A(m_strAliasMiddle));
    m_pRecord->SetAliasLastName(A(m_strAliasLast));
    m_pRecord->SetMothersMaidenName(A(m_strMaidenName));
    StoreName();
    return TRUE;
}

BOOL PatientDemographicsImpl::ValidateDates()
{
    const BDate today = BDate::Today();
    DatePickerCtrl* dob = BirthDate();
    const BDate birth = dob ? ToBDate(dob->GetDate()) : BDate();
    if (today < birth)
        return Refuse(IDS_PATIENT_ERR_DOB_FUTURE, dob, MB_OK | MB_ICONSTOP);
    m_pRecord->SetDOB(birth);

    DateTimeEditCtrl* dod = DeathDate();
    if (!dod)
        return TRUE;
    m_nDeathState = dod->GetDate(m_dtDeath);
    if (m_nDeathState != GDT_VALID) {
        if (!dod->IsEmpty()) {
            dod->ShowInvalidDateMessage();
            GotoDlgCtrl(dod);
            return FALSE;
        }
        m_pRecord->ClearDateOfDeath();
        return TRUE;
    }
    const BDate death = ToBDate(m_dtDeath);
    if (today < death)
        return Refuse(IDS_PATIENT_ERR_DOD_FUTURE, dod);
    // Strictly earlier: dying on the day of birth is allowed.
    if (death < birth)
        return Refuse(IDS_PATIENT_ERR_DOD_BEFORE_DOB, dod);
    m_pRecord->SetDateOfDeath(death);
    return TRUE;
}

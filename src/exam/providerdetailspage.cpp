#include "exam/providerdetailspage.h"

#include "boundary/resource.h"

#include "addressrecord.h"
#include "bparser.h"
#include "bpersonname.h"
#include "examdataset.h"
#include "patientdetailrecord.h"
#include "providercollection.h"
#include "providerrecord.h"
#include "providerservice.h"
#include "serviceregistry.h"
#include "session.h"

#include "colorschema.h"
#include "contactinfo.h"
#include "cstatic.h"
#include "picker.h"
#include "pickersinterface.h"
#include "stringtable.h"

#include <memory>

namespace {

ProviderService* Providers()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetProviderService() : nullptr;
}

CString OrNA(const ACE_CString& text) { return text.length() ? CString(text.c_str()) : LoadString(IDS_NOT_AVAILABLE); }

CString Trimmed(CString s)
{
    s.Trim();
    return s;
}

// Without its last word, when a blank stands after the first character.
CString WithoutLastWord(const CString& text)
{
    const int blank = text.ReverseFind(' ');
    return blank > 0 ? Trimmed(text.Left(blank)) : text;
}

} // namespace

ProviderDetailsImplDlg::ProviderDetailsImplDlg(ExamDataSet* exam, PatientDetailRecord* patient)
    : ExamPageImpl(IDD_EXAMPROVIDERS, exam), m_pPatient(patient), m_pContact(new ContactInfo(this))
{
    if (Picker* picker = GetPicker())
        connect(picker, &Picker::pickRequested, this, &ProviderDetailsImplDlg::OnPick);
}

ProviderDetailsImplDlg::~ProviderDetailsImplDlg() = default;

Picker* ProviderDetailsImplDlg::GetPicker() const { return GetDlgItemAs<Picker>(IDC_PROVIDER_PICKER); }

const ACE_CString& ProviderDetailsImplDlg::OrgKey() const { return m_pPatient->GetOrganizationKey(); }

BOOL ProviderDetailsImplDlg::OnInitDialog()
{
    ExamPageImpl::OnInitDialog();
    const COLORREF background = ColorSchema::Instance().GetDialogBkColor();
    QPalette pal = palette();
    pal.setColor(QPalette::Window, toQColor(background));
    setPalette(pal);
    if (CWnd* area = GetDlgItem(IDC_PROVIDER_CONTACT_AREA)) {
        m_pContact->Create(this, CRect::fromQRect(area->geometry()));
        m_pContact->SetBkColor(background);
        area->hide();
    }
    ShowCurrentReferring();
    return TRUE;
}

void ProviderDetailsImplDlg::ShowCurrentReferring()
{
    if (const ProviderRecord* referring = m_pExam->FindProvider(ProviderRecord::eREFERRING)) {
        ShowProvider(*referring);
        return;
    }
    if (Picker* picker = GetPicker())
        picker->SetWindowText(CString());
    SetDlgItemText(IDC_PROVIDER_ID, LoadString(IDS_PROVIDER_ID_NONE));
}

bool ProviderDetailsImplDlg::ShowProvider(const ProviderRecord& provider)
{
    ProviderService* providers = Providers();
    ProviderRecord full;
    if (!providers || providers->GetProvider(provider.GetKey(), full, OrgKey()) != 0)
        return false;
    Picker* picker = GetPicker();
    if (picker)
        picker->SetWindowText(full.GetName().ToDICOMName().c_str());
    SetDlgItemText(IDC_PROVIDER_ID, CString(full.GetProviderID().c_str()));
    m_pContact->SetAddress(OrNA(full.GetAddress().GenerateDisplayString(true)));
    m_pContact->SetWPhone(OrNA(full.GetWorkPhone()));
    if (picker && !providers->CanAccessDictionaries(OrgKey()))
        picker->setEnabled(false);
    return true;
}

void ProviderDetailsImplDlg::SetReferring(const ProviderRecord& provider)
{
    // The exam has one referring physician: the new one takes the old one's place.
    m_pExam->RemoveProviders(ProviderRecord::eREFERRING);
    ProviderRecord copy(provider);
    copy.SetProviderType(ProviderRecord::eREFERRING);
    m_pExam->AddProvider(copy);
}

CString ProviderDetailsImplDlg::PickName(const CString& typed, bool split)
{
    const int comma = typed.Find(',');
    CString name = Trimmed(comma < 0 ? typed : typed.Left(comma));
    return split ? WithoutLastWord(name) : name;
}

BPersonName ProviderDetailsImplDlg::ParseName(const CString& typed, bool split)
{
    const CString text = Trimmed(typed);
    if (text.Find('^') >= 0)
        return BPersonName::FromDICOMName(text);
    if (text.Find(',') < 0)
        return BPersonName(text.GetString(), "");
    std::vector<ACE_CString> tokens;
    BParser::DeTokenizeEx(tokens, text, ',');
    auto token = [&](size_t i) { return i < tokens.size() ? Trimmed(tokens[i].c_str()) : CString(); };
    CString last = token(0);
    if (split)
        last = WithoutLastWord(last);
    CString middle;
    for (size_t i = 2; i < tokens.size(); ++i)
        middle += (middle.IsEmpty() ? CString() : CString(" ")) + token(i);
    return BPersonName(last.GetString(), token(1).GetString(), middle.GetString());
}

void ProviderDetailsImplDlg::OnPick()
{
    Picker* picker = GetPicker();
    ProviderRecord query;
    query.SetOrganizationKey(OrgKey());
    query.SetName(BPersonName(PickName(picker ? picker->GetWindowText() : CString(), m_bSplitName).GetString(), ""));
    ProviderCollection collection(&query);
    std::vector<ProviderRecord*> chosen;
    const bool taken = PickersInterface().SelectProviders(this, &collection, chosen);
    std::vector<std::unique_ptr<ProviderRecord>> owned(chosen.begin(), chosen.end());
    if (!taken || owned.empty())
        return;
    ShowProvider(*owned.front());
    SetReferring(*owned.front());
}

bool ProviderDetailsImplDlg::ValidateAndSave()
{
    Picker* picker = GetPicker();
    const CString typed = picker ? picker->GetWindowText() : CString();
    if (Trimmed(typed).IsEmpty())
        return true;
    ProviderService* providers = Providers();
    if (!providers)
        return true;
    ProviderRecord query;
    query.SetOrganizationKey(OrgKey());
    query.SetName(ParseName(typed, m_bSplitName));
    ProviderCollection found(&query);
    if (providers->QueryProviders(&found) == ProviderService::TOO_MANY_MATCHES) {
        ShowCurrentReferring();
        return true;
    }
    if (found.GetCount() == 0) {
        if (QWidget* top = window())
            top->activateWindow();
        std::vector<ProviderRecord*> chosen;
        const bool taken = PickersInterface().SelectProviders(this, &found, chosen);
        std::vector<std::unique_ptr<ProviderRecord>> owned(chosen.begin(), chosen.end());
        if (taken && !owned.empty() && ShowProvider(*owned.front()))
            SetReferring(*owned.front());
        return true;
    }
    const CString shownId = GetDlgItemAs<CStatic>(IDC_PROVIDER_ID)->GetWindowText();
    for (ProviderRecord* p : found.GetProviders()) {
        if (p && CString(p->GetProviderID().c_str()) == shownId) {
            ShowProvider(*p);
            SetReferring(*p);
            break;
        }
    }
    return true;
}

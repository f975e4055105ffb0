#include "exam/examdetailspage.h"

#include "boundary/resource.h"
#include "boundary/tavhelper.h"

#include "bparser.h"
#include "dictionaryrecord.h"
#include "dictionaryservice.h"
#include "examcodemodifierdataset.h"
#include "examcoderecord.h"
#include "examdataset.h"
#include "examservice.h"
#include "locationdataset.h"
#include "orgoperationscollection.h"
#include "performingresourcedataset.h"
#include "queryexamcodemodifiersrequestfacade.h"
#include "queryexamcodesrequestfacade.h"
#include "querylocationdatarequestfacade.h"
#include "serviceregistry.h"
#include "session.h"

#include "cbutton.h"
#include "combobox.h"
#include "datetimeeditctrl.h"
#include "edit.h"
#include "messagebox.h"
#include "picker.h"
#include "pickersinterface.h"
#include "stringtable.h"
#include "timeeditctrl.h"

#include <ace/Log_Msg.h>

#include <QApplication>
#include <QLineEdit>

#include <exception>
#include <memory>

namespace {

ServiceRegistry* Registry() { return Session::ServiceInstance(); }
DictionaryService* Dictionaries() { return Registry() ? Registry()->GetDictionaryService() : nullptr; }

CString Text(const ACE_CString& s) { return CString(s.c_str()); }
ACE_CString Ace(const CString& s) { return ACE_CString(s.GetString()); }

// Frees what a dictionary query returned.
template <class T>
struct Owned
{
    std::vector<T*> items;
    ~Owned()
    {
        for (T* t : items)
            delete t;
    }
    T* First() const { return items.empty() ? nullptr : items.front(); }
};

BDateTime FromControls(const QDate& date, const TimeEditCtrl* time)
{
    const BDate d(static_cast<unsigned>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()));
    const BTime t(time ? time->GetHour() : 0, time ? time->GetMinute() : 0, time ? time->GetSecond() : 0);
    // The controls show local time; the exam keeps UTC.
    return BDateTime(d, t).ToUTC();
}

void ShowDateTime(DateTimeEditCtrl* date, TimeEditCtrl* time, const BDateTime& utc)
{
    const BDateTime local = utc.ToLocal();
    const BDate d = local.GetDate();
    const BTime t = local.GetTime();
    if (date)
        date->SetDate(QDate(static_cast<int>(d.GetYear()), static_cast<int>(d.GetMonth()), static_cast<int>(d.GetDay())));
    if (time)
        time->SetTime(t.GetHour(), t.GetMinute(), t.GetSecond());
}

void LogFailure(const char* function, int line, const char* what)
{
    ACE_LOG_MSG->file(__FILE__);
    ACE_LOG_MSG->linenum(line);
    ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, %s\n"), function, line, what));
}

} // namespace

ExamDetailsImplDlg::ExamDetailsImplDlg(ExamDataSet* exam) : ExamPageImpl(IDD_EXAMINFO, exam)
{
    ConnectPickers();
    if (auto* generate = GetDlgItemAs<CButton>(IDC_EXAM_GENERATE))
        connect(generate, &CButton::clicked, this, &ExamDetailsImplDlg::OnGenerate);
    if (Edit* accession = GetAccessionEdit())
        connect(accession, &CEdit::edited, this, &ExamDetailsImplDlg::OnAccessionChanged);
    if (auto* priority = GetDlgItemAs<ComboBox>(IDC_EXAM_PRIORITY))
        connect(priority, &CComboBox::selectionChanged, this, [this] {
            if (SavePriority())
                Publish(EXAM_DETAILS_CHANGED, 0);
        });
}

ExamDetailsImplDlg::~ExamDetailsImplDlg() = default;

void ExamDetailsImplDlg::ConnectPickers()
{
    struct Hook
    {
        int id;
        void (ExamDetailsImplDlg::*pick)();
        bool (ExamDetailsImplDlg::*resolve)();
    };
    const Hook hooks[] = {{IDC_EXAM_CODE, &ExamDetailsImplDlg::OnPickExamCode, &ExamDetailsImplDlg::ResolveExamCode},
                          {IDC_EXAM_MODIFIER, &ExamDetailsImplDlg::OnPickModifier, &ExamDetailsImplDlg::ResolveModifier},
                          {IDC_EXAM_RESOURCE, &ExamDetailsImplDlg::OnPickResource, &ExamDetailsImplDlg::ResolveResource},
                          {IDC_EXAM_LOCATION, &ExamDetailsImplDlg::OnPickLocation, &ExamDetailsImplDlg::ResolveLocation}};
    for (const Hook& hook : hooks) {
        Picker* picker = GetPickerCtrl(hook.id);
        if (!picker)
            continue;
        connect(picker, &Picker::pickRequested, this, hook.pick);
        const auto resolve = hook.resolve;
        connect(picker, &Picker::resolveRequested, this, [this, resolve] { (this->*resolve)(); });
    }
    if (Picker* code = GetPickerCtrl(IDC_EXAM_CODE))
        connect(code->Edit(), &QLineEdit::textChanged, this, &ExamDetailsImplDlg::OnExamCodeTextChanged);
}

Edit* ExamDetailsImplDlg::GetAccessionEdit() const { return GetDlgItemAs<Edit>(IDC_EXAM_ACCESSION); }
Picker* ExamDetailsImplDlg::GetPickerCtrl(int id) const { return GetDlgItemAs<Picker>(id); }

BOOL ExamDetailsImplDlg::OnInitDialog()
{
    ExamPageImpl::OnInitDialog();
    ShowOrganization();
    if (Edit* accession = GetAccessionEdit()) {
        accession->SetRequiredFlag(true);
        accession->SetLimitText(kAccessionLimit);
    }
    if (auto* priority = GetDlgItemAs<ComboBox>(IDC_EXAM_PRIORITY))
        priority->SetRequiredFlag(true);
    const bool creating = m_pExam->GetKey().length() == 0;
    m_bExamCodeRequired = creating || m_pExam->GetExamCodeKey().length() > 0;
    if (Picker* code = GetPickerCtrl(IDC_EXAM_CODE))
        code->SetRequiredFlag(m_bExamCodeRequired);
    ShowStatus();
    m_strPriorityCode = Text(m_pExam->GetPriorityCode());
    SelectPriority();
    m_strModifier = Text(m_pExam->GetExamCodeModifiersText());
    if (!creating && m_pExam->GetPerformingResourceKey().length())
        ShowResource();
    if (m_pExam->GetOrderingLocationKey().length())
        ShowLocation();
    ShowScheduled();
    ShowPerformed();
    m_strAccession = Text(m_pExam->GetAccessionNumber());
    m_strExamCode = Text(m_pExam->GetExamCode());
    m_strModality = Text(m_pExam->GetModality());
    m_strBodyPart = Text(m_pExam->GetBodyPart());
    m_strDescription = Text(m_pExam->GetDescription());
    UpdateControls();
    return TRUE;
}

void ExamDetailsImplDlg::ShowOrganization()
{
    OrgOperationsCollection* orgs = Registry() ? Registry()->GetOrgOperationsCollection() : nullptr;
    const ACE_CString id = orgs ? orgs->GetOrgIdFromKey(m_pExam->GetOrganizationKey()) : ACE_CString();
    if (id.length())
        m_strOrganizationId = Text(id);
}

void ExamDetailsImplDlg::ShowStatus()
{
    // Status codes are matched by their first character; the last match wins.
    CString shown;
    const ACE_CString& status = m_pExam->GetStatusCode();
    DictionaryService* dictionaries = Dictionaries();
    if (dictionaries && status.length()) {
        for (const DictionaryRecord* record : dictionaries->GetDiagnosticImageStatusCodes())
            if (record && record->GetCode().length() && record->GetCode().c_str()[0] == status.c_str()[0])
                shown = Text(record->GetDescription());
    }
    SetDlgItemText(IDC_EXAM_STATUS, shown);
}

void ExamDetailsImplDlg::SelectPriority()
{
    auto* box = GetDlgItemAs<ComboBox>(IDC_EXAM_PRIORITY);
    if (!box)
        return;
    TavHelper().InitPriorityCombo(*box);
    // A new exam starts at "_T" when the site has it, else at routine.
    const CString wanted = m_pExam->GetKey().length() ? Text(m_pExam->GetPriorityCode()) : CString("_T");
    for (int i = 0; i < box->GetCount(); ++i) {
        const auto* code = static_cast<const char*>(box->GetItemDataPtr(i));
        if (!code)
            continue;
        if (wanted == code) {
            box->SetCurSel(i);
            break;
        }
        if (CString(code) == "R")
            box->SetCurSel(i);
    }
    // The priority shown is the exam's from the start, so the dialog's OK
    // rule sees a new exam's default priority before anyone touches the list.
    SavePriority();
}

void ExamDetailsImplDlg::ShowResource()
{
    DictionaryService* dictionaries = Dictionaries();
    if (!dictionaries)
        return;
    PerformingResourceDataSet query;
    query.SetAll();
    query.SetOrganizationKey(m_pExam->GetOrganizationKey());
    query.SetKey(m_pExam->GetPerformingResourceKey());
    Owned<PerformingResourceDataSet> found;
    dictionaries->QueryPerformingResources(&query, found.items);
    if (const auto* first = found.First())
        m_strResource = Text(first->GetDisplayText());
}

void ExamDetailsImplDlg::ShowLocation()
{
    DictionaryService* dictionaries = Dictionaries();
    if (!dictionaries)
        return;
    QueryLocationDataRequestFacade request;
    request.SetOrganizationKey(m_pExam->GetOrganizationKey());
    request.SetLocationKey(m_pExam->GetOrderingLocationKey());
    Owned<LocationDataSet> found;
    dictionaries->QueryLocationData(request, found.items, false);
    if (const auto* first = found.First())
        m_strLocation = Text(first->GetDisplayText());
}

void ExamDetailsImplDlg::ShowScheduled()
{
    auto* date = GetDlgItemAs<DateTimeEditCtrl>(IDC_EXAM_SCHEDULED_DATE);
    auto* time = GetDlgItemAs<TimeEditCtrl>(IDC_EXAM_SCHEDULED_TIME);
    // Only a new order may be scheduled here; an existing one keeps its slot.
    const bool creating = m_pExam->GetKey().length() == 0;
    for (QWidget* w : {static_cast<QWidget*>(date), static_cast<QWidget*>(time)})
        if (w)
            w->setEnabled(creating);
    const BDateTime& scheduled = m_pExam->GetScheduledDT();
    ShowDateTime(date, time, scheduled.IsValid() ? scheduled : BDateTime::Now());
}

void ExamDetailsImplDlg::ShowPerformed()
{
    auto* date = GetDlgItemAs<DateTimeEditCtrl>(IDC_EXAM_PERFORMED_DATE);
    auto* time = GetDlgItemAs<TimeEditCtrl>(IDC_EXAM_PERFORMED_TIME);
    const bool performed = m_pExam->GetKey().length() && m_pExam->GetPerformedDT().IsValid();
    if (date)
        date->setEnabled(performed);
    if (time) {
        time->setEnabled(performed);
        time->setVisible(performed);
    }
    if (performed)
        ShowDateTime(date, time, m_pExam->GetPerformedDT());
    else if (date)
        date->SetWindowText(LoadString(IDS_NOT_PERFORMED));
}

void ExamDetailsImplDlg::UpdateControls()
{
    SetDlgItemText(IDC_EXAM_ORGANIZATION, m_strOrganizationId);
    if (Edit* accession = GetAccessionEdit())
        accession->SetWindowText(m_strAccession);
    SetDlgItemText(IDC_EXAM_MODALITY, m_strModality);
    SetDlgItemText(IDC_EXAM_BODY_PART, m_strBodyPart);
    SetDlgItemText(IDC_EXAM_DESCRIPTION, m_strDescription);
    const std::pair<int, const CString*> pickers[] = {{IDC_EXAM_CODE, &m_strExamCode},
                                                      {IDC_EXAM_MODIFIER, &m_strModifier},
                                                      {IDC_EXAM_RESOURCE, &m_strResource},
                                                      {IDC_EXAM_LOCATION, &m_strLocation}};
    for (const auto& [id, text] : pickers)
        if (Picker* picker = GetPickerCtrl(id); picker && picker->GetWindowText() != *text)
            picker->SetWindowText(*text);
}

// ---- Generate and the two published changes

void ExamDetailsImplDlg::OnGenerate()
{
    ExamService* exams = Registry() ? Registry()->GetExamService() : nullptr;
    ACE_CString accession;
    int rc = -1;
    try {
        if (exams)
            rc = exams->GetAutogeneratedACC(Ace(m_strOrganizationId), accession);
    } catch (const std::exception& e) {
        LogFailure("ExamDetailsImplDlg::OnGenerate", __LINE__, e.what());
    }
    if (rc != 0) {
        AfxMessageBox(IDS_ERR_GENERATE_ACC);
        return;
    }
    m_strAccession = Text(accession);
    UpdateControls();
    OnAccessionChanged();
}

void ExamDetailsImplDlg::OnAccessionChanged()
{
    if (Edit* accession = GetAccessionEdit())
        m_strAccession = accession->GetWindowText();
    m_pExam->SetAccessionNumber(Ace(m_strAccession));
    Publish(EXAM_DETAILS_CHANGED, 0);
}

void ExamDetailsImplDlg::OnExamCodeTextChanged()
{
    if (Picker* code = GetPickerCtrl(IDC_EXAM_CODE))
        m_strExamCode = code->GetWindowText();
    if (m_strExamCode.IsEmpty()) {
        m_strModality.Empty();
        m_strBodyPart.Empty();
        m_strDescription.Empty();
        SetDlgItemText(IDC_EXAM_MODALITY, m_strModality);
        SetDlgItemText(IDC_EXAM_BODY_PART, m_strBodyPart);
        SetDlgItemText(IDC_EXAM_DESCRIPTION, m_strDescription);
    }
    m_pExam->SetExamCode(Ace(m_strExamCode));
    Publish(EXAM_DETAILS_CHANGED, 0);
}

// ---- exam code

void ExamDetailsImplDlg::ApplyExamCode(const ExamCodeRecord& record)
{
    m_strExamCode = Text(record.GetCode());
    m_strModality = Text(record.GetModality());
    m_strBodyPart = Text(record.GetBodyPart());
    m_strDescription = Text(record.GetDescription());
    m_pExam->SetExamCode(record.GetCode());
    m_pExam->SetExamCodeKey(record.GetKey());
    m_pExam->SetModality(record.GetModality());
    m_pExam->SetBodyPart(record.GetBodyPart());
    m_pExam->SetDescription(record.GetDescription());
    UpdateControls();
}

void ExamDetailsImplDlg::OnPickExamCode()
{
    Picker* picker = GetPickerCtrl(IDC_EXAM_CODE);
    const CString typed = picker ? picker->GetWindowText() : CString();
    PickersInterface::ParamMap params;
    params[QueryExamCodesRequestFacade::ExamCodeParamName()] = Ace(typed);
    params[QueryExamCodesRequestFacade::OrgKeyParamName()] = m_pExam->GetOrganizationKey();
    QueryExamCodesRequestFacade request;
    request.SetOrganizationKey(m_pExam->GetOrganizationKey());
    request.SetExamCode(Ace(typed));
    ApplyExamCode(ExamCodeRecord());
    Owned<ExamCodeRecord> chosen;
    if (!PickersInterface().SelectExamCodes(params, this, chosen.items) && !typed.IsEmpty()) {
        if (DictionaryService* dictionaries = Dictionaries())
            dictionaries->QueryExamCodes(request, chosen.items);
    }
    ApplyExamCode(chosen.First() ? *chosen.First() : ExamCodeRecord());
}

bool ExamDetailsImplDlg::ResolveExamCode()
{
    Picker* picker = GetPickerCtrl(IDC_EXAM_CODE);
    const CString typed = picker ? picker->GetWindowText() : CString();
    if (typed.IsEmpty()) {
        ApplyExamCode(ExamCodeRecord());
        return true;
    }
    QueryExamCodesRequestFacade request;
    request.SetOrganizationKey(m_pExam->GetOrganizationKey());
    request.SetExamCode(Ace(typed));
    Owned<ExamCodeRecord> found;
    if (DictionaryService* dictionaries = Dictionaries())
        dictionaries->QueryExamCodes(request, found.items);
    ApplyExamCode(found.First() ? *found.First() : ExamCodeRecord());
    return found.First() != nullptr;
}

// ---- modifiers, performing resource, ordering location

void ExamDetailsImplDlg::OnPickModifier()
{
    Picker* picker = GetPickerCtrl(IDC_EXAM_MODIFIER);
    PickersInterface::ParamMap params;
    params[QueryExamCodeModifiersRequestFacade::CodeParamName()] = Ace(picker ? picker->GetWindowText() : CString());
    params[QueryExamCodeModifiersRequestFacade::OrgKeyParamName()] = m_pExam->GetOrganizationKey();
    Owned<ExamCodeModifierDataSet> chosen;
    if (!PickersInterface().SelectExamCodeModifiers(params, this, chosen.items))
        return;
    std::vector<ExamCodeModifierDataSet> modifiers;
    for (const auto* m : chosen.items)
        modifiers.push_back(*m);
    m_pExam->SetExamCodeModifiers(modifiers);
    m_strModifier = Text(m_pExam->GetExamCodeModifiersText());
    UpdateControls();
}

bool ExamDetailsImplDlg::ResolveModifier()
{
    Picker* picker = GetPickerCtrl(IDC_EXAM_MODIFIER);
    std::vector<ACE_CString> codes;
    BParser::DeTokenizeEx(codes, picker ? picker->GetWindowText().GetString() : "", BParser::DEFAULT_SEP);
    std::vector<ExamCodeModifierDataSet> modifiers;
    bool all = true;
    for (const ACE_CString& code : codes) {
        CString trimmed = Text(code);
        trimmed.Trim();
        if (trimmed.IsEmpty())
            continue;
        QueryExamCodeModifiersRequestFacade request;
        request.SetOrganizationKey(m_pExam->GetOrganizationKey());
        request.SetCode(Ace(trimmed));
        Owned<ExamCodeModifierDataSet> found;
        if (DictionaryService* dictionaries = Dictionaries())
            dictionaries->QueryExamCodeModifiers(request, found.items);
        if (found.First())
            modifiers.push_back(*found.First());
        else
            all = false;
    }
    m_pExam->SetExamCodeModifiers(modifiers);
    m_strModifier = Text(m_pExam->GetExamCodeModifiersText());
    UpdateControls();
    return all;
}

void ExamDetailsImplDlg::OnPickResource()
{
    Picker* picker = GetPickerCtrl(IDC_EXAM_RESOURCE);
    PerformingResourceDataSet current;
    current.SetOrganizationKey(m_pExam->GetOrganizationKey());
    current.SetResourceId(Ace(picker ? picker->GetWindowText() : CString()));
    Owned<PerformingResourceDataSet> chosen;
    if (!PickersInterface().SelectPerformingResources(this, &current, chosen.items) || !chosen.First())
        return;
    m_pExam->SetPerformingResourceKey(chosen.First()->GetKey());
    m_pExam->SetPerformingResourceId(chosen.First()->GetResourceId());
    m_strResource = Text(chosen.First()->GetDisplayText());
    UpdateControls();
}

bool ExamDetailsImplDlg::ResolveResource()
{
    Picker* picker = GetPickerCtrl(IDC_EXAM_RESOURCE);
    const CString typed = picker ? picker->GetWindowText() : CString();
    Owned<PerformingResourceDataSet> found;
    if (!typed.IsEmpty()) {
        PerformingResourceDataSet query;
        query.SetAll();
        query.SetOrganizationKey(m_pExam->GetOrganizationKey());
        query.SetResourceId(Ace(typed));
        if (DictionaryService* dictionaries = Dictionaries())
            dictionaries->QueryPerformingResources(&query, found.items);
    }
    const PerformingResourceDataSet* first = found.First();
    m_pExam->SetPerformingResourceKey(first ? first->GetKey() : ACE_CString());
    m_pExam->SetPerformingResourceId(first ? first->GetResourceId() : ACE_CString());
    m_strResource = first ? Text(first->GetDisplayText()) : CString();
    UpdateControls();
    return first || typed.IsEmpty();
}

void ExamDetailsImplDlg::OnPickLocation()
{
    Picker* picker = GetPickerCtrl(IDC_EXAM_LOCATION);
    LocationDataSet current;
    current.SetOrganizationKey(m_pExam->GetOrganizationKey());
    current.SetLocationId(Ace(picker ? picker->GetWindowText() : CString()));
    Owned<LocationDataSet> chosen;
    if (!PickersInterface().SelectOrderingLocation(this, &current, chosen.items) || !chosen.First())
        return;
    m_pExam->SetOrderingLocationKey(chosen.First()->GetLocationKey());
    m_pExam->SetOrderingLocationId(chosen.First()->GetLocationId());
    m_strLocation = Text(chosen.First()->GetDisplayText());
    UpdateControls();
}

bool ExamDetailsImplDlg::ResolveLocation()
{
    Picker* picker = GetPickerCtrl(IDC_EXAM_LOCATION);
    const CString typed = picker ? picker->GetWindowText() : CString();
    Owned<LocationDataSet> found;
    if (!typed.IsEmpty()) {
        QueryLocationDataRequestFacade request;
        request.SetOrganizationKey(m_pExam->GetOrganizationKey());
        request.SetLocationId(Ace(typed));
        if (DictionaryService* dictionaries = Dictionaries())
            dictionaries->QueryLocationData(request, found.items, true);
    }
    const LocationDataSet* first = found.First();
    m_pExam->SetOrderingLocationKey(first ? first->GetLocationKey() : ACE_CString());
    m_pExam->SetOrderingLocationId(first ? first->GetLocationId() : ACE_CString());
    m_strLocation = first ? Text(first->GetDisplayText()) : CString();
    UpdateControls();
    return first || typed.IsEmpty();
}

// ---- OK

bool ExamDetailsImplDlg::ResolveFocusedPicker()
{
    QWidget* focus = QApplication::focusWidget();
    const std::pair<int, bool (ExamDetailsImplDlg::*)()> pickers[] = {
        {IDC_EXAM_RESOURCE, &ExamDetailsImplDlg::ResolveResource},
        {IDC_EXAM_LOCATION, &ExamDetailsImplDlg::ResolveLocation},
        {IDC_EXAM_CODE, &ExamDetailsImplDlg::ResolveExamCode},
        {IDC_EXAM_MODIFIER, &ExamDetailsImplDlg::ResolveModifier}};
    for (const auto& [id, resolve] : pickers) {
        Picker* picker = GetPickerCtrl(id);
        if (picker && focus && picker->isAncestorOf(focus))
            return (this->*resolve)();
    }
    return true;
}

void ExamDetailsImplDlg::Refuse(UINT message, int focusId)
{
    AfxMessageBox(message);
    if (CWnd* control = GetDlgItem(focusId))
        control->setFocus();
}

bool ExamDetailsImplDlg::SavePriority()
{
    auto* box = GetDlgItemAs<ComboBox>(IDC_EXAM_PRIORITY);
    const int index = box ? box->GetCurSel() : -1;
    const auto* code = index >= 0 ? static_cast<const char*>(box->GetItemDataPtr(index)) : nullptr;
    // Nothing chosen: the priority stays what it was.
    if (!code)
        return false;
    m_strPriorityCode = code;
    m_pExam->SetPriorityCode(code);
    return true;
}

void ExamDetailsImplDlg::SaveScheduled()
{
    auto* date = GetDlgItemAs<DateTimeEditCtrl>(IDC_EXAM_SCHEDULED_DATE);
    QDate day;
    if (date && date->GetDate(day) == GDT_VALID)
        m_pExam->SetScheduledDT(FromControls(day, GetDlgItemAs<TimeEditCtrl>(IDC_EXAM_SCHEDULED_TIME)));
}

bool ExamDetailsImplDlg::SavePerformed()
{
    auto* date = GetDlgItemAs<DateTimeEditCtrl>(IDC_EXAM_PERFORMED_DATE);
    if (!date)
        return true;
    QDate day;
    if (date->GetDate(day) == GDT_VALID) {
        m_pExam->SetPerformedDT(FromControls(day, GetDlgItemAs<TimeEditCtrl>(IDC_EXAM_PERFORMED_TIME)));
        return true;
    }
    // "Not performed" (and a field left empty) writes nothing.
    if (date->GetWindowText() == LoadString(IDS_NOT_PERFORMED) || date->IsEmpty())
        return true;
    date->ShowInvalidDateMessage();
    date->setFocus();
    return false;
}

bool ExamDetailsImplDlg::ValidateAndSave()
{
    if (!ResolveFocusedPicker())
        return false;
    if (Edit* accession = GetAccessionEdit())
        m_strAccession = accession->GetWindowText();
    m_strAccession.Trim();
    m_pExam->SetAccessionNumber(Ace(m_strAccession));
    if (m_strAccession.IsEmpty()) {
        Refuse(IDS_ACC_EMPTY, IDC_EXAM_ACCESSION);
        return false;
    }
    SavePriority();
    if (m_strPriorityCode.IsEmpty()) {
        Refuse(IDS_PRIORITY_EMPTY, IDC_EXAM_PRIORITY);
        return false;
    }
    if (Picker* code = GetPickerCtrl(IDC_EXAM_CODE))
        m_strExamCode = code->GetWindowText();
    if (m_bExamCodeRequired && m_strExamCode.IsEmpty()) {
        Refuse(IDS_EXAM_CODE_EMPTY, IDC_EXAM_CODE);
        return false;
    }
    SaveScheduled();
    if (Picker* modifier = GetPickerCtrl(IDC_EXAM_MODIFIER))
        m_strModifier = modifier->GetWindowText();
    return SavePerformed();
}

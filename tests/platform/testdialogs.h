#pragma once

// Sample templates the platform tests build dialogs from: the reason panel
// layout (Arial 10) and a small form with every common control kind.

#include "cdialog.h"
#include "dialogtemplate.h"

enum : int {
    IDC_LABEL = 1001,
    IDC_REASONS = 1002,
    IDC_NOTE = 1003,
    IDC_DELETE_STUDIES = 1004,
    IDC_PERMANENT = 1005,
    IDC_REASON_EDIT = 1006,
    IDC_NAME = 1010,
    IDC_AGE = 1011,
    IDC_KIND = 1012,
    IDC_CITY = 1013,
    IDC_URGENT = 1014,
    IDC_RADIO_A = 1015,
    IDC_RADIO_B = 1016,
    IDC_RADIO_C = 1017,
    IDC_LIST = 1018,
    IDC_GROUP = 1019,
    IDC_PLACEHOLDER = 1020,
    IDC_APPLY = 1021,
};

inline DialogTemplate ReasonPanelTemplate()
{
    return DialogTemplate{
        "Detach Study", 238, 130, "Arial", 10,
        {
            {IDC_LABEL, "IDC_LABEL", ControlKind::Static, "Predefined Reason(s):", 7, 8, 79, 14},
            {IDC_REASONS, "IDC_REASONS", ControlKind::ComboDropDownList, "", 88, 8, 143, 95,
             CBS_SORT | WS_VSCROLL | WS_TABSTOP},
            {IDC_NOTE, "IDC_NOTE", ControlKind::Static, "", 7, 25, 122, 8},
            {IDC_DELETE_STUDIES, "IDC_DELETE_STUDIES", ControlKind::CheckBox, "Delete Studies", 169, 25, 62, 10,
             WS_TABSTOP},
            {IDC_PERMANENT, "IDC_PERMANENT", ControlKind::CheckBox, "Permanent Delete", 7, 25, 75, 10,
             WS_TABSTOP | WS_HIDDEN},
            {IDC_REASON_EDIT, "IDC_REASON_EDIT", ControlKind::MultiLineEdit, "", 7, 35, 224, 65,
             WS_VSCROLL | WS_BORDER | ES_WANTRETURN | WS_TABSTOP},
            {IDOK, "IDOK", ControlKind::DefPushButton, "OK", 127, 108, 50, 14, WS_TABSTOP},
            {IDCANCEL, "IDCANCEL", ControlKind::PushButton, "Cancel", 181, 108, 50, 14, WS_TABSTOP},
        }};
}

inline DialogTemplate FormTemplate()
{
    return DialogTemplate{
        "Sample Form", 220, 160, "Arial", 9,
        {
            {IDC_STATIC, "IDC_STATIC", ControlKind::Static, "&Name:", 7, 9, 40, 8},
            {IDC_NAME, "IDC_NAME", ControlKind::Edit, "", 50, 7, 100, 14, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL},
            {IDC_STATIC, "IDC_STATIC", ControlKind::Static, "Age:", 7, 27, 40, 8},
            {IDC_AGE, "IDC_AGE", ControlKind::Edit, "", 50, 25, 40, 14, WS_BORDER | WS_TABSTOP | ES_NUMBER},
            {IDC_STATIC, "IDC_STATIC", ControlKind::Static, "Kind:", 7, 45, 40, 8},
            {IDC_KIND, "IDC_KIND", ControlKind::ComboDropDownList, "", 50, 43, 100, 80, WS_VSCROLL | WS_TABSTOP},
            {IDC_STATIC, "IDC_STATIC", ControlKind::Static, "City:", 7, 63, 40, 8},
            {IDC_CITY, "IDC_CITY", ControlKind::ComboDropDown, "", 50, 61, 100, 80, CBS_SORT | WS_VSCROLL | WS_TABSTOP},
            {IDC_URGENT, "IDC_URGENT", ControlKind::CheckBox, "Urgent", 50, 80, 60, 10, WS_TABSTOP},
            {IDC_GROUP, "IDC_GROUP", ControlKind::GroupBox, "Priority", 155, 5, 60, 60},
            {IDC_RADIO_A, "IDC_RADIO_A", ControlKind::RadioButton, "Low", 160, 17, 50, 10, WS_GROUP | WS_TABSTOP},
            {IDC_RADIO_B, "IDC_RADIO_B", ControlKind::RadioButton, "Normal", 160, 31, 50, 10},
            {IDC_RADIO_C, "IDC_RADIO_C", ControlKind::RadioButton, "High", 160, 45, 50, 10},
            {IDC_LIST, "IDC_LIST", ControlKind::ListBox, "", 7, 95, 100, 40, LBS_SORT | WS_VSCROLL | WS_BORDER},
            {IDC_PLACEHOLDER, "IDC_PLACEHOLDER", ControlKind::Custom, "", 112, 95, 100, 40},
            {IDC_APPLY, "IDC_APPLY", ControlKind::PushButton, "Apply", 7, 140, 50, 14, WS_TABSTOP},
            {IDOK, "IDOK", ControlKind::DefPushButton, "OK", 109, 140, 50, 14, WS_TABSTOP},
            {IDCANCEL, "IDCANCEL", ControlKind::PushButton, "Cancel", 163, 140, 50, 14, WS_TABSTOP},
        }};
}

// A dialog with data exchange: the name (at most 50 characters), the urgent
// flag, the kind index and the city text.
class FormDlg : public CDialog
{
public:
    explicit FormDlg(CWnd* parent = nullptr) : CDialog(FormTemplate(), parent) {}

    CString m_name;
    int m_urgent = 0;
    int m_kind = -1;
    CString m_city;
    int m_priority = -1;
    int m_initCount = 0;

    BOOL OnInitDialog() override
    {
        ++m_initCount;
        auto* kind = GetDlgItemAs<CComboBox>(IDC_KIND);
        kind->AddString("CT");
        kind->AddString("MR");
        kind->AddString("US");
        auto* city = GetDlgItemAs<CComboBox>(IDC_CITY);
        city->AddString("Zürich");
        city->AddString("Berlin");
        return CDialog::OnInitDialog();
    }

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        DDX_Text(pDX, IDC_NAME, m_name);
        DDV_MaxChars(pDX, m_name, 50);
        DDX_Check(pDX, IDC_URGENT, m_urgent);
        DDX_CBIndex(pDX, IDC_KIND, m_kind);
        DDX_CBString(pDX, IDC_CITY, m_city);
        DDX_Radio(pDX, IDC_RADIO_A, m_priority);
    }
};

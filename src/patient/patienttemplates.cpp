// The patient dialog's templates: the frame, its four pages and the row of
// the create-linked-patients page.

#include "boundary/moduletemplates.h"
#include "boundary/resource.h"

#include "combobox.h"
#include "datepickerctrl.h"
#include "datetimeeditctrl.h"
#include "edit.h"

#include "modulestate.h"
#include "stringtable.h"

namespace {

constexpr DWORD kEdit = WS_BORDER | ES_AUTOHSCROLL | WS_TABSTOP;
constexpr DWORD kList = WS_VSCROLL | WS_TABSTOP;

// One labelled field as the tables below list them.
struct Row
{
    int label;
    const char* labelSymbol;
    UINT text;
    int field;
    const char* fieldSymbol;
    const char* className;
    DWORD style;
};

// One labelled field of a two-column form: the label, then the field.
void AddField(DialogTemplate& tpl, const StringTable& strings, int labelId, const char* labelSymbol, UINT text,
              int fieldId, const char* fieldSymbol, const char* className, int x, int row, int labelWidth,
              int fieldWidth, DWORD style = kEdit)
{
    const int y = 8 + 18 * row;
    tpl.controls.push_back({labelId, labelSymbol, ControlKind::Static, text ? strings.Load(text) : CString(), x,
                            y + 2, labelWidth - 2, 10});
    // A toolkit list is placed as it shows closed; it sizes its own drop-down.
    tpl.controls.push_back({fieldId, fieldSymbol, ControlKind::Custom, "", x + labelWidth, y, fieldWidth, 12, style,
                            className});
}

// A column of fields from `firstRow` down; lists get `listWidth` (0: the
// fields' width).
template <size_t N>
void AddColumn(DialogTemplate& tpl, const StringTable& s, const Row (&rows)[N], int x, int firstRow, int labelWidth,
               int fieldWidth, int listWidth = 0)
{
    int row = firstRow;
    for (const Row& r : rows)
        AddField(tpl, s, r.label, r.labelSymbol, r.text, r.field, r.fieldSymbol, r.className, x, row++, labelWidth,
                 listWidth && r.className == ComboBox::ClassName ? listWidth : fieldWidth, r.style);
}

DialogTemplate DemographicsTemplate(const StringTable& s)
{
    DialogTemplate tpl{"", 344, 285, "Arial", 10, {}};
    // Left column: who the patient is; right column: the other names and dates.
    constexpr int L = 7, LW = 56, FW = 104, R = 178, RW = 78, RFW = 82;
    AddField(tpl, s, IDC_PAT_ORGANIZATION_LABEL, "IDC_PAT_ORGANIZATION_LABEL", IDS_PATIENT_ORGANIZATION,
             IDC_PAT_ORGANIZATION, "IDC_PAT_ORGANIZATION", ComboBox::ClassName, L, 0, LW, FW, kList);
    AddField(tpl, s, IDC_PAT_MRN_LABEL, "IDC_PAT_MRN_LABEL", IDS_PATIENT_MRN, IDC_PAT_MRN, "IDC_PAT_MRN",
             Edit::ClassName, L, 1, LW, FW - 44);
    tpl.controls.push_back({IDC_PAT_GENERATE, "IDC_PAT_GENERATE", ControlKind::PushButton,
                            s.Load(IDS_PATIENT_GENERATE), L + LW + FW - 40, 8 + 18 - 1, 40, 14, WS_TABSTOP});
    const Row left[] = {
        {IDC_PAT_TITLE_LABEL, "IDC_PAT_TITLE_LABEL", IDS_PATIENT_TITLE, IDC_PAT_TITLE, "IDC_PAT_TITLE", Edit::ClassName, kEdit},
        {IDC_PAT_FIRST_LABEL, "IDC_PAT_FIRST_LABEL", IDS_PATIENT_FIRST, IDC_PAT_FIRST, "IDC_PAT_FIRST", Edit::ClassName, kEdit},
        {IDC_PAT_MIDDLE_LABEL, "IDC_PAT_MIDDLE_LABEL", IDS_PATIENT_MIDDLE, IDC_PAT_MIDDLE, "IDC_PAT_MIDDLE", Edit::ClassName, kEdit},
        {IDC_PAT_LAST_LABEL, "IDC_PAT_LAST_LABEL", IDS_PATIENT_LAST, IDC_PAT_LAST, "IDC_PAT_LAST", Edit::ClassName, kEdit},
        {IDC_PAT_SUFFIX_LABEL, "IDC_PAT_SUFFIX_LABEL", IDS_PATIENT_SUFFIX, IDC_PAT_SUFFIX, "IDC_PAT_SUFFIX", Edit::ClassName, kEdit},
        {IDC_PAT_SEX_LABEL, "IDC_PAT_SEX_LABEL", IDS_PATIENT_SEX, IDC_PAT_SEX, "IDC_PAT_SEX", ComboBox::ClassName, kList},
        {IDC_PAT_GENDER_LABEL, "IDC_PAT_GENDER_LABEL", IDS_PATIENT_GENDER, IDC_PAT_GENDER, "IDC_PAT_GENDER", ComboBox::ClassName, kList},
        {IDC_PAT_DOB_LABEL, "IDC_PAT_DOB_LABEL", IDS_PATIENT_DOB, IDC_PAT_DOB, "IDC_PAT_DOB", DatePickerCtrl::ClassName, WS_TABSTOP},
    };
    AddColumn(tpl, s, left, L, 2, LW, FW);
    const Row right[] = {
        {IDC_PAT_GID_LABEL, "IDC_PAT_GID_LABEL", IDS_PATIENT_SSN, IDC_PAT_GID, "IDC_PAT_GID", Edit::ClassName, kEdit},
        {IDC_PAT_ALIAS_FIRST_LABEL, "IDC_PAT_ALIAS_FIRST_LABEL", IDS_PATIENT_ALIAS_FIRST, IDC_PAT_ALIAS_FIRST, "IDC_PAT_ALIAS_FIRST", Edit::ClassName, kEdit},
        {IDC_PAT_ALIAS_MIDDLE_LABEL, "IDC_PAT_ALIAS_MIDDLE_LABEL", IDS_PATIENT_ALIAS_MIDDLE, IDC_PAT_ALIAS_MIDDLE, "IDC_PAT_ALIAS_MIDDLE", Edit::ClassName, kEdit},
        {IDC_PAT_ALIAS_LAST_LABEL, "IDC_PAT_ALIAS_LAST_LABEL", IDS_PATIENT_ALIAS_LAST, IDC_PAT_ALIAS_LAST, "IDC_PAT_ALIAS_LAST", Edit::ClassName, kEdit},
        {IDC_PAT_MAIDEN_NAME_LABEL, "IDC_PAT_MAIDEN_NAME_LABEL", IDS_PATIENT_MAIDEN_NAME, IDC_PAT_MAIDEN_NAME, "IDC_PAT_MAIDEN_NAME", Edit::ClassName, kEdit},
        {IDC_PAT_DOD_LABEL, "IDC_PAT_DOD_LABEL", IDS_PATIENT_DOD, IDC_PAT_DOD, "IDC_PAT_DOD", DateTimeEditCtrl::ClassName, WS_TABSTOP},
    };
    AddColumn(tpl, s, right, R, 0, RW, RFW);
    return tpl;
}

DialogTemplate ContactTemplate(const StringTable& s)
{
    DialogTemplate tpl{"", 344, 217, "Arial", 10, {}};
    constexpr int L = 7, LW = 66, FW = 200;
    AddField(tpl, s, IDC_CON_ADDRESS_LABEL, "IDC_CON_ADDRESS_LABEL", IDS_CONTACT_ADDRESS, IDC_CON_ADDRESS1,
             "IDC_CON_ADDRESS1", Edit::ClassName, L, 0, LW, FW);
    // The second address line has no label of its own.
    tpl.controls.push_back({IDC_CON_ADDRESS2, "IDC_CON_ADDRESS2", ControlKind::Custom, "", L + LW, 8 + 18, FW, 12,
                            kEdit, Edit::ClassName});
    const Row rows[] = {
        {IDC_CON_CITY_LABEL, "IDC_CON_CITY_LABEL", IDS_CONTACT_CITY, IDC_CON_CITY, "IDC_CON_CITY", Edit::ClassName, kEdit},
        {IDC_CON_STATE_LABEL, "IDC_CON_STATE_LABEL", IDS_CONTACT_STATE, IDC_CON_STATE, "IDC_CON_STATE", ComboBox::ClassName, kList},
        {IDC_CON_POSTAL_CODE_LABEL, "IDC_CON_POSTAL_CODE_LABEL", IDS_CONTACT_POSTAL_CODE, IDC_CON_POSTAL_CODE, "IDC_CON_POSTAL_CODE", Edit::ClassName, kEdit},
        {IDC_CON_COUNTRY_LABEL, "IDC_CON_COUNTRY_LABEL", IDS_CONTACT_COUNTRY, IDC_CON_COUNTRY, "IDC_CON_COUNTRY", ComboBox::ClassName, kList},
        {IDC_CON_HOME_PHONE_LABEL, "IDC_CON_HOME_PHONE_LABEL", IDS_CONTACT_HOME_PHONE, IDC_CON_HOME_PHONE, "IDC_CON_HOME_PHONE", Edit::ClassName, kEdit},
        {IDC_CON_WORK_PHONE_LABEL, "IDC_CON_WORK_PHONE_LABEL", IDS_CONTACT_WORK_PHONE, IDC_CON_WORK_PHONE, "IDC_CON_WORK_PHONE", Edit::ClassName, kEdit},
        {IDC_CON_EMAIL_LABEL, "IDC_CON_EMAIL_LABEL", IDS_CONTACT_EMAIL, IDC_CON_EMAIL, "IDC_CON_EMAIL", Edit::ClassName, kEdit},
    };
    AddColumn(tpl, s, rows, L, 2, LW, FW, FW / 2 + 20);
    return tpl;
}

DialogTemplate LinksTemplate(const StringTable& s)
{
    DialogTemplate tpl{"", 374, 217, "Arial", 10, {}};
    tpl.controls = {
        {IDC_LINKS_LIST, "IDC_LINKS_LIST", ControlKind::Custom, "", 5, 9, 334, 143, WS_TABSTOP},
        {IDC_LINKS_REMOVE, "IDC_LINKS_REMOVE", ControlKind::PushButton, s.Load(IDS_LINKS_REMOVE), 263, 157, 76, 16,
         WS_TABSTOP},
    };
    return tpl;
}

DialogTemplate CreateLinkedTemplate(const StringTable& s)
{
    DialogTemplate tpl{"", 344, 212, "Arial", 10, {}};
    // The captions stand over the rows' lists and edits, and "+" and "-"
    // beside the first row; rows start 50 pixels down and 30 in.
    tpl.controls = {
        {IDC_CL_ORGANIZATION_CAPTION, "IDC_CL_ORGANIZATION_CAPTION", ControlKind::Static,
         s.Load(IDS_CREATE_LINKED_ORGANIZATION), 31, 14, 90, 10},
        {IDC_CL_MRN_CAPTION, "IDC_CL_MRN_CAPTION", ControlKind::Static, s.Load(IDS_CREATE_LINKED_MRN), 137, 14, 90,
         10},
        {IDC_CL_ADD, "IDC_CL_ADD", ControlKind::PushButton, "+", 244, 28, 16, 13, WS_TABSTOP},
        {IDC_CL_REMOVE, "IDC_CL_REMOVE", ControlKind::PushButton, "-", 264, 28, 16, 13, WS_TABSTOP},
    };
    return tpl;
}

DialogTemplate CreateLinkedRowTemplate()
{
    DialogTemplate tpl{"", 268, 22, "Arial", 10, {}};
    tpl.controls = {
        {IDC_CL_ROW_CHECK, "IDC_CL_ROW_CHECK", ControlKind::CheckBox, "", 4, 6, 10, 10, WS_TABSTOP},
        {IDC_CL_ROW_ORGANIZATION, "IDC_CL_ROW_ORGANIZATION", ControlKind::ComboDropDownList, "", 16, 4, 100, 100,
         kList},
        {IDC_CL_ROW_MRN, "IDC_CL_ROW_MRN", ControlKind::Custom, "", 122, 4, 98, 12, kEdit, Edit::ClassName},
    };
    return tpl;
}

// The frame holds no controls of its own; pages fill it.
DialogTemplate FrameTemplate()
{
    return DialogTemplate::EmptyFrame(186, 95, 8);
}

} // namespace

void AddPatientTemplates(ModuleState& state)
{
    const StringTable& s = state.Strings();
    state.AddTemplate(IDD_PATIENT_DLG, FrameTemplate());
    state.AddTemplate(IDD_PATIENT_DEMOGRAPHICS, DemographicsTemplate(s));
    state.AddTemplate(IDD_PATIENT_CONTACT, ContactTemplate(s));
    state.AddTemplate(IDD_PATIENT_LINKS, LinksTemplate(s));
    state.AddTemplate(IDD_PATIENT_CREATE_LINKED, CreateLinkedTemplate(s));
    state.AddTemplate(IDD_PATIENT_CREATE_LINKED_ROW, CreateLinkedRowTemplate());
}

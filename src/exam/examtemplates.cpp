// The exam dialog's page templates: Info (the exam's own data), History,
// Providers and Links. Labels take ids from IDC_EXAM_LABEL_FIRST on.

#include "boundary/moduletemplates.h"
#include "boundary/resource.h"

#include "combobox.h"
#include "contactinfo.h"
#include "datetimeeditctrl.h"
#include "dialogtemplate.h"
#include "edit.h"
#include "modulestate.h"
#include "picker.h"
#include "scrolledit.h"
#include "stringtable.h"
#include "timeeditctrl.h"

namespace {

constexpr DWORD kReadOnly = ES_READONLY | ES_AUTOHSCROLL | WS_BORDER;

DialogControl Label(int n, const StringTable& s, UINT text, int x, int y, int cx = 72)
{
    return {IDC_EXAM_LABEL_FIRST + n, "IDC_EXAM_LABEL", ControlKind::Static, s.Load(text), x, y + 2, cx, 10};
}

DialogControl Custom(int id, const char* symbol, const char* className, int x, int y, int cx, int cy = 13,
                     DWORD style = WS_TABSTOP)
{
    DialogControl c{id, symbol, ControlKind::Custom, "", x, y, cx, cy, style};
    c.className = className;
    return c;
}

DialogControl ReadOnly(int id, const char* symbol, int x, int y, int cx)
{
    return {id, symbol, ControlKind::Edit, "", x, y, cx, 13, kReadOnly};
}

DialogTemplate InfoTemplate(const StringTable& s)
{
    // Two columns: the order's own data on the left, what the exam code
    // brings and the pickers on the right.
    const int l = 8, lc = 80, r = 226, rc = 306, w = 140;
    return DialogTemplate{
        "",
        460,
        150,
        "Arial",
        9,
        {
            Label(0, s, IDS_LBL_ORGANIZATION, l, 12),
            ReadOnly(IDC_EXAM_ORGANIZATION, "IDC_EXAM_ORGANIZATION", lc, 12, w),
            Label(1, s, IDS_LBL_PRIORITY, l, 30),
            Custom(IDC_EXAM_PRIORITY, "IDC_EXAM_PRIORITY", ComboBox::ClassName, lc, 30, w, 13,
                   WS_TABSTOP | WS_VSCROLL),
            Label(2, s, IDS_LBL_ACCESSION, l, 48),
            Custom(IDC_EXAM_ACCESSION, "IDC_EXAM_ACCESSION", Edit::ClassName, lc, 48, 92, 13,
                   WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL),
            {IDC_EXAM_GENERATE, "IDC_EXAM_GENERATE", ControlKind::PushButton, s.Load(IDS_GENERATE), lc + 96, 47, 44,
             15, WS_TABSTOP},
            Label(3, s, IDS_LBL_STATUS, l, 66),
            ReadOnly(IDC_EXAM_STATUS, "IDC_EXAM_STATUS", lc, 66, w),
            Label(4, s, IDS_LBL_SCHEDULED, l, 84),
            Custom(IDC_EXAM_SCHEDULED_DATE, "IDC_EXAM_SCHEDULED_DATE", DateTimeEditCtrl::ClassName, lc, 84, 82),
            Custom(IDC_EXAM_SCHEDULED_TIME, "IDC_EXAM_SCHEDULED_TIME", TimeEditCtrl::ClassName, lc + 86, 84, 54),
            Label(5, s, IDS_LBL_PERFORMED, l, 102),
            Custom(IDC_EXAM_PERFORMED_DATE, "IDC_EXAM_PERFORMED_DATE", DateTimeEditCtrl::ClassName, lc, 102, 82),
            Custom(IDC_EXAM_PERFORMED_TIME, "IDC_EXAM_PERFORMED_TIME", TimeEditCtrl::ClassName, lc + 86, 102, 54),
            Label(6, s, IDS_LBL_EXAM_CODE, r, 12),
            Custom(IDC_EXAM_CODE, "IDC_EXAM_CODE", Picker::ClassName, rc, 12, w),
            Label(7, s, IDS_LBL_MODALITY, r, 30),
            ReadOnly(IDC_EXAM_MODALITY, "IDC_EXAM_MODALITY", rc, 30, w),
            Label(8, s, IDS_LBL_DESCRIPTION, r, 48),
            ReadOnly(IDC_EXAM_DESCRIPTION, "IDC_EXAM_DESCRIPTION", rc, 48, w),
            Label(9, s, IDS_LBL_BODY_PART, r, 66),
            ReadOnly(IDC_EXAM_BODY_PART, "IDC_EXAM_BODY_PART", rc, 66, w),
            Label(10, s, IDS_LBL_MODIFIER, r, 84),
            Custom(IDC_EXAM_MODIFIER, "IDC_EXAM_MODIFIER", Picker::ClassName, rc, 84, w),
            Label(11, s, IDS_LBL_RESOURCE, r, 102),
            Custom(IDC_EXAM_RESOURCE, "IDC_EXAM_RESOURCE", Picker::ClassName, rc, 102, w),
            Label(12, s, IDS_LBL_LOCATION, r, 120),
            Custom(IDC_EXAM_LOCATION, "IDC_EXAM_LOCATION", Picker::ClassName, rc, 120, w),
        }};
}

DialogTemplate HistoryTemplate(const StringTable& s)
{
    auto group = [&](int n, UINT text, int y) {
        return DialogControl{IDC_HISTORY_GROUP_FIRST + n, "IDC_HISTORY_GROUP", ControlKind::GroupBox, s.Load(text),
                             7, y, 500, 64};
    };
    return DialogTemplate{
        "",
        540,
        216,
        "Arial",
        9,
        {
            group(0, IDS_GRP_SIGNS, 4),
            Custom(IDC_HISTORY_SIGNS, "IDC_HISTORY_SIGNS", ScrollEdit::ClassName, 14, 16, 486, 48),
            group(1, IDS_GRP_HISTORY, 74),
            Custom(IDC_HISTORY_HISTORY, "IDC_HISTORY_HISTORY", ScrollEdit::ClassName, 14, 86, 486, 48),
            group(2, IDS_GRP_COMMENTS, 144),
            Custom(IDC_HISTORY_COMMENTS, "IDC_HISTORY_COMMENTS", ScrollEdit::ClassName, 14, 156, 486, 48),
        }};
}

DialogTemplate ProvidersTemplate(const StringTable& s)
{
    return DialogTemplate{
        "",
        540,
        150,
        "Arial",
        9,
        {
            {IDC_PROVIDER_LABEL_FIRST, "IDC_PROVIDER_LABEL", ControlKind::Static, s.Load(IDS_LBL_REFERRING), 10, 14,
             86, 10},
            Custom(IDC_PROVIDER_PICKER, "IDC_PROVIDER_PICKER", Picker::ClassName, 96, 12, 200),
            {IDC_PROVIDER_LABEL_FIRST + 1, "IDC_PROVIDER_LABEL", ControlKind::Static, s.Load(IDS_LBL_PROVIDER_ID),
             10, 32, 86, 10},
            {IDC_PROVIDER_ID, "IDC_PROVIDER_ID", ControlKind::Static, s.Load(IDS_PROVIDER_ID_NONE), 96, 32, 200, 10},
            // The contact panel is put here when the page opens.
            Custom(IDC_PROVIDER_CONTACT_AREA, "IDC_PROVIDER_CONTACT_AREA", nullptr, 10, 50, 286, 80, 0),
        }};
}

DialogTemplate LinksTemplate(const StringTable& s)
{
    return DialogTemplate{
        "",
        540,
        216,
        "Arial",
        9,
        {
            // The list is made in code over this area (the toolkit's list control).
            Custom(IDC_LINKED_EXAMS_AREA, "IDC_LINKED_EXAMS_AREA", nullptr, 7, 7, 500, 180, 0),
            {IDC_REMOVE_FROM_LINK, "IDC_REMOVE_FROM_LINK", ControlKind::PushButton, s.Load(IDS_REMOVE_FROM_LINK), 427,
             193, 80, 15, WS_TABSTOP},
        }};
}

} // namespace

void AddExamTemplates(ModuleState& state)
{
    state.AddTemplate(IDD_EXAMINFO, InfoTemplate(state.Strings()));
    state.AddTemplate(IDD_EXAMHISTORY, HistoryTemplate(state.Strings()));
    state.AddTemplate(IDD_EXAMPROVIDERS, ProvidersTemplate(state.Strings()));
    state.AddTemplate(IDD_EXAMLINKS, LinksTemplate(state.Strings()));
}

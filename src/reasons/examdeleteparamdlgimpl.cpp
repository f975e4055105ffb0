#include "reasons/examdeleteparamdlgimpl.h"

#include "boundary/moduletemplates.h"
#include "boundary/resource.h"

#include "dictionaryrecord.h"

#include "ccombobox.h"
#include "colorschema.h"
#include "messagebox.h"
#include "modulestate.h"
#include "stringtable.h"

#include <QResizeEvent>

DialogTemplate ExamDeleteParamDlgImpl::MakeTemplate(const StringTable& strings)
{
    return DialogTemplate{
        "",
        238,
        110,
        "Arial",
        10,
        {
            {IDC_PREDEFINED_REASONS_LABEL, "IDC_PREDEFINED_REASONS_LABEL", ControlKind::Static,
             strings.Load(IDS_PREDEFINED_REASONS), 7, 8, 79, 14},
            {IDC_REASON_LIST, "IDC_REASON_LIST", ControlKind::ComboDropDownList, "", 88, 8, 143, 95,
             CBS_SORT | WS_VSCROLL | WS_TABSTOP},
            {IDC_REASON_NOTE, "IDC_REASON_NOTE", ControlKind::Static, "", 7, 25, 122, 8},
            {IDC_DELETE_STUDIES, "IDC_DELETE_STUDIES", ControlKind::CheckBox, strings.Load(IDS_DELETE_STUDIES), 169,
             25, 62, 10, WS_TABSTOP},
            {IDC_PERMANENT_DELETE, "IDC_PERMANENT_DELETE", ControlKind::CheckBox, strings.Load(IDS_PERMANENT_DELETE),
             7, 25, 75, 10, WS_TABSTOP | WS_HIDDEN},
            {IDC_REASON_EDIT, "IDC_REASON_EDIT", ControlKind::MultiLineEdit, "", 7, 35, 224, 65,
             WS_VSCROLL | WS_BORDER | ES_WANTRETURN | WS_TABSTOP},
        }};
}

void AddReasonTemplates(ModuleState& state)
{
    state.AddTemplate(IDD_EXAMDELETEPARAM, ExamDeleteParamDlgImpl::MakeTemplate(state.Strings()));
}

ExamDeleteParamDlgImpl::ExamDeleteParamDlgImpl(CWnd* parent) : CDialog(IDD_EXAMDELETEPARAM, parent)
{
    QPalette pal = palette();
    pal.setColor(QPalette::Window, toQColor(ColorSchema::Instance().GetPageBkColor()));
    pal.setColor(QPalette::WindowText, toQColor(ColorSchema::Instance().GetTextColorNormal()));
    setPalette(pal);
    setAutoFillBackground(true);

    const DialogTemplate& tpl = Template();
    const DialogUnits& units = Units();
    if (const DialogControl* edit = tpl.Find(IDC_REASON_EDIT))
        m_nEditMargin = units.MapControl(*edit).left;
    if (const DialogControl* box = tpl.Find(IDC_DELETE_STUDIES))
        m_nDeleteStudiesRightMargin = units.ToPixelsX(tpl.cx) - units.MapControl(*box).right;

    if (auto* list = GetDlgItemAs<CComboBox>(IDC_REASON_LIST))
        connect(list, &CComboBox::selectionChanged, this, &ExamDeleteParamDlgImpl::OnSelchangeReasons);
}

ExamDeleteParamDlgImpl::~ExamDeleteParamDlgImpl() = default;

BOOL ExamDeleteParamDlgImpl::OnInitDialog()
{
    CDialog::OnInitDialog();
    auto* list = GetDlgItemAs<CComboBox>(IDC_REASON_LIST);
    if (!list)
        return TRUE;
    // Explicit positions: the list is sorted by style, but the dictionary's
    // order is the one users expect.
    int index = 0;
    for (DictionaryRecord* reason : m_reasons) {
        if (!reason)
            continue;
        const int at = list->InsertString(index, CString(reason->GetDescription().c_str()));
        if (at >= 0) {
            list->SetItemDataPtr(at, reason);
            ++index;
        }
    }
    if (list->GetCount() > 0) {
        list->SetCurSel(0);
        if (const auto* first = static_cast<const DictionaryRecord*>(list->GetItemDataPtr(0)))
            m_strReason = CString(first->GetDescription().c_str());
        SetDlgItemText(IDC_REASON_EDIT, m_strReason);
    }
    return TRUE;
}

void ExamDeleteParamDlgImpl::OnSelchangeReasons(int)
{
    auto* list = GetDlgItemAs<CComboBox>(IDC_REASON_LIST);
    if (!list)
        return;
    const int sel = list->GetCurSel();
    if (sel < 0)
        return;
    const auto* reason = static_cast<const DictionaryRecord*>(list->GetItemDataPtr(sel));
    m_strReason = reason ? CString(reason->GetDescription().c_str()) : list->GetLBText(sel);
    // The chosen reason replaces whatever was typed.
    SetDlgItemText(IDC_REASON_EDIT, m_strReason);
}

BOOL ExamDeleteParamDlgImpl::ExchangeData(BOOL save, bool validate)
{
    m_bValidate = validate;
    const BOOL ok = UpdateData(save);
    m_bValidate = false;
    return ok;
}

void ExamDeleteParamDlgImpl::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Check(pDX, IDC_DELETE_STUDIES, m_nDeleteStudies);
    DDX_Check(pDX, IDC_PERMANENT_DELETE, m_nPermanentDelete);
    DDX_Text(pDX, IDC_REASON_EDIT, m_strReason);
    if (pDX->m_bSaveAndValidate && m_bValidate) {
        // Only the test trims: the reason is kept as typed.
        CString trimmed = m_strReason;
        trimmed.Trim();
        if (trimmed.IsEmpty()) {
            AfxMessageBox(IDS_REASON_EMPTY);
            pDX->Fail();
        }
    }
}

void ExamDeleteParamDlgImpl::ShowDeleteStudies(bool show)
{
    ::ShowWindow(GetDlgItem(IDC_DELETE_STUDIES), show ? SW_SHOW : SW_HIDE);
}

void ExamDeleteParamDlgImpl::EnableDeleteStudies(bool enable)
{
    ::EnableWindow(GetDlgItem(IDC_DELETE_STUDIES), enable ? TRUE : FALSE);
}

void ExamDeleteParamDlgImpl::ShowPermanentDelete(bool show)
{
    ::ShowWindow(GetDlgItem(IDC_PERMANENT_DELETE), show ? SW_SHOW : SW_HIDE);
}

void ExamDeleteParamDlgImpl::SetNoteText(const CString& text) { SetDlgItemText(IDC_REASON_NOTE, text); }

void ExamDeleteParamDlgImpl::resizeEvent(QResizeEvent* event)
{
    CDialog::resizeEvent(event);
    OnSize(event->size().width(), event->size().height());
}

void ExamDeleteParamDlgImpl::OnSize(int cx, int cy)
{
    if (CWnd* edit = GetDlgItem(IDC_REASON_EDIT)) {
        const QRect r = edit->geometry();
        ::MoveWindow(edit, CRect(r.x(), r.y(), std::max(r.x(), cx - m_nEditMargin), std::max(r.y(), cy - m_nEditMargin)));
    }
    if (CWnd* box = GetDlgItem(IDC_DELETE_STUDIES)) {
        const QRect r = box->geometry();
        box->move(cx - m_nDeleteStudiesRightMargin - r.width(), r.y());
    }
}

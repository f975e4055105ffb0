#include "pickerdlg.h"

#include "cedit.h"
#include "cstatic.h"
#include "listctrlex.h"
#include "listtextsubitem.h"
#include "toolkitnotify.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QResizeEvent>
#include <QTimer>

namespace {
// Template geometry (dialog units) the resize keeps: the list fills what the
// search row and the note line leave.
constexpr int kMargin = 7;
constexpr int kListTop = 26;
constexpr int kNoteHeight = 10;
constexpr int kButtonHeight = 14;
} // namespace

PickerSource::~PickerSource() = default;

DialogTemplate PickerDlg::MakeTemplate(const CString& caption)
{
    return DialogTemplate{
        caption,
        330,
        220,
        "Arial",
        9,
        {
            {IDC_PICKER_SEARCH_LABEL, "IDC_PICKER_SEARCH_LABEL", ControlKind::Static, "Search:", kMargin, 9, 32, 10},
            {IDC_PICKER_SEARCH, "IDC_PICKER_SEARCH", ControlKind::Edit, "", 42, 7, 281, 13, WS_TABSTOP | WS_BORDER},
            {IDC_PICKER_NOTE, "IDC_PICKER_NOTE", ControlKind::Static, "", kMargin, 178, 316, kNoteHeight},
            {IDOK, "IDOK", ControlKind::DefPushButton, "OK", 219, 199, 50, kButtonHeight, WS_TABSTOP},
            {IDCANCEL, "IDCANCEL", ControlKind::PushButton, "Cancel", 273, 199, 50, kButtonHeight, WS_TABSTOP},
        }};
}

PickerDlg::PickerDlg(PickerSource& source, const CString& searchText, CWnd* parent)
    : CDialog(MakeTemplate(source.Caption()), parent), m_source(source), m_strSearch(searchText)
{
    setObjectName(QStringLiteral("PickerDlg"));
    m_pList = new ListCtrlEx(this);
    m_pList->Create(WS_TABSTOP, CRect(), this, IDC_PICKER_LIST);
    m_pList->setObjectName(QStringLiteral("IDC_PICKER_LIST"));
    m_pList->SetFullRowSelection(true);
    m_pList->setSelectionMode(source.AllowsSeveral() ? QAbstractItemView::ExtendedSelection
                                                     : QAbstractItemView::SingleSelection);
    for (const Column& column : source.Columns())
        m_pList->AddColumn(column);
    // The list follows the search field in the tab order.
    if (auto* edit = GetDlgItemAs<CEdit>(IDC_PICKER_SEARCH)) {
        setTabOrder(edit, m_pList);
        edit->lineEdit()->installEventFilter(this);
        connect(edit, &CEdit::edited, this, &PickerDlg::OnSearchChanged);
    }
}

PickerDlg::~PickerDlg() = default;

BOOL PickerDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    auto* edit = GetDlgItemAs<CEdit>(IDC_PICKER_SEARCH);
    if (edit) {
        edit->SetWindowText(m_strSearch);
        edit->SetFocus();
    }
    Fill(m_source.Search(m_strSearch));
    // The focus stays in the search field: typing narrows the list at once.
    return FALSE;
}

CString PickerDlg::GetNote() const
{
    auto* note = GetDlgItemAs<CStatic>(IDC_PICKER_NOTE);
    return note ? note->GetWindowText() : CString();
}

void PickerDlg::Search(const CString& text)
{
    if (auto* edit = GetDlgItemAs<CEdit>(IDC_PICKER_SEARCH))
        edit->SetWindowText(text);
    OnSearchChanged();
}

void PickerDlg::OnSearchChanged()
{
    if (auto* edit = GetDlgItemAs<CEdit>(IDC_PICKER_SEARCH))
        m_strSearch = edit->GetWindowText();
    Fill(m_source.Search(m_strSearch));
}

void PickerDlg::Fill(const CString& note)
{
    m_pList->setUpdatesEnabled(false);
    m_pList->DeleteAllItems();
    const int count = m_source.Count();
    const int shown = count < kMaxRows ? count : kMaxRows;
    for (int row = 0; row < shown; ++row) {
        std::vector<ListSubItemPtr> cells;
        int column = 0;
        for (const CString& text : m_source.RowTexts(row))
            cells.push_back(std::make_unique<ListTextSubItem>(column++, text));
        m_pList->InsertItem(std::move(cells), static_cast<DWORD_PTR>(row));
    }
    // The best match is highlighted, so Enter takes it.
    if (shown > 0)
        m_pList->SetItemSelected(0, true);
    m_pList->setUpdatesEnabled(true);

    CString text = note;
    if (text.IsEmpty() && count > shown)
        text.Format("Showing the first %d of %d matches. Type more to narrow the list.", shown, count);
    else if (text.IsEmpty() && count == 0)
        text = "Nothing matches. Change the text to search again.";
    if (auto* label = GetDlgItemAs<CStatic>(IDC_PICKER_NOTE))
        label->SetWindowText(text);
}

void PickerDlg::MoveSelection(int delta)
{
    const int count = m_pList->GetItemCount();
    if (count == 0)
        return;
    int row = m_pList->GetFirstSelectedItem() + delta;
    row = row < 0 ? 0 : (row >= count ? count - 1 : row);
    m_pList->ClearSelection();
    m_pList->SetItemSelected(row, true);
    m_pList->scrollTo(m_pList->model()->index(row, 0));
}

void PickerDlg::OnOK()
{
    m_chosen = m_pList->GetSelectedItems();
    // Nothing highlighted: there is nothing to take yet, so the dialog stays.
    if (m_chosen.empty())
        return;
    EndDialog(IDOK);
}

bool PickerDlg::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const int page = 10;
        switch (key) {
        case Qt::Key_Down: MoveSelection(1); return true;
        case Qt::Key_Up: MoveSelection(-1); return true;
        case Qt::Key_PageDown: MoveSelection(page); return true;
        case Qt::Key_PageUp: MoveSelection(-page); return true;
        default: break;
        }
    }
    return CDialog::eventFilter(watched, event);
}

LRESULT PickerDlg::OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (NMHDR* hdr = NotifyHeaderFrom(msg, lParam)) {
        if (hdr->idFrom == static_cast<UINT>(IDC_PICKER_LIST) && hdr->code == NM_DBLCLK) {
            OnOK();
            return 1;
        }
    }
    return CDialog::OnRegisteredMessage(msg, wParam, lParam);
}

void PickerDlg::showEvent(QShowEvent* event)
{
    CDialog::showEvent(event);
    // Showing the dialog focuses the field as if tabbed to, which selects
    // its text; the caret goes after it instead, so typing on narrows what
    // the picker had.
    // (after the window's activation, which gives the focus once more).
    if (auto* edit = GetDlgItemAs<CEdit>(IDC_PICKER_SEARCH)) {
        QLineEdit* line = edit->lineEdit();
        QTimer::singleShot(0, line, [line] {
            line->deselect();
            line->end(false);
        });
    }
}

void PickerDlg::resizeEvent(QResizeEvent* event)
{
    CDialog::resizeEvent(event);
    const DialogUnits& units = Units();
    const int margin = units.ToPixelsX(kMargin);
    const int top = units.ToPixelsY(kListTop);
    const int bottom = event->size().height() - units.ToPixelsY(kNoteHeight + kButtonHeight + 3 * kMargin / 2 + 2);
    m_pList->setGeometry(margin, top, event->size().width() - 2 * margin, bottom - top);
}

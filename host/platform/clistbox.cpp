#include "clistbox.h"

#include "qtconvert.h"

namespace {
constexpr int kDataRole = Qt::UserRole + 1;
}

CListBox::CListBox(QWidget* parent, bool sorted, bool multiSelect) : QListWidget(parent), m_sorted(sorted)
{
    setSelectionMode(multiSelect ? QAbstractItemView::MultiSelection : QAbstractItemView::SingleSelection);
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!m_programmatic)
            emit selectionChanged(row);
    });
    connect(this, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem* item) { emit doubleClicked(row(item)); });
}

int CListBox::AddString(const CString& text)
{
    const QString q = toQString(text);
    int at = count();
    if (m_sorted) {
        for (int i = 0; i < count(); ++i) {
            if (QString::compare(item(i)->text(), q, Qt::CaseInsensitive) > 0) {
                at = i;
                break;
            }
        }
    }
    m_programmatic = true;
    insertItem(at, q);
    m_programmatic = false;
    return at;
}

int CListBox::InsertString(int index, const CString& text)
{
    if (index < 0)
        index = count();
    if (index > count())
        return LB_ERR;
    m_programmatic = true;
    insertItem(index, toQString(text));
    m_programmatic = false;
    return index;
}

int CListBox::DeleteString(UINT index)
{
    if (index >= static_cast<UINT>(count()))
        return LB_ERR;
    m_programmatic = true;
    delete takeItem(static_cast<int>(index));
    m_programmatic = false;
    return count();
}

void CListBox::ResetContent()
{
    m_programmatic = true;
    clear();
    m_programmatic = false;
}

int CListBox::GetCount() const { return count(); }

int CListBox::GetCurSel() const
{
    const QList<QListWidgetItem*> sel = selectedItems();
    if (selectionMode() == QAbstractItemView::SingleSelection)
        return sel.isEmpty() ? LB_ERR : row(sel.first());
    return currentRow() >= 0 ? currentRow() : LB_ERR;
}

int CListBox::SetCurSel(int index)
{
    m_programmatic = true;
    if (index < 0 || index >= count()) {
        clearSelection();
        setCurrentRow(-1);
        m_programmatic = false;
        return LB_ERR;
    }
    setCurrentRow(index);
    m_programmatic = false;
    return index;
}

int CListBox::GetSel(int index) const
{
    if (index < 0 || index >= count())
        return LB_ERR;
    return item(index)->isSelected() ? 1 : 0;
}

int CListBox::SetSel(int index, BOOL select)
{
    m_programmatic = true;
    if (index < 0) {
        for (int i = 0; i < count(); ++i)
            item(i)->setSelected(select != FALSE);
    } else if (index < count()) {
        item(index)->setSelected(select != FALSE);
    } else {
        m_programmatic = false;
        return LB_ERR;
    }
    m_programmatic = false;
    return 0;
}

int CListBox::GetSelCount() const { return static_cast<int>(selectedItems().size()); }

int CListBox::GetText(int index, CString& text) const
{
    if (index < 0 || index >= count())
        return LB_ERR;
    text = fromQString(item(index)->text());
    return text.GetLength();
}

CString CListBox::GetText(int index) const
{
    CString s;
    GetText(index, s);
    return s;
}

int CListBox::find(int start, const QString& text, bool exact) const
{
    const int n = count();
    if (n == 0)
        return LB_ERR;
    if (start < 0 || start >= n)
        start = -1;
    for (int k = 1; k <= n; ++k) {
        const int i = (start + k) % n;
        const QString t = item(i)->text();
        if (exact ? QString::compare(t, text, Qt::CaseInsensitive) == 0 : t.startsWith(text, Qt::CaseInsensitive))
            return i;
    }
    return LB_ERR;
}

int CListBox::FindStringExact(int start, const CString& text) const { return find(start, toQString(text), true); }
int CListBox::FindString(int start, const CString& prefix) const { return find(start, toQString(prefix), false); }

int CListBox::SetItemData(int index, DWORD_PTR data)
{
    if (index < 0 || index >= count())
        return LB_ERR;
    item(index)->setData(kDataRole, QVariant::fromValue<quintptr>(data));
    return 0;
}

DWORD_PTR CListBox::GetItemData(int index) const
{
    if (index < 0 || index >= count())
        return static_cast<DWORD_PTR>(LB_ERR);
    return static_cast<DWORD_PTR>(item(index)->data(kDataRole).value<quintptr>());
}

int CListBox::SetItemDataPtr(int index, void* data) { return SetItemData(index, reinterpret_cast<DWORD_PTR>(data)); }

void* CListBox::GetItemDataPtr(int index) const
{
    if (index < 0 || index >= count())
        return nullptr;
    return reinterpret_cast<void*>(GetItemData(index));
}

#include "ccombobox.h"

#include "qtconvert.h"

#include <QLineEdit>

namespace {
constexpr int kDataRole = Qt::UserRole + 1;
}

CComboBox::CComboBox(QWidget* parent, bool editable, bool sorted) : QComboBox(parent), m_sorted(sorted)
{
    setEditable(editable);
    if (editable) {
        setInsertPolicy(QComboBox::NoInsert);
        setCompleter(nullptr);
        connect(lineEdit(), &QLineEdit::textEdited, this, [this] { emit editChanged(); });
    }
    setCurrentIndex(-1);
    connect(this, qOverload<int>(&QComboBox::activated), this, [this](int i) { emit selectionChanged(i); });
}

void CComboBox::keepNoSelection(int before)
{
    // QComboBox selects the first item added to an empty box; Windows does not.
    if (before < 0 && currentIndex() >= 0) {
        const QString edit = isEditable() ? currentText() : QString();
        setCurrentIndex(-1);
        if (isEditable())
            setEditText(edit);
    }
}

int CComboBox::AddString(const CString& text)
{
    const QString q = toQString(text);
    int at = count();
    if (m_sorted) {
        for (int i = 0; i < count(); ++i) {
            if (QString::compare(itemText(i), q, Qt::CaseInsensitive) > 0) {
                at = i;
                break;
            }
        }
    }
    const int before = currentIndex();
    const QString edit = isEditable() ? currentText() : QString();
    insertItem(at, q);
    keepNoSelection(before);
    if (isEditable() && before < 0)
        setEditText(edit);
    return at;
}

int CComboBox::InsertString(int index, const CString& text)
{
    if (index < 0)
        index = count();
    if (index > count())
        return CB_ERR;
    const int before = currentIndex();
    const QString edit = isEditable() ? currentText() : QString();
    insertItem(index, toQString(text));
    keepNoSelection(before);
    if (isEditable() && before < 0)
        setEditText(edit);
    return index;
}

int CComboBox::DeleteString(UINT index)
{
    if (index >= static_cast<UINT>(count()))
        return CB_ERR;
    const bool wasSelected = currentIndex() == static_cast<int>(index);
    removeItem(static_cast<int>(index));
    if (wasSelected)
        setCurrentIndex(-1);
    return count();
}

void CComboBox::ResetContent()
{
    clear();
    if (isEditable())
        setEditText(QString());
}

int CComboBox::GetCount() const { return count(); }

int CComboBox::GetCurSel() const { return currentIndex() >= 0 ? currentIndex() : CB_ERR; }

int CComboBox::SetCurSel(int index)
{
    if (index < 0 || index >= count()) {
        setCurrentIndex(-1);
        if (isEditable())
            setEditText(QString());
        return CB_ERR;
    }
    setCurrentIndex(index);
    return index;
}

int CComboBox::GetLBText(int index, CString& text) const
{
    if (index < 0 || index >= count())
        return CB_ERR;
    text = fromQString(itemText(index));
    return text.GetLength();
}

CString CComboBox::GetLBText(int index) const
{
    CString s;
    GetLBText(index, s);
    return s;
}

int CComboBox::GetLBTextLen(int index) const
{
    if (index < 0 || index >= count())
        return CB_ERR;
    return GetLBText(index).GetLength();
}

int CComboBox::find(int start, const QString& text, bool exact) const
{
    const int n = count();
    if (n == 0)
        return CB_ERR;
    if (start < 0 || start >= n)
        start = -1;
    // From the item after start to the end, then from the first up to start itself.
    for (int k = 1; k <= n; ++k) {
        const int i = (start + k) % n;
        const QString item = itemText(i);
        const bool match = exact ? QString::compare(item, text, Qt::CaseInsensitive) == 0
                                 : item.startsWith(text, Qt::CaseInsensitive);
        if (match)
            return i;
    }
    return CB_ERR;
}

int CComboBox::FindStringExact(int start, const CString& text) const { return find(start, toQString(text), true); }

int CComboBox::FindString(int start, const CString& prefix) const { return find(start, toQString(prefix), false); }

int CComboBox::SelectString(int start, const CString& prefix)
{
    const int i = FindString(start, prefix);
    if (i != CB_ERR)
        setCurrentIndex(i);
    return i;
}

int CComboBox::SetItemData(int index, DWORD_PTR data)
{
    if (index < 0 || index >= count())
        return CB_ERR;
    setItemData(index, QVariant::fromValue<quintptr>(data), kDataRole);
    return 0;
}

DWORD_PTR CComboBox::GetItemData(int index) const
{
    if (index < 0 || index >= count())
        return static_cast<DWORD_PTR>(CB_ERR);
    return static_cast<DWORD_PTR>(itemData(index, kDataRole).value<quintptr>());
}

int CComboBox::SetItemDataPtr(int index, void* data) { return SetItemData(index, reinterpret_cast<DWORD_PTR>(data)); }

void* CComboBox::GetItemDataPtr(int index) const
{
    if (index < 0 || index >= count())
        return nullptr;
    return reinterpret_cast<void*>(GetItemData(index));
}

void CComboBox::SetWindowText(const CString& text)
{
    if (isEditable())
        setEditText(toQString(text));
}

CString CComboBox::GetWindowText() const
{
    if (isEditable())
        return fromQString(currentText());
    return currentIndex() >= 0 ? fromQString(itemText(currentIndex())) : CString();
}

void CComboBox::ShowDropDown(BOOL show)
{
    if (show)
        showPopup();
    else
        hidePopup();
}

void CComboBox::showPopup()
{
    m_dropped = true;
    QComboBox::showPopup();
}

void CComboBox::hidePopup()
{
    m_dropped = false;
    QComboBox::hidePopup();
}

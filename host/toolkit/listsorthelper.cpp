#include "listsorthelper.h"

#include "listctrlex.h"
#include "listctrlmodel.h"
#include "qtconvert.h"

#include <algorithm>
#include <numeric>
#include <vector>

ListSortHelper::ListSortHelper(ListCtrlEx* list) : m_list(list) {}

ListSortHelper::~ListSortHelper() = default;

void ListSortHelper::AddSortColumn(int column, SortType type)
{
    m_types[column] = type;
}

ListSortHelper::SortType ListSortHelper::GetSortType(int column) const
{
    const auto it = m_types.find(column);
    return it == m_types.end() ? eText : it->second;
}

void ListSortHelper::SetCurrentSort(int column, bool ascending)
{
    m_current = column;
    m_ascending = ascending;
}

void ListSortHelper::ToggleSort(int column)
{
    if (column == m_current) {
        m_ascending = !m_ascending;
    } else {
        m_current = column;
        m_ascending = true;
    }
}

CString ListSortHelper::GetSortText(int row, int column, DWORD_PTR /*itemData*/) const
{
    const ListSubItem* cell = m_list ? m_list->GetSubItemAt(row, column) : nullptr;
    return cell ? cell->GetText() : CString();
}

QDate ListSortHelper::ParseDate(const CString& text) const
{
    return QDate::fromString(toQString(text).trimmed(), m_datePattern);
}

void ListSortHelper::Sort()
{
    if (!m_list || m_current < 0 || m_current >= m_list->GetColumnCount())
        return;
    const int rows = m_list->GetItemCount();
    if (rows < 2)
        return;

    // One key per row, taken once: the texts are fetched and parsed once, not per comparison.
    struct Key
    {
        QString text;
        QDate date;
    };
    const bool byDate = GetSortType(m_current) == eDate;
    std::vector<Key> keys(static_cast<size_t>(rows));
    for (int r = 0; r < rows; ++r) {
        const CString text = GetSortText(r, m_current, m_list->GetItemData(r));
        Key& k = keys[static_cast<size_t>(r)];
        if (byDate)
            k.date = ParseDate(text);
        else
            k.text = toQString(text);
    }

    std::vector<int> order(static_cast<size_t>(rows));
    std::iota(order.begin(), order.end(), 0);
    const bool ascending = m_ascending;
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        const Key& ka = keys[static_cast<size_t>(a)];
        const Key& kb = keys[static_cast<size_t>(b)];
        int c;
        if (byDate) {
            // A text that is no date sorts before every date.
            if (!ka.date.isValid() || !kb.date.isValid())
                c = (ka.date.isValid() ? 1 : 0) - (kb.date.isValid() ? 1 : 0);
            else
                c = ka.date < kb.date ? -1 : (kb.date < ka.date ? 1 : 0);
        } else {
            c = QString::compare(ka.text, kb.text, Qt::CaseInsensitive);
        }
        return ascending ? c < 0 : c > 0;
    });
    m_list->Model()->ApplyOrder(order);
}

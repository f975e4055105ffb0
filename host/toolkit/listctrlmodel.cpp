#include "listctrlmodel.h"

#include "qtconvert.h"

ListCtrlModel::ListCtrlModel(QObject* parent) : QAbstractTableModel(parent) {}

ListCtrlModel::~ListCtrlModel() = default;

int ListCtrlModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ListCtrlModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant ListCtrlModel::data(const QModelIndex& index, int role) const
{
    const ListSubItem* cell = index.isValid() ? GetSubItem(index.row(), index.column()) : nullptr;
    if (!cell)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return toQString(cell->GetText());
    case Qt::ToolTipRole:
        return cell->GetTooltip().IsEmpty() ? QVariant() : QVariant(toQString(cell->GetTooltip()));
    default:
        return QVariant();
    }
}

QVariant ListCtrlModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
        section < static_cast<int>(m_columns.size()))
        return toQString(m_columns[static_cast<size_t>(section)].GetTitle());
    return QVariant();
}

Qt::ItemFlags ListCtrlModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? (Qt::ItemIsEnabled | Qt::ItemIsSelectable) : Qt::NoItemFlags;
}

int ListCtrlModel::InsertColumn(int index, const Column& column)
{
    const int count = static_cast<int>(m_columns.size());
    if (index < 0 || index > count)
        index = count;
    beginInsertColumns(QModelIndex(), index, index);
    m_columns.insert(m_columns.begin() + index, column);
    for (Row& row : m_rows) {
        row.cells.insert(row.cells.begin() + index, ListSubItemPtr());
        for (size_t c = static_cast<size_t>(index) + 1; c < row.cells.size(); ++c)
            if (row.cells[c])
                row.cells[c]->SetColumn(static_cast<int>(c));
    }
    endInsertColumns();
    return index;
}

bool ListCtrlModel::DeleteColumn(int index)
{
    if (index < 0 || index >= static_cast<int>(m_columns.size()))
        return false;
    beginRemoveColumns(QModelIndex(), index, index);
    m_columns.erase(m_columns.begin() + index);
    for (Row& row : m_rows) {
        row.cells.erase(row.cells.begin() + index);
        for (size_t c = static_cast<size_t>(index); c < row.cells.size(); ++c)
            if (row.cells[c])
                row.cells[c]->SetColumn(static_cast<int>(c));
    }
    endRemoveColumns();
    return true;
}

Column* ListCtrlModel::GetColumn(int index)
{
    if (index < 0 || index >= static_cast<int>(m_columns.size()))
        return nullptr;
    return &m_columns[static_cast<size_t>(index)];
}

int ListCtrlModel::InsertRow(int index, std::vector<ListSubItemPtr> cells, DWORD_PTR data)
{
    const int count = static_cast<int>(m_rows.size());
    if (index < 0 || index > count)
        index = count;
    Row row;
    row.cells.resize(m_columns.size());
    row.data = data;
    for (ListSubItemPtr& cell : cells) {
        if (!cell)
            continue;
        const int c = cell->GetColumn();
        if (c >= 0 && c < static_cast<int>(row.cells.size()))
            row.cells[static_cast<size_t>(c)] = std::move(cell);
    }
    beginInsertRows(QModelIndex(), index, index);
    m_rows.insert(m_rows.begin() + index, std::move(row));
    endInsertRows();
    return index;
}

bool ListCtrlModel::DeleteRow(int index)
{
    if (index < 0 || index >= static_cast<int>(m_rows.size()))
        return false;
    beginRemoveRows(QModelIndex(), index, index);
    m_rows.erase(m_rows.begin() + index);
    endRemoveRows();
    return true;
}

void ListCtrlModel::DeleteAllRows()
{
    if (m_rows.empty())
        return;
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

ListSubItem* ListCtrlModel::GetSubItem(int row, int column) const
{
    if (row < 0 || row >= static_cast<int>(m_rows.size()))
        return nullptr;
    const Row& r = m_rows[static_cast<size_t>(row)];
    if (column < 0 || column >= static_cast<int>(r.cells.size()))
        return nullptr;
    return r.cells[static_cast<size_t>(column)].get();
}

DWORD_PTR ListCtrlModel::GetItemData(int row) const
{
    if (row < 0 || row >= static_cast<int>(m_rows.size()))
        return 0;
    return m_rows[static_cast<size_t>(row)].data;
}

bool ListCtrlModel::SetItemData(int row, DWORD_PTR data)
{
    if (row < 0 || row >= static_cast<int>(m_rows.size()))
        return false;
    m_rows[static_cast<size_t>(row)].data = data;
    return true;
}

void ListCtrlModel::ApplyOrder(const std::vector<int>& order)
{
    if (order.size() != m_rows.size())
        return;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::vector<int> newRowOf(order.size());
    std::vector<Row> rows;
    rows.reserve(m_rows.size());
    for (size_t i = 0; i < order.size(); ++i) {
        rows.push_back(std::move(m_rows[static_cast<size_t>(order[i])]));
        newRowOf[static_cast<size_t>(order[i])] = static_cast<int>(i);
    }
    m_rows = std::move(rows);
    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    to.reserve(from.size());
    for (const QModelIndex& idx : from)
        to.append(index(newRowOf[static_cast<size_t>(idx.row())], idx.column()));
    changePersistentIndexList(from, to);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void ListCtrlModel::RowChanged(int row)
{
    if (row < 0 || row >= static_cast<int>(m_rows.size()) || m_columns.empty())
        return;
    emit dataChanged(index(row, 0), index(row, static_cast<int>(m_columns.size()) - 1));
}

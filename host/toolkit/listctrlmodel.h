#pragma once

// The rows of a ListCtrlEx: each row owns one sub-item per column (or none)
// and carries one pointer-sized item datum. The display role gives a cell's
// text, the tooltip role its tooltip; drawing is the delegate's.

#include "bravik_toolkit_export.h"

#include "column.h"
#include "listsubitem.h"
#include "windefs.h"

#include <QAbstractTableModel>

#include <vector>

class BRAVIK_TOOLKIT_EXPORT ListCtrlModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit ListCtrlModel(QObject* parent = nullptr);
    ~ListCtrlModel() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Columns.
    int InsertColumn(int index, const Column& column);
    bool DeleteColumn(int index);
    const std::vector<Column>& Columns() const { return m_columns; }
    Column* GetColumn(int index);

    // Rows. Cells are placed by their own column; a cell beyond the columns is dropped.
    int InsertRow(int index, std::vector<ListSubItemPtr> cells, DWORD_PTR data);
    bool DeleteRow(int index);
    void DeleteAllRows();
    ListSubItem* GetSubItem(int row, int column) const;
    DWORD_PTR GetItemData(int row) const;
    bool SetItemData(int row, DWORD_PTR data);
    // Reorders the rows: the new row i is the old row order[i]. Selection
    // and current index follow their rows.
    void ApplyOrder(const std::vector<int>& order);
    // Repaint one row.
    void RowChanged(int row);

private:
    struct Row
    {
        std::vector<ListSubItemPtr> cells; // indexed by column
        DWORD_PTR data = 0;
    };
    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
};

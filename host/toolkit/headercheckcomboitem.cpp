#include "headercheckcomboitem.h"

#include "combobox.h"
#include "qtconvert.h"

#include <QAbstractItemView>
#include <QMouseEvent>
#include <QStandardItemModel>

HeaderCheckComboItem::HeaderCheckComboItem(const CString& title)
    : SearchHeaderItem(title), m_combo(new ComboBox(nullptr, true))
{
    SetEditor(m_combo);
    m_listViewport = m_combo->view()->viewport();
    m_listViewport->installEventFilter(this);
    connect(m_combo->model(), &QAbstractItemModel::rowsInserted, this, [this] { makeCheckable(); });
}

HeaderCheckComboItem::~HeaderCheckComboItem()
{
    // The box goes with the base; it must not report to a half-destroyed item.
    if (m_listViewport)
        m_listViewport->removeEventFilter(this);
}

void HeaderCheckComboItem::makeCheckable()
{
    auto* model = qobject_cast<QStandardItemModel*>(m_combo->model());
    if (!model)
        return;
    for (int i = 0; i < model->rowCount(); ++i) {
        QStandardItem* item = model->item(i);
        if (item && !item->data(Qt::CheckStateRole).isValid()) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setData(Qt::Unchecked, Qt::CheckStateRole);
        }
    }
}

void HeaderCheckComboItem::SetItemChecked(int index, bool checked)
{
    auto* model = qobject_cast<QStandardItemModel*>(m_combo->model());
    if (!model || index < 0 || index >= model->rowCount())
        return;
    model->item(index)->setData(checked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    writeText();
}

bool HeaderCheckComboItem::IsItemChecked(int index) const
{
    auto* model = qobject_cast<QStandardItemModel*>(m_combo->model());
    if (!model || index < 0 || index >= model->rowCount())
        return false;
    return model->item(index)->data(Qt::CheckStateRole).toInt() == Qt::Checked;
}

void HeaderCheckComboItem::writeText()
{
    CString text;
    for (int i = 0; i < m_combo->GetCount(); ++i) {
        if (!IsItemChecked(i))
            continue;
        if (!text.IsEmpty())
            text += ",";
        text += m_combo->GetLBText(i);
    }
    m_combo->SetWindowText(text);
}

CString HeaderCheckComboItem::EditorText() const
{
    return m_combo->GetWindowText();
}

void HeaderCheckComboItem::LoadEditor(const CString& text)
{
    makeCheckable();
    // Check the items the text names (blanks around a name do not matter).
    const QStringList names = toQString(text).split(QLatin1Char(','));
    auto* model = qobject_cast<QStandardItemModel*>(m_combo->model());
    for (int i = 0; model && i < model->rowCount(); ++i) {
        const QString itemText = model->item(i)->text();
        bool on = false;
        for (const QString& n : names)
            on = on || n.trimmed().compare(itemText, Qt::CaseInsensitive) == 0;
        model->item(i)->setData(on ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    }
    m_combo->SetCurSel(-1);
    m_combo->SetWindowText(text);
}

bool HeaderCheckComboItem::eventFilter(QObject* watched, QEvent* e)
{
    // A click in the list toggles the item's mark and keeps the list open.
    if (watched == m_listViewport && e->type() == QEvent::MouseButtonRelease) {
        const QModelIndex idx = m_combo->view()->indexAt(static_cast<QMouseEvent*>(e)->position().toPoint());
        if (idx.isValid())
            SetItemChecked(idx.row(), !IsItemChecked(idx.row()));
        return true;
    }
    return QObject::eventFilter(watched, e);
}

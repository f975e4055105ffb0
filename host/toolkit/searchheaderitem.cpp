#include "searchheaderitem.h"

SearchHeaderItem::SearchHeaderItem(const CString& title) : m_title(title) {}

SearchHeaderItem::~SearchHeaderItem()
{
    delete m_editor.data();
}

void SearchHeaderItem::SetEditor(QWidget* editor)
{
    delete m_editor.data();
    m_editor = editor;
    if (m_editor)
        m_editor->hide();
}

void SearchHeaderItem::SetFont(const QFont& font)
{
    if (m_editor)
        m_editor->setFont(font);
}

void SearchHeaderItem::BeginEdit()
{
    if (!m_editor)
        return;
    LoadEditor(m_text);
    m_editing = true;
    m_editor->show();
    m_editor->raise();
    if (QWidget* target = FocusTarget())
        target->setFocus(Qt::TabFocusReason);
}

void SearchHeaderItem::EndEdit(bool commit)
{
    if (!m_editing)
        return;
    m_editing = false;
    if (commit)
        m_text = EditorText();
    if (m_editor)
        m_editor->hide();
}

QList<QWidget*> SearchHeaderItem::FocusWidgets() const
{
    QList<QWidget*> widgets;
    if (m_editor) {
        widgets.append(m_editor);
        widgets.append(m_editor->findChildren<QWidget*>());
    }
    return widgets;
}

#pragma once

// One cell of a SearchHeaderCtrl: a column title and the search text typed
// under it. The text lives in the item; an editor widget (owned by the item,
// shown only while the cell is being edited) takes the user's input, and
// EndEdit commits the editor's text back into the item.

#include "bravik_toolkit_export.h"

#include "cstring.h"
#include "windefs.h"

#include <QFont>
#include <QPointer>
#include <QWidget>

class BRAVIK_TOOLKIT_EXPORT SearchHeaderItem
{
public:
    explicit SearchHeaderItem(const CString& title);
    virtual ~SearchHeaderItem();
    SearchHeaderItem(const SearchHeaderItem&) = delete;
    SearchHeaderItem& operator=(const SearchHeaderItem&) = delete;

    const CString& GetTitle() const { return m_title; }
    void SetTitle(const CString& title) { m_title = title; }

    // The committed search text.
    const CString& GetText() const { return m_text; }
    void SetText(const CString& text) { m_text = text; }

    bool IsTabStop() const { return m_tabStop; }
    void SetTabStop(bool on) { m_tabStop = on; }

    // Whether the cell shows a drop-down mark when not being edited.
    virtual bool HasDropDown() const { return false; }

    void SetFont(const QFont& font);

    QWidget* GetEditor() const { return m_editor; }
    bool IsEditing() const { return m_editing; }
    // Loads the text into the editor, shows it and gives it the focus.
    void BeginEdit();
    // Hides the editor; with commit its text becomes the item's text.
    void EndEdit(bool commit);

    // The widgets that can hold the focus while editing (the header watches
    // their keys).
    virtual QList<QWidget*> FocusWidgets() const;

protected:
    // Takes ownership of the editor (created hidden).
    void SetEditor(QWidget* editor);
    virtual CString EditorText() const = 0;
    virtual void LoadEditor(const CString& text) = 0;
    virtual QWidget* FocusTarget() const { return m_editor; }

private:
    CString m_title;
    CString m_text;
    bool m_tabStop = true;
    bool m_editing = false;
    QPointer<QWidget> m_editor;
};

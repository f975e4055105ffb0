#pragma once

// A header cell searched by several values: the drop-down list has a check
// mark per item and the cell's text is the checked items joined by ",".
// The text may also be typed.

#include "searchheaderitem.h"

#include <QObject>
#include <QPointer>

class ComboBox;

class BRAVIK_TOOLKIT_EXPORT HeaderCheckComboItem : public QObject, public SearchHeaderItem
{
    Q_OBJECT
public:
    explicit HeaderCheckComboItem(const CString& title);
    ~HeaderCheckComboItem() override;
    ComboBox& GetComboBox() const { return *m_combo; }
    bool HasDropDown() const override { return true; }

    // Checks or clears an item as a click in the drop-down list does, and
    // rewrites the editor's text.
    void SetItemChecked(int index, bool checked);
    bool IsItemChecked(int index) const;

protected:
    CString EditorText() const override;
    void LoadEditor(const CString& text) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void makeCheckable();
    void writeText();

    ComboBox* m_combo;
    QPointer<QWidget> m_listViewport; // where clicks toggle the marks
};

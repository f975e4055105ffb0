#pragma once

// CButton: push button, check box or radio button. Like CEdit it is one class
// over the Qt widget that draws it (button()), so GetDlgItemAs<CButton>(id)
// works for every button kind. clicked() is BN_CLICKED: the user clicked,
// pressed Space, or Click() was called; SetCheck does not emit it.
//
// Inside a CDialog, the buttons with ids IDOK and IDCANCEL call the dialog's
// OnOK() / OnCancel(), and every button click is also reported through
// CDialog::command(id).

#include "bravik_platform_export.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QWidget>

class QAbstractButton;
class QCheckBox;
class QPushButton;
class QRadioButton;

class BRAVIK_PLATFORM_EXPORT CButton : public QWidget, public WindowOps<CButton>
{
    Q_OBJECT
public:
    enum class Kind { PushButton, DefPushButton, CheckBox, RadioButton };

    explicit CButton(QWidget* parent = nullptr, Kind kind = Kind::PushButton);
    ~CButton() override;

    Kind GetKind() const { return m_kind; }
    QAbstractButton* button() const { return m_button; }
    QPushButton* pushButton() const;   // null unless a push button
    QCheckBox* checkBox() const;       // null unless a check box
    QRadioButton* radioButton() const; // null unless a radio button

    void SetWindowText(const CString& text);
    void GetWindowText(CString& text) const;
    CString GetWindowText() const;

    // BST_UNCHECKED / BST_CHECKED (BST_INDETERMINATE for tri-state check boxes).
    // A push button is always unchecked.
    int GetCheck() const;
    void SetCheck(int state);

    // Default push button (the one Enter presses).
    void SetDefault(bool on);
    bool IsDefault() const;

    // Programmatic click: as if the user had clicked (emits clicked()).
    void Click();

    QSize sizeHint() const override;

signals:
    void clicked();

private:
    Kind m_kind;
    QAbstractButton* m_button = nullptr;
};

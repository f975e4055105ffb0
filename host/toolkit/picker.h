#pragma once

// Picker: a text field with a button that opens a chooser (exam codes,
// locations, providers ...). The field may be typed into; the owner resolves
// the typed text against its dictionary. Two requests go to the parent, as
// notifications (NMHDR with the codes below) and as Qt signals:
//   PKN_PICK     the button was pressed (or F4 / Alt+Down in the field):
//                open the chooser;
//   PKN_RESOLVE  the typed text was committed (Enter, or leaving a changed
//                field): resolve it. Enter stops there: it does not reach
//                the dialog's default button.
//
// Dialog templates place pickers as Custom controls of class
// Picker::ClassName, which exists once a module has registered it
// (Picker::Register, done by the host through the module's control
// registration).

#include "bravik_toolkit_export.h"

#include "cstring.h"
#include "cwinapp.h"
#include "cwnd.h"
#include "windefs.h"

#include <QWidget>

class QLineEdit;
class QToolButton;

class BRAVIK_TOOLKIT_EXPORT Picker : public QWidget, public WindowOps<Picker>
{
    Q_OBJECT
public:
    // The control class name templates use.
    static constexpr const char* ClassName = "BravikPicker";
    static const UINT PKN_PICK;
    static const UINT PKN_RESOLVE;

    // Registers the class for the module instance. FALSE when it is already
    // registered (by any module) or instance is null.
    static BOOL Register(HINSTANCE instance);
    // Unregisters the class the instance registered. FALSE when the class is
    // not registered, or was registered by another module.
    static BOOL UnRegister(HINSTANCE instance);
    static bool IsRegistered();

    explicit Picker(QWidget* parent = nullptr);
    ~Picker() override;

    void SetWindowText(const CString& text);
    CString GetWindowText() const;
    // A required picker shows a marker while it is empty.
    void SetRequiredFlag(bool required);
    bool GetRequiredFlag() const { return m_required; }
    void SetReadOnly(bool readOnly);

    QLineEdit* Edit() const { return m_edit; }
    QToolButton* PickButton() const { return m_button; }

signals:
    void pickRequested();
    void resolveRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void requestPick();
    void requestResolve();
    void updateRequiredMark();

    QLineEdit* m_edit;
    QToolButton* m_button;
    bool m_required = false;
    bool m_typed = false;
};

#pragma once

// CDialog: a QDialog built from a DialogTemplate, with the MFC dialog life
// cycle.
//
// Building: the constructor copies the template, runs the process-wide
// template pre-processor on the copy, sets the caption and font, sizes the
// client area and creates every control (objectName = the id's symbol; the
// id -> widget map answers GetDlgItem). Control classes by kind:
//   Static -> CStatic, Edit / MultiLineEdit -> CEdit, PushButton /
//   DefPushButton / CheckBox / RadioButton -> CButton, ComboDropDownList /
//   ComboDropDown -> CComboBox, ListBox -> CListBox, GroupBox -> QGroupBox,
//   Custom -> a plain QWidget placeholder (ReplaceDlgItem swaps in the real
//   widget) or the registered control class named by className.
// A kind the platform cannot build throws std::logic_error naming the kind
// and the control.
//
// Life cycle:
//  - OnInitDialog() runs once, after the controls exist and before the dialog
//    is shown: from DoModal (through the modal runner), from Create (child
//    dialogs), or on the first show. The base version calls UpdateData(FALSE).
//  - DoModal() runs the dialog through the current ModalRunner and returns the
//    value given to EndDialog (IDOK / IDCANCEL ...). If OnInitDialog already
//    called EndDialog the dialog is never shown.
//  - The buttons IDOK and IDCANCEL call OnOK() / OnCancel(); Enter presses the
//    default push button (OnOK() when there is none), Escape and the window's
//    close button call OnCancel(). Other buttons report command(id).
//  - OnOK() = if (UpdateData(TRUE)) EndDialog(IDOK); OnCancel() = EndDialog(IDCANCEL).
//  - Create(parent) makes it a child dialog (a page or panel inside another
//    window): Enter and Escape then go to the window that holds it.

#include "bravik_platform_export.h"
#include "cbutton.h"
#include "ccombobox.h"
#include "cdataexchange.h"
#include "cedit.h"
#include "clistbox.h"
#include "crect.h"
#include "cstatic.h"
#include "cstring.h"
#include "cwnd.h"
#include "dialogtemplate.h"
#include "windefs.h"

#include <QDialog>

#include <map>
#include <type_traits>

constexpr int IDC_STATIC = -1;

class BRAVIK_PLATFORM_EXPORT CDialog : public QDialog, public WindowOps<CDialog>
{
    Q_OBJECT
public:
    CDialog(const DialogTemplate& tpl, CWnd* parent = nullptr);
    // The template registered under templateId in the current module's state;
    // throws std::logic_error when there is none.
    CDialog(UINT templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    // --- running
    int DoModal();
    BOOL Create(CWnd* parent);
    void EndDialog(int result);
    // The value given to EndDialog; -1 while the dialog has not ended.
    int GetModalResult() const { return m_result; }
    bool HasEnded() const { return m_ended; }
    bool IsChildDialog() const { return m_child; }
    // Runs OnInitDialog once; false when the dialog has already ended.
    bool EnsureInitDialog();

    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    // A menu command (CommandEvent) or a click on a button other than IDOK /
    // IDCANCEL. The base version emits command(id) and returns TRUE.
    virtual BOOL OnCommand(UINT id);

    // --- data exchange
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    // --- controls
    CWnd* GetDlgItem(int id) const;
    // The control as T (qobject_cast), null when absent or of another class.
    template <class T>
    T* GetDlgItemAs(int id) const
    {
        CWnd* w = GetDlgItem(id);
        if constexpr (std::is_base_of_v<QObject, T>)
            return qobject_cast<T*>(w);
        else
            return dynamic_cast<T*>(w);
    }
    // Registers a widget the dialog's code created, under id.
    void AddDlgItem(int id, CWnd* widget, const char* symbol = nullptr);
    // Replaces the control id (typically a Custom placeholder) by widget: same
    // geometry, name, id, visibility; the old control is deleted.
    CWnd* ReplaceDlgItem(int id, CWnd* widget);
    const std::map<int, CWnd*>& DlgItems() const { return m_items; }

    void SetDlgItemText(int id, const CString& text);
    void GetDlgItemText(int id, CString& text) const;
    CString GetDlgItemText(int id) const;
    void CheckDlgButton(int id, UINT check);
    UINT IsDlgButtonChecked(int id) const;
    // Checks idCheck and clears the other radio buttons idFirst..idLast.
    void CheckRadioButton(int idFirst, int idLast, int idCheck);
    void GotoDlgCtrl(CWnd* control);
    // The default push button (Enter): 0 when none.
    int GetDefID() const;
    void SetDefID(int id);

    // --- caption and geometry
    void SetWindowText(const CString& caption);
    void GetWindowText(CString& caption) const;
    CString GetWindowText() const;
    // Any window's text, callable unqualified from a dialog's own code.
    static void SetWindowText(CWnd* w, const CString& text) { ::SetWindowText(w, text); }
    static void GetWindowText(const CWnd* w, CString& text) { ::GetWindowText(w, text); }
    static CString GetWindowText(const CWnd* w) { return ::GetWindowText(w); }
    void MapDialogRect(CRect& rect) const;
    const DialogUnits& Units() const { return m_units; }
    const DialogTemplate& Template() const { return m_template; }

signals:
    // BN_CLICKED of a button other than IDOK / IDCANCEL, and menu commands.
    void command(int id);

protected:
    // For a derived dialog that chooses its template later: call SetTemplate
    // before the dialog is run or shown.
    explicit CDialog(CWnd* parent = nullptr);
    void SetTemplate(const DialogTemplate& tpl);

    virtual void DoDataExchange(CDataExchange* pDX);
    virtual LRESULT OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam);

    bool event(QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void showEvent(QShowEvent* e) override;

public:
    // QDialog's ends map onto the dialog's: reject() (Escape, close button) is
    // OnCancel(); done(r) is EndDialog(r).
    void reject() override;
    void done(int result) override;

private:
    void build();
    CWnd* createControl(const DialogControl& c);
    void buttonClicked(int id);

    DialogTemplate m_template;
    DialogUnits m_units;
    std::map<int, CWnd*> m_items;
    bool m_built = false;
    bool m_initDone = false;
    bool m_ended = false;
    bool m_child = false;
    int m_result = -1;

    friend class CDataExchange;
};

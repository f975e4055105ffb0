#pragma once

// Dialog data exchange: DoDataExchange moves values between a dialog's
// controls and its members, in both directions, with the same code:
//   void MyDlg::DoDataExchange(CDataExchange* pDX) {
//       DDX_Text(pDX, IDC_REASON_EDIT, m_reason);
//       DDV_MaxChars(pDX, m_reason, 64);
//       DDX_Check(pDX, IDC_DELETE_STUDIES, m_deleteStudies);
//   }
// m_bSaveAndValidate is TRUE when saving (controls -> members). A validation
// that refuses shows its message, puts the focus back on the control and
// calls Fail(), which stops the exchange: UpdateData returns FALSE and the
// controls keep what the user typed.
//
// A DDX_ call on an id the dialog does not have throws std::logic_error.

#include "bravik_platform_export.h"
#include "cstring.h"
#include "windefs.h"

#include <QWidget>

#include <stdexcept>
#include <string>
#include <type_traits>

class CDialog;

// Thrown by Fail(); UpdateData catches it.
class BRAVIK_PLATFORM_EXPORT DataExchangeFailure : public std::exception
{
public:
    const char* what() const noexcept override;
};

class BRAVIK_PLATFORM_EXPORT CDataExchange
{
public:
    CDataExchange(CDialog* dlg, BOOL saveAndValidate);

    BOOL m_bSaveAndValidate;
    CDialog* m_pDlgWnd;
    int m_idLastControl = 0;
    BOOL m_bEditLastControl = FALSE;

    // Looks up the control and remembers it as the one a failure returns to.
    CWnd* PrepareCtrl(int id);
    CWnd* PrepareEditCtrl(int id);
    // Focus (and, for an edit, select all) on the last control, then throw
    // DataExchangeFailure.
    [[noreturn]] void Fail();
};

// Text of an edit, static, combo box (its edit text / selected item) or button.
BRAVIK_PLATFORM_EXPORT void DDX_Text(CDataExchange* pDX, int id, CString& value);
// Integers: saving text that is not an integer shows "Enter an integer." and fails.
BRAVIK_PLATFORM_EXPORT void DDX_Text(CDataExchange* pDX, int id, int& value);
BRAVIK_PLATFORM_EXPORT void DDX_Text(CDataExchange* pDX, int id, UINT& value);
// Check box state BST_UNCHECKED / BST_CHECKED / BST_INDETERMINATE.
BRAVIK_PLATFORM_EXPORT void DDX_Check(CDataExchange* pDX, int id, int& value);
// Index of the checked radio button of the group starting at firstId, -1 for none.
BRAVIK_PLATFORM_EXPORT void DDX_Radio(CDataExchange* pDX, int firstId, int& value);
// Combo box selection index (CB_ERR for none).
BRAVIK_PLATFORM_EXPORT void DDX_CBIndex(CDataExchange* pDX, int id, int& index);
// Saving: the edit text (editable) or selected item's text. Loading: selects
// the first item starting with value (case-blind), or sets the edit text.
BRAVIK_PLATFORM_EXPORT void DDX_CBString(CDataExchange* pDX, int id, CString& value);
// As DDX_CBString but loading selects only an item equal to value.
BRAVIK_PLATFORM_EXPORT void DDX_CBStringExact(CDataExchange* pDX, int id, CString& value);
BRAVIK_PLATFORM_EXPORT void DDX_LBIndex(CDataExchange* pDX, int id, int& index);

// Binds a pointer member to the control: DDX_Control(pDX, IDC_REASONS, m_pReasons)
// with CComboBox* m_pReasons. Throws std::logic_error if the control is not a T.
template <class T>
void DDX_Control(CDataExchange* pDX, int id, T*& control)
{
    static_assert(std::is_base_of_v<QObject, T>);
    if (control)
        return;
    control = qobject_cast<T*>(pDX->PrepareCtrl(id));
    if (!control)
        throw std::logic_error("DDX_Control: control " + std::to_string(id) + " is not a " + T::staticMetaObject.className());
}

// Saving a value longer than maxChars characters (Unicode code points) shows
// "Enter no more than <maxChars> characters." and fails. Otherwise, when the
// last control is an edit, limits its typing to maxChars.
BRAVIK_PLATFORM_EXPORT void DDV_MaxChars(CDataExchange* pDX, const CString& value, int maxChars);
// "Enter an integer between <min> and <max>."
BRAVIK_PLATFORM_EXPORT void DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);

#include "cdataexchange.h"

#include "cbutton.h"
#include "ccombobox.h"
#include "cdialog.h"
#include "cedit.h"
#include "clistbox.h"
#include "messagebox.h"
#include "qtconvert.h"

#include <QLineEdit>

#include <cerrno>
#include <cstdlib>
#include <string>

const char* DataExchangeFailure::what() const noexcept { return "dialog data exchange failed"; }

CDataExchange::CDataExchange(CDialog* dlg, BOOL saveAndValidate)
    : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dlg)
{
}

CWnd* CDataExchange::PrepareCtrl(int id)
{
    CWnd* w = m_pDlgWnd ? m_pDlgWnd->GetDlgItem(id) : nullptr;
    if (!w)
        throw std::logic_error("Data exchange: the dialog has no control with id " + std::to_string(id));
    m_idLastControl = id;
    m_bEditLastControl = FALSE;
    return w;
}

CWnd* CDataExchange::PrepareEditCtrl(int id)
{
    CWnd* w = PrepareCtrl(id);
    m_bEditLastControl = TRUE;
    return w;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_idLastControl != 0) {
        // Back to the offending field, its text selected, as typed.
        if (CWnd* w = m_pDlgWnd->GetDlgItem(m_idLastControl)) {
            w->setFocus(Qt::OtherFocusReason);
            if (m_bEditLastControl)
                if (auto* e = qobject_cast<CEdit*>(w))
                    e->SetSel(0, -1);
        }
    }
    throw DataExchangeFailure();
}

void DDX_Text(CDataExchange* pDX, int id, CString& value)
{
    CWnd* w = pDX->PrepareEditCtrl(id);
    if (pDX->m_bSaveAndValidate) {
        value = GetWindowText(w);
        return;
    }
    // Only a real change is written, so loading does not fire change notifications needlessly.
    if (GetWindowText(w) != value)
        SetWindowText(w, value);
}

namespace {

bool parseLong(const CString& text, long long& out)
{
    CString t = text;
    t.Trim();
    if (t.IsEmpty())
        return false;
    errno = 0;
    char* end = nullptr;
    out = std::strtoll(t.GetString(), &end, 10);
    return errno == 0 && end && *end == '\0';
}

} // namespace

void DDX_Text(CDataExchange* pDX, int id, int& value)
{
    CWnd* w = pDX->PrepareEditCtrl(id);
    if (pDX->m_bSaveAndValidate) {
        long long v = 0;
        if (!parseLong(GetWindowText(w), v) || v < INT_MIN || v > INT_MAX) {
            AfxMessageBox("Enter an integer.", MB_ICONEXCLAMATION);
            pDX->Fail();
        }
        value = static_cast<int>(v);
        return;
    }
    CString s;
    s.Format("%d", value);
    if (GetWindowText(w) != s)
        SetWindowText(w, s);
}

void DDX_Text(CDataExchange* pDX, int id, UINT& value)
{
    CWnd* w = pDX->PrepareEditCtrl(id);
    if (pDX->m_bSaveAndValidate) {
        long long v = 0;
        if (!parseLong(GetWindowText(w), v) || v < 0 || v > static_cast<long long>(UINT_MAX)) {
            AfxMessageBox("Enter a positive integer.", MB_ICONEXCLAMATION);
            pDX->Fail();
        }
        value = static_cast<UINT>(v);
        return;
    }
    CString s;
    s.Format("%u", value);
    if (GetWindowText(w) != s)
        SetWindowText(w, s);
}

void DDX_Check(CDataExchange* pDX, int id, int& value)
{
    auto* b = qobject_cast<CButton*>(pDX->PrepareCtrl(id));
    if (!b)
        throw std::logic_error("DDX_Check: control " + std::to_string(id) + " is not a button");
    if (pDX->m_bSaveAndValidate)
        value = b->GetCheck();
    else
        b->SetCheck(value);
}

void DDX_Radio(CDataExchange* pDX, int firstId, int& value)
{
    pDX->PrepareCtrl(firstId);
    const auto& controls = pDX->m_pDlgWnd->Template().controls;
    auto it = controls.begin();
    while (it != controls.end() && it->id != firstId)
        ++it;
    if (it == controls.end() || it->kind != ControlKind::RadioButton)
        throw std::logic_error("DDX_Radio: control " + std::to_string(firstId) + " is not a radio button");
    if (pDX->m_bSaveAndValidate)
        value = -1;
    int index = 0;
    for (; it != controls.end() && it->kind == ControlKind::RadioButton; ++it, ++index) {
        if (index > 0 && (it->style & WS_GROUP))
            break;
        auto* b = pDX->m_pDlgWnd->GetDlgItemAs<CButton>(it->id);
        if (!b)
            continue;
        if (pDX->m_bSaveAndValidate) {
            if (b->GetCheck() == BST_CHECKED)
                value = index;
        } else {
            b->SetCheck(index == value ? BST_CHECKED : BST_UNCHECKED);
        }
    }
}

namespace {

CComboBox* combo(CDataExchange* pDX, int id, const char* who)
{
    auto* cb = qobject_cast<CComboBox*>(pDX->PrepareCtrl(id));
    if (!cb)
        throw std::logic_error(std::string(who) + ": control " + std::to_string(id) + " is not a combo box");
    return cb;
}

} // namespace

void DDX_CBIndex(CDataExchange* pDX, int id, int& index)
{
    CComboBox* cb = combo(pDX, id, "DDX_CBIndex");
    if (pDX->m_bSaveAndValidate)
        index = cb->GetCurSel();
    else
        cb->SetCurSel(index);
}

void DDX_CBString(CDataExchange* pDX, int id, CString& value)
{
    CComboBox* cb = combo(pDX, id, "DDX_CBString");
    if (pDX->m_bSaveAndValidate) {
        value = cb->GetWindowText();
        return;
    }
    // A prefix search: an empty value matches, and selects, the first item.
    if (cb->SelectString(-1, value) == CB_ERR)
        cb->SetWindowText(value); // ignored by a drop-down list
}

void DDX_CBStringExact(CDataExchange* pDX, int id, CString& value)
{
    CComboBox* cb = combo(pDX, id, "DDX_CBStringExact");
    if (pDX->m_bSaveAndValidate) {
        value = cb->GetWindowText();
        return;
    }
    const int i = cb->FindStringExact(-1, value);
    if (i != CB_ERR)
        cb->SetCurSel(i);
    else
        cb->SetWindowText(value);
}

void DDX_LBIndex(CDataExchange* pDX, int id, int& index)
{
    auto* lb = qobject_cast<CListBox*>(pDX->PrepareCtrl(id));
    if (!lb)
        throw std::logic_error("DDX_LBIndex: control " + std::to_string(id) + " is not a list box");
    if (pDX->m_bSaveAndValidate)
        index = lb->GetCurSel();
    else
        lb->SetCurSel(index);
}

void DDV_MaxChars(CDataExchange* pDX, const CString& value, int maxChars)
{
    if (pDX->m_bSaveAndValidate && CodePointCount(value) > maxChars) {
        CString prompt;
        prompt.Format("Enter no more than %d characters.", maxChars);
        AfxMessageBox(prompt.GetString(), MB_ICONEXCLAMATION);
        pDX->Fail();
    }
    if (pDX->m_idLastControl != 0 && pDX->m_bEditLastControl) {
        CWnd* w = pDX->m_pDlgWnd->GetDlgItem(pDX->m_idLastControl);
        if (auto* e = qobject_cast<CEdit*>(w))
            e->SetLimitText(static_cast<UINT>(maxChars));
    }
}

void DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal)
{
    if (pDX->m_bSaveAndValidate && (value < minVal || value > maxVal)) {
        CString prompt;
        prompt.Format("Enter an integer between %d and %d.", minVal, maxVal);
        AfxMessageBox(prompt.GetString(), MB_ICONEXCLAMATION);
        pDX->Fail();
    }
}

#include "cdialog.h"

#include "cmenu.h"
#include "modalrunner.h"
#include "modulestate.h"
#include "qtconvert.h"
#include "windowmessage.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPushButton>

#include <stdexcept>
#include <string>

ControlFactory FindControlClass(const char* className); // dialogtemplate.cpp

namespace {

const DialogTemplate& templateById(UINT id)
{
    const DialogTemplate* tpl = CurrentModuleState().FindTemplate(id);
    if (!tpl)
        throw std::logic_error("No dialog template " + std::to_string(id) + " in module \""
                               + CurrentModuleState().Name() + "\"");
    return *tpl;
}

std::string describe(const DialogControl& c)
{
    return std::string(c.symbol && *c.symbol ? c.symbol : "(no symbol)") + " (id " + std::to_string(c.id) + ")";
}

bool isFocusable(ControlKind k)
{
    return k != ControlKind::Static && k != ControlKind::GroupBox && k != ControlKind::Custom;
}

} // namespace

CDialog::CDialog(const DialogTemplate& tpl, CWnd* parent) : QDialog(parent)
{
    SetTemplate(tpl);
}

CDialog::CDialog(UINT templateId, CWnd* parent) : QDialog(parent)
{
    SetTemplate(templateById(templateId));
}

CDialog::CDialog(CWnd* parent) : QDialog(parent) {}

CDialog::~CDialog() = default;

void CDialog::SetTemplate(const DialogTemplate& tpl)
{
    if (m_built)
        throw std::logic_error("CDialog::SetTemplate: the dialog is already built");
    m_template = tpl;
    PreprocessDialogTemplate(m_template);
    build();
}

void CDialog::build()
{
    m_built = true;
    const QFont font = m_template.Font();
    setFont(font);
    m_units = DialogUnits::FromFont(font);
    setWindowTitle(toQString(m_template.caption));
    resize(m_units.ToPixelsX(m_template.cx), m_units.ToPixelsY(m_template.cy));

    QButtonGroup* radioGroup = nullptr;
    std::vector<QGroupBox*> groupBoxes;
    for (const DialogControl& c : m_template.controls) {
        CWnd* w = createControl(c);
        if (c.kind == ControlKind::RadioButton) {
            if (!radioGroup || (c.style & WS_GROUP))
                radioGroup = new QButtonGroup(this);
            radioGroup->addButton(static_cast<CButton*>(w)->button());
        } else {
            radioGroup = nullptr;
        }
        if (auto* g = qobject_cast<QGroupBox*>(w))
            groupBoxes.push_back(g);
    }
    // A group box frames its siblings; it must not cover them.
    for (QGroupBox* g : groupBoxes)
        g->lower();
}

CWnd* CDialog::createControl(const DialogControl& c)
{
    CWnd* w = nullptr;
    const QString text = toQString(c.text);
    CRect r = m_units.MapControl(c);
    switch (c.kind) {
    case ControlKind::Static: {
        auto* s = new CStatic(this);
        s->ApplyStyle(c.style);
        s->SetWindowText(c.text);
        w = s;
        break;
    }
    case ControlKind::Edit:
    case ControlKind::MultiLineEdit: {
        auto* e = new CEdit(this, c.kind == ControlKind::MultiLineEdit);
        e->ApplyStyle(c.style);
        e->SetWindowText(c.text);
        w = e;
        break;
    }
    case ControlKind::PushButton:
    case ControlKind::DefPushButton:
    case ControlKind::CheckBox:
    case ControlKind::RadioButton: {
        const CButton::Kind kind = c.kind == ControlKind::PushButton      ? CButton::Kind::PushButton
                                   : c.kind == ControlKind::DefPushButton ? CButton::Kind::DefPushButton
                                   : c.kind == ControlKind::CheckBox      ? CButton::Kind::CheckBox
                                                                          : CButton::Kind::RadioButton;
        auto* b = new CButton(this, kind);
        b->SetWindowText(c.text);
        const int id = c.id;
        connect(b, &CButton::clicked, this, [this, id] { buttonClicked(id); });
        w = b;
        break;
    }
    case ControlKind::ComboDropDownList:
    case ControlKind::ComboDropDown: {
        auto* cb = new CComboBox(this, c.kind == ControlKind::ComboDropDown, (c.style & CBS_SORT) != 0);
        // The template height is the dropped list's; the box itself is as high as its font needs.
        const int fieldHeight = cb->sizeHint().height();
        const int listPixels = std::max(0, r.Height() - fieldHeight);
        const int itemHeight = std::max(1, cb->fontMetrics().height() + 2);
        cb->setMaxVisibleItems(std::max(1, listPixels / itemHeight));
        r.bottom = r.top + fieldHeight;
        if (c.kind == ControlKind::ComboDropDown && !text.isEmpty())
            cb->setEditText(text);
        w = cb;
        break;
    }
    case ControlKind::GroupBox:
        w = new QGroupBox(text, this);
        break;
    case ControlKind::ListBox: {
        auto* lb = new CListBox(this, (c.style & LBS_SORT) != 0,
                                (c.style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0);
        lb->setVerticalScrollBarPolicy((c.style & WS_VSCROLL) ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
        w = lb;
        break;
    }
    case ControlKind::Custom:
        if (c.className && *c.className) {
            const ControlFactory factory = FindControlClass(c.className);
            if (!factory)
                throw std::logic_error(std::string("Dialog control ") + describe(c) + " names the control class \""
                                       + c.className + "\", which is not registered");
            w = factory(this, c);
            if (!w)
                throw std::logic_error(std::string("Control class \"") + c.className + "\" failed to create "
                                       + describe(c));
            if (w->parentWidget() != this)
                w->setParent(this);
        } else {
            w = new QWidget(this);
        }
        break;
    }
    if (!w)
        throw std::logic_error("Dialog template control " + describe(c) + " has kind "
                               + std::to_string(static_cast<int>(c.kind))
                               + " (" + ControlKindName(c.kind) + "), which the platform cannot build");

    w->setObjectName(QString::fromUtf8(c.symbol ? c.symbol : ""));
    SetDlgCtrlID(w, c.id);
    w->setGeometry(r.toQRect());
    if (isFocusable(c.kind))
        w->setFocusPolicy((c.style & WS_TABSTOP) ? Qt::StrongFocus : Qt::ClickFocus);
    if (c.style & WS_DISABLED)
        w->setEnabled(false);
    if (c.style & WS_HIDDEN)
        w->setVisible(false);
    if (c.id != IDC_STATIC && c.id != 0)
        m_items[c.id] = w;
    return w;
}

void CDialog::buttonClicked(int id)
{
    if (id == IDOK)
        OnOK();
    else if (id == IDCANCEL)
        OnCancel();
    else
        OnCommand(static_cast<UINT>(id));
}

int CDialog::DoModal()
{
    m_ended = false;
    m_result = -1;
    return CurrentModalRunner().Run(*this);
}

BOOL CDialog::Create(CWnd* parent)
{
    m_child = true;
    setParent(parent, Qt::Widget);
    setModal(false);
    EnsureInitDialog();
    if (!(m_template.style & DS_HIDDEN) && !m_ended)
        show();
    return TRUE;
}

void CDialog::EndDialog(int result) { done(result); }

void CDialog::done(int result)
{
    m_result = result;
    m_ended = true;
    QDialog::done(result);
}

void CDialog::reject() { OnCancel(); }

bool CDialog::EnsureInitDialog()
{
    if (!m_initDone) {
        m_initDone = true;
        OnInitDialog();
    }
    return !m_ended;
}

BOOL CDialog::OnInitDialog()
{
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK()
{
    if (!UpdateData(TRUE))
        return;
    EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

BOOL CDialog::OnCommand(UINT id)
{
    emit command(static_cast<int>(id));
    return TRUE;
}

void CDialog::DoDataExchange(CDataExchange*) {}

LRESULT CDialog::OnRegisteredMessage(UINT, WPARAM, LPARAM) { return 0; }

BOOL CDialog::UpdateData(BOOL saveAndValidate)
{
    CDataExchange dx(this, saveAndValidate);
    try {
        DoDataExchange(&dx);
    } catch (const DataExchangeFailure&) {
        return FALSE;
    }
    return TRUE;
}

bool CDialog::event(QEvent* e)
{
    if (RegisteredMessageEvent* m = RegisteredMessageEvent::From(e)) {
        m->SetResult(OnRegisteredMessage(m->Message(), m->WParam(), m->LParam()));
        return true;
    }
    if (e->type() == CommandEvent::EventType()) {
        OnCommand(static_cast<CommandEvent*>(e)->Id());
        return true;
    }
    return QDialog::event(e);
}

void CDialog::keyPressEvent(QKeyEvent* e)
{
    const bool plain = e->modifiers() == Qt::NoModifier
        || (e->modifiers() == Qt::KeypadModifier && e->key() == Qt::Key_Enter);
    if (plain && (e->key() == Qt::Key_Escape || e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter)) {
        if (m_child) {
            // A page's Enter and Escape belong to the dialog that holds it.
            e->ignore();
            return;
        }
        if (e->key() == Qt::Key_Escape) {
            OnCancel();
            return;
        }
        for (QPushButton* pb : findChildren<QPushButton*>()) {
            if (pb->isDefault() && pb->isVisible()) {
                if (pb->isEnabled())
                    pb->click();
                return;
            }
        }
        // No default button: Enter means IDOK, unless an IDOK button exists and is disabled.
        CWnd* ok = GetDlgItem(IDOK);
        if (!ok || ok->isEnabled())
            OnOK();
        return;
    }
    QDialog::keyPressEvent(e);
}

void CDialog::showEvent(QShowEvent* e)
{
    EnsureInitDialog();
    QDialog::showEvent(e);
}

CWnd* CDialog::GetDlgItem(int id) const
{
    const auto it = m_items.find(id);
    return it == m_items.end() ? nullptr : it->second;
}

void CDialog::AddDlgItem(int id, CWnd* widget, const char* symbol)
{
    if (!widget)
        return;
    if (widget->parentWidget() != this && !isAncestorOf(widget))
        widget->setParent(this);
    if (symbol)
        widget->setObjectName(QString::fromUtf8(symbol));
    SetDlgCtrlID(widget, id);
    m_items[id] = widget;
}

CWnd* CDialog::ReplaceDlgItem(int id, CWnd* widget)
{
    CWnd* old = GetDlgItem(id);
    if (!old || !widget)
        return nullptr;
    QWidget* parent = old->parentWidget();
    widget->setParent(parent);
    widget->setGeometry(old->geometry());
    widget->setObjectName(old->objectName());
    widget->setEnabled(old->isEnabled());
    SetDlgCtrlID(widget, id);
    widget->stackUnder(old);
    widget->setVisible(!old->isHidden());
    m_items[id] = widget;
    delete old;
    return widget;
}

void CDialog::SetDlgItemText(int id, const CString& text)
{
    if (CWnd* w = GetDlgItem(id))
        ::SetWindowText(w, text);
}

void CDialog::GetDlgItemText(int id, CString& text) const { text = GetDlgItemText(id); }

CString CDialog::GetDlgItemText(int id) const
{
    const CWnd* w = GetDlgItem(id);
    return w ? ::GetWindowText(w) : CString();
}

void CDialog::CheckDlgButton(int id, UINT check)
{
    if (CButton* b = GetDlgItemAs<CButton>(id))
        b->SetCheck(static_cast<int>(check));
}

UINT CDialog::IsDlgButtonChecked(int id) const
{
    const CButton* b = GetDlgItemAs<CButton>(id);
    return b ? static_cast<UINT>(b->GetCheck()) : 0;
}

void CDialog::CheckRadioButton(int idFirst, int idLast, int idCheck)
{
    for (int id = idFirst; id <= idLast; ++id)
        if (CButton* b = GetDlgItemAs<CButton>(id))
            b->SetCheck(id == idCheck ? BST_CHECKED : BST_UNCHECKED);
}

void CDialog::GotoDlgCtrl(CWnd* control)
{
    if (!control)
        return;
    control->setFocus(Qt::OtherFocusReason);
    if (auto* e = qobject_cast<CEdit*>(control))
        e->SetSel(0, -1);
}

int CDialog::GetDefID() const
{
    for (const auto& [id, w] : m_items)
        if (const auto* b = qobject_cast<const CButton*>(w); b && b->IsDefault())
            return id;
    return 0;
}

void CDialog::SetDefID(int id)
{
    for (const auto& [itemId, w] : m_items)
        if (auto* b = qobject_cast<CButton*>(w))
            b->SetDefault(itemId == id);
}

void CDialog::SetWindowText(const CString& caption) { setWindowTitle(toQString(caption)); }
void CDialog::GetWindowText(CString& caption) const { caption = GetWindowText(); }
CString CDialog::GetWindowText() const { return fromQString(windowTitle()); }

void CDialog::MapDialogRect(CRect& rect) const { rect = m_units.MapRect(rect); }

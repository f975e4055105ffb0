#include "picker.h"

#include "dialogtemplate.h"
#include "qtconvert.h"
#include "toolkitnotify.h"
#include "windowmessage.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

const UINT Picker::PKN_PICK = RegisterWindowMessage("BravikToolkit-Picker-Pick");
const UINT Picker::PKN_RESOLVE = RegisterWindowMessage("BravikToolkit-Picker-Resolve");

namespace {
HINSTANCE g_registeredBy = nullptr;
} // namespace

BOOL Picker::Register(HINSTANCE instance)
{
    if (!instance || IsControlClassRegistered(ClassName))
        return FALSE;
    const bool ok = RegisterControlClass(ClassName, [](QWidget* parent, const DialogControl&) -> QWidget* {
        return new Picker(parent);
    });
    if (ok)
        g_registeredBy = instance;
    return ok ? TRUE : FALSE;
}

BOOL Picker::UnRegister(HINSTANCE instance)
{
    if (!IsControlClassRegistered(ClassName) || instance != g_registeredBy)
        return FALSE;
    g_registeredBy = nullptr;
    return UnregisterControlClass(ClassName) ? TRUE : FALSE;
}

bool Picker::IsRegistered() { return IsControlClassRegistered(ClassName); }

Picker::Picker(QWidget* parent) : QWidget(parent), m_edit(new QLineEdit(this)), m_button(new QToolButton(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_button);
    m_button->setText(QStringLiteral("..."));
    m_button->setToolTip(tr("Choose from the list (F4)"));
    m_button->setFocusPolicy(Qt::NoFocus);
    setFocusProxy(m_edit);
    m_edit->installEventFilter(this);

    connect(m_button, &QToolButton::clicked, this, &Picker::requestPick);
    connect(m_edit, &QLineEdit::textEdited, this, [this] {
        m_typed = true;
        updateRequiredMark();
    });
    connect(m_edit, &QLineEdit::editingFinished, this, [this] {
        // Leaving a field the user changed commits it; Enter already did.
        if (m_typed) {
            m_typed = false;
            requestResolve();
        }
    });
}

Picker::~Picker() = default;

void Picker::SetWindowText(const CString& text)
{
    m_edit->setText(toQString(text));
    m_typed = false;
    updateRequiredMark();
}

CString Picker::GetWindowText() const { return fromQString(m_edit->text()); }

void Picker::SetRequiredFlag(bool required)
{
    m_required = required;
    updateRequiredMark();
}

void Picker::SetReadOnly(bool readOnly)
{
    m_edit->setReadOnly(readOnly);
    m_button->setEnabled(!readOnly);
}

bool Picker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_edit && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_F4 || (key->key() == Qt::Key_Down && (key->modifiers() & Qt::AltModifier))) {
            requestPick();
            return true;
        }
        // Enter commits the typed text and goes no further: the dialog's
        // default button must not act on text that has not been resolved yet.
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            m_typed = false;
            requestResolve();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void Picker::requestPick()
{
    if (m_edit->isReadOnly())
        return;
    NMHDR hdr;
    hdr.hwndFrom = this;
    hdr.idFrom = static_cast<UINT>(GetDlgCtrlID());
    hdr.code = PKN_PICK;
    SendNotify(parentWidget(), hdr);
    emit pickRequested();
}

void Picker::requestResolve()
{
    NMHDR hdr;
    hdr.hwndFrom = this;
    hdr.idFrom = static_cast<UINT>(GetDlgCtrlID());
    hdr.code = PKN_RESOLVE;
    SendNotify(parentWidget(), hdr);
    emit resolveRequested();
}

void Picker::updateRequiredMark()
{
    // The same cue the toolkit's required edits give: a tinted empty field.
    const bool mark = m_required && m_edit->text().isEmpty();
    m_edit->setProperty("required", mark);
    m_edit->setPlaceholderText(mark ? tr("required") : QString());
}

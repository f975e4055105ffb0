#include "scrolledit.h"

#include "controlstyles.h"
#include "dialogtemplate.h"
#include "qtconvert.h"

#include <QPlainTextEdit>

namespace {
QWidget* MakeScrollEdit(QWidget* parent, const DialogControl&) { return new ScrollEdit(parent); }
// Templates may name the class as soon as the toolkit is loaded.
const bool g_registered = RegisterControlClass(ScrollEdit::ClassName, MakeScrollEdit);
} // namespace

void ScrollEdit::Register()
{
    if (!IsControlClassRegistered(ClassName))
        RegisterControlClass(ClassName, MakeScrollEdit);
}

ScrollEdit::ScrollEdit(QWidget* parent) : CEdit(parent, true)
{
    (void)g_registered;
    SetWantReturn(true);
    SetBorder(true);
    textEdit()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    textEdit()->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    textEdit()->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    textEdit()->setTabChangesFocus(true);
}

ScrollEdit::~ScrollEdit() = default;

void ScrollEdit::SetTextLimit(UINT maxChars)
{
    SetLimitText(maxChars);
    SetText(GetWindowText());
}

void ScrollEdit::SetText(const CString& text)
{
    const UINT limit = GetLimitText();
    const QString q = toQString(text);
    const auto points = q.toUcs4();
    if (limit == 0 || static_cast<UINT>(points.size()) <= limit) {
        SetWindowText(text);
        return;
    }
    SetWindowText(fromQString(QString::fromUcs4(reinterpret_cast<const char32_t*>(points.constData()), static_cast<qsizetype>(limit))));
}

#include "cedit.h"

#include "dialogtemplate.h"
#include "qtconvert.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QValidator>

namespace {

// Applies the typing filters of a single-line edit. QLineEdit validates only
// what the user types or pastes, never setText(), which is the Windows rule
// for both the limit and the case/number styles.
class EditFilter : public QValidator
{
public:
    EditFilter(QObject* parent, std::function<QString(const QString&)> filter,
               std::function<bool(const QString&)> acceptable)
        : QValidator(parent), m_filter(std::move(filter)), m_acceptable(std::move(acceptable)) {}

    State validate(QString& input, int&) const override
    {
        input = m_filter(input);
        return m_acceptable(input) ? Acceptable : Invalid;
    }

private:
    std::function<QString(const QString&)> m_filter;
    std::function<bool(const QString&)> m_acceptable;
};

QString normaliseBreaks(QString s)
{
    s.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return s;
}

bool allDigits(const QString& s)
{
    for (const QChar c : s)
        if (!c.isDigit() && c != QLatin1Char('\n'))
            return false;
    return true;
}

} // namespace

CEdit::CEdit(QWidget* parent, bool multiLine) : QWidget(parent)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (multiLine) {
        m_text = new QPlainTextEdit(this);
        m_text->setTabChangesFocus(true); // Tab moves on, as in a dialog's edit
        m_text->installEventFilter(this);
        layout->addWidget(m_text);
        connect(m_text, &QPlainTextEdit::textChanged, this, &CEdit::onMultiLineChanged);
    } else {
        m_line = new QLineEdit(this);
        m_line->installEventFilter(this);
        m_line->setValidator(new EditFilter(
            m_line, [this](const QString& s) { return filtered(s); },
            [this](const QString& s) {
                if (m_number && !allDigits(s))
                    return false;
                return m_limit == 0 || CodePointCount(s) <= static_cast<int>(m_limit);
            }));
        layout->addWidget(m_line);
        connect(m_line, &QLineEdit::textChanged, this, &CEdit::changed);
        connect(m_line, &QLineEdit::textEdited, this, &CEdit::edited);
    }
    setFocusProxy(editor());
    setFocusPolicy(editor()->focusPolicy());
}

CEdit::~CEdit() = default;

QWidget* CEdit::editor() const
{
    return m_line ? static_cast<QWidget*>(m_line) : static_cast<QWidget*>(m_text);
}

QSize CEdit::sizeHint() const { return editor()->sizeHint(); }

QString CEdit::filtered(const QString& text) const
{
    if (m_upper)
        return text.toUpper();
    if (m_lower)
        return text.toLower();
    return text;
}

void CEdit::onMultiLineChanged()
{
    if (m_programmatic) {
        m_lastText = m_text->toPlainText();
        emit changed();
        return;
    }
    const QString now = m_text->toPlainText();
    const QString wanted = filtered(now);
    const bool refused = (m_number && !allDigits(wanted))
        || (m_limit != 0 && CodePointCount(wanted) > static_cast<int>(m_limit));
    if (refused || wanted != now) {
        // Put back what the filters allow, keeping the caret where the user is.
        const int pos = m_text->textCursor().position();
        const QString restore = refused ? m_lastText : wanted;
        m_programmatic = true;
        m_text->setPlainText(restore);
        m_programmatic = false;
        QTextCursor c = m_text->textCursor();
        c.setPosition(std::min<int>(refused ? pos - (now.size() - restore.size()) : pos, restore.size()));
        m_text->setTextCursor(c);
        m_lastText = restore;
        if (refused)
            return;
    }
    m_lastText = m_text->toPlainText();
    emit changed();
    emit edited();
}

void CEdit::SetWindowText(const CString& text)
{
    const QString q = normaliseBreaks(toQString(text));
    if (m_line) {
        m_line->setText(q);
        return;
    }
    m_programmatic = true;
    m_text->setPlainText(q);
    m_programmatic = false;
}

void CEdit::GetWindowText(CString& text) const { text = GetWindowText(); }

CString CEdit::GetWindowText() const
{
    return fromQString(m_line ? m_line->text() : m_text->toPlainText());
}

int CEdit::GetWindowTextLength() const { return GetWindowText().GetLength(); }

void CEdit::SetLimitText(UINT maxChars) { m_limit = maxChars; }

BOOL CEdit::SetReadOnly(BOOL readOnly)
{
    if (m_line)
        m_line->setReadOnly(readOnly != FALSE);
    else
        m_text->setReadOnly(readOnly != FALSE);
    return TRUE;
}

BOOL CEdit::IsReadOnly() const { return m_line ? m_line->isReadOnly() : m_text->isReadOnly(); }

void CEdit::SetSel(int start, int end, BOOL)
{
    if (m_line) {
        const int len = static_cast<int>(m_line->text().size());
        if (start < 0) {
            m_line->deselect();
            return;
        }
        if (end < 0 || end > len)
            end = len;
        start = std::min(start, len);
        m_line->setSelection(start, end - start);
        return;
    }
    const int len = static_cast<int>(m_text->toPlainText().size());
    QTextCursor c = m_text->textCursor();
    if (start < 0) {
        c.clearSelection();
    } else {
        if (end < 0 || end > len)
            end = len;
        c.setPosition(std::min(start, len));
        c.setPosition(end, QTextCursor::KeepAnchor);
    }
    m_text->setTextCursor(c);
}

void CEdit::GetSel(int& start, int& end) const
{
    if (m_line) {
        if (m_line->hasSelectedText()) {
            start = m_line->selectionStart();
            end = m_line->selectionEnd();
        } else {
            start = end = m_line->cursorPosition();
        }
        return;
    }
    const QTextCursor c = m_text->textCursor();
    start = c.selectionStart();
    end = c.selectionEnd();
}

void CEdit::ReplaceSel(const CString& text, BOOL)
{
    const QString q = normaliseBreaks(toQString(text));
    if (m_line) {
        m_line->insert(q);
        return;
    }
    m_programmatic = true;
    m_text->insertPlainText(q);
    m_programmatic = false;
}

void CEdit::SetUpperCase(bool on) { m_upper = on; if (on) m_lower = false; }
void CEdit::SetLowerCase(bool on) { m_lower = on; if (on) m_upper = false; }
void CEdit::SetNumber(bool on) { m_number = on; }

void CEdit::SetPassword(bool on)
{
    if (m_line)
        m_line->setEchoMode(on ? QLineEdit::Password : QLineEdit::Normal);
}

void CEdit::SetBorder(bool on)
{
    if (m_line)
        m_line->setFrame(on);
    else
        m_text->setFrameShape(on ? QFrame::StyledPanel : QFrame::NoFrame);
}

void CEdit::ApplyStyle(DWORD style)
{
    SetBorder((style & WS_BORDER) != 0);
    SetReadOnly((style & ES_READONLY) ? TRUE : FALSE);
    SetUpperCase((style & ES_UPPERCASE) != 0);
    SetLowerCase((style & ES_LOWERCASE) != 0);
    SetNumber((style & ES_NUMBER) != 0);
    SetPassword((style & ES_PASSWORD) != 0);
    SetWantReturn((style & ES_WANTRETURN) != 0);
    const Qt::Alignment h = (style & ES_CENTER) ? Qt::AlignHCenter : (style & ES_RIGHT) ? Qt::AlignRight : Qt::AlignLeft;
    if (m_line) {
        m_line->setAlignment(h | Qt::AlignVCenter);
    } else {
        m_text->setVerticalScrollBarPolicy((style & WS_VSCROLL) ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
        m_text->setHorizontalScrollBarPolicy((style & WS_HSCROLL) ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
        // Without horizontal scrolling a multi-line edit wraps at the window edge.
        m_text->setLineWrapMode((style & (ES_AUTOHSCROLL | WS_HSCROLL)) ? QPlainTextEdit::NoWrap
                                                                         : QPlainTextEdit::WidgetWidth);
    }
}

bool CEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == editor()) {
        switch (event->type()) {
        case QEvent::FocusIn:
            emit gotFocus();
            break;
        case QEvent::FocusOut:
            emit lostFocus();
            break;
        case QEvent::KeyPress:
            if (m_text && !m_wantReturn) {
                auto* key = static_cast<QKeyEvent*>(event);
                if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
                    && !(key->modifiers() & Qt::ControlModifier)) {
                    // Without ES_WANTRETURN, Enter belongs to the dialog (its default button).
                    if (QWidget* p = parentWidget()) {
                        QKeyEvent copy(key->type(), key->key(), key->modifiers(), key->text());
                        QCoreApplication::sendEvent(p, &copy);
                    }
                    return true;
                }
            }
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

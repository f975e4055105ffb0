#include "cstatic.h"

#include "dialogtemplate.h"
#include "qtconvert.h"

CStatic::CStatic(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setWordWrap(true);
}

void CStatic::SetWindowText(const CString& text)
{
    m_raw = text;
    QString shown = toQString(text);
    if (!m_noPrefix) {
        QString out;
        out.reserve(shown.size());
        for (qsizetype i = 0; i < shown.size(); ++i) {
            if (shown.at(i) == QLatin1Char('&')) {
                if (i + 1 < shown.size() && shown.at(i + 1) == QLatin1Char('&')) {
                    out += QLatin1Char('&');
                    ++i;
                }
                continue;
            }
            out += shown.at(i);
        }
        shown = out;
    }
    setText(shown);
}

void CStatic::SetNoPrefix(bool on)
{
    m_noPrefix = on;
    SetWindowText(m_raw);
}

void CStatic::ApplyStyle(DWORD style)
{
    Qt::Alignment a = (style & SS_CENTER) ? Qt::AlignHCenter : (style & SS_RIGHT) ? Qt::AlignRight : Qt::AlignLeft;
    a |= (style & SS_CENTERIMAGE) ? Qt::AlignVCenter : Qt::AlignTop;
    setAlignment(a);
    setWordWrap(!(style & SS_CENTERIMAGE));
    if (style & SS_SUNKEN)
        setFrameStyle(QFrame::Panel | QFrame::Sunken);
    else if (style & WS_BORDER)
        setFrameStyle(QFrame::Box | QFrame::Plain);
    m_noPrefix = (style & SS_NOPREFIX) != 0;
}

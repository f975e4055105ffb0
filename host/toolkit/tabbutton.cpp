#include "tabbutton.h"

#include "colorschema.h"
#include "drawmaster.h"
#include "qtconvert.h"

#include <QPainter>
#include <QPainterPath>

namespace {
constexpr int kPaddingX = 14;
constexpr int kPaddingY = 6;
constexpr int kMinWidth = 60;
} // namespace

TabButton::TabButton(QWidget* parent) : QAbstractButton(parent)
{
    const ColorSchema& cs = ColorSchema::Instance();
    m_bkSelected = cs.GetTabSelectedBkColor();
    m_bkUnselected = cs.GetTabUnselectedBkColor();
    m_textSelected = cs.GetTabSelectedTextColor();
    m_textUnselected = cs.GetTabUnselectedTextColor();
    setFont(DrawMaster::GetNormalFont());
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractButton::clicked, this, [this] { emit command(GetDlgCtrlID()); });
}

TabButton::~TabButton() = default;

BOOL TabButton::Create(const CString& text, CWnd* parent, UINT id)
{
    if (parent && parentWidget() != parent)
        setParent(parent);
    SetDlgCtrlID(this, static_cast<int>(id));
    m_created = true;
    SetWindowText(text);
    show();
    return TRUE;
}

void TabButton::SetWindowText(const CString& text)
{
    setText(toQString(text));
    Refresh();
}

CString TabButton::GetWindowText() const { return fromQString(text()); }

void TabButton::SetBkColors(COLORREF selected, COLORREF unselected)
{
    m_bkSelected = selected;
    m_bkUnselected = unselected;
}

void TabButton::SetTextColors(COLORREF selected, COLORREF unselected)
{
    m_textSelected = selected;
    m_textUnselected = unselected;
}

void TabButton::SetSelected(bool selected)
{
    if (m_selected == selected)
        return;
    m_selected = selected;
    update();
}

void TabButton::Refresh()
{
    resize(sizeHint());
    update();
}

CSize TabButton::GetSize() const { return CSize(width(), height()); }

QSize TabButton::sizeHint() const
{
    const QFontMetrics fm(font());
    return QSize(std::max(kMinWidth, fm.horizontalAdvance(text()) + 2 * kPaddingX), fm.height() + 2 * kPaddingY);
}

void TabButton::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QRectF r = QRectF(rect());
    // Rounded top corners, square bottom: the tab sits on the band below it.
    const qreal radius = 4;
    QPainterPath path;
    path.moveTo(r.left(), r.bottom() + 1);
    path.lineTo(r.left(), r.top() + radius);
    path.quadTo(r.left(), r.top(), r.left() + radius, r.top());
    path.lineTo(r.right() - radius, r.top());
    path.quadTo(r.right(), r.top(), r.right(), r.top() + radius);
    path.lineTo(r.right(), r.bottom() + 1);
    path.closeSubpath();
    p.fillPath(path, toQColor(m_selected ? m_bkSelected : m_bkUnselected));

    p.setFont(font());
    p.setPen(toQColor(m_selected ? m_textSelected : m_textUnselected));
    p.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
}

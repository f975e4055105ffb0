#include "xpbutton.h"

#include "colorschema.h"
#include "drawmaster.h"
#include "qtconvert.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionButton>

XPButton::XPButton(QWidget* parent) : QPushButton(parent)
{
    setFont(DrawMaster::GetNormalFont());
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QPushButton::clicked, this, [this] { emit command(GetDlgCtrlID()); });
}

XPButton::~XPButton() = default;

BOOL XPButton::Create(const CString& text, CWnd* parent, UINT id, const CRect& rect)
{
    if (parent && parentWidget() != parent)
        setParent(parent);
    SetDlgCtrlID(this, static_cast<int>(id));
    SetWindowText(text);
    if (rect.IsRectEmpty())
        setGeometry(0, 0, DEFAULT_WIDTH, DEFAULT_HEIGHT);
    else
        setGeometry(rect.toQRect());
    m_created = true;
    show();
    return TRUE;
}

void XPButton::SetWindowText(const CString& text)
{
    setText(toQString(text));
    update();
}

CString XPButton::GetWindowText() const { return fromQString(text()); }

QSize XPButton::sizeHint() const
{
    const QFontMetrics fm(font());
    const int w = std::max(DEFAULT_WIDTH, fm.horizontalAdvance(text()) + 24);
    return QSize(w, std::max(DEFAULT_HEIGHT, fm.height() + 10));
}

void XPButton::paintEvent(QPaintEvent*)
{
    const ColorSchema& cs = ColorSchema::Instance();
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing, true);

    COLORREF bk = cs.GetButtonBkColor();
    if (!isEnabled())
        bk = cs.GetButtonDisabledBkColor();
    else if (isDown())
        bk = cs.GetButtonPressedBkColor();
    else if (underMouse())
        bk = cs.GetButtonHotBkColor();
    const COLORREF border = (hasFocus() || isDefault()) && isEnabled() ? cs.GetButtonFocusBorderColor()
                                                                         : cs.GetButtonBorderColor();

    const QRectF r = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath path;
    path.addRoundedRect(r, 3, 3);
    p.fillPath(path, toQColor(bk));
    p.setPen(QPen(toQColor(border), 1));
    p.drawPath(path);

    p.setFont(font());
    p.setPen(toQColor(isEnabled() ? cs.GetButtonTextColor() : cs.GetTextColorDisabled()));
    QRect textRect = rect();
    if (isDown())
        textRect.translate(0, 1);
    p.drawText(textRect, Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

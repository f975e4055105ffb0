#include "requiredmark.h"

#include <QEvent>
#include <QPainter>
#include <QPolygon>

RequiredMark::RequiredMark(QWidget* field) : QWidget(field)
{
    setObjectName(QStringLiteral("requiredMark"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    resize(SIZE, SIZE);
    hide();
    field->installEventFilter(this);
}

void RequiredMark::Show(bool on)
{
    m_on = on;
    setVisible(on);
    if (on) {
        place();
        raise();
    }
}

bool RequiredMark::eventFilter(QObject* watched, QEvent* event)
{
    // The field's own children are created and raised later: stay on top.
    if (watched == parentWidget() && m_on
        && (event->type() == QEvent::Resize || event->type() == QEvent::ChildAdded
            || event->type() == QEvent::Show))
        place();
    return QWidget::eventFilter(watched, event);
}

void RequiredMark::place()
{
    move(0, 0);
    raise();
}

void RequiredMark::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xD0, 0x10, 0x10));
    p.drawPolygon(QPolygon({QPoint(0, 0), QPoint(SIZE, 0), QPoint(0, SIZE)}));
}

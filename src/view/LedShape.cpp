#include "view/LedShape.h"

#include <QPainter>

LedShape::LedShape(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LedShape::setFillColor(quint32 color)
{
    if (color == m_fillColor)
        return;
    m_fillColor = color;
    update();
}

QSize LedShape::sizeHint() const
{
    const int side = fontMetrics().height() * 3 / 4;
    return {side, side};
}

void LedShape::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor fill(int(m_fillColor & 0xFF), int((m_fillColor >> 8) & 0xFF),
                      int((m_fillColor >> 16) & 0xFF));
    const qreal side = qMin(width(), height()) - 1.0;
    const QRectF disc((width() - side) / 2.0, (height() - side) / 2.0, side, side);
    QRadialGradient shine(disc.center() - QPointF(side / 5, side / 5), side * 0.7);
    shine.setColorAt(0, fill.lighter(m_fillColor ? 160 : 250));
    shine.setColorAt(1, fill);
    painter.setBrush(shine);
    painter.setPen(QPen(palette().color(QPalette::Dark), 1));
    painter.drawEllipse(disc);
}

#include "view/ToolbarIcons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <functional>

namespace {

using Drawing = std::function<void(QPainter &)>;

const QColor kInk(40, 44, 52);
const QColor kPaper(250, 250, 246);

/// Each picture is drawn on a 16 by 16 grid and scaled to whatever the toolbar asks for.
class DrawnIcon : public QIconEngine
{
public:
    explicit DrawnIcon(Drawing drawing) : m_drawing(std::move(drawing)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 16.0, rect.height() / 16.0);
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.35);
        m_drawing(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return image;
    }

    QIconEngine *clone() const override { return new DrawnIcon(m_drawing); }

private:
    Drawing m_drawing;
};

QPen ink(qreal width = 1.0)
{
    return QPen(kInk, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void page(QPainter &p, const QColor &fill = kPaper)
{
    QPainterPath sheet;
    sheet.moveTo(3, 1.5);
    sheet.lineTo(10, 1.5);
    sheet.lineTo(13, 4.5);
    sheet.lineTo(13, 14.5);
    sheet.lineTo(3, 14.5);
    sheet.closeSubpath();
    p.setPen(ink());
    p.setBrush(fill);
    p.drawPath(sheet);
    p.drawLine(QPointF(10, 1.5), QPointF(10, 4.5));
    p.drawLine(QPointF(10, 4.5), QPointF(13, 4.5));
}

void trace(QPainter &p, const QColor &colour)
{
    QPainterPath peak;
    peak.moveTo(1.5, 12);
    peak.lineTo(5, 12);
    peak.cubicTo(6.5, 12, 7, 3, 8, 3);
    peak.cubicTo(9, 3, 9.5, 12, 11, 12);
    peak.lineTo(14.5, 12);
    p.setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(peak);
}

Drawing drawingFor(const QString &key)
{
    if (key == QLatin1String("picOpen"))
        return [](QPainter &p) {
            p.setPen(ink());
            p.setBrush(QColor(232, 190, 90));
            p.drawRect(QRectF(1.5, 4.5, 12, 9));
            p.setBrush(QColor(250, 214, 120));
            QPolygonF flap({{1.5, 13.5}, {4, 7.5}, {15, 7.5}, {13.5, 13.5}});
            p.drawPolygon(flap);
        };
    if (key == QLatin1String("picSave"))
        return [](QPainter &p) {
            p.setPen(ink());
            p.setBrush(QColor(70, 110, 190));
            p.drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 1.5, 1.5);
            p.setBrush(kPaper);
            p.drawRect(QRectF(4, 1.5, 8, 5));
            p.setBrush(QColor(200, 205, 215));
            p.drawRect(QRectF(4, 9.5, 8, 5));
        };
    if (key == QLatin1String("picPrint"))
        return [](QPainter &p) {
            p.setPen(ink());
            p.setBrush(kPaper);
            p.drawRect(QRectF(4, 1.5, 8, 5));
            p.setBrush(QColor(160, 165, 175));
            p.drawRoundedRect(QRectF(1.5, 6, 13, 6), 1, 1);
            p.setBrush(kPaper);
            p.drawRect(QRectF(4, 10, 8, 4.5));
            p.setPen(QPen(QColor(40, 160, 60), 1.2));
            p.drawPoint(QPointF(12.5, 8));
        };
    if (key == QLatin1String("picClear"))
        return [](QPainter &p) {
            page(p);
            p.setPen(QPen(QColor(200, 40, 40), 1.8, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(5.5, 7), QPointF(10.5, 12));
            p.drawLine(QPointF(10.5, 7), QPointF(5.5, 12));
        };
    if (key == QLatin1String("picRecord"))
        return [](QPainter &p) {
            p.setPen(QPen(QColor(120, 10, 10), 1));
            QRadialGradient glow(QPointF(6.5, 6.5), 7);
            glow.setColorAt(0, QColor(255, 120, 110));
            glow.setColorAt(1, QColor(205, 20, 20));
            p.setBrush(glow);
            p.drawEllipse(QRectF(2.5, 2.5, 11, 11));
        };
    if (key == QLatin1String("picStop"))
        return [](QPainter &p) {
            p.setPen(ink());
            p.setBrush(QColor(60, 64, 72));
            p.drawRoundedRect(QRectF(3, 3, 10, 10), 1.2, 1.2);
        };
    if (key == QLatin1String("picMethod"))
        return [](QPainter &p) {
            page(p);
            p.setPen(ink(0.9));
            for (qreal y : {6.5, 8.5, 10.5, 12.5})
                p.drawLine(QPointF(5, y), QPointF(11, y));
        };
    if (key == QLatin1String("picNotes"))
        return [](QPainter &p) {
            page(p, QColor(255, 244, 160));
            p.setPen(QPen(QColor(30, 80, 170), 1.4, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(5, 12), QPointF(11.5, 5.5));
        };
    if (key == QLatin1String("picLogOn"))
        return [](QPainter &p) {
            p.setPen(ink());
            p.setBrush(kPaper);
            p.drawRect(QRectF(1.5, 1.5, 13, 13));
            trace(p, QColor(30, 90, 200));
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(30, 170, 60));
            p.drawEllipse(QRectF(10, 1.5, 5, 5));
        };
    if (key == QLatin1String("picLogOff"))
        return [](QPainter &p) {
            p.setPen(ink());
            p.setBrush(kPaper);
            p.drawRect(QRectF(1.5, 1.5, 13, 13));
            trace(p, QColor(150, 150, 150));
            p.setPen(QPen(QColor(200, 40, 40), 1.6, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(10.5, 2), QPointF(14.5, 6));
            p.drawLine(QPointF(14.5, 2), QPointF(10.5, 6));
        };
    if (key == QLatin1String("picLogo"))
        return [](QPainter &p) {
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(24, 60, 120));
            p.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3, 3);
            trace(p, QColor(120, 200, 255));
        };
    return [](QPainter &) {};
}

} // namespace

QIcon toolbarIcon(const QString &imageKey)
{
    return QIcon(new DrawnIcon(drawingFor(imageKey)));
}

#include "shell/SplashPicture.h"

#include <QCoreApplication>
#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 280;

/// Absorbance of three eluting peaks over a slowly rising baseline, 0 to about 1.
double absorbance(double x)
{
    const struct
    {
        double at, height, width;
    } peaks[] = {{0.30, 0.55, 0.025}, {0.47, 0.95, 0.03}, {0.72, 0.40, 0.045}};
    double value = 0.04 + 0.03 * x;
    for (const auto &peak : peaks)
        value += peak.height * std::exp(-std::pow((x - peak.at) / peak.width, 2) / 2);
    return value;
}

void drawTraces(QPainter &painter, const QRectF &plot)
{
    painter.setPen(QPen(QColor(255, 255, 255, 40), 1));
    for (int i = 1; i < 8; ++i) {
        const double x = plot.left() + plot.width() * i / 8;
        painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
    }
    for (int i = 1; i < 4; ++i) {
        const double y = plot.top() + plot.height() * i / 4;
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    }
    QPainterPath uv;
    QPainterPath conductivity;
    for (int i = 0; i <= 200; ++i) {
        const double x = i / 200.0;
        const double step = x < 0.2 ? 0.1 : x < 0.85 ? 0.1 + 0.75 * (x - 0.2) / 0.65 : 0.85;
        const QPointF a(plot.left() + x * plot.width(),
                        plot.bottom() - absorbance(x) * plot.height());
        const QPointF c(plot.left() + x * plot.width(), plot.bottom() - step * plot.height());
        i == 0 ? uv.moveTo(a) : uv.lineTo(a);
        i == 0 ? conductivity.moveTo(c) : conductivity.lineTo(c);
    }
    painter.setPen(QPen(QColor(255, 170, 60), 2));
    painter.drawPath(conductivity);
    painter.setPen(QPen(QColor(120, 210, 255), 2.5));
    painter.drawPath(uv);
    // An event mark under the injection, as the recorder draws them.
    painter.setPen(QPen(QColor(255, 255, 255, 180), 1, Qt::DashLine));
    const double injection = plot.left() + 0.12 * plot.width();
    painter.drawLine(QPointF(injection, plot.top() + 10), QPointF(injection, plot.bottom()));
}

} // namespace

QImage splashPicture()
{
    QImage image(kWidth, kHeight, QImage::Format_RGB888);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, kHeight);
    sky.setColorAt(0, QColor(18, 52, 74));
    sky.setColorAt(1, QColor(8, 24, 36));
    painter.fillRect(image.rect(), sky);
    drawTraces(painter, QRectF(24, 96, kWidth - 48, 132));

    painter.setPen(Qt::white);
    QFont title(QStringLiteral("DejaVu Sans"));
    title.setPixelSize(40);
    title.setBold(true);
    painter.setFont(title);
    painter.drawText(QRect(24, 16, kWidth - 48, 48), Qt::AlignLeft | Qt::AlignVCenter,
                     QCoreApplication::applicationName());
    QFont small(QStringLiteral("DejaVu Sans"));
    small.setPixelSize(13);
    painter.setFont(small);
    painter.setPen(QColor(200, 225, 240));
    painter.drawText(QRect(24, 64, kWidth - 48, 20), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("Chart recorder for the Velquin chromatography system"));
    painter.drawText(QRect(24, kHeight - 40, kWidth - 48, 20), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("UV absorbance (AU)  \u00b7  conductivity (mS/cm)"));
    painter.drawText(QRect(24, kHeight - 40, kWidth - 48, 20), Qt::AlignRight | Qt::AlignVCenter,
                     QStringLiteral("Version ") + QCoreApplication::applicationVersion());
    return image;
}

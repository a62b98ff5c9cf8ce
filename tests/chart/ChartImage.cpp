#include "ChartImage.h"

#include "chart/ChartPalette.h"
#include "chart/Quillchart.h"

#include <QPixmap>

#include <cmath>
#include <vector>

QImage grabChart(Quillchart &chart)
{
    return chart.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QRect plotArea(const QImage &image)
{
    QList<int> rows;
    QList<int> columns;
    std::vector<int> inRow(image.height()), inColumn(image.width());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == ChartPalette::kFrame.rgb())
                ++inRow[y], ++inColumn[x];
    for (int y = 0; y < image.height(); ++y)
        if (inRow[y] > image.width() / 2)
            rows.append(y);
    for (int x = 0; x < image.width(); ++x)
        if (inColumn[x] > image.height() / 2)
            columns.append(x);
    if (rows.size() != 2 || columns.size() != 2)
        return {};
    return QRect(QPoint(columns[0] + 1, rows[0] + 1), QPoint(columns[1] - 1, rows[1] - 1));
}

QList<QPoint> pixelsOf(const QImage &image, const QColor &color, const QRect &area)
{
    QList<QPoint> found;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (image.pixel(x, y) == color.rgb())
                found.append(QPoint(x, y));
    return found;
}

int columnAt(const QRect &plot, double minutes, double from, double to)
{
    return int(std::lround(plot.left() + (minutes - from) / (to - from) * (plot.width() - 1)));
}

int rowAt(const QRect &plot, double value, double min, double max)
{
    return int(std::lround(plot.top() + (max - value) / (max - min) * (plot.height() - 1)));
}

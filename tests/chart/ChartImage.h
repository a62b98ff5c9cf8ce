#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

class Quillchart;

/// What the chart shows, as the operator would see it.
QImage grabChart(Quillchart &chart);

/// The plot area: the pixels inside the frame, found by the frame's own long lines.
QRect plotArea(const QImage &image);

/// The pixels of exactly `color` inside `area`.
QList<QPoint> pixelsOf(const QImage &image, const QColor &color, const QRect &area);

/// The column at which `minutes` stands on a plot that spans `from` to `to`.
int columnAt(const QRect &plot, double minutes, double from, double to);
/// The row at which `value` stands on a plot whose axis spans `min` to `max`.
int rowAt(const QRect &plot, double value, double min, double max);

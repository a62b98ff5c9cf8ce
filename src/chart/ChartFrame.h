#pragma once

#include "chart/PlotGeometry.h"

#include <QFont>
#include <QFontMetrics>
#include <QRect>
#include <QString>

#include <vector>

class QPaintDevice;
class QPainter;

/// @brief What surrounds the traces: the plot's place in an area, its grid, its frame, the
/// three axes with round ticks and their labels, and the title.
///
/// All in device pixels; `unit` is the size of a 96-dpi screen pixel on `device`, and the font
/// is already sized for it.
class ChartFrame
{
public:
    ChartFrame(const QRect &area, const ChartAxes &axes, const QFont &font, qreal unit,
               QPaintDevice *device);

    [[nodiscard]] const PlotGeometry &geometry() const { return m_geometry; }

    /// Background and grid, drawn under the traces.
    void paintBackground(QPainter &painter) const;
    /// Frame, ticks, labels and title, drawn over the traces.
    void paintAxes(QPainter &painter, const QString &title) const;

private:
    void paintValueAxes(QPainter &painter) const;
    void paintTimeAxis(QPainter &painter) const;

    QRect m_area;
    QFont m_font;
    QFontMetrics m_metrics;
    int m_padding;
    int m_tick;
    int m_lineHeight;
    int m_timeLabelWidth = 0;
    std::vector<double> m_uvTicks;
    std::vector<double> m_condTicks;
    std::vector<double> m_timeTicks;
    PlotGeometry m_geometry;
};

#pragma once

#include "chart/PlotGeometry.h"

#include <QFont>
#include <QFontMetrics>
#include <QRect>
#include <QString>
#include <QStringList>

#include <vector>

class QPaintDevice;
class QPainter;

/// @brief What surrounds the traces: the plot's place in an area, its grid, its frame, the
/// three axes with round ticks and their labels, and the title.
///
/// All in device pixels; `unit` is the size of a 96-dpi screen pixel on `device`, and the font
/// is already sized for it. Labels take the fixed formats of the program ("0.000" AU, "0.0"
/// mS/cm and minutes) unless ticks that close would read alike: then they take as many
/// decimals as the tick step needs.
class ChartFrame
{
public:
    enum class Axis { Uv, Conductivity, Time };

    ChartFrame(const QRect &area, const ChartAxes &axes, const QFont &font, qreal unit,
               QPaintDevice *device);

    [[nodiscard]] const PlotGeometry &geometry() const { return m_geometry; }
    /// The labels of an axis's ticks, from its minimum up.
    [[nodiscard]] QStringList tickLabels(Axis axis) const;

    /// Background and grid, drawn under the traces.
    void paintBackground(QPainter &painter) const;
    /// Frame, ticks, labels and title, drawn over the traces.
    void paintAxes(QPainter &painter, const QString &title) const;

private:
    struct Scale
    {
        std::vector<double> ticks;
        QString pattern;
    };

    [[nodiscard]] static Scale scaleOf(float min, float max, int maxCount, int fewestDecimals);
    [[nodiscard]] int widestLabel(const Scale &scale) const;
    [[nodiscard]] const Scale &scale(Axis axis) const;
    void paintValueAxes(QPainter &painter) const;
    void paintTimeAxis(QPainter &painter) const;

    QRect m_area;
    QFont m_font;
    QFontMetrics m_metrics;
    int m_padding;
    int m_tick;
    int m_lineHeight;
    int m_timeLabelWidth = 0;
    Scale m_uv;
    Scale m_conductivity;
    Scale m_time;
    PlotGeometry m_geometry;
};

#pragma once

#include "chart/ChartAxes.h"

#include <QRect>

/// @brief Maps times and values to the pixel columns and rows of a plot rectangle and back.
///
/// Column 0 is the time axis minimum and the last column its maximum; the top row is an axis
/// maximum and the bottom row its minimum. Rows are clamped to one pixel outside the plot, so
/// that an infinite or off-scale value lands where the clip hides it.
class PlotGeometry
{
public:
    PlotGeometry() = default;
    PlotGeometry(const QRect &plot, const ChartAxes &axes);

    [[nodiscard]] bool isValid() const;
    [[nodiscard]] const QRect &plot() const { return m_plot; }
    [[nodiscard]] const ChartAxes &axes() const { return m_axes; }

    /// Minutes covered by one column.
    [[nodiscard]] double minutesPerColumn() const;
    [[nodiscard]] double xOf(double minutes) const;
    [[nodiscard]] int columnOf(double minutes) const;
    [[nodiscard]] double timeAt(double x) const;

    [[nodiscard]] int uvRow(double au) const { return rowOf(au, m_axes.uvMin, m_axes.uvMax); }
    [[nodiscard]] int condRow(double mS) const { return rowOf(mS, m_axes.condMin, m_axes.condMax); }
    [[nodiscard]] double uvAt(double y) const { return valueAt(y, m_axes.uvMin, m_axes.uvMax); }
    [[nodiscard]] double condAt(double y) const
    {
        return valueAt(y, m_axes.condMin, m_axes.condMax);
    }

private:
    [[nodiscard]] int rowOf(double value, double min, double max) const;
    [[nodiscard]] double valueAt(double y, double min, double max) const;

    QRect m_plot;
    ChartAxes m_axes;
};

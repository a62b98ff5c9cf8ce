#include "chart/PlotGeometry.h"

#include <algorithm>
#include <cmath>

PlotGeometry::PlotGeometry(const QRect &plot, const ChartAxes &axes) : m_plot(plot), m_axes(axes)
{}

bool PlotGeometry::isValid() const
{
    return m_plot.width() >= 2 && m_plot.height() >= 2 && m_axes.timeMax > m_axes.timeMin &&
           m_axes.uvMax > m_axes.uvMin && m_axes.condMax > m_axes.condMin;
}

double PlotGeometry::minutesPerColumn() const
{
    return (double(m_axes.timeMax) - m_axes.timeMin) / (m_plot.width() - 1);
}

double PlotGeometry::xOf(double minutes) const
{
    return m_plot.left() + (minutes - m_axes.timeMin) / minutesPerColumn();
}

int PlotGeometry::columnOf(double minutes) const
{
    // Far-off times are held to a range that an int and QPainter still take; a time that is no
    // number at all, as a damaged file may carry, stands far off to the left.
    const double x = std::clamp(std::floor(xOf(minutes) + 0.5), -1e6, 1e6);
    return std::isnan(x) ? -1000000 : int(x);
}

double PlotGeometry::timeAt(double x) const
{
    return m_axes.timeMin + (x - m_plot.left()) * minutesPerColumn();
}

int PlotGeometry::rowOf(double value, double min, double max) const
{
    const double fromTop = (max - value) / (max - min) * (m_plot.height() - 1);
    const double row = std::clamp(std::floor(m_plot.top() + fromTop + 0.5),
                                  double(m_plot.top() - 1), double(m_plot.bottom() + 1));
    return std::isnan(row) ? m_plot.bottom() + 1 : int(row);
}

double PlotGeometry::valueAt(double y, double min, double max) const
{
    return max - (y - m_plot.top()) / (m_plot.height() - 1) * (max - min);
}

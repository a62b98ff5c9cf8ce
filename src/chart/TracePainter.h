#pragma once

#include "chart/PlotContent.h"

#include <QtGlobal>

class PlotGeometry;
class QPainter;
class QRect;
class SampleStore;

/// @brief Draws the UV and conductivity traces of a stretch of samples onto a plot.
///
/// Where a pixel column holds a sample or more, each column gets one bar from the lowest to the
/// highest value in it, stretched to touch its neighbour's bar, so a one-sample spike always
/// shows; closer in, the samples are joined by lines. Either way the work grows with the columns
/// drawn, not with the samples behind them. The painter must be in device pixels.
class TracePainter
{
public:
    TracePainter(const SampleStore &store, const PlotGeometry &geometry,
                 const PlotContent &content = {});

    /// Draws the samples [first, last] where they fall inside the plot and answers the part of
    /// the plot that was touched (empty when none).
    QRect paint(QPainter &painter, qint64 first, qint64 last) const;

private:
    QRect paintColumns(QPainter &painter, qint64 first, qint64 last) const;
    QRect paintLines(QPainter &painter, qint64 first, qint64 last) const;

    const SampleStore &m_store;
    const PlotGeometry &m_geometry;
    PlotContent m_content;
};

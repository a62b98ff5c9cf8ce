#pragma once

#include "chart/PlotContent.h"
#include "chart/PlotGeometry.h"

#include <QFont>
#include <QRect>
#include <QString>
#include <QtGlobal>

#include <cstddef>

class ChartAnnotations;
class QPainter;
class QRectF;
class SampleStore;

/// @brief Paints a chart: frame, grid, axes, title, traces, event marks and method texts.
///
/// Works on any painter and rectangle, so the screen's backing image and a printed page share
/// it. Lengths and fonts follow the device's resolution, and everything inside the plot is
/// placed on the device's own pixels, so a HiDPI image stays crisp.
class ChartRenderer
{
public:
    ChartRenderer(const SampleStore &store, const ChartAnnotations &annotations);

    /// Paints the whole chart into `rect` (the painter's coordinates) and answers where the plot
    /// went, in the device's pixels.
    PlotGeometry paint(QPainter &painter, const QRectF &rect, const ChartAxes &axes,
                       const QString &title, const QFont &font,
                       const PlotContent &content = {}) const;

    /// Paints, over an earlier `paint` with `geometry`, the samples from `firstSample` on and
    /// the marks and method texts from the given positions on. Answers the device pixels
    /// touched.
    QRect paintAdded(QPainter &painter, const PlotGeometry &geometry, qint64 firstSample,
                     std::size_t firstMark, std::size_t firstMethodText, const QFont &font) const;

private:
    /// What a paint adds to a chart already painted: the marks and method texts from these
    /// positions on, over the traces just painted in `traces`.
    struct Added
    {
        std::size_t firstMark;
        std::size_t firstMethodText;
        QRect traces;
        bool eventMarks;
    };

    QRect paintAnnotations(QPainter &painter, const PlotGeometry &geometry, const Added &added,
                           const QFont &font, qreal unit) const;

    const SampleStore &m_store;
    const ChartAnnotations &m_annotations;
};

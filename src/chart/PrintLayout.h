#pragma once

#include "chart/ChartAxes.h"
#include "chart/PlotContent.h"

#include <QFont>
#include <QString>

class ChartAnnotations;
class ChartRenderer;
class QPagedPaintDevice;

/// @brief The printed report of a run: title, chromatogram, method text and notes.
///
/// The first page carries the title and, when chosen, the chromatogram over the upper part of
/// the page, drawn by the same renderer as the screen with the chosen traces at a width that
/// shows on paper. Method texts and notes follow as text onto as many pages as they need,
/// wrapped at the page's width, a word longer than a line broken over lines: every word of the
/// title, the method and the notes is printed. Every page is numbered.
class PrintLayout
{
public:
    struct Options
    {
        bool chromatogram = true;
        bool method = true;
        bool notes = true;
        PlotContent content;
    };

    PrintLayout(const ChartRenderer &renderer, const ChartAnnotations &annotations,
                const ChartAxes &axes, QString title, QFont font);

    /// Paints the report on `device`, whose painter this opens and closes. False when the
    /// device cannot be painted on or a page cannot be started.
    [[nodiscard]] bool print(QPagedPaintDevice &device, const Options &options) const;

private:
    const ChartRenderer &m_renderer;
    const ChartAnnotations &m_annotations;
    ChartAxes m_axes;
    QString m_title;
    QFont m_font;
};

#include "chart/ChartFrame.h"

#include "chart/AxisTicks.h"
#include "chart/ChartPalette.h"
#include "runtime/Numbers.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// Measures in pixels of a 96-dpi screen.
constexpr qreal kPadding = 6;
constexpr qreal kTickLength = 4;

const QString kUvPattern = QStringLiteral("0.000");
// Conductivity and minutes share it.
const QString kOneDecimal = QStringLiteral("0.0");

int scaled(qreal screenPixels, qreal unit)
{
    return std::max(1, int(std::lround(screenPixels * unit)));
}

int widestLabel(const QFontMetrics &metrics, const std::vector<double> &ticks,
                const QString &pattern)
{
    int widest = 0;
    for (const double tick : ticks)
        widest = std::max(widest, metrics.horizontalAdvance(Format(tick, pattern)));
    return widest;
}

std::vector<double> roundTicks(float min, float max, int maxCount)
{
    return AxisTicks::ticks(min, max, AxisTicks::roundStep(double(max) - min, maxCount));
}

} // namespace

ChartFrame::ChartFrame(const QRect &area, const ChartAxes &axes, const QFont &font, qreal unit,
                       QPaintDevice *device)
    : m_area(area)
    , m_font(font)
    , m_metrics(font, device)
    , m_padding(scaled(kPadding, unit))
    , m_tick(scaled(kTickLength, unit))
    , m_lineHeight(m_metrics.height())
{
    // Title row on top; time labels and the time caption below; value labels at the sides.
    const int top = area.top() + 2 * m_padding + m_lineHeight;
    const int bottom = area.bottom() - m_padding - 2 * m_lineHeight - m_tick;
    const int valueTicks = std::max(1, (bottom - top) / (2 * m_lineHeight));
    m_uvTicks = roundTicks(axes.uvMin, axes.uvMax, valueTicks);
    m_condTicks = roundTicks(axes.condMin, axes.condMax, valueTicks);
    const int left =
        area.left() + 2 * m_padding + widestLabel(m_metrics, m_uvTicks, kUvPattern) + m_tick;
    const int right =
        area.right() - 2 * m_padding - widestLabel(m_metrics, m_condTicks, kOneDecimal) - m_tick;
    m_geometry = PlotGeometry(QRect(QPoint(left, top), QPoint(right, bottom)), axes);
    if (!m_geometry.isValid())
        return;
    m_timeLabelWidth = std::max(m_metrics.horizontalAdvance(Format(axes.timeMin, kOneDecimal)),
                                m_metrics.horizontalAdvance(Format(axes.timeMax, kOneDecimal)));
    m_timeTicks =
        roundTicks(axes.timeMin, axes.timeMax,
                   std::max(1, m_geometry.plot().width() / (m_timeLabelWidth + 4 * m_padding)));
}

void ChartFrame::paintBackground(QPainter &painter) const
{
    painter.fillRect(m_area, ChartPalette::kBackground);
    if (!m_geometry.isValid())
        return;
    const QRect &plot = m_geometry.plot();
    for (const double t : m_timeTicks)
        painter.fillRect(QRect(m_geometry.columnOf(t), plot.top(), 1, plot.height()),
                         ChartPalette::kGrid);
    for (const double v : m_uvTicks)
        painter.fillRect(QRect(plot.left(), m_geometry.uvRow(v), plot.width(), 1),
                         ChartPalette::kGrid);
}

void ChartFrame::paintAxes(QPainter &painter, const QString &title) const
{
    const QRect titleRow(m_area.left(), m_area.top() + m_padding, m_area.width(), m_lineHeight);
    QFont titleFont = m_font;
    titleFont.setBold(true);
    painter.setFont(titleFont);
    painter.setPen(ChartPalette::kText);
    painter.drawText(titleRow, Qt::AlignHCenter | Qt::AlignVCenter, title);

    painter.setFont(m_font);
    painter.setPen(ChartPalette::kUv);
    painter.drawText(titleRow.adjusted(m_padding, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("AU"));
    painter.setPen(ChartPalette::kConductivity);
    painter.drawText(titleRow.adjusted(0, 0, -m_padding, 0), Qt::AlignRight | Qt::AlignVCenter,
                     QStringLiteral("mS/cm"));
    if (!m_geometry.isValid())
        return;

    // The frame lies just outside the plot, so a trace on an axis limit stays visible.
    const QRect frame = m_geometry.plot().adjusted(-1, -1, 1, 1);
    painter.fillRect(QRect(frame.left(), frame.top(), frame.width(), 1), ChartPalette::kFrame);
    painter.fillRect(QRect(frame.left(), frame.bottom(), frame.width(), 1), ChartPalette::kFrame);
    painter.fillRect(QRect(frame.left(), frame.top(), 1, frame.height()), ChartPalette::kFrame);
    painter.fillRect(QRect(frame.right(), frame.top(), 1, frame.height()), ChartPalette::kFrame);
    paintValueAxes(painter);
    paintTimeAxis(painter);
}

void ChartFrame::paintValueAxes(QPainter &painter) const
{
    const QRect frame = m_geometry.plot().adjusted(-1, -1, 1, 1);
    const int gap = m_padding / 2;
    painter.setPen(ChartPalette::kUv);
    for (const double v : m_uvTicks) {
        const int y = m_geometry.uvRow(v);
        painter.fillRect(QRect(frame.left() - m_tick, y, m_tick, 1), ChartPalette::kText);
        painter.drawText(QRect(m_area.left(), y - m_lineHeight,
                               frame.left() - m_tick - gap - m_area.left(), 2 * m_lineHeight),
                         Qt::AlignRight | Qt::AlignVCenter, Format(v, kUvPattern));
    }
    painter.setPen(ChartPalette::kConductivity);
    const int labelLeft = frame.right() + 1 + m_tick + gap;
    for (const double v : m_condTicks) {
        const int y = m_geometry.condRow(v);
        painter.fillRect(QRect(frame.right() + 1, y, m_tick, 1), ChartPalette::kText);
        painter.drawText(
            QRect(labelLeft, y - m_lineHeight, m_area.right() - labelLeft, 2 * m_lineHeight),
            Qt::AlignLeft | Qt::AlignVCenter, Format(v, kOneDecimal));
    }
}

void ChartFrame::paintTimeAxis(QPainter &painter) const
{
    const QRect &plot = m_geometry.plot();
    const int tickTop = plot.bottom() + 2;
    const int labelTop = tickTop + m_tick;
    painter.setPen(ChartPalette::kText);
    for (const double t : m_timeTicks) {
        const int x = m_geometry.columnOf(t);
        painter.fillRect(QRect(x, tickTop, 1, m_tick), ChartPalette::kText);
        painter.drawText(QRect(x - m_timeLabelWidth, labelTop, 2 * m_timeLabelWidth, m_lineHeight),
                         Qt::AlignHCenter | Qt::AlignTop, Format(t, kOneDecimal));
    }
    painter.drawText(QRect(plot.left(), labelTop + m_lineHeight, plot.width(), m_lineHeight),
                     Qt::AlignHCenter | Qt::AlignTop, QStringLiteral("Time (min)"));
}

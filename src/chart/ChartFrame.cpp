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

// The fixed formats: "0.000" for UV, "0.0" for conductivity and minutes.
constexpr int kUvDecimals = 3;
constexpr int kOneDecimal = 1;

int scaled(qreal screenPixels, qreal unit)
{
    return std::max(1, int(std::lround(screenPixels * unit)));
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
    m_uv = scaleOf(axes.uvMin, axes.uvMax, valueTicks, kUvDecimals);
    m_conductivity = scaleOf(axes.condMin, axes.condMax, valueTicks, kOneDecimal);
    const int left = area.left() + 2 * m_padding + widestLabel(m_uv) + m_tick;
    const int right = area.right() - 2 * m_padding - widestLabel(m_conductivity) - m_tick;
    m_geometry = PlotGeometry(QRect(QPoint(left, top), QPoint(right, bottom)), axes);
    if (!m_geometry.isValid())
        return;
    // How many time labels fit depends on their width, which depends on the decimals that
    // their step needs: the count is taken from the widest labels of the fixed format's step,
    // which can only give a step as wide or wider, and so no more decimals.
    const auto timeScale = [&](const QString &pattern) {
        const Scale ends{{axes.timeMin, axes.timeMax}, pattern};
        m_timeLabelWidth = widestLabel(ends);
        const int count = m_geometry.plot().width() / (m_timeLabelWidth + 4 * m_padding);
        return scaleOf(axes.timeMin, axes.timeMax, std::max(1, count), kOneDecimal);
    };
    m_time = timeScale(timeScale(QStringLiteral("0.0")).pattern);
    m_timeLabelWidth = std::max(m_timeLabelWidth, widestLabel(m_time));
}

ChartFrame::Scale ChartFrame::scaleOf(float min, float max, int maxCount, int fewestDecimals)
{
    const double step = AxisTicks::roundStep(double(max) - min, maxCount);
    const int decimals = AxisTicks::decimalsFor(step, fewestDecimals);
    return Scale{AxisTicks::ticks(min, max, step),
                 QStringLiteral("0.") + QString(decimals, QLatin1Char('0'))};
}

int ChartFrame::widestLabel(const Scale &scale) const
{
    int widest = 0;
    for (const double tick : scale.ticks)
        widest = std::max(widest, m_metrics.horizontalAdvance(Format(tick, scale.pattern)));
    return widest;
}

const ChartFrame::Scale &ChartFrame::scale(Axis axis) const
{
    return axis == Axis::Uv ? m_uv : axis == Axis::Conductivity ? m_conductivity : m_time;
}

QStringList ChartFrame::tickLabels(Axis axis) const
{
    QStringList labels;
    for (const double tick : scale(axis).ticks)
        labels.append(Format(tick, scale(axis).pattern));
    return labels;
}

void ChartFrame::paintBackground(QPainter &painter) const
{
    painter.fillRect(m_area, ChartPalette::kBackground);
    if (!m_geometry.isValid())
        return;
    const QRect &plot = m_geometry.plot();
    for (const double t : m_time.ticks)
        painter.fillRect(QRect(m_geometry.columnOf(t), plot.top(), 1, plot.height()),
                         ChartPalette::kGrid);
    for (const double v : m_uv.ticks)
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
    for (const double v : m_uv.ticks) {
        const int y = m_geometry.uvRow(v);
        painter.fillRect(QRect(frame.left() - m_tick, y, m_tick, 1), ChartPalette::kText);
        painter.drawText(QRect(m_area.left(), y - m_lineHeight,
                               frame.left() - m_tick - gap - m_area.left(), 2 * m_lineHeight),
                         Qt::AlignRight | Qt::AlignVCenter, Format(v, m_uv.pattern));
    }
    painter.setPen(ChartPalette::kConductivity);
    const int labelLeft = frame.right() + 1 + m_tick + gap;
    for (const double v : m_conductivity.ticks) {
        const int y = m_geometry.condRow(v);
        painter.fillRect(QRect(frame.right() + 1, y, m_tick, 1), ChartPalette::kText);
        painter.drawText(
            QRect(labelLeft, y - m_lineHeight, m_area.right() - labelLeft, 2 * m_lineHeight),
            Qt::AlignLeft | Qt::AlignVCenter, Format(v, m_conductivity.pattern));
    }
}

void ChartFrame::paintTimeAxis(QPainter &painter) const
{
    const QRect &plot = m_geometry.plot();
    const int tickTop = plot.bottom() + 2;
    const int labelTop = tickTop + m_tick;
    painter.setPen(ChartPalette::kText);
    for (const double t : m_time.ticks) {
        const int x = m_geometry.columnOf(t);
        painter.fillRect(QRect(x, tickTop, 1, m_tick), ChartPalette::kText);
        painter.drawText(QRect(x - m_timeLabelWidth, labelTop, 2 * m_timeLabelWidth, m_lineHeight),
                         Qt::AlignHCenter | Qt::AlignTop, Format(t, m_time.pattern));
    }
    painter.drawText(QRect(plot.left(), labelTop + m_lineHeight, plot.width(), m_lineHeight),
                     Qt::AlignHCenter | Qt::AlignTop, QStringLiteral("Time (min)"));
}

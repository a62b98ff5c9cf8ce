#include "chart/TracePainter.h"

#include "chart/ChartPalette.h"
#include "chart/PlotGeometry.h"
#include "chart/SampleStore.h"

#include <QLineF>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

struct Bar
{
    int top;
    int bottom;
};

// Extent to bar, stretched so that it meets the bar before it: a steep edge shows no gap.
template <typename RowOf>
bool barOf(const Extent &extent, RowOf rowOf, const Bar *previous, Bar &bar)
{
    if (extent.isEmpty())
        return false;
    bar = Bar{rowOf(extent.max), rowOf(extent.min)};
    if (previous) {
        bar.bottom = std::max(bar.bottom, previous->top);
        bar.top = std::min(bar.top, previous->bottom);
    }
    return true;
}

} // namespace

TracePainter::TracePainter(const SampleStore &store, const PlotGeometry &geometry,
                           const PlotContent &content)
    : m_store(store)
    , m_geometry(geometry)
    , m_content(content)
{}

QRect TracePainter::paint(QPainter &painter, qint64 first, qint64 last) const
{
    first = std::max(first, qint64(0));
    last = std::min(last, m_store.count() - 1);
    if (!m_geometry.isValid() || first > last)
        return {};
    painter.save();
    painter.setClipRect(m_geometry.plot());
    painter.setRenderHint(QPainter::Antialiasing, false);
    const bool dense = m_geometry.minutesPerColumn() * SampleStore::kSamplesPerMinute >= 1.0;
    const QRect touched =
        dense ? paintColumns(painter, first, last) : paintLines(painter, first, last);
    painter.restore();
    return touched;
}

QRect TracePainter::paintColumns(QPainter &painter, qint64 first, qint64 last) const
{
    const QRect &plot = m_geometry.plot();
    const int from = std::max(m_geometry.columnOf(SampleStore::timeOf(first)), plot.left());
    const int to = std::min(m_geometry.columnOf(SampleStore::timeOf(last)), plot.right());
    if (from > to)
        return {};
    // One column more on the left, so the first bar can reach its neighbour.
    std::vector<PairExtent> columns(std::size_t(to - from + 2));
    m_store.columns(m_geometry.timeAt(from - 1.5), m_geometry.minutesPerColumn(), columns);

    // A wide trace centres each bar on its column and widens it as much at both ends.
    const int width = std::max(1, m_content.traceWidth);
    const int half = (width - 1) / 2;
    const auto drawTrace = [&](const QColor &color, Extent PairExtent::*channel, auto rowOf) {
        Bar previous{};
        bool hasPrevious = barOf(columns[0].*channel, rowOf, nullptr, previous);
        for (std::size_t k = 1; k < columns.size(); ++k) {
            Bar bar{};
            if (!barOf(columns[k].*channel, rowOf, hasPrevious ? &previous : nullptr, bar)) {
                hasPrevious = false;
                continue;
            }
            painter.fillRect(QRect(from + int(k) - 1 - half, bar.top - half, width,
                                   bar.bottom - bar.top + width),
                             color);
            previous = bar;
            hasPrevious = true;
        }
    };
    if (m_content.uv)
        drawTrace(ChartPalette::kUv, &PairExtent::uv, [&](float v) { return m_geometry.uvRow(v); });
    if (m_content.conductivity)
        drawTrace(ChartPalette::kConductivity, &PairExtent::conductivity,
                  [&](float v) { return m_geometry.condRow(v); });
    return QRect(from, plot.top(), to - from + 1, plot.height());
}

QRect TracePainter::paintLines(QPainter &painter, qint64 first, qint64 last) const
{
    const QRect &plot = m_geometry.plot();
    // The samples just outside each edge carry the line up to the frame.
    first = std::max(first, SampleStore::indexAtOrAfter(m_geometry.timeAt(plot.left())) - 1);
    last = std::min(last, SampleStore::indexAtOrAfter(m_geometry.timeAt(plot.right())));
    first = std::max(first, qint64(0));
    if (first > last)
        return {};

    std::vector<QLineF> lines;
    lines.reserve(std::size_t(last - first));
    std::vector<QPointF> points;
    const auto drawTrace = [&](const QColor &color, float SamplePair::*channel, auto rowOf) {
        lines.clear();
        points.clear();
        const auto valid = [&](qint64 i) {
            return i >= 0 && i < m_store.count() && !std::isnan(m_store.at(i).*channel);
        };
        for (qint64 i = first; i <= last; ++i) {
            if (!valid(i))
                continue;
            const QPointF here(m_geometry.xOf(SampleStore::timeOf(i)),
                               rowOf(m_store.at(i).*channel));
            if (i < last && valid(i + 1))
                lines.emplace_back(here, QPointF(m_geometry.xOf(SampleStore::timeOf(i + 1)),
                                                 rowOf(m_store.at(i + 1).*channel)));
            // A sample with no neighbour to join, such as the first of a run, is a dot until
            // one comes.
            else if (!valid(i - 1) && !valid(i + 1))
                points.push_back(here);
        }
        QPen pen(color, std::max(1, m_content.traceWidth));
        pen.setCosmetic(true);
        painter.setPen(pen);
        painter.drawLines(lines.data(), int(lines.size()));
        painter.drawPoints(points.data(), int(points.size()));
    };
    if (m_content.uv)
        drawTrace(ChartPalette::kUv, &SamplePair::uv, [&](float v) { return m_geometry.uvRow(v); });
    if (m_content.conductivity)
        drawTrace(ChartPalette::kConductivity, &SamplePair::conductivity,
                  [&](float v) { return m_geometry.condRow(v); });

    const int left =
        std::max(int(std::floor(m_geometry.xOf(SampleStore::timeOf(first)))), plot.left());
    const int right =
        std::min(int(std::ceil(m_geometry.xOf(SampleStore::timeOf(last)))), plot.right());
    return left > right ? QRect() : QRect(left, plot.top(), right - left + 1, plot.height());
}

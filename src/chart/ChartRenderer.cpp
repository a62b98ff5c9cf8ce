#include "chart/ChartRenderer.h"

#include "chart/ChartAnnotations.h"
#include "chart/ChartFrame.h"
#include "chart/ChartPalette.h"
#include "chart/SampleStore.h"
#include "chart/TracePainter.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPen>
#include <QPolygon>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace {

// Measures in pixels of a 96-dpi screen, scaled to the device.
constexpr qreal kMarkLabelPadding = 2;
constexpr qreal kMethodMarkSize = 5;

/// Puts the painter on device pixels for its lifetime and says how big a screen pixel is there.
class DevicePixels
{
public:
    explicit DevicePixels(QPainter &painter)
        : m_painter(painter)
        , m_ratio(painter.device()->devicePixelRatioF())
        , m_unit(m_ratio * painter.device()->logicalDpiY() / 96.0)
    {
        m_painter.save();
        m_painter.scale(1 / m_ratio, 1 / m_ratio);
    }
    ~DevicePixels() { m_painter.restore(); }
    DevicePixels(const DevicePixels &) = delete;
    DevicePixels &operator=(const DevicePixels &) = delete;

    [[nodiscard]] QRect map(const QRectF &logical) const
    {
        return QRectF(logical.topLeft() * m_ratio, logical.size() * m_ratio).toAlignedRect();
    }
    [[nodiscard]] qreal unit() const { return m_unit; }
    [[nodiscard]] QFont font(const QFont &base) const
    {
        QFont font = base;
        const qreal pixels =
            base.pixelSize() > 0 ? base.pixelSize() : base.pointSizeF() * 96.0 / 72.0;
        font.setPixelSize(std::max(1, int(std::lround(pixels * m_unit))));
        return font;
    }

private:
    QPainter &m_painter;
    qreal m_ratio;
    qreal m_unit;
};

QColor colorOf(qint32 bgr)
{
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

struct MarkPlace
{
    int x;
    int tip;
    QRect label;
};

// Only the labels placed last are looked at: a label further back in time stands elsewhere.
constexpr std::size_t kLabelsLookedAt = 64;

// A mark stands on the time axis and rises by Height percent of the plot; a negative Height
// hangs it from the top instead. Its label sits at the tip, slid inside the plot, and moved on
// in the mark's direction past any label placed before it that it would cover. Nothing when
// the mark lies outside the plot.
std::optional<MarkPlace> placeMark(const PlotGeometry &geometry, const EventMark &mark,
                                   const QFontMetrics &metrics, int padding,
                                   const std::vector<QRect> &placed)
{
    const QRect &plot = geometry.plot();
    const int x = geometry.columnOf(mark.time);
    if (x < plot.left() || x > plot.right())
        return std::nullopt;
    const int length =
        int(std::lround(std::min(std::abs(int(mark.height)), 100) / 100.0 * (plot.height() - 1)));
    const bool up = mark.height >= 0;
    const int tip = up ? plot.bottom() - length : plot.top() + length;

    QRect box(0, 0, metrics.horizontalAdvance(mark.label) + 2 * padding, metrics.height());
    box.moveCenter(QPoint(x, 0));
    if (up)
        box.moveBottom(tip);
    else
        box.moveTop(tip);
    box.moveLeft(
        std::clamp(box.left(), plot.left(), std::max(plot.left(), plot.right() + 1 - box.width())));
    const std::size_t first = placed.size() > kLabelsLookedAt ? placed.size() - kLabelsLookedAt : 0;
    for (std::size_t moves = 0; moves < kLabelsLookedAt; ++moves) {
        const auto covered =
            std::find_if(placed.begin() + qsizetype(first), placed.end(),
                         [&](const QRect &other) { return other.intersects(box); });
        if (covered == placed.end())
            break;
        if (up)
            box.moveBottom(covered->top() - 1);
        else
            box.moveTop(covered->bottom() + 1);
    }
    // A label near an edge slides inside the plot rather than being cut off.
    box.moveTop(
        std::clamp(box.top(), plot.top(), std::max(plot.top(), plot.bottom() + 1 - box.height())));
    return MarkPlace{x, tip, box};
}

// Everything a mark paints: its line, the dotted tie to a label pushed away, and the label.
QRect extentOf(const PlotGeometry &geometry, const EventMark &mark, const MarkPlace &place)
{
    const int base = mark.height >= 0 ? geometry.plot().bottom() : geometry.plot().top();
    return place.label.united(QRect(QPoint(place.x, std::min(base, place.tip)),
                                    QPoint(place.x, std::max(base, place.tip))));
}

void paintMark(QPainter &painter, const PlotGeometry &geometry, const EventMark &mark,
               const MarkPlace &place)
{
    const QRect &plot = geometry.plot();
    const bool up = mark.height >= 0;
    const QColor color = colorOf(mark.color);
    const int base = up ? plot.bottom() : plot.top();
    painter.fillRect(QRect(place.x, std::min(place.tip, base), 1, std::abs(base - place.tip) + 1),
                     color);
    // A label pushed away by its neighbours stays tied to its mark by a dotted line.
    const int labelEdge = up ? place.label.bottom() : place.label.top();
    if (up ? labelEdge < place.tip : labelEdge > place.tip) {
        painter.setPen(QPen(color, 1, Qt::DotLine));
        painter.drawLine(place.x, place.tip, place.x, labelEdge);
    }
    painter.fillRect(place.label, color);
    painter.setPen(qGray(color.rgb()) < 128 ? Qt::white : ChartPalette::kText);
    painter.drawText(place.label, Qt::AlignCenter, mark.label);
}

// The triangle at the top of the plot where a method text starts; empty outside the plot.
QPolygon methodMark(const PlotGeometry &geometry, float time, int size)
{
    const QRect &plot = geometry.plot();
    const int x = geometry.columnOf(time);
    if (x < plot.left() || x > plot.right())
        return {};
    return QPolygon{
        QList<QPoint>{{x - size, plot.top()}, {x + size, plot.top()}, {x, plot.top() + size}}};
}

} // namespace

ChartRenderer::ChartRenderer(const SampleStore &store, const ChartAnnotations &annotations)
    : m_store(store)
    , m_annotations(annotations)
{}

PlotGeometry ChartRenderer::paint(QPainter &painter, const QRectF &rect, const ChartAxes &axes,
                                  const QString &title, const QFont &baseFont,
                                  const PlotContent &content) const
{
    const DevicePixels device(painter);
    const QFont font = device.font(baseFont);
    const ChartFrame frame(device.map(rect), axes, font, device.unit(), painter.device());
    frame.paintBackground(painter);
    TracePainter(m_store, frame.geometry(), content).paint(painter, 0, m_store.count() - 1);
    paintAnnotations(painter, frame.geometry(), {0, 0, QRect(), content.eventMarks}, font,
                     device.unit());
    frame.paintAxes(painter, title);
    return frame.geometry();
}

QRect ChartRenderer::paintAdded(QPainter &painter, const PlotGeometry &geometry, qint64 firstSample,
                                std::size_t firstMark, std::size_t firstMethodText,
                                const QFont &font) const
{
    const DevicePixels device(painter);
    const QRect traces =
        TracePainter(m_store, geometry).paint(painter, firstSample, m_store.count() - 1);
    return traces.united(paintAnnotations(painter, geometry,
                                          {firstMark, firstMethodText, traces, true},
                                          device.font(font), device.unit()));
}

QRect ChartRenderer::paintAnnotations(QPainter &painter, const PlotGeometry &geometry,
                                      const Added &added, const QFont &font, qreal unit) const
{
    if (!geometry.isValid())
        return {};
    const QRect &plot = geometry.plot();
    painter.save();
    painter.setClipRect(plot);
    painter.setRenderHint(QPainter::Antialiasing, false);
    // Marks stand over the traces and method marks: where new ones were painted, the old marks
    // there are painted again, in their order, so that a live chart looks as after a redraw.
    QRegion overdrawn(added.traces & plot);
    const auto paintClipped = [&](const QRegion &region, auto paint) {
        painter.setClipRegion(region & plot);
        paint();
        painter.setClipRect(plot);
    };
    QRect touched;
    const int methodSize = std::max(1, int(std::lround(kMethodMarkSize * unit)));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ChartPalette::kMethod);
    const auto &methodTexts = m_annotations.methodTexts();
    for (std::size_t i = 0; i < methodTexts.size(); ++i) {
        const QPolygon triangle = methodMark(geometry, methodTexts[i].time, methodSize);
        if (i >= added.firstMethodText) {
            painter.drawPolygon(triangle);
            touched |= triangle.boundingRect();
        } else if (triangle.boundingRect().intersects(added.traces)) {
            paintClipped(added.traces, [&] { painter.drawPolygon(triangle); });
        }
    }
    overdrawn += touched & plot;
    if (added.eventMarks) {
        painter.setFont(font);
        const QFontMetrics metrics(font, painter.device());
        const int padding = std::max(1, int(std::lround(kMarkLabelPadding * unit)));
        const auto &marks = m_annotations.eventMarks();
        // Earlier labels are placed again, not drawn, so that a new one knows where they stand.
        std::vector<QRect> placed;
        for (std::size_t i = 0; i < marks.size(); ++i) {
            const auto place = placeMark(geometry, marks[i], metrics, padding, placed);
            if (!place)
                continue;
            placed.push_back(place->label);
            const QRect extent = extentOf(geometry, marks[i], *place);
            if (i >= added.firstMark) {
                paintMark(painter, geometry, marks[i], *place);
                touched |= extent;
            } else if (overdrawn.intersects(extent)) {
                paintClipped(overdrawn, [&] { paintMark(painter, geometry, marks[i], *place); });
            }
        }
    }
    painter.restore();
    return touched & plot;
}

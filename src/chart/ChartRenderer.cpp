#include "chart/ChartRenderer.h"

#include "chart/ChartAnnotations.h"
#include "chart/ChartFrame.h"
#include "chart/ChartPalette.h"
#include "chart/SampleStore.h"
#include "chart/TracePainter.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPolygon>

#include <algorithm>
#include <cmath>

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

// A mark stands on the time axis and rises by Height percent of the plot; a negative Height
// hangs it from the top instead.
QRect paintMark(QPainter &painter, const PlotGeometry &geometry, const EventMark &mark,
                const QFontMetrics &metrics, int padding)
{
    const QRect &plot = geometry.plot();
    const int x = geometry.columnOf(mark.time);
    if (x < plot.left() || x > plot.right())
        return {};
    const int length =
        int(std::lround(std::min(std::abs(int(mark.height)), 100) / 100.0 * (plot.height() - 1)));
    const bool up = mark.height >= 0;
    const int tip = up ? plot.bottom() - length : plot.top() + length;
    const QColor color = colorOf(mark.color);
    painter.fillRect(QRect(x, std::min(tip, up ? plot.bottom() : plot.top()), 1, length + 1),
                     color);

    QRect box(0, 0, metrics.horizontalAdvance(mark.label) + 2 * padding, metrics.height());
    box.moveCenter(QPoint(x, 0));
    if (up)
        box.moveBottom(tip);
    else
        box.moveTop(tip);
    // A label near an edge slides inside the plot rather than being cut off.
    box.moveTop(
        std::clamp(box.top(), plot.top(), std::max(plot.top(), plot.bottom() + 1 - box.height())));
    box.moveLeft(
        std::clamp(box.left(), plot.left(), std::max(plot.left(), plot.right() + 1 - box.width())));
    painter.fillRect(box, color);
    painter.setPen(qGray(color.rgb()) < 128 ? Qt::white : ChartPalette::kText);
    painter.drawText(box, Qt::AlignCenter, mark.label);
    return box.united(QRect(x, plot.top(), 1, plot.height()));
}

QRect paintMethodMark(QPainter &painter, const PlotGeometry &geometry, float time, int size)
{
    const QRect &plot = geometry.plot();
    const int x = geometry.columnOf(time);
    if (x < plot.left() || x > plot.right())
        return {};
    const QPolygon triangle{
        QList<QPoint>{{x - size, plot.top()}, {x + size, plot.top()}, {x, plot.top() + size}}};
    painter.setPen(Qt::NoPen);
    painter.setBrush(ChartPalette::kMethod);
    painter.drawPolygon(triangle);
    return triangle.boundingRect();
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
    if (content.marks)
        paintAnnotations(painter, frame.geometry(), 0, 0, font, device.unit());
    frame.paintAxes(painter, title);
    return frame.geometry();
}

QRect ChartRenderer::paintAdded(QPainter &painter, const PlotGeometry &geometry, qint64 firstSample,
                                std::size_t firstMark, std::size_t firstMethodText,
                                const QFont &font) const
{
    const DevicePixels device(painter);
    QRect touched =
        TracePainter(m_store, geometry).paint(painter, firstSample, m_store.count() - 1);
    return touched.united(paintAnnotations(painter, geometry, firstMark, firstMethodText,
                                           device.font(font), device.unit()));
}

QRect ChartRenderer::paintAnnotations(QPainter &painter, const PlotGeometry &geometry,
                                      std::size_t firstMark, std::size_t firstMethodText,
                                      const QFont &font, qreal unit) const
{
    const auto &marks = m_annotations.eventMarks();
    const auto &methodTexts = m_annotations.methodTexts();
    if (!geometry.isValid() || (firstMark >= marks.size() && firstMethodText >= methodTexts.size()))
        return {};
    painter.save();
    painter.setClipRect(geometry.plot());
    painter.setRenderHint(QPainter::Antialiasing, false);
    QRect touched;
    const int methodSize = std::max(1, int(std::lround(kMethodMarkSize * unit)));
    for (std::size_t i = firstMethodText; i < methodTexts.size(); ++i)
        touched |= paintMethodMark(painter, geometry, methodTexts[i].time, methodSize);
    painter.setFont(font);
    const QFontMetrics metrics(font, painter.device());
    const int padding = std::max(1, int(std::lround(kMarkLabelPadding * unit)));
    for (std::size_t i = firstMark; i < marks.size(); ++i)
        touched |= paintMark(painter, geometry, marks[i], metrics, padding);
    painter.restore();
    return touched & geometry.plot();
}

#include "chart/PrintLayout.h"

#include "chart/ChartAnnotations.h"
#include "chart/ChartRenderer.h"

#include <QFontMetrics>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Traces a third of a millimetre wide read like a chart recorder's pen.
constexpr double kTraceWidthMm = 0.35;
constexpr double kChartShareOfPage = 0.55;

struct Paragraph
{
    QString text;
    bool heading = false;
};

QStringList linesOf(const QString &text)
{
    QString clean = text;
    clean.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    clean.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QStringList lines = clean.split(QLatin1Char('\n'));
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

/// Text set line by line down the pages: a paragraph wraps at word boundaries, a word wider
/// than the page breaks where it must, and every line that does not fit goes to a new page,
/// so nothing is cut off or drawn into the footer.
class PageFlow
{
public:
    PageFlow(QPainter &painter, QPagedPaintDevice &device, const QFont &footerFont,
             QString footerTitle)
        : m_painter(painter)
        , m_device(device)
        , m_page(0, 0, device.width(), device.height())
        , m_footerFont(footerFont)
        , m_footerTitle(std::move(footerTitle))
        , m_footerHeight(QFontMetrics(footerFont, &device).height() * 2)
        , m_y(m_page.top())
    {}

    [[nodiscard]] const QRect &page() const { return m_page; }
    [[nodiscard]] int y() const { return m_y; }
    void skip(int height) { m_y += height; }

    /// Starts a new page unless `height` more fits on this one; false when no page can be had.
    bool makeRoom(int height)
    {
        if (m_y + height <= bottom() || m_y == m_page.top())
            return true;
        paintFooter();
        if (!m_device.newPage())
            return false;
        ++m_pageNumber;
        m_y = m_page.top();
        return true;
    }

    bool paragraph(const QString &text, const QFont &font)
    {
        QTextLayout layout(text, font, &m_device);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine())
            line.setLineWidth(m_page.width());
        layout.endLayout();
        m_painter.setFont(font);
        m_painter.setPen(Qt::black);
        for (int i = 0; i < layout.lineCount(); ++i) {
            const QTextLine line = layout.lineAt(i);
            const int height = int(std::ceil(line.height()));
            if (!makeRoom(height))
                return false;
            line.draw(&m_painter, QPointF(m_page.left(), m_y - line.y()));
            m_y += height;
        }
        return true;
    }

    void paintFooter()
    {
        m_painter.setFont(m_footerFont);
        m_painter.setPen(Qt::black);
        const QString number = QStringLiteral(" - page %1").arg(m_pageNumber);
        const QFontMetrics metrics(m_footerFont, &m_device);
        const QString title = metrics.elidedText(
            m_footerTitle, Qt::ElideRight, m_page.width() - metrics.horizontalAdvance(number));
        m_painter.drawText(
            QRect(m_page.left(), m_page.bottom() - m_footerHeight, m_page.width(), m_footerHeight),
            Qt::AlignRight | Qt::AlignBottom, title + number);
    }

private:
    [[nodiscard]] int bottom() const { return m_page.bottom() - m_footerHeight; }

    QPainter &m_painter;
    QPagedPaintDevice &m_device;
    QRect m_page;
    QFont m_footerFont;
    QString m_footerTitle;
    int m_footerHeight;
    int m_y;
    int m_pageNumber = 1;
};

} // namespace

PrintLayout::PrintLayout(const ChartRenderer &renderer, const ChartAnnotations &annotations,
                         const ChartAxes &axes, QString title, QFont font)
    : m_renderer(renderer)
    , m_annotations(annotations)
    , m_axes(axes)
    , m_title(std::move(title))
    , m_font(std::move(font))
{}

bool PrintLayout::print(QPagedPaintDevice &device, const Options &options) const
{
    std::vector<Paragraph> paragraphs;
    if (options.method)
        for (const MethodText &method : m_annotations.methodTexts()) {
            paragraphs.push_back(
                {QStringLiteral("Method (%1 min)").arg(double(method.time), 0, 'f', 2), true});
            for (const QString &line : linesOf(method.text))
                paragraphs.push_back({line});
            paragraphs.push_back({});
        }
    if (options.notes) {
        paragraphs.push_back({QStringLiteral("Notes"), true});
        for (const QString &line : linesOf(m_annotations.notes()))
            paragraphs.push_back({line});
    }

    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const QFont body = m_font;
    QFont bold = m_font;
    bold.setBold(true);
    QFont titleFont = bold;
    titleFont.setPointSizeF(bold.pointSizeF() > 0 ? bold.pointSizeF() * 1.6 : 16.0);
    const int lineHeight = QFontMetrics(body, &device).height();
    PageFlow flow(painter, device, body, m_title);
    const QRect &page = flow.page();

    bool good = flow.paragraph(m_title, titleFont);
    flow.skip(QFontMetrics(titleFont, &device).height() / 2);
    if (good && options.chromatogram) {
        const int height = int(page.height() * kChartShareOfPage);
        good = flow.makeRoom(height);
        PlotContent content = options.content;
        content.traceWidth =
            std::max(1, int(std::lround(kTraceWidthMm * device.logicalDpiY() / 25.4)));
        // The chart's own title would repeat the page's, so it is left empty here.
        m_renderer.paint(painter, QRectF(page.left(), flow.y(), page.width(), height), m_axes,
                         QString(), body, content);
        flow.skip(height + lineHeight);
    }
    for (const Paragraph &paragraph : paragraphs) {
        if (!good)
            break;
        // A heading goes to the next page with its first line rather than stand alone.
        if (paragraph.heading)
            good = flow.makeRoom(QFontMetrics(bold, &device).height() + lineHeight);
        good = good && flow.paragraph(paragraph.text, paragraph.heading ? bold : body);
    }
    if (good)
        flow.paintFooter();
    return painter.end() && good;
}

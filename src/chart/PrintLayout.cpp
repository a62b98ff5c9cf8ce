#include "chart/PrintLayout.h"

#include "chart/ChartAnnotations.h"
#include "chart/ChartRenderer.h"

#include <QFontMetrics>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Traces a third of a millimetre wide read like a chart recorder's pen.
constexpr double kTraceWidthMm = 0.35;
constexpr double kChartShareOfPage = 0.55;

struct Line
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
    std::vector<Line> lines;
    if (options.method)
        for (const MethodText &method : m_annotations.methodTexts()) {
            lines.push_back(
                {QStringLiteral("Method (%1 min)").arg(double(method.time), 0, 'f', 2), true});
            for (const QString &line : linesOf(method.text))
                lines.push_back({line});
            lines.push_back({});
        }
    if (options.notes) {
        lines.push_back({QStringLiteral("Notes"), true});
        for (const QString &line : linesOf(m_annotations.notes()))
            lines.push_back({line});
    }

    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const QRect page(0, 0, device.width(), device.height());
    const double dotsPerMm = device.logicalDpiY() / 25.4;
    const QFont body = m_font;
    QFont bold = m_font;
    bold.setBold(true);
    QFont titleFont = bold;
    titleFont.setPointSizeF(bold.pointSizeF() > 0 ? bold.pointSizeF() * 1.6 : 16.0);
    const QFontMetrics bodyMetrics(body, &device);
    const QFontMetrics titleMetrics(titleFont, &device);
    const int footer = bodyMetrics.height() * 2;

    int pageNumber = 1;
    const auto paintFooter = [&] {
        painter.setFont(body);
        painter.setPen(Qt::black);
        painter.drawText(QRect(page.left(), page.bottom() - footer, page.width(), footer),
                         Qt::AlignRight | Qt::AlignBottom,
                         QStringLiteral("%1 - page %2").arg(m_title).arg(pageNumber));
    };

    painter.setFont(titleFont);
    painter.setPen(Qt::black);
    painter.drawText(QRect(page.left(), page.top(), page.width(), titleMetrics.height()),
                     Qt::AlignLeft | Qt::AlignTop, m_title);
    int y = page.top() + titleMetrics.height() * 3 / 2;
    if (options.chromatogram) {
        const int height = int(page.height() * kChartShareOfPage);
        PlotContent content = options.content;
        content.traceWidth = std::max(1, int(std::lround(kTraceWidthMm * dotsPerMm)));
        // The chart's own title would repeat the page's, so it is left empty here.
        m_renderer.paint(painter, QRectF(page.left(), y, page.width(), height), m_axes, QString(),
                         body, content);
        y += height + bodyMetrics.height();
    }

    const int bottom = page.bottom() - footer;
    const auto heightOf = [&](const Line &line) {
        const QFontMetrics metrics(line.heading ? bold : body, &device);
        const QRect needed = metrics.boundingRect(QRect(page.left(), 0, page.width(), INT_MAX),
                                                  Qt::TextWordWrap, line.text);
        return std::max(needed.height(), metrics.height());
    };
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line &line = lines[i];
        const int height = heightOf(line);
        // A heading goes to the next page with its first line rather than stand alone.
        const int kept =
            line.heading && i + 1 < lines.size() ? height + heightOf(lines[i + 1]) : height;
        if (y + kept > bottom && y > page.top()) {
            paintFooter();
            if (!device.newPage()) {
                painter.end();
                return false;
            }
            ++pageNumber;
            y = page.top();
        }
        painter.setFont(line.heading ? bold : body);
        painter.setPen(Qt::black);
        painter.drawText(QRect(page.left(), y, page.width(), height), Qt::TextWordWrap, line.text);
        y += height;
    }
    paintFooter();
    return painter.end();
}

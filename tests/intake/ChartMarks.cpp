#include "ChartMarks.h"

#include "ChartImage.h"
#include "chart/ChartPalette.h"
#include "chart/Quillchart.h"

#include <cmath>
#include <ostream>

namespace {

const QColor kLetterColor(0, 255, 255); // 0xFFFF00 as 0xBBGGRR
const QColor kNumberColor(0, 255, 0);
constexpr double kFrom = -1.0 / 300;

struct Kind
{
    int height;
    const char *name;
};
// Tallest first: the first height a mark reaches names it.
constexpr Kind kLetterKinds[] = {{60, "M"}, {50, "S"}, {40, "E"}, {30, "P"}, {20, "H|C"}};

} // namespace

std::ostream &operator<<(std::ostream &out, const SeenMark &mark)
{
    return out << mark.kind.toStdString() << "@" << mark.sample;
}

ChartMarks::ChartMarks(Quillchart &chart, int lastSample) : m_lastSample(lastSample)
{
    chart.resize(1600, 800);
    chart.setTimeAxisMin(float(kFrom));
    chart.setTimeAxisMax(float((lastSample + 1) / 300.0));
    chart.Redraw();
    m_image = grabChart(chart);
    m_plot = plotArea(m_image);
}

// A mark's line rises from the time axis and its label box sits on top in the same colour, so
// the top of that run of pixels tells the height.
QList<SeenMark> ChartMarks::marks() const
{
    QList<SeenMark> found;
    for (int sample = 0; sample <= m_lastSample; ++sample) {
        if (const int x = columnOf(sample, m_plot.bottom(), kLetterColor); x >= 0) {
            int top = m_plot.bottom();
            while (top > m_plot.top() && m_image.pixel(x, top - 1) == kLetterColor.rgb())
                --top;
            QString kind = QStringLiteral("?");
            for (const Kind &candidate : kLetterKinds) {
                if (top <= m_plot.bottom() + 1 -
                               std::lround(candidate.height / 100.0 * (m_plot.height() - 1))) {
                    kind = QLatin1String(candidate.name);
                    break;
                }
            }
            found.append({sample, kind});
        } else if (columnOf(sample, m_plot.bottom(), kNumberColor) >= 0) {
            found.append({sample, QStringLiteral("#")});
        }
    }
    return found;
}

bool ChartMarks::methodTextAt(int sample) const
{
    return columnOf(sample, m_plot.top(), ChartPalette::kMethod) >= 0;
}

// The chart may round a sample's column one pixel away from ours.
int ChartMarks::columnOf(int sample, int row, const QColor &color) const
{
    const int x = columnAt(m_plot, sample / 300.0, kFrom, (m_lastSample + 1) / 300.0);
    for (const int candidate : {x, x - 1, x + 1})
        if (m_image.pixel(candidate, row) == color.rgb())
            return candidate;
    return -1;
}

int lastSampleOf(const Quillchart &chart)
{
    return int(std::lround(chart.GetLastTime() * 300.0));
}

#pragma once

#include <QImage>
#include <QList>
#include <QString>

#include <iosfwd>

class Quillchart;

/// A mark as the operator sees it: the sample it stands on and what it is, told by colour and
/// height: "S", "E", "P", "M", "H|C" (hold and continue look alike) or "#" for a number.
struct SeenMark
{
    int sample;
    QString kind;

    bool operator==(const SeenMark &) const = default;
};
std::ostream &operator<<(std::ostream &out, const SeenMark &mark);

/// Samples 0 to `lastSample` of a chart, drawn with a time axis so narrow that each sample has
/// columns of its own.
class ChartMarks
{
public:
    ChartMarks(Quillchart &chart, int lastSample);

    [[nodiscard]] QList<SeenMark> marks() const;
    [[nodiscard]] bool methodTextAt(int sample) const;

private:
    [[nodiscard]] int columnOf(int sample, int row, const QColor &color) const;

    int m_lastSample;
    QImage m_image;
    QRect m_plot;
};

/// Index of the chart's last sample, as its time says; 0 also for an empty chart.
int lastSampleOf(const Quillchart &chart);

#include "chart/TextExport.h"

#include "chart/ChartAnnotations.h"
#include "chart/SampleStore.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace {

const QString kEndOfLine = QStringLiteral("\r\n");

QStringList linesOf(const QString &text)
{
    QString clean = text;
    clean.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    clean.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    clean.replace(QLatin1Char('\t'), QLatin1Char(' '));
    QStringList lines = clean.split(QLatin1Char('\n'));
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

QString cell(const QString &text)
{
    return linesOf(text).join(QLatin1Char(' '));
}

/// Lines that stand in a column from the row of their time, each starting below the last.
class Column
{
public:
    void place(qint64 row, const QStringList &lines)
    {
        row = std::max(row, m_nextFree);
        for (const QString &line : lines)
            m_rows[row++] = line;
        m_nextFree = row;
    }
    [[nodiscard]] QString at(qint64 row) const
    {
        const auto it = m_rows.find(row);
        return it == m_rows.end() ? QString() : it->second;
    }
    [[nodiscard]] qint64 end() const { return m_nextFree; }

private:
    std::map<qint64, QString> m_rows;
    qint64 m_nextFree = 0;
};

} // namespace

TextExport::TextExport(const SampleStore &store, const ChartAnnotations &annotations, QString title)
    : m_store(store)
    , m_annotations(annotations)
    , m_title(std::move(title))
{}

QString TextExport::thinningNote()
{
    return QStringLiteral("Each point covers the interval from its time to the next point: UV "
                          "is the highest value in it (a peak keeps its apex), conductivity the "
                          "mean; at 5 points/s each point is one sample.");
}

QByteArray TextExport::text(const Options &options) const
{
    if (!(options.sampleRate > 0.0) || !std::isfinite(options.sampleRate) ||
        options.pointCount < 0 || !std::isfinite(options.timeFrom))
        return {};
    // The locale's decimal mark, as a spreadsheet of that locale reads it, but never a group
    // separator, which would split or misread a number.
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    const auto number = [&](double value, int decimals) {
        return std::isfinite(value) ? locale.toString(value, 'f', decimals) : QString();
    };
    const double step = 1.0 / (options.sampleRate * 60.0);
    const double from = options.timeFrom;
    const qint64 points = options.pointCount;
    const auto rowOf = [&](double minutes) {
        const double row = std::floor((minutes - from) / step + 1e-9);
        return std::isnan(row)
                   ? 0
                   : qint64(std::clamp(row, 0.0, double(std::max<qint64>(points - 1, 0))));
    };
    const auto inRange = [&](double minutes) {
        return minutes >= from - 1e-9 && minutes < from + double(points) * step - 1e-9;
    };

    QStringList out;
    out << QStringLiteral("Ostrel MS data export") << QStringLiteral("Run:\t") + cell(m_title)
        << QStringLiteral("Time range (min):\t%1\tto\t%2")
               .arg(number(options.timeFrom, 4), number(options.timeTo, 4))
        << QStringLiteral("Sampling rate (points/s):\t") + locale.toString(options.sampleRate)
        << QStringLiteral("Data points:\t%1").arg(points) << thinningNote() << QString();

    QStringList methodLines;
    for (const MethodText &method : m_annotations.methodTexts())
        methodLines << QStringLiteral("Method text at %1 min:").arg(number(method.time, 4))
                    << linesOf(method.text) << QString();
    const QStringList notesLines = QStringList{QStringLiteral("Notes:")} +
                                   linesOf(m_annotations.notes()) + QStringList{QString()};
    const auto sections = [&](MethodPosition where) {
        if (options.methodPosition != where)
            return;
        if (options.notes)
            out << notesLines;
        if (options.method)
            out << methodLines;
    };
    sections(MethodPosition::Before);

    const bool columns = options.methodPosition == MethodPosition::Column;
    Column methodColumn;
    Column notesColumn;
    if (columns && options.method)
        for (const MethodText &method : m_annotations.methodTexts())
            methodColumn.place(rowOf(method.time), linesOf(method.text));
    if (columns && options.notes)
        notesColumn.place(0, linesOf(m_annotations.notes()));
    std::map<qint64, QStringList> events;
    if (options.events)
        for (const EventMark &mark : m_annotations.eventMarks())
            if (inRange(mark.time))
                events[rowOf(mark.time)] << cell(mark.label);

    QStringList heading{QStringLiteral("Time (min)")};
    if (options.uv)
        heading << QStringLiteral("UV (AU)");
    if (options.conductivity)
        heading << QStringLiteral("Conductivity (mS/cm)");
    if (options.events)
        heading << QStringLiteral("Event");
    if (columns && options.method)
        heading << QStringLiteral("Method");
    if (columns && options.notes)
        heading << QStringLiteral("Notes");
    out << heading.join(QLatin1Char('\t'));

    const qint64 count = m_store.count();
    const qint64 rows = std::max({points, methodColumn.end(), notesColumn.end()});
    for (qint64 row = 0; row < rows; ++row) {
        QStringList cells;
        if (row < points) {
            const double time = from + double(row) * step;
            qint64 begin = std::clamp<qint64>(SampleStore::indexAtOrAfter(time), 0, count);
            qint64 end = std::clamp<qint64>(SampleStore::indexAtOrAfter(time + step), begin, count);
            // An interval between two samples or past the run shows the sample before it.
            if (begin == end && count > 0) {
                begin = std::clamp<qint64>(begin - 1, 0, count - 1);
                end = begin + 1;
            }
            double uv = std::nan("");
            double sum = 0.0;
            qint64 finite = 0;
            if (begin < end) {
                const PairExtent extent = m_store.extent(begin, end);
                if (!extent.uv.isEmpty())
                    uv = extent.uv.max;
                for (qint64 i = begin; i < end; ++i)
                    if (std::isfinite(m_store.at(i).conductivity)) {
                        sum += m_store.at(i).conductivity;
                        ++finite;
                    }
            }
            cells << number(time, 4);
            if (options.uv)
                cells << number(uv, 4);
            if (options.conductivity)
                cells << (finite > 0 ? number(sum / double(finite), 3) : QString());
        } else {
            cells << QString();
            if (options.uv)
                cells << QString();
            if (options.conductivity)
                cells << QString();
        }
        if (options.events) {
            const auto it = events.find(row);
            cells << (it == events.end() ? QString() : it->second.join(QLatin1String("; ")));
        }
        if (columns && options.method)
            cells << methodColumn.at(row);
        if (columns && options.notes)
            cells << notesColumn.at(row);
        while (cells.size() > 1 && cells.last().isEmpty())
            cells.removeLast();
        out << cells.join(QLatin1Char('\t'));
    }

    if (options.methodPosition == MethodPosition::After)
        out << QString();
    sections(MethodPosition::After);
    // The byte order mark is what makes a spreadsheet take the file as UTF-8 rather than as
    // the system's code page, so that a label such as "µ" survives.
    return "\xEF\xBB\xBF" + (out.join(kEndOfLine) + kEndOfLine).toUtf8();
}

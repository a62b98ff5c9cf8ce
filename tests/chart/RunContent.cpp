#include "RunContent.h"

#include "chart/Quillchart.h"
#include "chart/RunData.h"
#include "chart/RunFileReader.h"

#include <QFile>

#include <bit>
#include <cmath>

SamplePair RunContent::sample(qint64 n)
{
    // Now and then a value a file must carry bit for bit: NaN, infinity, negative zero.
    switch (n % 997) {
    case 11:
        return {std::bit_cast<float>(0x7fc01234u), -0.0f};
    case 12:
        return {std::numeric_limits<float>::infinity(), -1e-38f};
    default:
        return {float(std::sin(double(n) * 0.001) + double(n % 13) * 1e-4),
                float(double(n % 4096) * 0.125)};
    }
}

EventMark RunContent::mark(qint64 n)
{
    return EventMark{QStringLiteral("Mark %1 µ\"\t").arg(n), qint32(0x102030 * (n + 1)) & 0xffffff,
                     qint16(n % 3 == 0 ? -10 : 5 + n % 90), float(n) * 0.37f};
}

MethodText RunContent::methodText(qint64 n)
{
    return MethodText{QStringLiteral("Method %1\r\nFlow 1.0 ml/min\r\nBuffer A → B\r\n").arg(n),
                      float(n) * 1.25f};
}

void RunContent::grow(Quillchart &chart, Counts from, Counts to)
{
    for (qint64 n = from.samples; n < to.samples; ++n)
        chart.AddSample(sample(n).uv, sample(n).conductivity);
    for (qint64 n = from.marks; n < to.marks; ++n)
        chart.AddEventMark(mark(n).label, mark(n).color, mark(n).height, mark(n).time);
    for (qint64 n = from.methodTexts; n < to.methodTexts; ++n)
        chart.AddMethodText(methodText(n).text, methodText(n).time);
}

void RunContent::grow(RunData &run, Counts from, Counts to)
{
    for (qint64 n = from.samples; n < to.samples; ++n)
        run.store.append(sample(n).uv, sample(n).conductivity);
    for (qint64 n = from.marks; n < to.marks; ++n)
        run.annotations.addEventMark(mark(n).label, mark(n).color, mark(n).height, mark(n).time);
    for (qint64 n = from.methodTexts; n < to.methodTexts; ++n)
        run.annotations.addMethodText(methodText(n).text, methodText(n).time);
}

QString RunContent::differences(const RunData &run, Counts counts, Counts lostFrom, Counts lostTo)
{
    const auto bits = [](float value) { return std::bit_cast<quint32>(value); };
    const auto lost = [](qint64 n, qint64 from, qint64 to) { return n >= from && n < to; };
    if (run.store.count() != counts.samples)
        return QStringLiteral("%1 samples instead of %2")
            .arg(run.store.count())
            .arg(counts.samples);
    for (qint64 i = 0; i < counts.samples; ++i) {
        const SamplePair got = run.store.at(i);
        if (lost(i, lostFrom.samples, lostTo.samples)) {
            if (!std::isnan(got.uv) || !std::isnan(got.conductivity))
                return QStringLiteral("sample %1 of the lost stretch has a value").arg(i);
            continue;
        }
        const SamplePair want = sample(i);
        if (bits(want.uv) != bits(got.uv) || bits(want.conductivity) != bits(got.conductivity))
            return QStringLiteral("sample %1 differs").arg(i);
    }
    std::vector<EventMark> marks;
    for (qint64 i = 0; i < counts.marks; ++i)
        if (!lost(i, lostFrom.marks, lostTo.marks))
            marks.push_back(mark(i));
    std::vector<MethodText> texts;
    for (qint64 i = 0; i < counts.methodTexts; ++i)
        if (!lost(i, lostFrom.methodTexts, lostTo.methodTexts))
            texts.push_back(methodText(i));
    const auto &gotMarks = run.annotations.eventMarks();
    const auto &gotTexts = run.annotations.methodTexts();
    if (gotMarks.size() != marks.size() || gotTexts.size() != texts.size())
        return QStringLiteral("%1 marks and %2 method texts instead of %3 and %4")
            .arg(gotMarks.size())
            .arg(gotTexts.size())
            .arg(marks.size())
            .arg(texts.size());
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const EventMark &got = gotMarks[i];
        if (got.label != marks[i].label || got.color != marks[i].color ||
            got.height != marks[i].height || bits(got.time) != bits(marks[i].time))
            return QStringLiteral("mark %1 differs").arg(i);
    }
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (gotTexts[i].text != texts[i].text || bits(gotTexts[i].time) != bits(texts[i].time))
            return QStringLiteral("method text %1 differs").arg(i);
    return {};
}

std::optional<RunData> RunContent::readRunFile(const QString &fileName)
{
    return RunFileReader::read(fileName);
}

QByteArray RunContent::bytesOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

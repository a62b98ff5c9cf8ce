#include "chart/LogReader.h"

#include "chart/ByteReader.h"
#include "chart/Crc.h"
#include "chart/LogFormat.h"
#include "chart/RegularFile.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"

#include <QDir>

#include <cmath>
#include <map>
#include <new>

namespace {

constexpr qint64 kPairBytes = 8;
// The samples a missing data file may have held, at most: a file holds up to 24 hours unless
// the option says otherwise; a week bounds any plausible setting.
constexpr qint64 kMostSamplesPerFile = qint64(7 * 24 * 60 * SampleStore::kSamplesPerMinute);

std::map<quint32, QString> logFiles(const QDir &dir)
{
    std::map<quint32, QString> files;
    for (const QString &name : dir.entryList({LogFormat::namePattern()}, QDir::Files))
        if (const auto index = LogFormat::indexOfFileName(name))
            files.emplace(*index, dir.filePath(name));
    return files;
}

/// The payload of the framed record at `offset`, when its frame is whole and its CRC right.
std::optional<QByteArrayView> frameAt(QByteArrayView bytes, qsizetype offset, quint32 &sequence)
{
    ByteReader in(bytes.sliced(offset));
    const quint32 magic = in.u32();
    sequence = in.u32();
    const quint32 length = in.u32();
    const QByteArrayView payload = in.bytes(length);
    const quint32 crc = in.u32();
    if (!in.ok() || magic != LogFormat::kRecordMagic ||
        crc != crcOf(bytes.sliced(offset, LogFormat::kRecordHead + qsizetype(length))))
        return std::nullopt;
    return payload;
}

/// Where the next whole record starts at or after `from`, -1 when none does.
qsizetype nextRecord(QByteArrayView bytes, qsizetype from)
{
    char magic[4];
    qToLittleEndian(LogFormat::kRecordMagic, magic);
    const QByteArrayView needle(magic, 4);
    for (qsizetype at = bytes.indexOf(needle, from); at >= 0; at = bytes.indexOf(needle, at + 1)) {
        quint32 sequence = 0;
        if (frameAt(bytes, at, sequence))
            return at;
    }
    return -1;
}

/// Reads the records of a log's files in order into a run, noting what was lost. Without a
/// run it only counts the records it would take, by the same rules.
class Salvage
{
public:
    explicit Salvage(RunData *run) : m_run(run) {}

    void readFile(quint32 index, const QByteArray &bytes, bool last);
    void fileMissing(quint32 count)
    {
        m_lost = true;
        m_gapBudget += qint64(count) * kMostSamplesPerFile;
    }
    [[nodiscard]] qint64 records() const { return m_records; }
    [[nodiscard]] bool lost() const { return m_lost; }

private:
    bool apply(quint32 sequence, QByteArrayView payload);

    RunData *m_run;
    qint64 m_samples = 0;
    qint64 m_marks = 0;
    qint64 m_methodTexts = 0;
    quint32 m_expected = 1;
    qint64 m_records = 0;
    bool m_lost = false;
    // How many samples the bytes skipped since the last whole record could have held.
    qint64 m_gapBudget = 0;
};

void Salvage::readFile(quint32 index, const QByteArray &bytes, bool last)
{
    qsizetype offset = LogFormat::isHeader(bytes, index) ? LogFormat::kHeaderSize : 0;
    // A count of records needs only the first.
    while (offset < bytes.size() && (m_run != nullptr || m_records == 0)) {
        quint32 sequence = 0;
        const auto payload = frameAt(bytes, offset, sequence);
        if (payload && apply(sequence, *payload)) {
            offset += LogFormat::kRecordHead + payload->size() + LogFormat::kRecordTail;
            continue;
        }
        const qsizetype next = nextRecord(bytes, offset + 1);
        const qsizetype skipped = (next < 0 ? bytes.size() : next) - offset;
        m_gapBudget += skipped / kPairBytes + 1;
        // A tail with no whole record after it, in the last file, is the write a power cut
        // tore; anywhere else it may have held a record.
        if (next < 0) {
            m_lost = m_lost || !last;
            return;
        }
        offset = next;
    }
}

bool Salvage::apply(quint32 sequence, QByteArrayView payload)
{
    if (sequence < m_expected)
        return false;
    ByteReader in(payload);
    const quint64 sampleStart = in.u64();
    const quint32 count = in.u32();
    const QByteArrayView samples = in.bytes(quint64(count) * kPairBytes);
    ChartAnnotations added;
    const quint64 markStart = in.u64();
    const bool marksRead = RunFileCodec::readMarks(in, added);
    const quint64 methodStart = in.u64();
    if (!marksRead || !RunFileCodec::readMethodTexts(in, added) || !in.atEnd() ||
        sampleStart < quint64(m_samples) ||
        sampleStart - quint64(m_samples) > quint64(m_gapBudget) || markStart < quint64(m_marks) ||
        methodStart < quint64(m_methodTexts))
        return false;
    m_lost = m_lost || sequence > m_expected || sampleStart > quint64(m_samples) ||
             markStart > quint64(m_marks) || methodStart > quint64(m_methodTexts);
    if (m_run) {
        SampleStore &store = m_run->store;
        while (quint64(store.count()) < sampleStart)
            store.append(NAN, NAN);
        ByteReader values(samples);
        for (quint32 i = 0; i < count; ++i) {
            const float uv = values.f32();
            store.append(uv, values.f32());
        }
        ChartAnnotations &annotations = m_run->annotations;
        for (const EventMark &mark : added.eventMarks())
            annotations.addEventMark(mark.label, mark.color, mark.height, mark.time);
        for (const MethodText &text : added.methodTexts())
            annotations.addMethodText(text.text, text.time);
    }
    m_samples = qint64(sampleStart) + count;
    m_marks = qint64(markStart) + qint64(added.eventMarks().size());
    m_methodTexts = qint64(methodStart) + qint64(added.methodTexts().size());
    m_expected = sequence + 1;
    m_gapBudget = 0;
    ++m_records;
    return true;
}

std::optional<QByteArray> contentOf(const QString &fileName)
{
    RegularFile file(fileName);
    return file.readRest();
}

/// Reads the log's files in order; without a run, only until a first record is taken.
LogReader::Status readFiles(const QString &directory, RunData *run)
{
    if (directory.isEmpty())
        return LogReader::Status::NoLog;
    const auto files = logFiles(QDir(LogFormat::cleanDirectory(directory)));
    if (files.empty())
        return LogReader::Status::NoLog;
    Salvage salvage(run);
    quint32 previous = 0;
    for (const auto &[index, path] : files) {
        if (run == nullptr && salvage.records() > 0)
            break;
        if (index != previous + 1)
            salvage.fileMissing(index - previous - 1);
        previous = index;
        const auto content = contentOf(path);
        if (content)
            salvage.readFile(index, *content, index == files.rbegin()->first);
        else
            salvage.fileMissing(1);
    }
    if (salvage.records() == 0)
        return salvage.lost() ? LogReader::Status::Damaged : LogReader::Status::NoLog;
    return salvage.lost() ? LogReader::Status::Salvaged : LogReader::Status::Good;
}

} // namespace

bool LogReader::hasLog(const QString &directory)
{
    try {
        const Status status = readFiles(directory, nullptr);
        return status == Status::Good || status == Status::Salvaged;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

LogReader::Status LogReader::read(const QString &directory, RunData &run)
{
    try {
        return readFiles(directory, &run);
    } catch (const std::bad_alloc &) {
        return Status::OutOfMemory;
    }
}

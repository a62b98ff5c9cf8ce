#include "chart/LogReader.h"

#include "chart/ByteReader.h"
#include "chart/Crc.h"
#include "chart/LogFormat.h"
#include "chart/RegularFile.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"

#include <QDir>

#include <cstring>
#include <map>
#include <new>

namespace {

// File numbers to names, in order; nothing when the numbers do not run 1, 2, 3, ...
std::optional<std::map<quint32, QString>> logFiles(const QDir &dir)
{
    std::map<quint32, QString> files;
    for (const QString &name : dir.entryList({LogFormat::namePattern()}, QDir::Files))
        if (const auto index = LogFormat::indexOfFileName(name))
            files.emplace(*index, dir.filePath(name));
    if (!files.empty() && files.rbegin()->first != files.size())
        return std::nullopt;
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

// Whether any whole record starts at or after `from`: a bad record followed by a good one was
// damaged in place, not torn by a crash.
bool anyRecordFrom(QByteArrayView bytes, qsizetype from)
{
    char magic[4];
    qToLittleEndian(LogFormat::kRecordMagic, magic);
    const QByteArrayView needle(magic, 4);
    for (qsizetype at = bytes.indexOf(needle, from); at >= 0; at = bytes.indexOf(needle, at + 1)) {
        quint32 sequence = 0;
        if (frameAt(bytes, at, sequence))
            return true;
    }
    return false;
}

std::optional<QByteArray> contentOf(const QString &fileName)
{
    RegularFile file(fileName);
    return file.readRest();
}

bool readPayload(QByteArrayView payload, RunData &run)
{
    ByteReader in(payload);
    auto &annotations = run.annotations;
    return in.u64() == quint64(run.store.count()) && RunFileCodec::readSamples(in, run.store) &&
           in.u64() == quint64(annotations.eventMarks().size()) &&
           RunFileCodec::readMarks(in, annotations) &&
           in.u64() == quint64(annotations.methodTexts().size()) &&
           RunFileCodec::readMethodTexts(in, annotations) && in.atEnd();
}

} // namespace

bool LogReader::hasLog(const QString &directory)
{
    const QDir dir(LogFormat::cleanDirectory(directory));
    const auto files = logFiles(dir);
    if (directory.isEmpty() || !files || files->empty())
        return false;
    try {
        const auto bytes = contentOf(files->begin()->second);
        quint32 sequence = 0;
        return bytes && LogFormat::isHeader(*bytes, 1) &&
               frameAt(*bytes, LogFormat::kHeaderSize, sequence) && sequence == 1;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

LogReader::Status LogReader::read(const QString &directory, RunData &run)
{
    try {
        return readFiles(directory, run);
    } catch (const std::bad_alloc &) {
        return Status::OutOfMemory;
    }
}

LogReader::Status LogReader::readFiles(const QString &directory, RunData &run)
{
    const QDir dir(LogFormat::cleanDirectory(directory));
    const auto files = logFiles(dir);
    if (directory.isEmpty() || !files)
        return files ? Status::NoLog : Status::Damaged;
    if (files->empty())
        return Status::NoLog;
    quint32 expected = 1;
    for (const auto &[index, path] : *files) {
        const bool last = index == files->size();
        const auto content = contentOf(path);
        if (!content)
            return Status::Damaged;
        const QByteArray &bytes = *content;
        if (!LogFormat::isHeader(bytes, index)) {
            if (last && !anyRecordFrom(bytes, 0))
                break;
            return Status::Damaged;
        }
        for (qsizetype offset = LogFormat::kHeaderSize; offset < bytes.size();) {
            quint32 sequence = 0;
            const auto payload = frameAt(bytes, offset, sequence);
            if (!payload) {
                if (last && !anyRecordFrom(bytes, offset + 1))
                    break;
                return Status::Damaged;
            }
            if (sequence != expected || !readPayload(*payload, run))
                return Status::Damaged;
            ++expected;
            offset += LogFormat::kRecordHead + payload->size() + LogFormat::kRecordTail;
        }
    }
    return expected == 1 ? Status::NoLog : Status::Good;
}

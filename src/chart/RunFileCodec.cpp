#include "chart/RunFileCodec.h"

#include "chart/ByteReader.h"
#include "chart/ByteWriter.h"
#include "chart/Crc.h"
#include "chart/RunData.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace {

// The high byte and the CR LF / ^Z / LF tail catch a file mangled by a text-mode copy.
constexpr char kDataMagic[8] = {'\x89', 'Q', 'C', 'D', '\r', '\n', '\x1a', '\n'};
constexpr char kLogMagic[8] = {'\x89', 'Q', 'C', 'L', '\r', '\n', '\x1a', '\n'};

constexpr quint32 tag(const char (&name)[5])
{
    return quint32(quint8(name[0])) | quint32(quint8(name[1])) << 8 |
           quint32(quint8(name[2])) << 16 | quint32(quint8(name[3])) << 24;
}

constexpr quint32 kAxes = tag("AXES");
constexpr quint32 kTitle = tag("TITL");
constexpr quint32 kNotes = tag("NOTE");
constexpr quint32 kSamples = tag("SAMP");
constexpr quint32 kMarks = tag("MARK");
constexpr quint32 kMethodTexts = tag("METH");
constexpr quint32 kEnd = tag("END ");

// The smallest encoded entry of each list, to refuse a count the bytes cannot hold.
constexpr quint64 kPairBytes = 8;
constexpr quint64 kMinMarkBytes = 14;
constexpr quint64 kMinMethodBytes = 8;

template <typename Fill> void writeChunk(QByteArray &out, quint32 chunkTag, Fill fill)
{
    ByteWriter writer(out);
    const qsizetype start = writer.size();
    writer.u32(chunkTag);
    writer.u32(0);
    fill(writer);
    writer.patchU32(start + 4, quint32(writer.size() - start - 8));
    writer.u32(crcOf(QByteArrayView(out).sliced(start)));
}

void writeAxes(ByteWriter &out, const ChartAxes &axes)
{
    for (float value :
         {axes.uvMin, axes.uvMax, axes.condMin, axes.condMax, axes.timeMin, axes.timeMax})
        out.f32(value);
}

bool readAxes(ByteReader &in, ChartAxes &axes)
{
    bool finite = true;
    for (float *value :
         {&axes.uvMin, &axes.uvMax, &axes.condMin, &axes.condMax, &axes.timeMin, &axes.timeMax}) {
        *value = in.f32();
        finite = finite && std::isfinite(*value);
    }
    // No chart ever holds an axis end that is not a finite number; a file that says so is
    // damaged, and drawing it would have no scale.
    return finite && in.ok() && in.atEnd();
}

} // namespace

std::optional<RunFileCodec::Kind> RunFileCodec::kindOf(QByteArrayView header)
{
    if (header.size() < kHeaderSize)
        return std::nullopt;
    Kind kind = Kind::Data;
    if (std::memcmp(header.data(), kLogMagic, sizeof kLogMagic) == 0)
        kind = Kind::Log;
    else if (std::memcmp(header.data(), kDataMagic, sizeof kDataMagic) != 0)
        return std::nullopt;
    const auto version = qFromLittleEndian<quint32>(header.data() + sizeof kDataMagic);
    // Versions only ever add; a file from a newer program is refused rather than half read.
    if (version < 1 || version > kVersion)
        return std::nullopt;
    return kind;
}

quint64 RunFileCodec::chunkSize(QByteArrayView head)
{
    return quint64(kChunkHead) + qFromLittleEndian<quint32>(head.data() + 4) + kChunkTail;
}

void RunFileCodec::writeSamples(ByteWriter &out, const SampleStore &store, qint64 first, qint64 end)
{
    out.u32(quint32(end - first));
    for (qint64 i = first; i < end; ++i) {
        out.f32(store.at(i).uv);
        out.f32(store.at(i).conductivity);
    }
}

void RunFileCodec::writeMarks(ByteWriter &out, std::span<const EventMark> marks)
{
    out.u32(quint32(marks.size()));
    for (const EventMark &mark : marks) {
        out.u32(quint32(mark.color));
        out.u16(quint16(mark.height));
        out.f32(mark.time);
        out.text(mark.label);
    }
}

void RunFileCodec::writeMethodTexts(ByteWriter &out, std::span<const MethodText> texts)
{
    out.u32(quint32(texts.size()));
    for (const MethodText &text : texts) {
        out.f32(text.time);
        out.text(text.text);
    }
}

bool RunFileCodec::readSamples(ByteReader &in, SampleStore &store)
{
    const quint32 count = in.u32();
    if (!in.has(quint64(count) * kPairBytes))
        return false;
    for (quint32 i = 0; i < count; ++i) {
        const float uv = in.f32();
        store.append(uv, in.f32());
    }
    return in.ok();
}

bool RunFileCodec::readMarks(ByteReader &in, ChartAnnotations &annotations)
{
    const quint32 count = in.u32();
    if (!in.has(quint64(count) * kMinMarkBytes))
        return false;
    for (quint32 i = 0; i < count && in.ok(); ++i) {
        const auto color = qint32(in.u32());
        const auto height = qint16(in.u16());
        const float time = in.f32();
        const QString label = in.text();
        if (in.ok())
            annotations.addEventMark(label, color, height, time);
    }
    return in.ok();
}

bool RunFileCodec::readMethodTexts(ByteReader &in, ChartAnnotations &annotations)
{
    const quint32 count = in.u32();
    if (!in.has(quint64(count) * kMinMethodBytes))
        return false;
    for (quint32 i = 0; i < count && in.ok(); ++i) {
        const float time = in.f32();
        const QString text = in.text();
        if (in.ok())
            annotations.addMethodText(text, time);
    }
    return in.ok();
}

QByteArray RunFileCodec::encode(const Source &source, Kind kind)
{
    QByteArray out;
    const qint64 pairs = std::max<qint64>(source.end - source.first, 0);
    out.reserve(qsizetype(kHeaderSize + pairs * kPairBytes + 4096));
    out.append(kind == Kind::Log ? kLogMagic : kDataMagic, sizeof kDataMagic);
    ByteWriter(out).u32(kVersion);
    writeChunk(out, kAxes, [&](ByteWriter &w) { writeAxes(w, source.axes); });
    writeChunk(out, kTitle, [&](ByteWriter &w) { w.text(source.title); });
    writeChunk(out, kNotes, [&](ByteWriter &w) { w.text(source.notes); });
    for (qint64 first = source.first; first < source.end; first += kPairsPerChunk) {
        const qint64 end = std::min(first + kPairsPerChunk, source.end);
        writeChunk(out, kSamples,
                   [&](ByteWriter &w) { writeSamples(w, source.store, first, end); });
    }
    writeChunk(out, kMarks, [&](ByteWriter &w) { writeMarks(w, source.marks); });
    writeChunk(out, kMethodTexts, [&](ByteWriter &w) { writeMethodTexts(w, source.methodTexts); });
    writeChunk(out, kEnd, [](ByteWriter &) {});
    return out;
}

std::optional<RunData> RunFileCodec::decode(QByteArrayView bytes, Kind kind)
{
    if (kindOf(bytes) != kind)
        return std::nullopt;
    Decoder decoder;
    for (qsizetype at = kHeaderSize; bytes.size() - at >= kChunkHead;) {
        const quint64 size = chunkSize(bytes.sliced(at));
        if (size > quint64(bytes.size() - at))
            return std::nullopt;
        switch (decoder.take(bytes.sliced(at, qsizetype(size)))) {
        case Decoder::Step::More:
            at += qsizetype(size);
            break;
        case Decoder::Step::End:
            if (at + qsizetype(size) != bytes.size())
                return std::nullopt;
            return std::move(decoder.run());
        case Decoder::Step::Bad:
            return std::nullopt;
        }
    }
    return std::nullopt;
}

RunFileCodec::Decoder::Step RunFileCodec::Decoder::take(QByteArrayView chunk)
{
    ByteReader in(chunk);
    const quint32 chunkTag = in.u32();
    const quint32 length = in.u32();
    const QByteArrayView payload = in.bytes(length);
    const quint32 crc = in.u32();
    if (!in.ok() || !in.atEnd() || crc != crcOf(chunk.first(kChunkHead + qsizetype(length))))
        return Step::Bad;
    const auto once = [](bool &seen) { return !std::exchange(seen, true); };
    ByteReader body(payload);
    bool good = true;
    switch (chunkTag) {
    case kAxes:
        good = once(m_seenAxes) && readAxes(body, m_run.axes);
        break;
    case kTitle:
        good = once(m_seenTitle);
        m_run.title = body.text();
        break;
    case kNotes:
        good = once(m_seenNotes);
        m_run.annotations.setNotes(body.text());
        break;
    case kSamples:
        good = readSamples(body, m_run.store);
        break;
    case kMarks:
        good = once(m_seenMarks) && readMarks(body, m_run.annotations);
        break;
    case kMethodTexts:
        good = once(m_seenMethods) && readMethodTexts(body, m_run.annotations);
        break;
    case kEnd:
        return length == 0 && m_seenAxes ? Step::End : Step::Bad;
    default:
        // A chunk this version does not know is refused: versions add chunk kinds only
        // together with a new version number.
        return Step::Bad;
    }
    return good && body.ok() && body.atEnd() ? Step::More : Step::Bad;
}

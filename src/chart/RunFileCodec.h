#pragma once

#include "chart/ChartAnnotations.h"
#include "chart/ChartAxes.h"
#include "chart/RunData.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <span>

class ByteReader;
class ByteWriter;
class SampleStore;

/// @brief The byte format of data files (.chd) and log files (.chl).
///
/// A 12-byte header (an 8-byte magic that tells the two kinds apart, then the format version)
/// and chunks of tag, length, payload and CRC32, all little endian, ending with an END chunk.
/// Samples travel as raw float bits in chunks of at most kPairsPerChunk pairs, so a day's run
/// costs eight bytes a pair and loads in one pass. Every length is checked against the bytes
/// that are there before anything is allocated for it. The kind of a file is in its bytes,
/// whatever its name says.
class RunFileCodec
{
public:
    enum class Kind { Data, Log };

    static constexpr quint32 kVersion = 1;
    static constexpr qint64 kPairsPerChunk = 65536;
    static constexpr qsizetype kHeaderSize = 12;
    // Tag and length before a chunk's payload; its CRC after it.
    static constexpr qsizetype kChunkHead = 8;
    static constexpr qsizetype kChunkTail = 4;

    /// @brief Takes a file's chunks one at a time, so that a reader holds no more than one.
    class Decoder
    {
    public:
        enum class Step { More, End, Bad };

        /// Takes the next whole chunk, head and CRC included. End once the END chunk closes a
        /// run that holds everything a file must; Bad for a chunk that is damaged, unknown or
        /// out of place.
        Step take(QByteArrayView chunk);
        /// The run, once `take` answered End.
        [[nodiscard]] RunData &run() { return m_run; }

    private:
        RunData m_run;
        bool m_seenAxes = false;
        bool m_seenTitle = false;
        bool m_seenNotes = false;
        bool m_seenMarks = false;
        bool m_seenMethods = false;
    };

    /// What a file is made of; `first` to `end` selects the samples, which then start at 0.
    struct Source
    {
        const SampleStore &store;
        qint64 first;
        qint64 end;
        std::span<const EventMark> marks;
        std::span<const MethodText> methodTexts;
        const QString &notes;
        const ChartAxes &axes;
        const QString &title;
    };

    [[nodiscard]] static QByteArray encode(const Source &source, Kind kind);
    /// The run in `bytes`, or nothing when they are not a whole, undamaged file of `kind`.
    [[nodiscard]] static std::optional<RunData> decode(QByteArrayView bytes, Kind kind);

    /// The kind of file that starts with this header, of a version this program reads;
    /// nothing for any other bytes.
    [[nodiscard]] static std::optional<Kind> kindOf(QByteArrayView header);
    /// The bytes of the whole chunk whose head this is.
    [[nodiscard]] static quint64 chunkSize(QByteArrayView head);

    // Shared with the running log, whose records carry the same lists.
    static void writeSamples(ByteWriter &out, const SampleStore &store, qint64 first, qint64 end);
    static void writeMarks(ByteWriter &out, std::span<const EventMark> marks);
    static void writeMethodTexts(ByteWriter &out, std::span<const MethodText> texts);
    /// Each reads a count and its entries into `run`; false on a short or malformed list.
    static bool readSamples(ByteReader &in, SampleStore &store);
    static bool readMarks(ByteReader &in, ChartAnnotations &annotations);
    static bool readMethodTexts(ByteReader &in, ChartAnnotations &annotations);
};

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// @brief The files of the running log: names, file header and record framing.
///
/// A log directory holds data files numbered from 1. Each opens with a 16-byte header (magic,
/// format version, file number) followed by records: record magic, sequence number, payload
/// length, payload, and a CRC32 over all of them. Sequence numbers run on from file to file, so
/// a lost or repeated record shows. The payload says where its samples, marks and method texts
/// start, so a record can only continue the one before it.
namespace LogFormat {
constexpr quint32 kVersion = 1;
constexpr qsizetype kHeaderSize = 16;
// Magic, sequence number and length before the payload; the CRC after it.
constexpr qsizetype kRecordHead = 12;
constexpr qsizetype kRecordTail = 4;
constexpr quint32 kRecordMagic = 0x52434c51; // "QLCR"

[[nodiscard]] QString fileName(quint32 index);
/// The number in a log data file's name, or nothing for any other name.
[[nodiscard]] std::optional<quint32> indexOfFileName(const QString &name);
/// The wildcard that lists the log's data files.
[[nodiscard]] QString namePattern();
[[nodiscard]] QByteArray header(quint32 index);
/// True when `bytes` start with the header of data file `index`.
[[nodiscard]] bool isHeader(QByteArrayView bytes, quint32 index);
[[nodiscard]] QByteArray record(quint32 sequence, QByteArrayView payload);
/// A directory as callers pass it, with or without its trailing separator of either kind.
[[nodiscard]] QString cleanDirectory(const QString &directory);
} // namespace LogFormat

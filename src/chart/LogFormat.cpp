#include "chart/LogFormat.h"

#include "chart/ByteReader.h"
#include "chart/ByteWriter.h"
#include "chart/Crc.h"

#include <cstring>

namespace {

constexpr char kFileMagic[8] = {'\x89', 'Q', 'L', 'G', '\r', '\n', '\x1a', '\n'};
const QLatin1String kPrefix("quillchart-log-");
const QLatin1String kSuffix(".qlg");
constexpr int kDigits = 6;

} // namespace

QString LogFormat::fileName(quint32 index)
{
    return kPrefix + QStringLiteral("%1").arg(index, kDigits, 10, QLatin1Char('0')) + kSuffix;
}

std::optional<quint32> LogFormat::indexOfFileName(const QString &name)
{
    if (!name.startsWith(kPrefix) || !name.endsWith(kSuffix) ||
        name.size() != kPrefix.size() + kDigits + kSuffix.size())
        return std::nullopt;
    bool ok = false;
    const uint index = QStringView(name).sliced(kPrefix.size(), kDigits).toUInt(&ok);
    if (!ok || index == 0)
        return std::nullopt;
    return index;
}

QString LogFormat::namePattern()
{
    return kPrefix + QLatin1String("*") + kSuffix;
}

QByteArray LogFormat::header(quint32 index)
{
    QByteArray out(kFileMagic, sizeof kFileMagic);
    ByteWriter writer(out);
    writer.u32(kVersion);
    writer.u32(index);
    return out;
}

bool LogFormat::isHeader(QByteArrayView bytes, quint32 index)
{
    if (bytes.size() < kHeaderSize || std::memcmp(bytes.data(), kFileMagic, 8) != 0)
        return false;
    ByteReader in(bytes.sliced(8, 8));
    const quint32 version = in.u32();
    return version >= 1 && version <= kVersion && in.u32() == index;
}

QByteArray LogFormat::record(quint32 sequence, QByteArrayView payload)
{
    QByteArray out;
    out.reserve(kRecordHead + payload.size() + kRecordTail);
    ByteWriter writer(out);
    writer.u32(kRecordMagic);
    writer.u32(sequence);
    writer.u32(quint32(payload.size()));
    out.append(payload);
    writer.u32(crcOf(out));
    return out;
}

QString LogFormat::cleanDirectory(const QString &directory)
{
    QString clean = directory;
    while (clean.size() > 1 &&
           (clean.endsWith(QLatin1Char('/')) || clean.endsWith(QLatin1Char('\\'))))
        clean.chop(1);
    return clean;
}

#pragma once

#include <QByteArrayView>

#include <zlib.h>

/// CRC-32 (zlib's polynomial) of a span of bytes.
inline quint32 crcOf(QByteArrayView bytes)
{
    return quint32(crc32(crc32(0, nullptr, 0), reinterpret_cast<const Bytef *>(bytes.data()),
                         uInt(bytes.size())));
}

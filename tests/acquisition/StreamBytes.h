#pragma once

#include <QByteArray>
#include <QString>

#include <bit>
#include <cstdint>

/// Blocks as the instrument sends them.
namespace StreamBytes {

inline QByteArray sample(char type, float value)
{
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(value);
    QByteArray block;
    block += char(0x96);
    block += type;
    for (int shift = 24; shift >= 0; shift -= 8)
        block += char((bits >> shift) & 0xFF);
    return block;
}

inline QByteArray pair(float uv, float cond, char uvType = 'U')
{
    return sample(uvType, uv) + sample('C', cond);
}

inline QByteArray status(char type, std::uint8_t value)
{
    return QByteArray() + char(0x96) + type + char(value);
}

inline QByteArray method(const QByteArray &text)
{
    return QByteArray() + char(0x96) + 'M' + text + char(0x96);
}

} // namespace StreamBytes

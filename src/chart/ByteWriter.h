#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>

#include <bit>
#include <cstdint>

/// Appends little-endian numbers and length-prefixed UTF-8 texts to a byte array.
class ByteWriter
{
public:
    explicit ByteWriter(QByteArray &out) : m_out(out) {}

    void u16(quint16 value) { raw(qToLittleEndian(value)); }
    void u32(quint32 value) { raw(qToLittleEndian(value)); }
    void u64(quint64 value) { raw(qToLittleEndian(value)); }
    // Floats travel as their bits, so a NaN's payload survives a save.
    void f32(float value) { u32(std::bit_cast<quint32>(value)); }
    void text(const QString &value)
    {
        const QByteArray utf8 = value.toUtf8();
        u32(quint32(utf8.size()));
        m_out.append(utf8);
    }
    /// Overwrites four bytes already written, at `offset`.
    void patchU32(qsizetype offset, quint32 value)
    {
        qToLittleEndian(value, m_out.data() + offset);
    }
    [[nodiscard]] qsizetype size() const { return m_out.size(); }

private:
    template <typename T> void raw(T littleEndian)
    {
        m_out.append(reinterpret_cast<const char *>(&littleEndian), sizeof littleEndian);
    }

    QByteArray &m_out;
};

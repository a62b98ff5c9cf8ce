#pragma once

#include <QByteArrayView>
#include <QString>
#include <QtEndian>

#include <bit>

/// Reads little-endian numbers and length-prefixed texts from a span of bytes. A read past the
/// end fails the reader for good and answers zero, so a parser checks `ok()` once per record
/// and no length field is trusted further than the bytes that are really there.
class ByteReader
{
public:
    explicit ByteReader(QByteArrayView bytes) : m_bytes(bytes) {}

    quint16 u16() { return read<quint16>(); }
    quint32 u32() { return read<quint32>(); }
    quint64 u64() { return read<quint64>(); }
    float f32() { return std::bit_cast<float>(u32()); }
    QString text()
    {
        const quint32 length = u32();
        if (!has(length))
            return fail<QString>();
        const QString value = QString::fromUtf8(m_bytes.sliced(m_pos, length));
        m_pos += length;
        return value;
    }
    /// The next `length` bytes as a view, or an empty one after failing.
    QByteArrayView bytes(quint64 length)
    {
        if (!has(length))
            return fail<QByteArrayView>();
        const QByteArrayView view = m_bytes.sliced(m_pos, qsizetype(length));
        m_pos += qsizetype(length);
        return view;
    }

    [[nodiscard]] bool has(quint64 length) const
    {
        return m_ok && length <= quint64(m_bytes.size() - m_pos);
    }
    [[nodiscard]] bool ok() const { return m_ok; }
    [[nodiscard]] bool atEnd() const { return m_pos == m_bytes.size(); }
    [[nodiscard]] qsizetype position() const { return m_pos; }
    [[nodiscard]] qsizetype remaining() const { return m_bytes.size() - m_pos; }

private:
    template <typename T> T read()
    {
        if (!has(sizeof(T)))
            return fail<T>();
        const T value = qFromLittleEndian<T>(m_bytes.data() + m_pos);
        m_pos += qsizetype(sizeof(T));
        return value;
    }
    template <typename T> T fail()
    {
        m_ok = false;
        return T{};
    }

    QByteArrayView m_bytes;
    qsizetype m_pos = 0;
    bool m_ok = true;
};

#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace VelquinSim {

constexpr quint8 kSyncByte = 0x96;

/// One block as it goes on the line, with what it means, for the pacer and the manifest.
struct SimBlock
{
    /// The bytes sent; a block cut by a fault holds only what was sent of it.
    QByteArray bytes;
    /// When the instrument has it ready, in seconds from the start of the stream.
    double time = 0;
    /// Offset of its first sent byte in the stream.
    qint64 offset = 0;
    /// The sample pair it belongs to, or for other blocks the pair that follows them.
    qint64 pair = 0;
    /// The type byte as sent (0 for junk bytes that are no block).
    quint8 type = 0;
    /// Sample value, parameter byte of "E", "H", "P", "R", or the length of a silence (seconds)
    /// or a burst (pairs).
    double value = 0;
    /// The method text of an "M" block.
    QByteArray text;
    /// The option text of the injected fault this block carries, empty for a regular block.
    QString fault;
    /// Sent back to back with its neighbours, faster than the line.
    bool burst = false;

    static SimBlock sample(char letter, float value);
    static SimBlock parameter(char letter, quint8 value);
    /// "M", the text, and the closing sync byte.
    static SimBlock method(const QByteArray &text);
    /// The four bytes of a sample as the instrument sends them, most significant first.
    static QByteArray floatBytes(float value);
    static float floatFromBytes(const QByteArray &bytes);
};

} // namespace VelquinSim

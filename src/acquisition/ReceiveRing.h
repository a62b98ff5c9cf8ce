#pragma once

#include "runtime/Int16.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>

/// The 10000-byte ring between the serial control and the decoder, with a consuming take
/// position and an independent look position for peeking. Nothing guards fullness or
/// emptiness: an overrun overwrites the oldest bytes and a read past the end goes on with
/// stale bytes and a negative count, which the sync search then sorts out.
class ReceiveRing
{
public:
    static constexpr int kSize = 10000;

    std::uint8_t SyncByte = 0x96;
    Int16 PutIndex;
    Int16 TakeIndex;
    Int16 ByteCount;
    Int16 LookIndex;
    Int16 LookByteCount;
    std::array<std::uint8_t, kSize> ReceiveBuffer{};

    void TakeByte(std::uint8_t &byte);
    void GetLastBytes(std::uint8_t &byte);
    /// Puts the look position back on the take position.
    void rebase();
    /// Appends bytes as the receive event does, wrapping at the end.
    void store(const QByteArray &bytes);
    /// Appends CR LF and the 32 bytes lying 33 to 2 places behind the take position
    /// (which == -1) or the look position (which == 0) to `DebugText`.
    void AddDebugBytes(Int16 which, QString &DebugText) const;
};

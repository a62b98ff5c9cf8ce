#include "acquisition/ReceiveRing.h"

#include "runtime/Numbers.h"

namespace {
Int16 advance(Int16 index)
{
    Int16 next = index + 1;
    return next == ReceiveRing::kSize ? Int16(0) : next;
}
} // namespace

void ReceiveRing::TakeByte(std::uint8_t &byte)
{
    byte = ReceiveBuffer[TakeIndex];
    TakeIndex = advance(TakeIndex);
    --ByteCount;
}

void ReceiveRing::GetLastBytes(std::uint8_t &byte)
{
    byte = ReceiveBuffer[LookIndex];
    LookIndex = advance(LookIndex);
    --LookByteCount;
}

void ReceiveRing::rebase()
{
    LookIndex = TakeIndex;
    LookByteCount = ByteCount;
}

void ReceiveRing::store(const QByteArray &bytes)
{
    for (const char byte : bytes) {
        ReceiveBuffer[PutIndex] = static_cast<std::uint8_t>(byte);
        PutIndex = advance(PutIndex);
        ++ByteCount;
    }
}

void ReceiveRing::AddDebugBytes(Int16 which, QString &DebugText) const
{
    DebugText += QStringLiteral("\r\n");
    int start = 0;
    if (which == -1)
        start = TakeIndex - 33;
    else if (which == 0)
        start = LookIndex - 33;
    if (start < 0)
        start += kSize;
    int end = start + 31;
    if (end > kSize - 1)
        end -= kSize;
    auto append = [&](int from, int to) {
        for (int i = from; i <= to; ++i)
            DebugText += Str(ReceiveBuffer[i]);
    };
    if (end <= start) {
        append(start, kSize - 1);
        append(0, end);
    } else {
        append(start, end);
    }
}

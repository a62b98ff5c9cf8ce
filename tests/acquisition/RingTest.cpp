#include "acquisition/ReceiveRing.h"

#include <gtest/gtest.h>

namespace {
ReceiveRing countingRing()
{
    ReceiveRing ring;
    for (int i = 0; i < ReceiveRing::kSize; ++i)
        ring.ReceiveBuffer[i] = std::uint8_t(i % 251);
    return ring;
}

QString expectedDump(std::initializer_list<std::pair<int, int>> ranges)
{
    QString dump = "\r\n";
    for (const auto &[from, to] : ranges)
        for (int i = from; i <= to; ++i)
            dump += ' ' + QString::number(i % 251);
    return dump;
}
} // namespace

TEST(Ring, PutAndTakeWrapAtTheLastPosition)
{
    ReceiveRing ring;
    ring.PutIndex = 9999;
    ring.TakeIndex = 9999;
    ring.store(QByteArray("\x01\x02", 2));
    EXPECT_EQ(ring.ReceiveBuffer[9999], 1);
    EXPECT_EQ(ring.ReceiveBuffer[0], 2);
    EXPECT_EQ(int(ring.PutIndex), 1);
    std::uint8_t byte = 0;
    ring.TakeByte(byte);
    EXPECT_EQ(byte, 1);
    EXPECT_EQ(int(ring.TakeIndex), 0);
    ring.rebase();
    ring.GetLastBytes(byte);
    EXPECT_EQ(byte, 2);
    EXPECT_EQ(int(ring.LookIndex), 1);
    EXPECT_EQ(int(ring.ByteCount), 1) << "peeking consumes nothing";
    EXPECT_EQ(int(ring.LookByteCount), 0);
}

TEST(Ring, OverrunOverwritesTheOldestBytesUnreported)
{
    ReceiveRing ring;
    ring.store(QByteArray(ReceiveRing::kSize, 'a'));
    ring.store(QByteArray(5, 'b'));
    EXPECT_EQ(int(ring.ByteCount), 10005);
    EXPECT_EQ(ring.ReceiveBuffer[0], 'b');
    EXPECT_EQ(int(ring.PutIndex), 5);
}

TEST(Ring, DebugDumpTakesThe32BytesBehindTheChosenPosition)
{
    ReceiveRing ring = countingRing();
    QString text = "Sub X";

    ring.LookIndex = 10; // wraps: 9977..9999 and 0..8
    ring.AddDebugBytes(0, text);
    EXPECT_EQ(text, "Sub X" + expectedDump({{9977, 9999}, {0, 8}}));

    text.clear();
    ring.TakeIndex = 33; // exactly reaches the start: 0..31, no wrap
    ring.AddDebugBytes(-1, text);
    EXPECT_EQ(text, expectedDump({{0, 31}}));

    text.clear();
    ring.TakeIndex = 5000;
    ring.LookIndex = 7000;
    ring.AddDebugBytes(0, text);
    EXPECT_EQ(text, expectedDump({{6967, 6998}})) << "0 dumps around the look position";
    text.clear();
    ring.AddDebugBytes(-1, text);
    EXPECT_EQ(text, expectedDump({{4967, 4998}})) << "-1 dumps around the take position";
    text.clear();
    ring.AddDebugBytes(3, text);
    EXPECT_EQ(text, expectedDump({{0, 31}})) << "any other value starts at 0";
}

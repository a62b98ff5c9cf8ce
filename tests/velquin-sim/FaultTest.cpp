#include "SimStream.h"

#include <gtest/gtest.h>

using namespace VelquinSim;

TEST(Faults, EachFaultPutsItsOwnBytesOnTheLineAndLeavesTheRestAlone)
{
    const SimStream clean = SimStream::play(shortScenario(InstrumentKind::Status));
    const SimStream stream = SimStream::play(
        shortScenario(InstrumentKind::Status, 1,
                      {"midblock:4", "garbage@7:20", "unknown@9:0x20", "param@11:R:9"}));
    QList<SimBlock> faults;
    QByteArray regular;
    for (const SimBlock &block : stream.blocks) {
        if (block.fault.isEmpty())
            regular += block.bytes;
        else
            faults.append(block);
    }
    ASSERT_EQ(faults.size(), 4);
    EXPECT_TRUE(regular == clean.bytes.mid(6)) << "only the cut first block is missing";

    EXPECT_EQ(faults.at(0).offset, 0);
    EXPECT_EQ(faults.at(0).bytes, clean.bytes.mid(4, 2)) << "the stream starts 4 bytes in";

    const SimBlock &garbage = faults.at(1);
    EXPECT_EQ(garbage.bytes.size(), 20);
    EXPECT_FALSE(garbage.bytes.contains(char(0x96)));
    EXPECT_GE(garbage.time, 7.0);
    EXPECT_EQ(stream.bytes.at(garbage.offset + 20), char(0x96)) << "junk lies between blocks";

    const SimBlock &unknown = faults.at(2);
    EXPECT_EQ(unknown.bytes.left(2), QByteArray("\x96\x20"));
    EXPECT_EQ(unknown.bytes.size(), 6);
    EXPECT_FALSE(unknown.bytes.mid(1).contains(char(0x96)));

    EXPECT_EQ(faults.at(3).bytes, QByteArray::fromHex("965209"));
}

TEST(Faults, SilenceDropsEverythingThenTheInstrumentRunsOn)
{
    const SimStream stream =
        SimStream::play(shortScenario(InstrumentKind::Status, 1, {"silence@10:6"}));
    qint64 lastPair = -1;
    for (const SimBlock &block : stream.blocks) {
        if (block.fault.startsWith(QLatin1String("silence"))) {
            EXPECT_TRUE(block.bytes.isEmpty());
            EXPECT_EQ(block.time, 10.0);
        } else {
            EXPECT_FALSE(block.time >= 10.0 && block.time < 16.0) << block.time;
        }
        if (block.type == 'C') {
            EXPECT_EQ(block.pair, lastPair == 49 ? 80 : lastPair + 1);
            lastPair = block.pair;
        }
    }
}

TEST(Faults, BurstSendsExtraPairsAllAtOnce)
{
    const SimStream clean = SimStream::play(shortScenario(InstrumentKind::Status));
    const SimStream stream =
        SimStream::play(shortScenario(InstrumentKind::Status, 1, {"burst@4:40"}));
    int burst = 0;
    for (const SimBlock &block : stream.blocks) {
        burst += block.burst;
        EXPECT_TRUE(!block.burst || block.time == 4.0);
    }
    EXPECT_EQ(burst, 80);
    EXPECT_EQ(stream.ofType('C').last().pair, clean.ofType('C').last().pair + 40);
}

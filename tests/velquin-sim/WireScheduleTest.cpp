#include "WireSchedule.h"

#include "SimStream.h"

#include <gtest/gtest.h>

using namespace VelquinSim;

namespace {

QList<WireWrite> placeAll(const SimStream &stream)
{
    WireSchedule line;
    QList<WireWrite> writes;
    for (const SimBlock &block : stream.blocks)
        writes += line.place(block);
    return writes;
}

} // namespace

TEST(WireSchedule, SixtySecondsCarryThreeHundredPairsInBlockSizedWrites)
{
    Scenario scenario = shortScenario(InstrumentKind::Status);
    scenario.runMinutes = 0.75;
    const SimStream stream = SimStream::play(scenario);
    const QList<WireWrite> writes = placeAll(stream);

    qint64 bytesBefore60 = 0;
    qint64 expected = 0;
    for (const SimBlock &block : stream.blocks) {
        if (block.time < 60.0)
            expected += block.bytes.size();
    }
    double previous = 0;
    for (const WireWrite &write : writes) {
        EXPECT_GE(write.at, previous);
        previous = write.at;
        EXPECT_LE(write.bytes.size(), 16);
        if (write.at < 60.0)
            bytesBefore60 += write.bytes.size();
    }
    EXPECT_EQ(std::count_if(stream.blocks.begin(), stream.blocks.end(),
                            [](const SimBlock &b) { return b.type == 'C' && b.time < 60.0; }),
              300);
    // Only the method text, held back by the line, may spill over the minute.
    EXPECT_NEAR(double(bytesBefore60), double(expected), 0.01 * double(expected));
}

TEST(WireSchedule, MethodTextTakesTheLineAndSamplesCatchUp)
{
    const SimStream stream = SimStream::play(shortScenario(InstrumentKind::Letters));
    WireSchedule line;
    double methodEnd = 0;
    qint64 methodBytes = 0;
    for (const SimBlock &block : stream.blocks) {
        const QList<WireWrite> writes = line.place(block);
        if (block.type == 'M') {
            for (qsizetype i = 1; i < writes.size(); ++i)
                EXPECT_NEAR(writes.at(i).at - writes.at(i - 1).at, 16 / 960.0, 1e-9);
            methodBytes = block.bytes.size();
            methodEnd = writes.first().at + methodBytes / 960.0;
            EXPECT_EQ(writes.first().at, block.time);
        } else if (methodEnd > 0 && block.time < methodEnd) {
            EXPECT_GE(writes.first().at, methodEnd - 1e-9) << "one line, one block at a time";
        } else if (methodEnd > 0 && block.time > methodEnd + 0.2 && block.type == 'U') {
            EXPECT_NEAR(writes.first().at, block.time, 1e-9) << "back on time after the text";
        }
    }
    EXPECT_GT(methodBytes, 600);
}

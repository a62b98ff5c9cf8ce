#include "WireSchedule.h"

#include "SimStream.h"

#include <gtest/gtest.h>

using namespace VelquinSim;

TEST(WireSchedule, BlocksGoOutOnTimeInSmallWritesAndTheMethodTextHoldsTheLine)
{
    const SimStream stream = SimStream::play(shortScenario(InstrumentKind::Letters));
    WireSchedule line;
    double previous = 0;
    double methodEnd = 0;
    qint64 methodBytes = 0;
    for (const SimBlock &block : stream.blocks) {
        const QList<WireWrite> writes = line.place(block);
        ASSERT_FALSE(writes.isEmpty());
        for (const WireWrite &write : writes) {
            EXPECT_GE(write.at, previous);
            EXPECT_LE(write.bytes.size(), 16);
            previous = write.at;
        }
        if (block.type == 'M') {
            for (qsizetype i = 1; i < writes.size(); ++i)
                EXPECT_NEAR(writes.at(i).at - writes.at(i - 1).at, 16 / 960.0, 1e-9);
            methodBytes = block.bytes.size();
            methodEnd = writes.first().at + methodBytes / 960.0;
            EXPECT_EQ(writes.first().at, block.time);
        } else if (methodEnd > 0 && block.time < methodEnd) {
            EXPECT_GE(writes.first().at, methodEnd - 1e-9) << "one line, one block at a time";
        } else if (block.type == 'U' && (methodEnd == 0 || block.time > methodEnd + 0.2)) {
            EXPECT_NEAR(writes.first().at, block.time, 0.01) << "on time, and again after the text";
        }
    }
    EXPECT_GT(methodBytes, 600);
}

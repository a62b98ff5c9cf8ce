#include "ChartMarks.h"
#include "FailingAllocation.h"
#include "IntakeRig.h"

#include <gtest/gtest.h>

namespace {
using Marks = QList<SeenMark>;
} // namespace

// Log labels stand one sample behind: each is drawn at the time of the sample before.
TEST(LogChart, TakesEveryPairAndRunsItsTimeOnAcrossRuns)
{
    IntakeRig rig;
    rig.feed(fBlock());
    rig.pairs(2, 'U');
    rig.feed(news('R', 1));
    rig.pairs(3, 'V');
    rig.feed(news('R', 0));
    rig.pairs(2, 'U');
    rig.feed(news('R', 1));
    rig.pairs(2, 'V');

    EXPECT_EQ(rig.intake.LogSampleCount, 9);
    EXPECT_EQ(lastSampleOf(rig.chart5), 8);
    EXPECT_FLOAT_EQ(rig.intake.LogTime, rig.chart5.GetLastTime());
    EXPECT_EQ(ChartMarks(rig.chart5, 9).marks(), (Marks{{1, "S"}, {4, "E"}, {6, "S"}}));
    // The recorder took only the runs, on a time of its own.
    EXPECT_EQ(ChartMarks(rig.chart0, 5).marks(), (Marks{{0, "S"}, {3, "E"}, {4, "S"}}));
}

TEST(LogChart, LetterInstrumentPausesTheLogOneSampleLateAndResumesOnV)
{
    IntakeRig rig;
    rig.feed(news('E', 4));
    rig.pairs(2, 'V');
    rig.pairs(4, 'U');
    EXPECT_EQ(rig.intake.LogSampleCount, 4);
    rig.feed(news('E', 2));
    rig.pairs(1, 'V');
    EXPECT_FALSE(rig.intake.LogPaused);
    EXPECT_EQ(ChartMarks(rig.chart5, 6).marks(), (Marks{{0, "S"}, {2, "P"}, {3, "#"}}));
}

TEST(LogChart, PausedLogHoldsEvenItsEndUntilARunStatusReleasesIt)
{
    IntakeRig rig;
    rig.feed(fBlock() + news('R', 1));
    rig.pairs(2, 'V');
    rig.feed(news('R', 2));
    rig.pairs(1, 'V');
    const float pausedTime = rig.intake.LogTime;
    rig.feed(news('E', 2) + news('E', 3));
    rig.pairs(3, 'U');
    EXPECT_EQ(rig.intake.LogSampleCount, 3);
    EXPECT_EQ(rig.intake.LogTime, pausedTime);

    rig.feed(news('R', 1));
    rig.pairs(3, 'U');
    EXPECT_EQ(ChartMarks(rig.chart5, 6).marks(), (Marks{{0, "S"}, {1, "P"}, {2, "#"}, {3, "E"}}));
    EXPECT_FALSE(rig.intake.LogRunActive);
}

TEST(LogChart, LoggingOffFreezesTimeAndNumbersButFollowsTheRun)
{
    IntakeRig rig;
    rig.DataLogging = false;
    rig.feed(fBlock() + news('R', 1));
    rig.pairs(2, 'V');
    EXPECT_TRUE(rig.intake.LogRunActive);
    rig.feed(news('E', 2));
    rig.pairs(2, 'V');
    rig.feed(news('R', 0));
    rig.pairs(1, 'U');
    EXPECT_FALSE(rig.intake.LogRunActive);
    EXPECT_EQ(rig.intake.LogSampleCount, 0);
    EXPECT_EQ(rig.intake.LogTime, 0.0f);
    EXPECT_EQ(rig.intake.LogEventNumber, 0);

    // The label still waiting is drawn by the first sample once logging is back.
    rig.DataLogging = true;
    rig.pairs(2, 'U');
    EXPECT_EQ(ChartMarks(rig.chart5, 2).marks(), (Marks{{0, "E"}}));
}

TEST(ChartRefusal, RefusedSamplesAreReportedAndTheIntakeCarriesOn)
{
    IntakeRig rig;
    rig.feed(fBlock() + news('R', 1));
    {
        // Far above anything but the charts' sample blocks.
        const FailingAllocation outOfMemory(64 * 1024);
        rig.pairs(1, 'V');
    }
    EXPECT_EQ(rig.errors, (QList<qint32>{-15, -15}));
    EXPECT_EQ(rig.recordCommands, 1);
    EXPECT_TRUE(rig.intake.LogRunActive);

    rig.pairs(3, 'V');
    EXPECT_EQ(rig.errors.size(), 2);
    EXPECT_EQ(lastSampleOf(rig.chart0), 2);
    EXPECT_EQ(lastSampleOf(rig.chart5), 2);
    EXPECT_EQ(ChartMarks(rig.chart0, 3).marks(), (Marks{{0, "S"}}));
}

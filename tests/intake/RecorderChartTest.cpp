#include "ChartMarks.h"
#include "IntakeRig.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

using Marks = QList<SeenMark>;

// States of the recorder chart with an instrument that sends status blocks. Run: samples 0 to
// 2, "S" at 0. Paused: the run, "P" at sample 3, then two pairs that are not taken.
void toIdle(IntakeRig &rig)
{
    rig.feed(fBlock());
    rig.pairs(2, 'U');
}

void toRun(IntakeRig &rig)
{
    toIdle(rig);
    rig.feed(news('R', 1));
    rig.pairs(3, 'V');
}

void toPaused(IntakeRig &rig)
{
    toRun(rig);
    rig.feed(news('R', 2));
    rig.pairs(3, 'V');
}

struct Transition
{
    const char *name;
    void (*from)(IntakeRig &);
    QByteArray news;
    bool recording, runActive, paused;
    int lastSample;
    Marks marks;
    int stopCommands;
};

void PrintTo(const Transition &t, std::ostream *out)
{
    *out << t.name;
}

class RecorderTransition : public testing::TestWithParam<Transition>
{
};

} // namespace

// Each case: a state, one piece of news, then two sample pairs.
TEST_P(RecorderTransition, LeavesItsLabelAtTheNextSample)
{
    const Transition &t = GetParam();
    IntakeRig rig;
    t.from(rig);
    rig.feed(t.news);
    rig.pairs(2, 'V');

    EXPECT_EQ(rig.intake.Recording, t.recording);
    EXPECT_EQ(rig.intake.ChartRunActive, t.runActive);
    EXPECT_EQ(rig.intake.ChartPaused, t.paused);
    EXPECT_EQ(lastSampleOf(rig.chart0), t.lastSample);
    EXPECT_EQ(ChartMarks(rig.chart0, t.lastSample + 2).marks(), t.marks);
    EXPECT_EQ(rig.recordCommands, 1);
    EXPECT_EQ(rig.stopCommands, t.stopCommands);
    EXPECT_TRUE(rig.errors.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    StatusInstrument, RecorderTransition,
    testing::Values(
        Transition{"IdleStartsARun", toIdle, news('R', 1), true, true, false, 1, {{0, "S"}}, 0},
        Transition{"RunPauses", toRun, news('R', 2), true, true, true, 3, {{0, "S"}, {3, "P"}}, 0},
        Transition{"PauseResumesWithoutLabel",
                   toPaused,
                   news('R', 1),
                   true,
                   true,
                   false,
                   5,
                   {{0, "S"}, {3, "P"}},
                   0},
        Transition{
            "RunHolds", toRun, news('R', 3), true, true, false, 4, {{0, "S"}, {3, "H|C"}}, 0},
        Transition{
            "RunContinues", toRun, news('R', 1), true, true, false, 4, {{0, "S"}, {3, "H|C"}}, 0},
        Transition{"RunEndsAndStops",
                   toRun,
                   news('R', 0),
                   false,
                   false,
                   false,
                   3,
                   {{0, "S"}, {3, "E"}},
                   1},
        // The end label stands on the paused sample; the session goes on by hand.
        Transition{"PauseEndsInManualRecording",
                   toPaused,
                   news('R', 0),
                   true,
                   false,
                   false,
                   4,
                   {{0, "S"}, {3, "E"}},
                   0},
        Transition{"RunNumbersAnEvent",
                   toRun,
                   news('E', 2),
                   true,
                   true,
                   false,
                   4,
                   {{0, "S"}, {3, "#"}},
                   0},
        Transition{"PausedRunStillNumbersAnEvent",
                   toPaused,
                   news('E', 2),
                   true,
                   true,
                   true,
                   3,
                   {{0, "S"}, {3, "#"}},
                   0},
        Transition{"RunMarksEventEight",
                   toRun,
                   news('E', 8),
                   true,
                   true,
                   false,
                   4,
                   {{0, "S"}, {3, "M"}},
                   0},
        Transition{"RunShowsAHoldBlock",
                   toRun,
                   news('H', 1),
                   true,
                   true,
                   false,
                   4,
                   {{0, "S"}, {3, "H|C"}},
                   0}),
    [](const testing::TestParamInfo<Transition> &info) { return info.param.name; });

TEST(RecorderChart, LetterInstrumentRecordsARunFromStartEventToEnd)
{
    IntakeRig rig;
    rig.pairs(3, 'U');
    rig.feed(news('E', 4));
    rig.pairs(3, 'V');
    rig.feed(news('E', 2));
    rig.pairs(2, 'V');
    // "U" in a run pauses one pair late: the first "U" pair is still taken.
    rig.pairs(5, 'U');
    EXPECT_TRUE(rig.intake.ChartPaused);
    rig.pairs(2, 'V');
    rig.feed(news('E', 3));
    rig.pairs(4, 'U');

    // The end comes two pairs after its event: one takes the end label, one draws it.
    EXPECT_EQ(lastSampleOf(rig.chart0), 10);
    EXPECT_EQ(ChartMarks(rig.chart0, 11).marks(), (Marks{{0, "S"}, {3, "#"}, {6, "P"}, {10, "E"}}));
    EXPECT_EQ(rig.recordCommands, 1);
    EXPECT_EQ(rig.stopCommands, 1);
    EXPECT_TRUE(rig.TimerStopWaitForMethod.isActive());

    // The next run numbers its events from 1 again.
    rig.feed(news('E', 4));
    rig.pairs(1, 'V');
    rig.feed(news('E', 2));
    rig.pairs(1, 'V');
    EXPECT_EQ(rig.intake.ChartEventNumber, 1);
    EXPECT_EQ(ChartMarks(rig.chart0, 13).marks().mid(4), (Marks{{11, "S"}, {12, "#"}}));
}

TEST(RecorderChart, StartEventIsDecidedByTheNextUvLetter)
{
    {
        SCOPED_TRACE("a second start event starts the run at once");
        IntakeRig rig;
        rig.feed(news('E', 4) + news('E', 4));
        EXPECT_TRUE(rig.intake.Recording);
        rig.pairs(1, 'U');
        EXPECT_EQ(ChartMarks(rig.chart0, 1).marks(), (Marks{{0, "S"}}));
    }
    {
        SCOPED_TRACE("a U block disarms, so that the next start event only arms again");
        IntakeRig rig;
        rig.feed(news('E', 4));
        rig.pairs(1, 'U');
        rig.feed(news('E', 4));
        EXPECT_FALSE(rig.intake.Recording);
        rig.pairs(2, 'V');
        EXPECT_EQ(lastSampleOf(rig.chart0), 1);
        EXPECT_EQ(ChartMarks(rig.chart0, 2).marks(), (Marks{{0, "S"}}));
    }
    {
        SCOPED_TRACE("with status blocks the letter still decides the start, and pauses nothing");
        IntakeRig rig;
        rig.feed(fBlock() + news('E', 4));
        rig.pairs(1, 'V');
        rig.pairs(3, 'U');
        EXPECT_EQ(lastSampleOf(rig.chart0), 3);
        EXPECT_EQ(ChartMarks(rig.chart0, 4).marks(), (Marks{{0, "S"}}));
    }
}

TEST(RecorderChart, PauseOutsideARunLeavesNoLabelAndNoPause)
{
    IntakeRig rig;
    rig.feed(fBlock() + news('P', 1));
    rig.pairs(2, 'U');
    rig.feed(news('R', 2));
    rig.pairs(2, 'U');
    EXPECT_EQ(rig.recordCommands, 1);
    EXPECT_FALSE(rig.intake.ChartPaused);
    EXPECT_EQ(lastSampleOf(rig.chart0), 3);
    EXPECT_TRUE(ChartMarks(rig.chart0, 4).marks().isEmpty());
}

TEST(RecorderChart, NumberArrivingWhileTheEndWaitsIsDrawnFirst)
{
    IntakeRig rig;
    toRun(rig);
    rig.feed(news('R', 0) + news('E', 2));
    rig.pairs(3, 'U');
    EXPECT_EQ(ChartMarks(rig.chart0, 5).marks(), (Marks{{0, "S"}, {3, "#"}, {4, "E"}}));
    EXPECT_EQ(rig.stopCommands, 1);
}

TEST(MethodText, ReachesTheRecorderOnlyWithinTheWaitAndTheLogWhileLogging)
{
    for (const bool waited : {false, true}) {
        SCOPED_TRACE(waited ? "after the wait" : "within the wait");
        IntakeRig rig;
        toRun(rig);
        rig.feed(news('R', 0));
        rig.pairs(1, 'U');
        if (waited)
            rig.intake.TimerStopWaitForMethod_Timer();
        rig.feed(StreamBytes::method("Gradient 0-100% B"));
        EXPECT_EQ(ChartMarks(rig.chart0, 4).methodTextAt(3), !waited);
        EXPECT_FALSE(rig.intake.WaitForMethod);
        EXPECT_FALSE(rig.TimerStopWaitForMethod.isActive());
        EXPECT_TRUE(ChartMarks(rig.chart5, 6).methodTextAt(5));
    }
    IntakeRig quiet;
    quiet.DataLogging = false;
    quiet.pairs(4, 'U');
    quiet.feed(StreamBytes::method("Wash 5 CV"));
    EXPECT_FALSE(ChartMarks(quiet.chart5, 4).methodTextAt(0));
}

TEST(MethodText, WaitEndsWhenItsTimerFires)
{
    IntakeRig rig;
    rig.TimerStopWaitForMethod.setInterval(10);
    toRun(rig);
    rig.feed(news('R', 0));
    rig.pairs(1, 'V');
    ASSERT_TRUE(rig.intake.WaitForMethod);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !rig.intake.WaitForMethod; }, 5000));
    EXPECT_FALSE(rig.TimerStopWaitForMethod.isActive());
}

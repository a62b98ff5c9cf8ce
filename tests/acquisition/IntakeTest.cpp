#include "FailingAllocation.h"
#include "IntakeRig.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

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
    char newsType;
    int newsValue;
    bool recording, runActive, paused;
    qint64 lastSample;
    const char *marks;
    int stopCommands;
};

void PrintTo(const Transition &t, std::ostream *out)
{
    *out << t.name;
}

// The end label of a paused run stands on the paused sample; the session goes on by hand.
const Transition kTransitions[] = {
    {"IdleStartsARun", toIdle, 'R', 1, true, true, false, 1, "S@0", 0},
    {"RunPauses", toRun, 'R', 2, true, true, true, 3, "S@0 P@3", 0},
    {"PauseResumesWithoutLabel", toPaused, 'R', 1, true, true, false, 5, "S@0 P@3", 0},
    {"RunHolds", toRun, 'R', 3, true, true, false, 4, "S@0 H@3", 0},
    {"RunContinues", toRun, 'R', 1, true, true, false, 4, "S@0 C@3", 0},
    {"RunEndsAndStops", toRun, 'R', 0, false, false, false, 3, "S@0 E@3", 1},
    {"PauseEndsInManualRecording", toPaused, 'R', 0, true, false, false, 4, "S@0 P@3 E@3", 0},
    {"RunNumbersAnEvent", toRun, 'E', 2, true, true, false, 4, "S@0 1@3", 0},
    {"PausedRunStillNumbersAnEvent", toPaused, 'E', 2, true, true, true, 3, "S@0 P@3 1@3", 0},
    {"RunMarksEventEight", toRun, 'E', 8, true, true, false, 4, "S@0 M@3", 0},
    {"RunShowsAHoldBlock", toRun, 'H', 1, true, true, false, 4, "S@0 H@3", 0},
    {"RunShowsAContinueBlock", toRun, 'H', 2, true, true, false, 4, "S@0 C@3", 0},
};

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
    rig.feed(news(t.newsType, t.newsValue));
    rig.pairs(2, 'V');

    EXPECT_EQ(rig.intake.Recording(), t.recording);
    EXPECT_EQ(rig.intake.ChartRunActive(), t.runActive);
    EXPECT_EQ(rig.intake.ChartPaused(), t.paused);
    const ChartContent content = contentOf(rig.chart0);
    EXPECT_EQ(content.lastSample, t.lastSample);
    EXPECT_EQ(content.marks.join(' '), t.marks);
    EXPECT_EQ(rig.recordCommands, 1);
    EXPECT_EQ(rig.stopCommands, t.stopCommands);
    EXPECT_TRUE(rig.errors.codes.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(StatusInstrument, RecorderTransition, testing::ValuesIn(kTransitions),
                         [](const testing::TestParamInfo<Transition> &info) {
                             return info.param.name;
                         });

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
    rig.pairs(2, 'V');
    rig.feed(news('E', 3));
    rig.pairs(4, 'U');

    // The end comes two pairs after its event: one takes the end label, one draws it.
    ChartContent content = contentOf(rig.chart0);
    EXPECT_EQ(content.lastSample, 10);
    EXPECT_EQ(content.marks, QStringList({"S@0", "1@3", "P@6", "E@10"}));
    EXPECT_EQ(rig.recordCommands, 1);
    EXPECT_EQ(rig.stopCommands, 1);

    // The next run numbers its events from 1 again.
    rig.feed(news('E', 4));
    rig.pairs(1, 'V');
    rig.feed(news('E', 2));
    rig.pairs(1, 'V');
    EXPECT_EQ(rig.intake.ChartEventNumber(), 1);
    content = contentOf(rig.chart0);
    EXPECT_EQ(content.marks.mid(4), QStringList({"S@11", "1@12"}));
}

TEST(RecorderChart, StartEventIsDecidedByTheNextUvLetter)
{
    {
        SCOPED_TRACE("a second start event starts the run at once");
        IntakeRig rig;
        rig.feed(news('E', 4) + news('E', 4));
        rig.pairs(1, 'U');
        EXPECT_EQ(contentOf(rig.chart0).marks, QStringList({"S@0"}));
    }
    {
        SCOPED_TRACE("a U block disarms, so that the next start event only arms again");
        IntakeRig rig;
        rig.feed(news('E', 4));
        rig.pairs(1, 'U');
        rig.feed(news('E', 4));
        rig.pairs(2, 'V');
        const ChartContent content = contentOf(rig.chart0);
        EXPECT_EQ(content.lastSample, 1);
        EXPECT_EQ(content.marks, QStringList({"S@0"}));
    }
    {
        SCOPED_TRACE("with status blocks the letter still decides the start, and pauses nothing");
        IntakeRig rig;
        rig.feed(fBlock() + news('E', 4));
        rig.pairs(1, 'V');
        rig.pairs(3, 'U');
        const ChartContent content = contentOf(rig.chart0);
        EXPECT_EQ(content.lastSample, 3);
        EXPECT_EQ(content.marks, QStringList({"S@0"}));
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
    EXPECT_FALSE(rig.intake.ChartPaused());
    const ChartContent content = contentOf(rig.chart0);
    EXPECT_EQ(content.lastSample, 3);
    EXPECT_TRUE(content.marks.isEmpty());
}

TEST(RecorderChart, NumberArrivingWhileTheEndWaitsIsDrawnFirst)
{
    IntakeRig rig;
    toRun(rig);
    rig.feed(news('R', 0) + news('E', 2));
    rig.pairs(3, 'U');
    EXPECT_EQ(contentOf(rig.chart0).marks, QStringList({"S@0", "1@3", "E@4"}));
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
        EXPECT_EQ(contentOf(rig.chart0).methodTexts, waited ? QList<qint64>{} : QList<qint64>{3});
        EXPECT_FALSE(rig.intake.WaitForMethod());
        EXPECT_FALSE(rig.intake.TimerStopWaitForMethod().isActive());
        EXPECT_EQ(contentOf(rig.chart5).methodTexts, QList<qint64>{5});
    }
    IntakeRig quiet;
    quiet.DataLogging = false;
    quiet.pairs(4, 'U');
    quiet.feed(StreamBytes::method("Wash 5 CV"));
    EXPECT_TRUE(contentOf(quiet.chart5).methodTexts.isEmpty());
}

TEST(MethodText, WaitEndsWhenItsTimerFires)
{
    IntakeRig rig;
    toRun(rig);
    rig.feed(news('R', 0));
    rig.pairs(1, 'V');
    ASSERT_TRUE(rig.intake.WaitForMethod());
    EXPECT_EQ(rig.intake.TimerStopWaitForMethod().interval(), 15000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !rig.intake.WaitForMethod(); }, 20000));
    EXPECT_FALSE(rig.intake.TimerStopWaitForMethod().isActive());
}

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

    EXPECT_EQ(rig.intake.LogSampleCount(), 9);
    const ChartContent log = contentOf(rig.chart5);
    EXPECT_FLOAT_EQ(rig.intake.LogTime(), rig.chart5.GetLastTime());
    EXPECT_EQ(log.marks, QStringList({"S@1", "E@4", "S@6"}));
    // The recorder took only the runs, on a time of its own.
    EXPECT_EQ(contentOf(rig.chart0).marks, QStringList({"S@0", "E@3", "S@4"}));
}

TEST(LogChart, LetterInstrumentPausesTheLogOneSampleLateAndResumesOnV)
{
    IntakeRig rig;
    rig.feed(news('E', 4));
    rig.pairs(2, 'V');
    rig.pairs(4, 'U');
    EXPECT_EQ(rig.intake.LogSampleCount(), 4);
    rig.feed(news('E', 2));
    rig.pairs(1, 'V');
    EXPECT_FALSE(rig.intake.LogPaused());
    EXPECT_EQ(contentOf(rig.chart5).marks, QStringList({"S@0", "P@2", "1@3"}));
}

TEST(LogChart, PausedLogHoldsEvenItsEndUntilARunStatusReleasesIt)
{
    IntakeRig rig;
    rig.feed(fBlock() + news('R', 1));
    rig.pairs(2, 'V');
    rig.feed(news('R', 2));
    rig.pairs(1, 'V');
    const float pausedTime = rig.intake.LogTime();
    rig.feed(news('E', 2) + news('E', 3));
    rig.pairs(3, 'U');
    EXPECT_EQ(rig.intake.LogSampleCount(), 3);
    EXPECT_EQ(rig.intake.LogTime(), pausedTime);

    rig.feed(news('R', 1));
    rig.pairs(3, 'U');
    EXPECT_EQ(contentOf(rig.chart5).marks, QStringList({"S@0", "P@1", "1@2", "E@3"}));
    EXPECT_FALSE(rig.intake.LogRunActive());
}

TEST(LogChart, LoggingOffFreezesTimeAndNumbersButFollowsTheRun)
{
    IntakeRig rig;
    rig.DataLogging = false;
    rig.feed(fBlock() + news('R', 1));
    rig.pairs(2, 'V');
    rig.feed(news('E', 2));
    rig.pairs(2, 'V');
    rig.feed(news('R', 0));
    rig.pairs(1, 'U');
    EXPECT_FALSE(rig.intake.LogRunActive());
    EXPECT_EQ(rig.intake.LogSampleCount(), 0);
    EXPECT_EQ(rig.intake.LogTime(), 0.0f);
    EXPECT_EQ(rig.intake.LogEventNumber(), 0);

    // The label still waiting is drawn by the first sample once logging is back.
    rig.DataLogging = true;
    rig.pairs(2, 'U');
    EXPECT_EQ(contentOf(rig.chart5).marks, QStringList({"E@0"}));
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
    EXPECT_EQ(rig.errors.codes, (QList<qint32>{-15, -15}));

    rig.pairs(3, 'V');
    EXPECT_EQ(rig.errors.codes.size(), 2);
    EXPECT_EQ(contentOf(rig.chart0).lastSample, 2);
    EXPECT_EQ(contentOf(rig.chart5).lastSample, 2);
    EXPECT_EQ(contentOf(rig.chart0).marks, QStringList({"S@0"}));
}

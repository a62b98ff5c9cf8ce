#include "FailingAllocation.h"
#include "IntakeRig.h"
#include "chart/RunFileReader.h"
#include "chart/SampleStore.h"

#include <QHash>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <gtest/gtest.h>

using namespace StreamBytes;

namespace {

/// Plays a stream given as steps: "U3" and "V2" are pairs whose UV block has that letter, one
/// tick each; "off" and "on" switch logging; "T" is the method wait's timer firing; a step after
/// "!" runs out of memory for anything far above small allocations, as the charts' sample blocks;
/// any other step is one tick of blocks joined by "+": "F", "M" (a method text) or news ("E4").
void play(IntakeRig &rig, const QString &script)
{
    for (const QString &step : script.split(' ', Qt::SkipEmptyParts)) {
        const char first = step.front().toLatin1();
        if (first == '!') {
            const FailingAllocation outOfMemory(64 * 1024);
            play(rig, step.mid(1));
        } else if (first == 'U' || first == 'V') {
            rig.pairs(step.mid(1).toInt(), first);
        } else if (step == "off" || step == "on") {
            rig.DataLogging = step == "on";
        } else if (step == "T") {
            rig.intake.TimerStopWaitForMethod_Timer();
        } else {
            QByteArray bytes;
            for (const QString &block : step.split('+'))
                bytes += block == "F"   ? sample('F', 0.0f)
                         : block == "M" ? method("Gradient 0-100% B")
                                        : status(block.front().toLatin1(), block.mid(1).toUInt());
            rig.feed(bytes);
        }
    }
}

/// What `chart` saves: its marks as "label@sample", the samples its method texts stand on, and
/// the index of its last sample.
std::array<QString, 3> contentOf(Quillchart &chart)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("run.chd");
    const auto run = chart.SaveDataFile(path) ? RunFileReader::read(path) : std::nullopt;
    if (!run)
        return {"unsaved", "unsaved", "unsaved"};
    const auto sampleAt = [](float time) {
        return QString::number(qRound64(time / SampleStore::timeOf(1)));
    };
    QStringList marks;
    for (const EventMark &mark : run->annotations.eventMarks())
        marks << mark.label + '@' + sampleAt(mark.time);
    QStringList texts;
    for (const MethodText &text : run->annotations.methodTexts())
        texts << sampleAt(text.time);
    return {marks.join(' '), texts.join(' '), QString::number(run->store.count() - 1)};
}

/// What the rig shows, by name: "marks", "methods" and "last" of the recorder, the same with
/// "log" in front of the log, the intake's states and counts, and the errors it reported.
QHash<QString, QString> observed(IntakeRig &rig)
{
    const SampleIntake &in = rig.intake;
    const auto [marks, methods, last] = contentOf(rig.chart0);
    const auto [logMarks, logMethods, logLast] = contentOf(rig.chart5);
    const auto number = [](qint64 value) { return QString::number(value); };
    const auto flag = [](bool on, const QString &name) { return on ? name + ' ' : QString(); };
    QStringList errors;
    for (const qint32 code : rig.errors.codes)
        errors << number(code);
    return {
        {"state", (flag(in.Recording(), "recording") + flag(in.ChartRunActive(), "run") +
                   flag(in.ChartPaused(), "paused"))
                      .trimmed()},
        {"logState", (flag(in.LogRunActive(), "run") + flag(in.LogPaused(), "paused")).trimmed()},
        {"marks", marks},
        {"methods", methods},
        {"last", last},
        {"logMarks", logMarks},
        {"logMethods", logMethods},
        {"logLast", logLast},
        {"logged", number(in.LogSampleCount())},
        {"logTime", number(qRound64(in.LogTime() / SampleStore::timeOf(1)))},
        {"number", number(in.ChartEventNumber())},
        {"logNumber", number(in.LogEventNumber())},
        {"waiting", number(in.WaitForMethod() || in.TimerStopWaitForMethod().isActive())},
        {"records", number(rig.recordCommands)},
        {"stops", number(rig.stopCommands)},
        {"errors", errors.join(' ')},
    };
}

struct Case
{
    const char *name;
    const char *script;
    /// "key=value" pairs, separated by ", "; no errors unless they are named.
    const char *expected;
};

void PrintTo(const Case &c, std::ostream *out)
{
    *out << c.name;
}

// An instrument with status blocks: a run starts with "R" 1 after two idle pairs, takes three
// and then meets the news under test. The end label of a paused run stands on the paused
// sample; the session goes on by hand. An instrument without them starts a run by "E" 4, pauses
// it by a "U" letter one pair late and ends it two pairs after "E" 3: one takes the end label,
// one draws it. Log labels stand one sample behind: each is drawn at the time of the sample
// before.
const Case kCases[] = {
    {"IdleStartsARun", "F U2 R1 V2", "state=recording run, last=1, marks=S@0, records=1, stops=0"},
    {"RunPauses", "F U2 R1 V3 R2 V2",
     "state=recording run paused, last=3, marks=S@0 P@3, records=1, stops=0"},
    {"PauseResumesWithoutLabel", "F U2 R1 V3 R2 V3 R1 V2",
     "state=recording run, last=5, marks=S@0 P@3, records=1, stops=0"},
    {"RunHolds", "F U2 R1 V3 R3 V2", "state=recording run, last=4, marks=S@0 H@3, stops=0"},
    {"RunContinues", "F U2 R1 V3 R1 V2", "state=recording run, last=4, marks=S@0 C@3, stops=0"},
    {"RunEndsAndStops", "F U2 R1 V3 R0 V2", "state=, last=3, marks=S@0 E@3, records=1, stops=1"},
    {"PauseEndsInManualRecording", "F U2 R1 V3 R2 V3 R0 V2",
     "state=recording, last=4, marks=S@0 P@3 E@3, records=1, stops=0"},
    {"RunNumbersAnEvent", "F U2 R1 V3 E2 V2", "state=recording run, last=4, marks=S@0 1@3"},
    {"PausedRunStillNumbersAnEvent", "F U2 R1 V3 R2 V3 E2 V2",
     "state=recording run paused, last=3, marks=S@0 P@3 1@3"},
    {"RunMarksEventEight", "F U2 R1 V3 E8 V2", "state=recording run, last=4, marks=S@0 M@3"},
    {"RunShowsAHoldBlock", "F U2 R1 V3 H1 V2", "last=4, marks=S@0 H@3"},
    {"RunShowsAContinueBlock", "F U2 R1 V3 H2 V2", "last=4, marks=S@0 C@3"},
    {"NumberArrivingWhileTheEndWaitsIsDrawnFirst", "F U2 R1 V3 R0+E2 U3",
     "marks=S@0 1@3 E@4, stops=1"},
    {"PauseOutsideARunLeavesNoLabelAndNoPause", "F+P1 U2 R2 U2",
     "state=recording, last=3, marks=, records=1"},
    {"LetterRunFromStartEventToEndThenTheNextNumbersFromOne",
     "U3 E4 V3 E2 V2 U5 V2 E3 U4 E4 V1 E2 V1",
     "marks=S@0 1@3 P@6 E@10 S@11 1@12, number=1, records=2, stops=1"},
    {"SecondStartEventStartsTheRunAtOnce", "E4+E4 U1", "marks=S@0"},
    {"UBlockDisarmsSoTheNextStartEventOnlyArms", "E4 U1 E4 V2", "last=1, marks=S@0"},
    {"WithStatusBlocksTheLetterDecidesTheStartAndPausesNothing", "F+E4 V1 U3", "last=3, marks=S@0"},
    {"MethodTextWithinTheWaitReachesRecorderAndLog", "F U2 R1 V3 R0 U1 M",
     "methods=3, logMethods=5, waiting=0"},
    {"MethodTextAfterTheWaitReachesOnlyTheLog", "F U2 R1 V3 R0 U1 T M",
     "methods=, logMethods=5, waiting=0"},
    {"MethodTextNotLoggedWhileLoggingIsOff", "off U4 M", "logMethods="},
    {"LogTakesEveryPairAndRunsItsTimeOnAcrossRuns", "F U2 R1 V3 R0 U2 R1 V2",
     "logged=9, logTime=8, logMarks=S@1 E@4 S@6, marks=S@0 E@3 S@4"},
    {"LetterLogPausesOneSampleLate", "E4 V2 U4", "logged=4"},
    {"LetterLogResumesOnV", "E4 V2 U4 E2 V1", "logState=run, logMarks=S@0 P@2 1@3"},
    {"PausedLogHoldsEvenItsEnd", "F+R1 V2 R2 V1 E2+E3 U3", "logged=3, logTime=2"},
    {"RunStatusReleasesAPausedLog", "F+R1 V2 R2 V1 E2+E3 U3 R1 U3",
     "logState=, logMarks=S@0 P@1 1@2 E@3"},
    {"LoggingOffFreezesTimeAndNumbersButFollowsTheRun", "off F+R1 V2 E2 V2 R0 U1",
     "logState=, logged=0, logTime=0, logNumber=0"},
    {"LabelStillWaitingIsDrawnOnceLoggingIsBack", "off F+R1 V2 E2 V2 R0 U1 on U2", "logMarks=E@0"},
    {"RefusedSamplesAreReportedAndTheIntakeCarriesOn", "F+R1 !V1 V3",
     "errors=-15 -15, last=2, logLast=2, marks=S@0"},
};

using Intake = testing::TestWithParam<Case>;

} // namespace

TEST_P(Intake, LeavesWhatTheStreamAnnounces)
{
    IntakeRig rig;
    play(rig, QString::fromLatin1(GetParam().script));
    const QHash<QString, QString> seen = observed(rig);
    QHash<QString, QString> expected{{"errors", ""}};
    for (const QString &pair : QString::fromLatin1(GetParam().expected).split(", "))
        expected.insert(pair.section('=', 0, 0), pair.section('=', 1));
    for (const auto &[key, value] : expected.asKeyValueRange())
        EXPECT_EQ(seen.value(key, "no such key"), value) << key.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Streams, Intake, testing::ValuesIn(kCases),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(MethodText, WaitEndsWhenItsTimerFires)
{
    IntakeRig rig;
    play(rig, "F U2 R1 V3 R0 V1");
    ASSERT_TRUE(rig.intake.WaitForMethod());
    EXPECT_EQ(rig.intake.TimerStopWaitForMethod().interval(), 15000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !rig.intake.WaitForMethod(); }, 20000));
    EXPECT_FALSE(rig.intake.TimerStopWaitForMethod().isActive());
}

#include "Pty.h"
#include "RunOracle.h"
#include "SimManifest.h"
#include "SimulatorRun.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"
#include "ScriptedDialogs.h"
#include "view/frmMain.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <bit>
#include <gtest/gtest.h>
#include <optional>

namespace {

/// A few seconds of each state per run keep a two-run scenario near a minute of real time.
const QString kScenario =
    QStringLiteral("--runs 2 --run-minutes 0.3 --idle-seconds 3 --events 2 --labels 1 --pauses 1 "
                   "--pause-seconds 3 --holds 1 --hold-seconds 3 --seed 11");
constexpr int kPlayTimeoutMs = 150000;
/// Two ticks of the decoder's timer: the last bytes taken are decoded by then.
constexpr int kSettleMs = 1500;
constexpr int kMethodWaitMs = 15000;
/// The port raises a receive event once it holds this many bytes.
constexpr qint64 kReceiveThreshold = 50;
constexpr double kMinutesPerSample = 1.0 / 300.0;
/// Far below one sample's 1/300 minute, far above a float's rounding at these times.
constexpr double kTimeTolerance = 1e-5;

/// COM 1 on the simulator's pseudo-terminal while the window starts.
struct Com1OnSimulator
{
    explicit Com1OnSimulator(const QString &path)
    {
        qputenv("OSTREL_COMPORTS", path.toLocal8Bit());
    }
    ~Com1OnSimulator() { qputenv("OSTREL_COMPORTS", ""); }
};

/// A method text reaching the recorder chart, seen from outside between decoding passes.
struct MethodArrival
{
    bool awaited = false;
    qint64 msAfterRunEnd = -1;
    bool waitOver = false;
};

/// What the window made of a whole scenario.
struct Recorded
{
    QList<ManifestBlock> blocks;
    qint64 streamLength = 0;
    /// Bytes the recorder took from the line; the rest waits below the receive threshold.
    qint64 byteLimit = 0;
    std::optional<RunData> recorderChart;
    std::optional<RunData> logChart;
    qint32 logSampleCount = 0;
    float logTime = 0.0f;
    QList<MethodArrival> methodArrivals;
    /// Titles of modal dialogs that came up; the link must never be lost here.
    QStringList dialogs;
};

std::optional<RunData> savedRun(Quillchart &chart, const QString &path)
{
    if (!chart.SaveDataFile(path))
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return RunFileCodec::decode(file.readAll(), RunFileCodec::Kind::Data);
}

/// Plays `kind` through the real window on COM 1 until the simulator is done.
void recordScenario(const QString &kind, Recorded &out)
{
    SimulatorRun simulator(QStringList{"--kind", kind} + kScenario.split(' '));
    ASSERT_FALSE(simulator.ptyPath().isEmpty()) << simulator.errorOutput().toStdString();
    Com1OnSimulator com1(simulator.ptyPath());
    ScriptedDialogs boxes;
    frmMain window;
    window.show();

    // A modal dialog would hold the test in its own loop: note it and close it.
    QTimer modalWatch;
    QObject::connect(&modalWatch, &QTimer::timeout, [&] {
        if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
            out.dialogs << dialog->windowTitle();
            dialog->reject();
        }
    });
    modalWatch.start(100);

    // Between decoding passes: when the wait for a method text begins and when one arrives.
    bool waiting = false;
    QElapsedTimer sinceRunEnd;
    qsizetype methodChars = 0;
    const auto watchMethodWait = [&] {
        const bool nowWaiting = window.intake.WaitForMethod;
        if (nowWaiting && !waiting)
            sinceRunEnd.start();
        const qsizetype chars = window.Chart[0]->GetMethodText().size();
        if (chars != methodChars) {
            out.methodArrivals.append({waiting, waiting ? sinceRunEnd.elapsed() : -1,
                                       !nowWaiting && !window.TimerStopWaitForMethod.isActive()});
            methodChars = chars;
        }
        waiting = nowWaiting;
    };
    const bool played = waitFor(
        [&] {
            watchMethodWait();
            return simulator.finished();
        },
        kPlayTimeoutMs);
    ASSERT_TRUE(played) << "the simulator did not finish its runs";
    ASSERT_TRUE(simulator.exitedCleanly()) << simulator.errorOutput().toStdString();
    waitFor(
        [&] {
            watchMethodWait();
            return false;
        },
        kSettleMs);

    const SimManifest manifest(simulator.manifestPath());
    ASSERT_TRUE(manifest.isValid());
    out.blocks = manifest.blocks();
    out.streamLength = manifest.streamLength();
    out.byteLimit = out.streamLength - window.ComPort.InBufferCount();
    out.logSampleCount = window.intake.LogSampleCount;
    out.logTime = window.intake.LogTime;
    const QTemporaryDir files;
    out.recorderChart = savedRun(*window.Chart[0], files.filePath("recorder.chd"));
    out.logChart = savedRun(*window.Chart[5], files.filePath("log.chd"));
    ASSERT_TRUE(out.recorderChart && out.logChart) << "a chart could not be saved and read back";
}

QString describe(const ExpectedChart &expected, qint64 index)
{
    return QStringLiteral("sample %1 (simulator pair %2)").arg(index).arg(expected.pairs[index]);
}

/// Every sample bit for bit, every mark and method text with its time.
void expectChartHolds(const RunData &run, const ExpectedChart &expected)
{
    ASSERT_EQ(run.store.count(), expected.pairs.size());
    for (qint64 i = 0; i < run.store.count(); ++i) {
        const SamplePair &pair = run.store.at(i);
        if (std::bit_cast<quint32>(pair.uv) != std::bit_cast<quint32>(expected.uv[i]) ||
            std::bit_cast<quint32>(pair.conductivity) !=
                std::bit_cast<quint32>(expected.conductivity[i])) {
            ADD_FAILURE() << describe(expected, i).toStdString() << " holds " << pair.uv << ", "
                          << pair.conductivity << " instead of " << expected.uv[i] << ", "
                          << expected.conductivity[i];
            break;
        }
    }

    const std::vector<EventMark> &marks = run.annotations.eventMarks();
    ASSERT_EQ(qsizetype(marks.size()), expected.marks.size());
    for (qsizetype i = 0; i < expected.marks.size(); ++i) {
        const ExpectedMark &want = expected.marks[i];
        const QString where = "mark " + want.text + " on " + describe(expected, want.position);
        EXPECT_EQ(marks[i].label, want.text) << where.toStdString();
        EXPECT_EQ(marks[i].color, want.color) << where.toStdString();
        EXPECT_EQ(marks[i].height, want.height) << where.toStdString();
        EXPECT_NEAR(marks[i].time, double(want.position) * kMinutesPerSample, kTimeTolerance)
            << where.toStdString();
    }

    const std::vector<MethodText> &texts = run.annotations.methodTexts();
    ASSERT_EQ(qsizetype(texts.size()), expected.methodTexts.size());
    for (qsizetype i = 0; i < expected.methodTexts.size(); ++i) {
        const ExpectedMethodText &want = expected.methodTexts[i];
        // The date and time of arrival on a line of its own, then the text as sent.
        const QString tail = "\r\n" + want.text + "\r\n";
        ASSERT_TRUE(texts[i].text.endsWith(tail)) << texts[i].text.toStdString();
        const QString stamp = texts[i].text.chopped(tail.size());
        EXPECT_FALSE(stamp.isEmpty() || stamp.contains('\n')) << stamp.toStdString();
        EXPECT_NEAR(texts[i].time, double(want.position) * kMinutesPerSample, kTimeTolerance)
            << "method text " << i;
    }
}

/// The recorder chart holds exactly the runs, each method text came within the wait, and the
/// log chart took every pair of the stream, its clock running on from run to run.
void expectRecordedFaithfully(const Recorded &recorded)
{
    EXPECT_TRUE(recorded.dialogs.isEmpty()) << recorded.dialogs.join(", ").toStdString();
    EXPECT_LT(recorded.streamLength - recorded.byteLimit, kReceiveThreshold)
        << "more than the bytes below the receive threshold stayed in the port";
    const RunOracle oracle(recorded.blocks, recorded.byteLimit);

    const ExpectedChart &recorder = oracle.recorder();
    ASSERT_EQ(recorder.methodTexts.size(), 2) << "both runs end before the stream does";
    {
        SCOPED_TRACE("recorder chart");
        expectChartHolds(*recorded.recorderChart, recorder);
    }
    ASSERT_EQ(recorded.methodArrivals.size(), recorder.methodTexts.size());
    for (const MethodArrival &arrival : recorded.methodArrivals) {
        EXPECT_TRUE(arrival.awaited) << "the method text came outside the wait after a run";
        EXPECT_LT(arrival.msAfterRunEnd, kMethodWaitMs);
        EXPECT_TRUE(arrival.waitOver) << "the method text did not end the wait";
    }

    const ExpectedChart &log = oracle.log();
    {
        SCOPED_TRACE("log chart");
        expectChartHolds(*recorded.logChart, log);
    }
    EXPECT_EQ(recorded.logSampleCount, log.pairs.size());
    EXPECT_NEAR(recorded.logTime, double(log.pairs.size() - 1) * kMinutesPerSample, kTimeTolerance);
    EXPECT_GT(log.pairs.size(), recorder.pairs.size()) << "idle pairs go to the log only";
}

/// Simulator pairs that each pause of the stream falls on: the pair an "R" 2 precedes, or, from
/// an instrument that sends no status blocks, the first "U" pair after a "V" one that no run
/// end ("E" 3) came between.
QList<qint64> pauseStarts(const QList<ManifestBlock> &blocks)
{
    QList<qint64> byStatus;
    QList<qint64> byLetters;
    bool running = false;
    for (const ManifestBlock &block : blocks) {
        if (block.type == 'R' && block.value == 2) {
            byStatus << block.pair;
        } else if (block.type == 'E' && block.value == 3) {
            running = false;
        } else if (block.type == 'V') {
            running = true;
        } else if (block.type == 'U' && running) {
            byLetters << block.pair;
            running = false;
        }
    }
    return byStatus.isEmpty() ? byLetters : byStatus;
}

/// The simulator pairs under the recorder chart's marks of one text, read from the chart.
QList<qint64> pairsMarked(const Recorded &recorded, const ExpectedChart &expected,
                          const QString &text)
{
    QList<qint64> pairs;
    for (const EventMark &mark : recorded.recorderChart->annotations.eventMarks()) {
        const qint64 index = qRound64(double(mark.time) / kMinutesPerSample);
        if (mark.label == text && index < expected.pairs.size())
            pairs << expected.pairs[index];
    }
    return pairs;
}

/// The scenario brings every kind of mark, so that none is compared vacuously.
void expectEveryMarkKind(const ExpectedChart &expected)
{
    QStringList texts;
    for (const ExpectedMark &mark : expected.marks)
        texts << mark.text;
    for (const char *text : {"S", "1", "2", "P", "H", "C", "M", "E"})
        EXPECT_EQ(texts.count(text), 2) << text << " in " << texts.join(' ').toStdString();
}

} // namespace

TEST(RecorderRun, StatusKindRunsAndLogMatchTheManifest)
{
    Recorded recorded;
    ASSERT_NO_FATAL_FAILURE(recordScenario(QStringLiteral("status"), recorded));
    expectRecordedFaithfully(recorded);

    const RunOracle oracle(recorded.blocks, recorded.byteLimit);
    expectEveryMarkKind(oracle.recorder());
    EXPECT_EQ(pairsMarked(recorded, oracle.recorder(), "P"), pauseStarts(recorded.blocks))
        << "the pause label stands on the pair the pause precedes";
}

TEST(RecorderRun, LettersKindRunsAndLogMatchTheManifest)
{
    Recorded recorded;
    ASSERT_NO_FATAL_FAILURE(recordScenario(QStringLiteral("letters"), recorded));
    expectRecordedFaithfully(recorded);

    const RunOracle oracle(recorded.blocks, recorded.byteLimit);
    expectEveryMarkKind(oracle.recorder());
    QList<qint64> oneLater;
    for (const qint64 pair : pauseStarts(recorded.blocks))
        oneLater << pair + 1;
    EXPECT_EQ(pairsMarked(recorded, oracle.recorder(), "P"), oneLater)
        << "read from the letters, the pause label comes one pair later";
}

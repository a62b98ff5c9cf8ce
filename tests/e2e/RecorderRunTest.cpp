#include "ModalDriver.h"
#include "Pty.h"
#include "ScriptedDialogs.h"
#include "SimManifest.h"
#include "SimulatorRun.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"
#include "shell/Startup.h"
#include "shell/frmStartup.h"
#include "view/frmMain.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

namespace {

/// Two short runs with every kind of mark, in just under a minute of real time: the recorder
/// decodes in the pauses between receive events, as on a real line.
const QStringList kScenario = QStringLiteral("--runs 2 --run-minutes 0.25 --idle-seconds 2 "
                                             "--events 2 --labels 1 --pauses 1 --pause-seconds 3 "
                                             "--holds 1 --hold-seconds 3 --seed 11")
                                  .split(' ');
constexpr qint64 kMethodWaitMs = 15000;
/// The port raises a receive event once it holds this many bytes.
constexpr qint64 kReceiveThreshold = 50;
constexpr double kSamplesPerMinute = 300.0;

struct Mark
{
    QString label;
    qint64 pair;
    bool operator==(const Mark &) const = default;
};

/// A chart read back from its file: each sample named by the simulator's pair whose bytes it
/// carries bit for bit (-1 when none does), and its marks and method texts on those pairs.
struct ChartOnPairs
{
    QList<qint64> pairs;
    QList<Mark> marks;
    QStringList methods;
};

/// What the window made of a whole scenario, and the blocks of the bytes it took.
struct Recorded
{
    QList<ManifestBlock> blocks;
    ChartOnPairs recorder;
    ChartOnPairs log;
    float logTime = 0.0f;
    /// For each method text reaching the recorder chart: ms from its run's end, -1 when it
    /// came outside the wait that follows a run or did not end it.
    QList<qint64> methodWaits;
    /// Titles of modal dialogs that came up; the link must never be lost here.
    QStringList dialogs;
};

bool readBack(Quillchart &chart, const QHash<quint64, qint64> &pairs, ChartOnPairs &out)
{
    const QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("chart.chd")));
    if (!chart.SaveDataFile(file.fileName()) || !file.open(QIODevice::ReadOnly))
        return false;
    const std::optional<RunData> run =
        RunFileCodec::decode(file.readAll(), RunFileCodec::Kind::Data);
    if (!run)
        return false;
    out.pairs = pairsOf(run->store, pairs);
    const auto pairAt = [&](float minutes) {
        return out.pairs.value(qRound64(double(minutes) * kSamplesPerMinute), -1);
    };
    for (const EventMark &mark : run->annotations.eventMarks())
        out.marks.append({mark.label, pairAt(mark.time)});
    for (const MethodText &text : run->annotations.methodTexts())
        out.methods << QString::number(pairAt(text.time)) + ": " + text.text.section("\r\n", 1);
    return true;
}

/// Plays `kind` through the real window on COM 1 until the simulator is done.
void recordScenario(const QString &kind, Recorded &out)
{
    SimulatorRun simulator(QStringList{"--kind", kind} + kScenario);
    ASSERT_FALSE(simulator.ptyPath().isEmpty()) << simulator.errorOutput().toStdString();
    const ComPorts com1({simulator.ptyPath()});
    ScriptedDialogs boxes;
    frmMain window;
    frmStartup splash;
    Startup startup(window, splash);
    window.setShell(&startup);
    ASSERT_TRUE(startup.openPort());
    {
        ModalDriver name;
        name.answerWith([](QDialog &form) { form.reject(); });
        ASSERT_TRUE(name.activate(window));
    }

    // A modal dialog would hold the test in its own loop: note it and close it. Between
    // decoding passes, note when the wait for a method text begins and when one arrives.
    bool waiting = false;
    QElapsedTimer sinceRunEnd;
    qsizetype methodChars = 0;
    const auto watch = [&] {
        if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
            out.dialogs << dialog->windowTitle();
            dialog->reject();
        }
        const bool nowWaiting = window.intake.WaitForMethod();
        if (nowWaiting && !waiting)
            sinceRunEnd.start();
        const qsizetype chars = window.Chart[0]->GetMethodText().size();
        if (chars != methodChars) {
            const bool ended = !nowWaiting && !window.intake.TimerStopWaitForMethod().isActive();
            out.methodWaits.append(waiting && ended ? sinceRunEnd.elapsed() : -1);
            methodChars = chars;
        }
        waiting = nowWaiting;
    };
    QTimer watcher;
    QObject::connect(&watcher, &QTimer::timeout, watch);
    watcher.start(20);
    ASSERT_TRUE(waitFor([&] { return simulator.finished(); }, 120000))
        << "the simulator did not finish its runs";
    ASSERT_TRUE(simulator.exitedCleanly()) << simulator.errorOutput().toStdString();
    // Two ticks of the decoder's timer: the last bytes taken are decoded by then.
    waitFor([] { return false; }, 1500);

    const qint64 left = window.link.ComPort.InBufferCount();
    ASSERT_LT(left, kReceiveThreshold) << "bytes beyond those below the receive threshold stayed";
    out.blocks = readManifest(simulator.manifestPath());
    ASSERT_FALSE(out.blocks.isEmpty());
    const qint64 taken = out.blocks.last().end() - left;
    out.blocks.removeIf([&](const ManifestBlock &block) { return block.end() > taken; });
    out.logTime = window.intake.LogTime();
    const QHash<quint64, qint64> pairs = pairsByBits(out.blocks);
    ASSERT_TRUE(readBack(*window.Chart[0], pairs, out.recorder) &&
                readBack(*window.Chart[5], pairs, out.log));
}

/// What the manifest says the charts hold: the pairs of the log and of the recorder, and the
/// marks the stream announces.
struct Expected
{
    QList<Mark> marks;
    QList<qint64> logged;
    QList<qint64> recorded;
};

/// Each mark stands on the pair its block precedes. What the recorder reads from the UV letters
/// (the end after an "E" 3, the pause of an instrument that sends no status blocks) stands one
/// pair later. Two announcements of one mark on one pair (a hold by "R" 3 and "H" 1, its end by
/// "H" 2 and "R" 1) make one mark. The log takes every pair but those after a pause mark's pair
/// up to the instrument's next running ("V") pair; the recorder those from each "S" to its "E".
Expected expectedFrom(const QList<ManifestBlock> &blocks)
{
    const bool statusBlocks = std::any_of(blocks.begin(), blocks.end(),
                                          [](const ManifestBlock &b) { return b.type == 'R'; });
    Expected out;
    int number = 0;
    bool running = false;
    bool paused = false;
    bool logPaused = false;
    qint64 runFrom = std::numeric_limits<qint64>::max();
    qint64 runTo = runFrom;
    const auto mark = [&](const QString &label, qint64 pair) {
        if (out.marks.isEmpty() || out.marks.last() != Mark{label, pair})
            out.marks.append({label, pair});
    };
    for (const ManifestBlock &block : blocks) {
        const QString name = block.type + QString::number(block.value);
        if ((name == "R1" && !running) || name == "E4") {
            running = true;
            number = 0;
            mark("S", runFrom = block.pair);
            runTo = std::numeric_limits<qint64>::max();
        } else if (name == "R1") {
            if (!paused)
                mark("C", block.pair);
            paused = false;
        } else if (name == "R0" || name == "E3") {
            running = false;
            mark("E", runTo = block.pair + (name == "E3"));
        } else if (name == "E2") {
            mark(QString::number(++number), block.pair);
        } else if (name == "E8") {
            mark("M", block.pair);
        } else if (name == "R3" || name == "H1" || name == "H2") {
            mark(name == "H2" ? "C" : "H", block.pair);
        } else if (name == "R2" || (!statusBlocks && running && block.type == 'U' && !paused)) {
            paused = true;
            mark("P", block.pair + (block.type == 'U'));
        } else if (!statusBlocks && block.type == 'V') {
            paused = false;
        }
        logPaused = logPaused && block.type != 'V';
        if (block.type != 'C')
            continue;
        if (!logPaused)
            out.logged << block.pair;
        if (!logPaused && block.pair >= runFrom && block.pair <= runTo)
            out.recorded << block.pair;
        logPaused = logPaused || out.marks.contains(Mark{"P", block.pair});
    }
    return out;
}

QString describe(const QList<Mark> &marks)
{
    QStringList texts;
    for (const Mark &mark : marks)
        texts << mark.label + '@' + QString::number(mark.pair);
    return texts.join(' ');
}

class RecorderRun : public ::testing::TestWithParam<const char *>
{
};

} // namespace

TEST_P(RecorderRun, ChartsHoldWhatTheManifestSays)
{
    Recorded recorded;
    ASSERT_NO_FATAL_FAILURE(recordScenario(QString::fromLatin1(GetParam()), recorded));
    EXPECT_TRUE(recorded.dialogs.isEmpty()) << recorded.dialogs.join(", ").toStdString();
    const Expected expected = expectedFrom(recorded.blocks);
    const QString labels = describe(expected.marks);
    for (const char *label : {"S@", "1@", "2@", "P@", "H@", "C@", "M@", "E@"})
        ASSERT_EQ(labels.count(label), 2) << label << " is not compared in both runs";

    EXPECT_EQ(describe(recorded.recorder.marks).toStdString(), labels.toStdString())
        << "one mark per announced event, on its pair";
    const QList<qint64> &logged = recorded.log.pairs;
    EXPECT_EQ(logged, expected.logged) << "the log takes every pair bit for bit but a pause's";
    QList<Mark> logMarks;
    for (const Mark &mark : expected.marks)
        logMarks.append({mark.label, logged.value(logged.indexOf(mark.pair) - 1, -1)});
    EXPECT_EQ(describe(recorded.log.marks).toStdString(), describe(logMarks).toStdString())
        << "the log draws each mark at the time of the pair before";
    EXPECT_NEAR(recorded.logTime, double(logged.size() - 1) / kSamplesPerMinute, 1e-5)
        << "the log's clock runs on from run to run";
    EXPECT_EQ(recorded.recorder.pairs, expected.recorded)
        << "the recorder takes the pairs from each start to its end";

    // Each run's method text after a date line, on the run's last sample; and on the log.
    QStringList ends;
    for (const Mark &mark : expected.marks) {
        if (mark.label == "E")
            ends << QString::number(mark.pair) + ": ";
    }
    QStringList sent;
    for (const ManifestBlock &block : recorded.blocks) {
        if (block.type == 'M')
            sent << ends.value(sent.size()) + block.text + "\r\n";
    }
    ASSERT_EQ(sent.size(), 2) << "each run's method text comes before the stream ends";
    EXPECT_EQ(recorded.recorder.methods.join("|").toStdString(), sent.join("|").toStdString());
    EXPECT_EQ(recorded.log.methods.size(), sent.size());
    EXPECT_EQ(recorded.methodWaits.size(), sent.size());
    for (const qint64 ms : recorded.methodWaits)
        EXPECT_TRUE(ms >= 0 && ms < kMethodWaitMs) << "a method text outside its wait: " << ms;
}

INSTANTIATE_TEST_SUITE_P(BothKinds, RecorderRun, ::testing::Values("status", "letters"),
                         [](const auto &kind) { return std::string(kind.param); });

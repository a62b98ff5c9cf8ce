#include "Pty.h"
#include "ScriptedDialogs.h"
#include "SimManifest.h"
#include "SimulatorRun.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"
#include "shell/Startup.h"
#include "view/frmMain.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTimer>
#include <QtEndian>

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>

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
};

/// A method text reaching the recorder chart, seen from outside between decoding passes.
struct MethodArrival
{
    bool awaited;
    qint64 msAfterRunEnd;
    bool waitOver;
};

/// A chart read back from its file, each sample named by the simulator's pair whose bytes it
/// carries bit for bit (-1 when none does).
struct ChartOnPairs
{
    RunData run;
    QList<qint64> pairs;

    [[nodiscard]] qint64 pairAt(float minutes) const
    {
        return pairs.value(qRound64(double(minutes) * kSamplesPerMinute), -1);
    }
    [[nodiscard]] QList<Mark> marks() const
    {
        QList<Mark> marks;
        for (const EventMark &mark : run.annotations.eventMarks())
            marks.append({mark.label, pairAt(mark.time)});
        return marks;
    }
};

/// What the window made of a whole scenario, and the blocks of the bytes it took.
struct Recorded
{
    QList<ManifestBlock> blocks;
    ChartOnPairs recorder;
    ChartOnPairs log;
    qint32 logSampleCount = 0;
    float logTime = 0.0f;
    QList<MethodArrival> methodArrivals;
    /// Titles of modal dialogs that came up; the link must never be lost here.
    QStringList dialogs;
};

QByteArray wireBytes(float uv, float conductivity)
{
    QByteArray bytes(8, 0);
    qToBigEndian(std::bit_cast<quint32>(uv), bytes.data());
    qToBigEndian(std::bit_cast<quint32>(conductivity), bytes.data() + 4);
    return bytes;
}

/// The stream's pairs by the bytes of their two samples; the scenario never repeats a pair.
QHash<QByteArray, qint64> pairsByBytes(const QList<ManifestBlock> &blocks)
{
    QHash<QByteArray, qint64> pairs;
    QByteArray uv;
    for (const ManifestBlock &block : blocks) {
        if (block.type == 'U' || block.type == 'V')
            uv = block.bytes.mid(2);
        else if (block.type == 'C')
            pairs.insert(uv + block.bytes.mid(2), block.pair);
    }
    return pairs;
}

bool readBack(Quillchart &chart, const QHash<QByteArray, qint64> &pairs, ChartOnPairs &out)
{
    const QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("chart.chd")));
    if (!chart.SaveDataFile(file.fileName()) || !file.open(QIODevice::ReadOnly))
        return false;
    std::optional<RunData> run = RunFileCodec::decode(file.readAll(), RunFileCodec::Kind::Data);
    if (!run)
        return false;
    out.run = std::move(*run);
    for (qint64 i = 0; i < out.run.store.count(); ++i) {
        const SamplePair &sample = out.run.store.at(i);
        out.pairs.append(pairs.value(wireBytes(sample.uv, sample.conductivity), -1));
    }
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
    Startup startup(window);
    window.setShell(&startup);
    ASSERT_TRUE(startup.openPort());
    window.show();

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
            out.methodArrivals.append(
                {waiting, waiting ? sinceRunEnd.elapsed() : -1,
                 !nowWaiting && !window.intake.TimerStopWaitForMethod().isActive()});
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
    out.logSampleCount = window.intake.LogSampleCount();
    out.logTime = window.intake.LogTime();
    const QHash<QByteArray, qint64> pairs = pairsByBytes(out.blocks);
    ASSERT_TRUE(readBack(*window.Chart[0], pairs, out.recorder) &&
                readBack(*window.Chart[5], pairs, out.log));
}

/// The marks the stream announces, in order, each on the pair its block precedes. What the
/// recorder reads from the UV letters (the end after an "E" 3, the pause of an instrument that
/// sends no status blocks) stands one pair later. Two announcements of one mark on one pair
/// (a hold by "R" 3 and "H" 1, its end by "H" 2 and "R" 1) make one mark.
QList<Mark> announcedMarks(const QList<ManifestBlock> &blocks)
{
    const bool statusBlocks = std::any_of(blocks.begin(), blocks.end(),
                                          [](const ManifestBlock &b) { return b.type == 'R'; });
    QList<Mark> marks;
    int number = 0;
    bool running = false;
    bool paused = false;
    const auto mark = [&](const QString &label, qint64 pair) {
        if (marks.isEmpty() || marks.last().label != label || marks.last().pair != pair)
            marks.append({label, pair});
    };
    for (const ManifestBlock &block : blocks) {
        const QString name = block.type + QString::number(block.value);
        if ((name == "R1" && !running) || name == "E4") {
            running = true;
            number = 0;
            mark("S", block.pair);
        } else if (name == "R1") {
            if (!paused)
                mark("C", block.pair);
            paused = false;
        } else if (name == "R0" || name == "E3") {
            running = false;
            mark("E", block.pair + (name == "E3"));
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
    }
    return marks;
}

/// Every pair of the stream but those a pause leaves out: after a pause mark's pair, up to
/// the instrument's next running ("V") pair.
QList<qint64> pairsOutsidePauses(const QList<ManifestBlock> &blocks, const QList<Mark> &marks)
{
    QList<qint64> pairs;
    bool paused = false;
    for (const ManifestBlock &block : blocks) {
        paused = paused && block.type != 'V';
        if (block.type != 'C')
            continue;
        if (!paused)
            pairs << block.pair;
        paused = paused || std::any_of(marks.begin(), marks.end(), [&](const Mark &m) {
                     return m.label == "P" && m.pair == block.pair;
                 });
    }
    return pairs;
}

/// The logged pairs from each "S" of the recorder chart to its "E".
QList<qint64> pairsOfRuns(const QList<qint64> &logged, const QList<Mark> &marks)
{
    QList<qint64> pairs;
    qint64 start = -1;
    for (const Mark &mark : marks) {
        if (mark.label == "S")
            start = mark.pair;
        if (mark.label != "E" || start < 0)
            continue;
        std::copy_if(logged.begin(), logged.end(), std::back_inserter(pairs),
                     [&](qint64 pair) { return pair >= start && pair <= mark.pair; });
        start = -1;
    }
    return pairs;
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
    const QList<Mark> announced = announcedMarks(recorded.blocks);
    const QString labels = describe(announced);
    for (const char *label : {"S@", "1@", "2@", "P@", "H@", "C@", "M@", "E@"})
        ASSERT_EQ(labels.count(label), 2) << label << " is not compared in both runs";

    const QList<Mark> marks = recorded.recorder.marks();
    EXPECT_EQ(describe(marks).toStdString(), labels.toStdString())
        << "one mark per announced event, on its pair";
    const QList<qint64> &logged = recorded.log.pairs;
    EXPECT_EQ(logged, pairsOutsidePauses(recorded.blocks, announced))
        << "the log takes every pair bit for bit but those of a pause";
    QList<Mark> logMarks;
    for (const Mark &mark : announced)
        logMarks.append({mark.label, logged.value(logged.indexOf(mark.pair) - 1, -1)});
    EXPECT_EQ(describe(recorded.log.marks()).toStdString(), describe(logMarks).toStdString())
        << "the log draws each mark at the time of the pair before";
    EXPECT_EQ(recorded.logSampleCount, logged.size());
    EXPECT_NEAR(recorded.logTime, double(logged.size() - 1) / kSamplesPerMinute, 1e-5)
        << "the log's clock runs on from run to run";
    EXPECT_EQ(recorded.recorder.pairs, pairsOfRuns(logged, marks))
        << "the recorder takes the logged pairs from each start to its end";

    // Each run's method text after a date line, on the run's last sample; and on the log.
    QStringList sent;
    auto method = recorded.blocks.cbegin();
    for (const Mark &mark : announced) {
        if (mark.label != "E")
            continue;
        method = std::find_if(method, recorded.blocks.cend(),
                              [](const ManifestBlock &b) { return b.type == 'M'; });
        if (method != recorded.blocks.cend())
            sent << QString::number(mark.pair) + ": " + (method++)->text + "\r\n";
    }
    ASSERT_EQ(sent.size(), 2) << "each run's method text comes before the stream ends";
    QStringList got;
    for (const MethodText &text : recorded.recorder.run.annotations.methodTexts())
        got << QString::number(recorded.recorder.pairAt(text.time)) + ": " +
                   text.text.section("\r\n", 1);
    EXPECT_EQ(got.join("|").toStdString(), sent.join("|").toStdString());
    EXPECT_EQ(qsizetype(recorded.log.run.annotations.methodTexts().size()), sent.size());
    ASSERT_EQ(recorded.methodArrivals.size(), sent.size());
    for (const MethodArrival &arrival : recorded.methodArrivals) {
        EXPECT_TRUE(arrival.awaited) << "the method text came outside the wait after a run";
        EXPECT_LT(arrival.msAfterRunEnd, kMethodWaitMs);
        EXPECT_TRUE(arrival.waitOver) << "the method text did not end the wait";
    }
}

INSTANTIATE_TEST_SUITE_P(BothKinds, RecorderRun, ::testing::Values("status", "letters"),
                         [](const auto &kind) { return std::string(kind.param); });

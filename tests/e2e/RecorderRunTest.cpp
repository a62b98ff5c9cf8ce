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

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>

namespace {

/// Two short runs with every kind of mark, in just under a minute of real time: the recorder
/// decodes in the pauses between receive events, as on a real line.
const QStringList kScenario =
    QStringLiteral("--runs 2 --run-minutes 0.25 --idle-seconds 2 --events 2 "
                   "--labels 1 --pauses 1 --pause-seconds 3 --holds 1 "
                   "--hold-seconds 3 --seed 11")
        .split(' ');
constexpr int kPlayTimeoutMs = 120000;
/// Two ticks of the decoder's timer: the last bytes taken are decoded by then.
constexpr int kSettleMs = 1500;
constexpr qint64 kMethodWaitMs = 15000;
/// The port raises a receive event once it holds this many bytes.
constexpr qint64 kReceiveThreshold = 50;
constexpr double kSamplesPerMinute = 300.0;

/// A method text reaching the recorder chart, seen from outside between decoding passes.
struct MethodArrival
{
    bool awaited = false;
    qint64 msAfterRunEnd = -1;
    bool waitOver = false;
};

struct Mark
{
    QString label;
    qint64 pair;
    bool operator==(const Mark &) const = default;
};

/// A chart read back from its file, each sample named by the simulator's pair it carries bit
/// for bit (-1 when none does).
struct ChartOnPairs
{
    RunData run;
    QList<qint64> pairs;

    [[nodiscard]] qint64 pairAt(float minutes) const
    {
        const qint64 index = qRound64(double(minutes) * kSamplesPerMinute);
        return index < pairs.size() ? pairs[index] : -1;
    }
    [[nodiscard]] QList<Mark> marks() const
    {
        QList<Mark> marks;
        for (const EventMark &mark : run.annotations.eventMarks())
            marks.append({mark.label, pairAt(mark.time)});
        return marks;
    }
};

/// What the window made of a whole scenario.
struct Recorded
{
    QList<ManifestBlock> blocks;
    std::optional<ChartOnPairs> recorder;
    std::optional<ChartOnPairs> log;
    qint32 logSampleCount = 0;
    float logTime = 0.0f;
    QList<MethodArrival> methodArrivals;
    /// Titles of modal dialogs that came up; the link must never be lost here.
    QStringList dialogs;
};

quint64 pairKey(float uv, float conductivity)
{
    return quint64(std::bit_cast<quint32>(uv)) << 32 | std::bit_cast<quint32>(conductivity);
}

float sampleValue(const ManifestBlock &block)
{
    const QByteArray bits = block.bytes.mid(2, 4);
    return std::bit_cast<float>(quint32(quint8(bits[0])) << 24 | quint32(quint8(bits[1])) << 16 |
                                quint32(quint8(bits[2])) << 8 | quint8(bits[3]));
}

/// The pairs of the stream by their bits; the scenario's traces never repeat a pair.
QHash<quint64, qint64> pairsByBits(const QList<ManifestBlock> &blocks)
{
    QHash<quint64, qint64> pairs;
    float uv = 0.0f;
    for (const ManifestBlock &block : blocks) {
        if (block.type == 'U' || block.type == 'V')
            uv = sampleValue(block);
        else if (block.type == 'C')
            pairs.insert(pairKey(uv, sampleValue(block)), block.pair);
    }
    return pairs;
}

std::optional<ChartOnPairs> readBack(Quillchart &chart, const QHash<quint64, qint64> &pairs)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("chart.chd"));
    QFile file(path);
    if (!chart.SaveDataFile(path) || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    std::optional<RunData> run = RunFileCodec::decode(file.readAll(), RunFileCodec::Kind::Data);
    if (!run)
        return std::nullopt;
    ChartOnPairs read{std::move(*run), {}};
    for (qint64 i = 0; i < read.run.store.count(); ++i) {
        const SamplePair &sample = read.run.store.at(i);
        read.pairs.append(pairs.value(pairKey(sample.uv, sample.conductivity), -1));
    }
    return read;
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
    ASSERT_TRUE(waitFor(
        [&] {
            watchMethodWait();
            return simulator.finished();
        },
        kPlayTimeoutMs))
        << "the simulator did not finish its runs";
    ASSERT_TRUE(simulator.exitedCleanly()) << simulator.errorOutput().toStdString();
    waitFor(
        [&] {
            watchMethodWait();
            return false;
        },
        kSettleMs);

    const SimManifest manifest(simulator.manifestPath());
    ASSERT_TRUE(manifest.isValid());
    const qint64 left = window.link.ComPort.InBufferCount();
    ASSERT_LT(left, kReceiveThreshold) << "bytes beyond those below the receive threshold stayed";
    const qint64 taken = manifest.streamLength() - left;
    for (const ManifestBlock &block : manifest.blocks()) {
        if (block.end() <= taken)
            out.blocks.append(block);
    }
    out.logSampleCount = window.intake.LogSampleCount();
    out.logTime = window.intake.LogTime();
    const QHash<quint64, qint64> pairs = pairsByBits(out.blocks);
    out.recorder = readBack(*window.Chart[0], pairs);
    out.log = readBack(*window.Chart[5], pairs);
    ASSERT_TRUE(out.recorder && out.log) << "a chart could not be saved and read back";
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
    const auto mark = [&](const char *label, qint64 pair) {
        const Mark next{QString::fromLatin1(label), pair};
        if (marks.isEmpty() || !(marks.last() == next))
            marks.append(next);
    };
    for (const ManifestBlock &block : blocks) {
        const int value = int(block.value);
        const char type = block.type.toLatin1();
        if ((type == 'R' && value == 1 && !running) || (type == 'E' && value == 4)) {
            running = true;
            number = 0;
            mark("S", block.pair);
        } else if (type == 'R' && value == 1) {
            if (!paused)
                mark("C", block.pair);
            paused = false;
        } else if ((type == 'R' && value == 0) || (type == 'E' && value == 3)) {
            running = false;
            mark("E", block.pair + (type == 'E'));
        } else if (type == 'E' && value == 2) {
            mark(QByteArray::number(++number).constData(), block.pair);
        } else if (type == 'E' && value == 8) {
            mark("M", block.pair);
        } else if ((type == 'R' && value == 3) || (type == 'H' && value == 1)) {
            mark("H", block.pair);
        } else if (type == 'H' && value == 2) {
            mark("C", block.pair);
        } else if (type == 'R' && value == 2) {
            paused = true;
            mark("P", block.pair);
        } else if (!statusBlocks && running && type == 'U' && !paused) {
            paused = true;
            mark("P", block.pair + 1);
        } else if (!statusBlocks && type == 'V') {
            paused = false;
        }
    }
    return marks;
}

/// Every pair of the stream, but for those a pause leaves out: after a pause mark's pair, up
/// to the instrument's next running ("V") pair.
QList<qint64> pairsOutsidePauses(const QList<ManifestBlock> &blocks, const QList<Mark> &marks)
{
    QList<qint64> pauses;
    for (const Mark &mark : marks) {
        if (mark.label == QLatin1String("P"))
            pauses << mark.pair;
    }
    QList<qint64> pairs;
    bool paused = false;
    for (const ManifestBlock &block : blocks) {
        if (block.type == 'V')
            paused = false;
        if (block.type == 'C' && !paused)
            pairs << block.pair;
        if (block.type == 'C' && pauses.contains(block.pair))
            paused = true;
    }
    return pairs;
}

/// The logged pairs that lie between an "S" and the next "E" of the recorder chart.
QList<qint64> pairsOfRuns(const QList<qint64> &logged, const QList<Mark> &marks)
{
    QList<qint64> pairs;
    for (qsizetype i = 0; i < marks.size(); ++i) {
        if (marks[i].label != QLatin1String("S"))
            continue;
        const auto end = std::find_if(marks.begin() + i, marks.end(),
                                      [](const Mark &m) { return m.label == QLatin1String("E"); });
        if (end == marks.end())
            break;
        for (const qint64 pair : logged) {
            if (pair >= marks[i].pair && pair <= end->pair)
                pairs << pair;
        }
    }
    return pairs;
}

QString describe(const QList<Mark> &marks)
{
    QStringList texts;
    for (const Mark &mark : marks)
        texts << QStringLiteral("%1@%2").arg(mark.label).arg(mark.pair);
    return texts.join(' ');
}

/// Each run's method text on the recorder chart after the run's last sample, with its date
/// line, and on the log; it came while the recorder waited and ended the wait.
void expectMethodTexts(const Recorded &recorded, const QList<ManifestBlock> &methods)
{
    const std::vector<MethodText> &texts = recorded.recorder->run.annotations.methodTexts();
    ASSERT_EQ(qsizetype(texts.size()), methods.size());
    EXPECT_EQ(qsizetype(recorded.log->run.annotations.methodTexts().size()), methods.size());
    const QList<Mark> marks = recorded.recorder->marks();
    auto end = marks.begin();
    for (qsizetype i = 0; i < methods.size(); ++i) {
        const QString tail = "\r\n" + methods[i].text + "\r\n";
        ASSERT_TRUE(texts[i].text.endsWith(tail)) << texts[i].text.toStdString();
        EXPECT_FALSE(texts[i].text.chopped(tail.size()).contains('\n'));
        end = std::find_if(end, marks.end(),
                           [](const Mark &m) { return m.label == QLatin1String("E"); });
        ASSERT_NE(end, marks.end());
        EXPECT_EQ(recorded.recorder->pairAt(texts[i].time), (end++)->pair);
    }
    ASSERT_EQ(recorded.methodArrivals.size(), methods.size());
    for (const MethodArrival &arrival : recorded.methodArrivals) {
        EXPECT_TRUE(arrival.awaited) << "the method text came outside the wait after a run";
        EXPECT_LT(arrival.msAfterRunEnd, kMethodWaitMs);
        EXPECT_TRUE(arrival.waitOver) << "the method text did not end the wait";
    }
}

void expectRecordedFaithfully(const Recorded &recorded)
{
    EXPECT_TRUE(recorded.dialogs.isEmpty()) << recorded.dialogs.join(", ").toStdString();
    const QList<Mark> announced = announcedMarks(recorded.blocks);
    QStringList labels;
    for (const Mark &mark : announced)
        labels << mark.label;
    for (const char *label : {"S", "1", "2", "P", "H", "C", "M", "E"})
        ASSERT_EQ(labels.count(label), 2) << label << " is not compared in both runs";

    const QList<Mark> marks = recorded.recorder->marks();
    EXPECT_EQ(describe(marks).toStdString(), describe(announced).toStdString());

    const QList<qint64> &logged = recorded.log->pairs;
    EXPECT_EQ(logged, pairsOutsidePauses(recorded.blocks, announced))
        << "the log takes every pair bit for bit but those of a pause";
    EXPECT_EQ(recorded.logSampleCount, logged.size());
    EXPECT_NEAR(recorded.logTime, double(logged.size() - 1) / kSamplesPerMinute, 1e-5)
        << "the log's clock runs on from run to run";
    EXPECT_EQ(recorded.recorder->pairs, pairsOfRuns(logged, marks))
        << "the recorder takes the logged pairs from each start to its end";

    QList<ManifestBlock> methods;
    std::copy_if(recorded.blocks.begin(), recorded.blocks.end(), std::back_inserter(methods),
                 [](const ManifestBlock &b) { return b.type == 'M'; });
    expectMethodTexts(recorded, methods);
}

class RecorderRun : public ::testing::TestWithParam<const char *>
{
};

} // namespace

TEST_P(RecorderRun, ChartsHoldWhatTheManifestSays)
{
    Recorded recorded;
    ASSERT_NO_FATAL_FAILURE(recordScenario(QString::fromLatin1(GetParam()), recorded));
    expectRecordedFaithfully(recorded);
}

INSTANTIATE_TEST_SUITE_P(BothKinds, RecorderRun, ::testing::Values("status", "letters"),
                         [](const auto &kind) { return std::string(kind.param); });

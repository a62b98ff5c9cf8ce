#include "LogFile.h"
#include "ModalDriver.h"
#include "Pty.h"
#include "RunningProgram.h"
#include "ScriptedDialogs.h"
#include "SimManifest.h"
#include "SimulatorRun.h"
#include "chart/LogReader.h"
#include "chart/Quillchart.h"
#include "runtime/App.h"
#include "runtime/SettingsStore.h"
#include "shell/Startup.h"
#include "shell/frmDataRecovery.h"
#include "shell/frmStartup.h"
#include "view/frmMain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <memory>

namespace {

/// One run without pauses: the log takes every pair the instrument sends.
QStringList scenario(int seed, double minutes)
{
    return QStringLiteral("--kind status --runs 1 --run-minutes %1 --idle-seconds 2 --events 3 "
                          "--labels 1 --pauses 0 --holds 0 --seed %2")
        .arg(minutes)
        .arg(seed)
        .split(' ');
}

/// The program recording the simulator into its own home, until it is ended.
struct Copy
{
    Copy(int seed, double minutes)
        : options(scenario(seed, minutes))
        , simulator(options)
        , program(simulator.ptyPath())
    {}

    [[nodiscard]] QString dataPath() const { return program.home() + "/data/Ostrel MS"; }

    /// The copy's log directory, "" until it exists.
    [[nodiscard]] QString logDirectory() const
    {
        const QDir log(dataPath() + "/Log");
        const QStringList tags = log.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return tags.size() == 1 ? log.filePath(tags[0]) : QString();
    }

    QStringList options;
    SimulatorRun simulator;
    RunningProgram program;
};

/// The pairs, named by the simulator's numbers, of the log in `directory` or saved in `file`.
QList<qint64> pairsOnDisk(const QString &directory, const QHash<quint64, qint64> &pairs)
{
    RunData run;
    (void)LogReader::read(directory, run);
    return pairsOf(run.store, pairs);
}

QList<qint64> pairsOfLog(const QString &file, const QHash<quint64, qint64> &pairs)
{
    const auto run = readLogFile(file);
    return run ? pairsOf(run->store, pairs) : QList<qint64>();
}

QList<ManifestBlock> blocksSent(const QStringList &options)
{
    const QTemporaryDir dir;
    if (!writeSimulatedStream(options, dir.filePath("stream"), dir.filePath("manifest.json")))
        return {};
    return readManifest(dir.filePath("manifest.json"));
}

QHash<quint64, qint64> pairsSent(const QStringList &options)
{
    return pairsByBits(blocksSent(options));
}

/// The last pair the program surely took: the port holds back fewer bytes than its receive
/// threshold of 50 until more come.
qint64 lastPairTaken(const QList<ManifestBlock> &blocks)
{
    const qint64 taken = blocks.isEmpty() ? 0 : blocks.last().end() - 49;
    qint64 last = -1;
    for (const ManifestBlock &block : blocks)
        if (block.type == 'C' && block.end() <= taken)
            last = block.pair;
    return last;
}

/// The next start of the program in `home`, in this process: it offers the left-over log, the
/// operator ticks every row and recovers it into `file`.
void recoverInto(const QString &home, const QString &file, QStringList &rows)
{
    qputenv("XDG_DATA_HOME", (home + "/data").toLocal8Bit());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, home + "/config");
    ScriptedDialogs dialogs;
    dialogs.files.push_back(file);
    ModalDriver driver;
    driver.answerWith<frmDataRecovery>([&](frmDataRecovery &form) {
        for (int i = 0; i < form.lstLogFiles->count(); ++i) {
            rows << form.lstLogFiles->item(i)->text();
            form.lstLogFiles->item(i)->setCheckState(Qt::Checked);
        }
        form.cmdRecoverButton->click();
    });
    driver.answerWith([](QDialog &name) { name.reject(); });
    frmMain window;
    frmStartup splash;
    Startup startup(window, splash);
    window.setShell(&startup);
    EXPECT_TRUE(driver.activate(window));
    window.close();
}

/// What the next start of an ended copy recovers: the pairs sent, bit for bit, one after
/// another, at least those `before` that stood on disk at the end; and the left-over is gone.
void checkRecovery(Copy &copy, const QList<qint64> &before, const QString &what)
{
    SCOPED_TRACE(what.toStdString());
    const QHash<quint64, qint64> sent = pairsSent(copy.options);
    ASSERT_FALSE(sent.isEmpty());
    const QTemporaryDir out;
    QStringList rows;
    recoverInto(copy.program.home(), out.filePath("recovered"), rows);
    EXPECT_EQ(rows.size(), 1) << rows.join('\n').toStdString();
    const QList<qint64> recovered = pairsOfLog(out.filePath("recovered.chl"), sent);
    ASSERT_GE(recovered.size(), before.size()) << "a pair on disk before the end was lost";
    ASSERT_FALSE(recovered.isEmpty());
    for (qsizetype i = 0; i < recovered.size(); ++i)
        ASSERT_EQ(recovered[i], recovered[0] + i) << "at " << i << " of " << recovered.size();
    EXPECT_EQ(recovered[0], before.value(0, recovered[0]));
    EXPECT_TRUE(
        QDir(copy.dataPath() + "/Log").entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty())
        << "the left-over is purged and the next start's own log removed at its exit";
    EXPECT_EQ(GetAllSettings(App::Title(), "LogInfo"),
              (QList<QPair<QString, QString>>{{"0", "0"}}));
}

} // namespace

TEST(LogSurvives, KilledAtRandomTheNextStartRecoversEveryPairUpToTheLastTick)
{
    // OSTREL_KILLS=100 by hand; five copies at a time, each on its own simulator and home.
    const int kills = qEnvironmentVariableIntValue("OSTREL_KILLS") > 0
                          ? qEnvironmentVariableIntValue("OSTREL_KILLS")
                          : 10;
    constexpr int kAtOnce = 5;
    constexpr qint64 kSpreadMs = 25000;
    QRandomGenerator random(20261124);
    for (int first = 0; first < kills; first += kAtOnce) {
        std::vector<std::unique_ptr<Copy>> copies;
        for (int i = first; i < std::min(kills, first + kAtOnce); ++i)
            copies.push_back(std::make_unique<Copy>(100 + i, 1.2));
        std::vector<qint64> killAt(copies.size(), -1);
        std::vector<QList<qint64>> onDisk(copies.size());
        std::vector<QHash<quint64, qint64>> sent;
        for (const auto &copy : copies) {
            ASSERT_TRUE(copy->program.started());
            sent.push_back(pairsSent(copy->options));
        }
        QElapsedTimer clock;
        clock.start();
        std::size_t ended = 0;
        ASSERT_TRUE(waitFor(
            [&] {
                for (std::size_t i = 0; i < copies.size(); ++i) {
                    Copy &copy = *copies[i];
                    if (killAt[i] == -1 && Quillchart().CheckLogFile(copy.logDirectory()))
                        killAt[i] = clock.elapsed() + random.bounded(kSpreadMs);
                    if (killAt[i] >= 0 && clock.elapsed() >= killAt[i]) {
                        onDisk[i] = pairsOnDisk(copy.logDirectory(), sent[i]);
                        copy.program.endBy(SIGKILL);
                        killAt[i] = std::numeric_limits<qint64>::max();
                        ++ended;
                    }
                }
                return ended == copies.size();
            },
            120000))
            << "a copy never wrote its first log";
        for (std::size_t i = 0; i < copies.size(); ++i)
            checkRecovery(*copies[i], onDisk[i], QStringLiteral("kill %1").arg(first + int(i) + 1));
    }
}

TEST(LogSurvives, EndedByTheSessionTheNextStartRecoversEveryPairTaken)
{
    for (const int signal : {SIGTERM, SIGHUP}) {
        Copy copy(7 + signal, 0.25);
        ASSERT_TRUE(copy.program.started());
        ASSERT_TRUE(waitFor([&] { return copy.simulator.finished(); }, 150000));
        waitFor([] { return false; }, 1500);
        ASSERT_TRUE(copy.program.endBy(signal));
        const QList<ManifestBlock> blocks = blocksSent(copy.options);
        const QList<qint64> all = pairsOnDisk(copy.logDirectory(), pairsByBits(blocks));
        ASSERT_FALSE(all.isEmpty());
        EXPECT_GE(all.last(), lastPairTaken(blocks)) << "the last pair taken is on disk";
        checkRecovery(copy, all, QStringLiteral("signal %1").arg(signal));
    }
}

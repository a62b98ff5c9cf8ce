#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstring>
#include <gtest/gtest.h>

namespace {

#ifdef OSTREL_SANITIZED
constexpr int kTrials = 200;
#else
constexpr int kTrials = 500;
#endif
// Once started, the child writes every few hundred microseconds; kills spread over this span
// after it says it is ready land before its first write, during file creation and between any
// two steps of a write.
constexpr int kMaxKillDelayMs = 40;

/// Memory-backed when there is such a place: what is under test is the kill, not the disk.
QString scratchRoot()
{
    const QFileInfo shm(QStringLiteral("/dev/shm"));
    return shm.isDir() && shm.isWritable() ? shm.filePath() : testHome();
}

} // namespace

TEST(LogCrash, KilledWriterLeavesEveryAcknowledgedWriteInTheSavedLog)
{
    const QString child = QStringLiteral(OSTREL_BINARY_DIR "/tests/chart/chart_log_crash_child");
    ASSERT_TRUE(QFileInfo(child).isExecutable());
    QTemporaryDir root(scratchRoot() + QStringLiteral("/ostrel-crash-XXXXXX"));
    ASSERT_TRUE(root.isValid());
    QRandomGenerator random(20261122);
    int trialsWithWrites = 0;
    for (int trial = 0; trial < kTrials; ++trial) {
        const QString logDir = root.filePath(QStringLiteral("log%1").arg(trial));
        ASSERT_TRUE(QDir().mkpath(logDir));
        QProcess process;
        process.start(child, {logDir});
        ASSERT_TRUE(process.waitForStarted());
        // Starting takes long and varies, the more so under sanitizers on a busy machine: the
        // clock for the kill starts when the child says it is ready.
        const QDeadlineTimer startDeadline(30000);
        while (process.bytesAvailable() < 4 && process.state() == QProcess::Running &&
               !startDeadline.hasExpired())
            process.waitForReadyRead(100);
        const QDeadlineTimer deadline(int(random.bounded(kMaxKillDelayMs + 1)));
        while (!deadline.hasExpired() && process.state() == QProcess::Running)
            process.waitForReadyRead(int(std::max<qint64>(1, deadline.remainingTime())));
        process.kill();
        ASSERT_TRUE(process.waitForFinished());
        const QByteArray acks = process.readAllStandardOutput();
        qint32 lastTick = 0;
        if (acks.size() >= 4)
            std::memcpy(&lastTick, acks.constData() + (acks.size() / 4 - 1) * 4, 4);

        Quillchart scratch;
        const QString saved = root.filePath(QStringLiteral("trial%1.chl").arg(trial));
        if (lastTick == 0 && !scratch.CheckLogFile(logDir)) {
            QDir(logDir).removeRecursively();
            continue;
        }
        ++trialsWithWrites;
        ASSERT_TRUE(scratch.CheckLogFile(logDir)) << "trial " << trial;
        ASSERT_EQ(scratch.SaveLogAs(logDir, 0, saved), 0) << "trial " << trial;
        const auto run = RunContent::readRunFile(saved);
        ASSERT_TRUE(run) << "trial " << trial;
        // The write after the last acknowledged one may have reached the file before the kill.
        const RunContent::Counts acknowledged = RunContent::afterTicks(lastTick);
        const RunContent::Counts following = RunContent::afterTicks(lastTick + 1);
        const bool isFollowing = run->store.count() == following.samples && lastTick < 5000;
        const RunContent::Counts expected = isFollowing ? following : acknowledged;
        ASSERT_EQ(RunContent::differences(*run, expected), QString())
            << "trial " << trial << " after tick " << lastTick;
        QDir(logDir).removeRecursively();
        QFile::remove(saved);
    }
    // Most kills must land after some writes, or the test would prove little.
    EXPECT_GT(trialsWithWrites, kTrials / 2);
}

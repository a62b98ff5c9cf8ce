#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class RunningLog : public ::testing::Test
{
protected:
    QString logDir() const { return m_dir.filePath(QStringLiteral("log")); }
    QString path(const QString &name) const { return m_dir.filePath(name); }
    QStringList logFiles() const { return QDir(logDir()).entryList(QDir::Files, QDir::Name); }

    void SetUp() override { ASSERT_TRUE(QDir(m_dir.path()).mkdir(QStringLiteral("log"))); }

    QTemporaryDir m_dir{testHome() + QStringLiteral("/log-XXXXXX")};
};

} // namespace

TEST_F(RunningLog, SavedLogHoldsEverythingWritten)
{
    Quillchart logChart;
    RunContent::Counts counts;
    for (int tick = 1; tick <= 12; ++tick) {
        const RunContent::Counts next{counts.samples + 100 + tick, counts.marks + tick % 3,
                                      counts.methodTexts + (tick % 5 == 0 ? 1 : 0)};
        RunContent::grow(logChart, counts, next);
        counts = next;
        // A file of 0.05 hours holds 900 samples, so the log spreads over several files.
        ASSERT_EQ(logChart.WriteLog(logDir() + QStringLiteral("/"), 1, 20000, 0.05), 0) << tick;
    }
    EXPECT_GE(logFiles().size(), 2);
    EXPECT_TRUE(logChart.CheckLogFile(logDir() + QStringLiteral("/")));

    Quillchart scratch;
    ASSERT_EQ(scratch.SaveLogAs(logDir() + QStringLiteral("\\"), 0, path("saved.chl")), 0);
    EXPECT_EQ(scratch.GetLastTime(), 0.0f);
    const RunData saved = RunContent::readRunFile(path("saved.chl")).value();
    EXPECT_EQ(RunContent::differences(saved, counts), QString());
    EXPECT_EQ(saved.axes.timeMin, 0.0f);
    EXPECT_GE(saved.axes.timeMax, float(SampleStore::timeOf(counts.samples - 1)))
        << "it opens showing its whole time";
}

TEST_F(RunningLog, CloseLogLeavesTheDirectoryEmptyAndNoLogIsFound)
{
    Quillchart logChart;
    EXPECT_FALSE(logChart.CheckLogFile(logDir()));
    EXPECT_FALSE(logChart.CheckLogFile(path("missing")));
    RunContent::grow(logChart, {}, {2000, 3, 1});
    ASSERT_EQ(logChart.WriteLog(logDir(), 2, 20000, 0.05), 0);
    RunContent::grow(logChart, {2000, 3, 1}, {4000, 3, 1});
    ASSERT_EQ(logChart.WriteLog(logDir(), 2, 20000, 0.05), 0);
    ASSERT_EQ(logFiles().size(), 2);
    logChart.CloseLog(logDir() + QStringLiteral("/"), 2);
    EXPECT_EQ(QDir(logDir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    EXPECT_FALSE(logChart.CheckLogFile(logDir()));

    Quillchart scratch;
    QSignalSpy errors(&scratch, &Quillchart::ChartError);
    EXPECT_EQ(scratch.SaveLogAs(logDir(), 0, path("none.chl")), -21);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_EQ(errors[0][1].value<qint16>(), -21);
    EXPECT_FALSE(QFile::exists(path("none.chl")));
}

TEST_F(RunningLog, WriteFailsIntoAMissingOrAnotherLogsDirectoryAndSucceedsInItsOwn)
{
    Quillchart crashed;
    RunContent::grow(crashed, {}, {500, 2, 1});
    ASSERT_EQ(crashed.WriteLog(logDir(), 1, 20000, 24.0), 0);
    Quillchart logChart;
    RunContent::grow(logChart, {}, {50, 0, 0});
    const QString own = path("own");
    EXPECT_EQ(logChart.WriteLog(own, 2, 20000, 24.0), 76);
    ASSERT_TRUE(QDir().mkpath(own));
    EXPECT_EQ(logChart.WriteLog(logDir() + QStringLiteral("/"), 2, 20000, 24.0), 75);
    EXPECT_EQ(logChart.WriteLog(own, 2, 20000, 24.0), 0);
    EXPECT_EQ(logChart.WriteLog(logDir(), 2, 20000, 24.0), 75);

    Quillchart scratch;
    ASSERT_EQ(scratch.SaveLogAs(own, 0, path("own.chl")), 0);
    ASSERT_EQ(scratch.SaveLogAs(logDir(), 0, path("recovered.chl")), 0);
    EXPECT_EQ(RunContent::readRunFile(path("own.chl"))->store.count(), 50);
    EXPECT_EQ(RunContent::readRunFile(path("recovered.chl"))->store.count(), 500);
}

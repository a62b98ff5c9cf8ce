#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class RunningLog : public ::testing::Test
{
protected:
    QString logDir() const { return m_dir.filePath(QStringLiteral("log")); }
    QString path(const QString &name) const { return m_dir.filePath(name); }

    void SetUp() override { ASSERT_TRUE(QDir(m_dir.path()).mkdir(QStringLiteral("log"))); }

    QTemporaryDir m_dir{testHome() + QStringLiteral("/log-XXXXXX")};
};

} // namespace

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

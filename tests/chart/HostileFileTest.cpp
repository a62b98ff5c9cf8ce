#include "HostileFiles.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

using HostileFile = testing::TestWithParam<HostileFiles::Row>;

} // namespace

TEST_P(HostileFile, OpensOrFailsAtOnceWithOpenErrorLeavingTheChartEmpty)
{
    QTemporaryDir dir(testHome() + QStringLiteral("/ostrel-hostile-XXXXXX"));
    const QStringList paths = GetParam().make(QDir(dir.path()));
    if (paths.isEmpty())
        GTEST_SKIP() << "cannot be made here";
    const bool opens = GetParam().opens;
    for (const QString &path : paths) {
        SCOPED_TRACE(path.toStdString());
        Quillchart chart;
        RunContent::grow(chart, {}, {40, 1, 1});
        chart.SetNotes(QStringLiteral("held before"));
        QSignalSpy errors(&chart, &Quillchart::ChartError);
        QElapsedTimer clock;
        clock.start();
        EXPECT_EQ(chart.LoadDataFile(path), opens);
        EXPECT_LT(clock.elapsed(), 1000);
        EXPECT_EQ(errors.size(), opens ? 0 : 1);
        EXPECT_TRUE(opens || errors.value(0).value(1).value<qint16>() == -18);
        EXPECT_EQ(chart.GetNotes(), opens ? QStringLiteral("notes") : QString());
        ASSERT_TRUE(chart.SaveDataFile(dir.filePath(QStringLiteral("saved.chd"))));
        const auto run = RunContent::readRunFile(dir.filePath(QStringLiteral("saved.chd")));
        ASSERT_TRUE(run);
        EXPECT_EQ(RunContent::differences(*run, opens ? HostileFiles::kRun : RunContent::Counts{}),
                  QString());
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, HostileFile, testing::ValuesIn(HostileFiles::rows()),
                         testing::PrintToStringParamName());

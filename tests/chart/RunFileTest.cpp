#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"

#include <QDir>
#include <QTemporaryDir>

#include <cmath>
#include <gtest/gtest.h>

namespace {

const RunContent::Counts kSmall{700, 9, 2};

class RunFile : public ::testing::Test
{
protected:
    QString path(const QString &name) const { return m_dir.filePath(name); }

    void fillSmall(Quillchart &chart)
    {
        RunContent::grow(chart, {}, kSmall);
        chart.SetNotes(QStringLiteral("Column 3, \"fresh\" resin\r\nSecond line ü\r\n"));
        chart.setChartTitle(QStringLiteral("Run 17"));
        chart.setUvAxisMin(-0.5f);
        chart.setUvAxisMax(1.25f);
        chart.setCondAxisMin(2.5f);
        chart.setCondAxisMax(120.0f);
        chart.setTimeAxisMin(0.5f);
        chart.setTimeAxisMax(3.0f);
    }

    QTemporaryDir m_dir{testHome() + QStringLiteral("/runfile-XXXXXX")};
};

} // namespace

TEST_F(RunFile, SavedRunComesBackWithEveryKindOfDataAndSavesAgainAlike)
{
    Quillchart saved;
    fillSmall(saved);
    ASSERT_TRUE(saved.SaveDataFile(path("run.chd")));
    Quillchart loaded;
    ASSERT_TRUE(loaded.LoadDataFile(path("run.chd")));
    EXPECT_EQ(loaded.GetNotes(), saved.GetNotes());
    EXPECT_EQ(loaded.ChartTitle(), QStringLiteral("Run 17"));
    EXPECT_EQ(loaded.UvAxisMin(), -0.5f);
    EXPECT_EQ(loaded.TimeAxisMax(), 3.0f);
    EXPECT_EQ(RunContent::differences(RunContent::readRunFile(path("run.chd")).value(), kSmall),
              QString());
    ASSERT_TRUE(loaded.SaveDataFile(path("again.chd")));
    EXPECT_EQ(RunContent::bytesOf(path("again.chd")), RunContent::bytesOf(path("run.chd")));
}

TEST_F(RunFile, SelectedDataHoldsWhatTheAxisShowsStartingAtZero)
{
    Quillchart chart;
    RunContent::grow(chart, {}, {3000, 0, 0});
    chart.AddEventMark(QStringLiteral("before"), 0xff, 50, 1.5f);
    chart.AddEventMark(QStringLiteral("inside"), 0xff00, -10, 2.5f);
    chart.AddEventMark(QStringLiteral("edge"), 0xff00, 20, 5.0f);
    chart.AddEventMark(QStringLiteral("after"), 0xff0000, 50, 6.0f);
    chart.AddMethodText(QStringLiteral("old method"), 0.5f);
    chart.AddMethodText(QStringLiteral("method in force"), 1.0f);
    chart.AddMethodText(QStringLiteral("later method"), 9.0f);
    chart.SetNotes(QStringLiteral("notes"));
    chart.setTimeAxisMin(2.0f);
    chart.setTimeAxisMax(5.0f);
    ASSERT_TRUE(chart.SaveSelectedData(path("part.chd")));

    const auto run = RunContent::readRunFile(path("part.chd"));
    ASSERT_TRUE(run);
    ASSERT_EQ(run->store.count(), 901);
    for (qint64 i = 0; i < 901; ++i)
        ASSERT_EQ(run->store.at(i).conductivity, RunContent::sample(600 + i).conductivity) << i;
    const auto &marks = run->annotations.eventMarks();
    ASSERT_EQ(marks.size(), 2u);
    EXPECT_EQ(marks[0].label + QString::number(marks[0].time), QStringLiteral("inside0.5"));
    EXPECT_EQ(marks[1].label + QString::number(marks[1].time), QStringLiteral("edge3"));
    const auto &texts = run->annotations.methodTexts();
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].text + QString::number(texts[0].time), QStringLiteral("method in force0"));

    Quillchart opened;
    ASSERT_TRUE(opened.LoadDataFile(path("part.chd")));
    EXPECT_EQ(opened.GetNotes(), QStringLiteral("notes"));
    EXPECT_EQ(opened.TimeAxisMin(), 0.0f);
    EXPECT_FLOAT_EQ(opened.TimeAxisMax(), 3.0f);
}

TEST_F(RunFile, FileOfTheFirstVersionStillOpens)
{
    const auto run =
        RunContent::readRunFile(QStringLiteral(OSTREL_SOURCE_DIR "/tests/chart/data/run-v1.chd"));
    ASSERT_TRUE(run);
    EXPECT_EQ(run->title, QStringLiteral("Run 17"));
    EXPECT_EQ(RunContent::differences(*run, kSmall), QString());
}

TEST_F(RunFile, FailedSaveLeavesNoFileBehind)
{
    Quillchart chart;
    fillSmall(chart);
    EXPECT_FALSE(chart.SaveDataFile(path("no/such/dir/run.chd")));
    ASSERT_TRUE(chart.SaveDataFile(path("run.chd")));
    QDir(m_dir.path()).mkdir(QStringLiteral("run.chd.dir"));
    EXPECT_FALSE(chart.SaveDataFile(path("run.chd.dir")));
    EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("run.chd")});
}

TEST_F(RunFile, MarkThatIsNoNumberIsKeptAndStillDraws)
{
    Quillchart chart;
    RunContent::grow(chart, {}, {100, 0, 0});
    chart.AddEventMark(QStringLiteral("lost"), 0xff, 50, std::nanf(""));
    chart.AddEventMark(QStringLiteral("far"), 0xff, 50, 3e38f);
    ASSERT_TRUE(chart.SaveDataFile(path("marks.chd")));
    Quillchart loaded;
    loaded.resize(400, 300);
    ASSERT_TRUE(loaded.LoadDataFile(path("marks.chd")));
    loaded.Redraw();
    EXPECT_EQ(RunContent::readRunFile(path("marks.chd"))->annotations.eventMarks().size(), 2u);
}

#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/Crc.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtEndian>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

QByteArray contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &fileName, const QByteArray &bytes)
{
    // A fresh file: rewriting one in place makes ext4 flush it on close, which is slow.
    QFile::remove(fileName);
    QFile file(fileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

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

TEST_F(RunFile, SavedRunComesBackWithEveryKindOfData)
{
    Quillchart saved;
    fillSmall(saved);
    ASSERT_TRUE(saved.SaveDataFile(path("run.chd")));

    Quillchart loaded;
    ASSERT_TRUE(loaded.LoadDataFile(path("run.chd")));
    EXPECT_EQ(loaded.GetLastTime(), saved.GetLastTime());
    EXPECT_EQ(loaded.GetNotes(), saved.GetNotes());
    EXPECT_EQ(loaded.GetMethodText(), saved.GetMethodText());
    EXPECT_EQ(loaded.ChartTitle(), QStringLiteral("Run 17"));
    EXPECT_EQ(loaded.UvAxisMin(), -0.5f);
    EXPECT_EQ(loaded.UvAxisMax(), 1.25f);
    EXPECT_EQ(loaded.CondAxisMin(), 2.5f);
    EXPECT_EQ(loaded.CondAxisMax(), 120.0f);
    EXPECT_EQ(loaded.TimeAxisMin(), 0.5f);
    EXPECT_EQ(loaded.TimeAxisMax(), 3.0f);

    const auto run = RunContent::readRunFile(path("run.chd"));
    ASSERT_TRUE(run);
    EXPECT_EQ(RunContent::differences(*run, kSmall), QString());
    ASSERT_TRUE(loaded.SaveDataFile(path("again.chd")));
    EXPECT_EQ(contentOf(path("again.chd")), contentOf(path("run.chd")));
}

TEST_F(RunFile, LoadReplacesAllTheChartHeldAndAnEmptyRunLoadsEmpty)
{
    Quillchart empty;
    ASSERT_TRUE(empty.SaveDataFile(path("empty.chd")));
    Quillchart chart;
    fillSmall(chart);
    ASSERT_TRUE(chart.LoadDataFile(path("empty.chd")));
    EXPECT_EQ(chart.GetLastTime(), 0.0f);
    EXPECT_EQ(chart.GetNotes(), QString());
    EXPECT_EQ(chart.GetMethodText(), QString());
    ASSERT_TRUE(chart.SaveDataFile(path("again.chd")));
    EXPECT_EQ(contentOf(path("again.chd")), contentOf(path("empty.chd")));
}

TEST_F(RunFile, ClearDataWithClearDisplayEmptiesTheChart)
{
    Quillchart chart;
    fillSmall(chart);
    chart.ClearData();
    chart.ClearDisplay();
    EXPECT_EQ(chart.GetLastTime(), 0.0f);
    EXPECT_EQ(chart.GetNotes(), QString());
    EXPECT_EQ(chart.GetMethodText(), QString());
    ASSERT_TRUE(chart.SaveDataFile(path("cleared.chd")));
    const auto run = RunContent::readRunFile(path("cleared.chd"));
    ASSERT_TRUE(run);
    EXPECT_EQ(RunContent::differences(*run, {}), QString());
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
    EXPECT_EQ(marks[0].label, QStringLiteral("inside"));
    EXPECT_FLOAT_EQ(marks[0].time, 0.5f);
    EXPECT_EQ(marks[0].height, -10);
    EXPECT_EQ(marks[1].label, QStringLiteral("edge"));
    EXPECT_FLOAT_EQ(marks[1].time, 3.0f);
    const auto &texts = run->annotations.methodTexts();
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].text, QStringLiteral("method in force"));
    EXPECT_EQ(texts[0].time, 0.0f);

    Quillchart opened;
    ASSERT_TRUE(opened.LoadDataFile(path("part.chd")));
    EXPECT_FLOAT_EQ(opened.GetLastTime(), 3.0f);
    EXPECT_EQ(opened.GetNotes(), QStringLiteral("notes"));
    EXPECT_EQ(opened.TimeAxisMin(), 0.0f);
    EXPECT_FLOAT_EQ(opened.TimeAxisMax(), 3.0f);
}

TEST_F(RunFile, FileOfTheFirstVersionStillOpens)
{
    Quillchart chart;
    const QString v1 = QStringLiteral(OSTREL_SOURCE_DIR "/tests/chart/data/run-v1.chd");
    ASSERT_TRUE(chart.LoadDataFile(v1));
    EXPECT_EQ(chart.GetNotes(), QStringLiteral("Column 3, \"fresh\" resin\r\nSecond line ü\r\n"));
    EXPECT_EQ(chart.ChartTitle(), QStringLiteral("Run 17"));
    EXPECT_EQ(chart.CondAxisMax(), 120.0f);
    const auto run = RunContent::readRunFile(v1);
    ASSERT_TRUE(run);
    EXPECT_EQ(RunContent::differences(*run, kSmall), QString());
}

TEST_F(RunFile, UnreadableFileRaisesOpenErrorAndLeavesTheChartAsItWas)
{
    Quillchart source;
    fillSmall(source);
    ASSERT_TRUE(source.SaveDataFile(path("good.chd")));
    const QByteArray good = contentOf(path("good.chd"));

    std::vector<std::pair<QString, QByteArray>> cases;
    cases.emplace_back(QStringLiteral("empty"), QByteArray());
    cases.emplace_back(QStringLiteral("text"), QByteArray("Time\tUV\r\n0.0\t0.1\r\n"));
    cases.emplace_back(QStringLiteral("png"), QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    QByteArray newer = good;
    newer[8] = 2;
    cases.emplace_back(QStringLiteral("newer version"), newer);
    for (qsizetype cut = 1; cut < good.size(); cut += 7)
        cases.emplace_back(QStringLiteral("cut at %1").arg(cut), good.left(cut));
    for (qsizetype bit = 0; bit < good.size() * 8; bit += 5) {
        QByteArray flipped = good;
        flipped[bit / 8] = char(flipped[bit / 8] ^ (1 << (bit % 8)));
        cases.emplace_back(QStringLiteral("bit %1 flipped").arg(bit), flipped);
    }
    cases.emplace_back(QStringLiteral("garbage appended"), good + QByteArray(5, '\0'));

    Quillchart chart;
    chart.setIndex(3);
    RunContent::grow(chart, {}, {40, 1, 1});
    chart.SetNotes(QStringLiteral("kept"));
    QSignalSpy errors(&chart, &Quillchart::ChartError);
    for (const auto &[name, bytes] : cases) {
        writeFile(path("bad.chd"), bytes);
        errors.clear();
        EXPECT_FALSE(chart.LoadDataFile(path("bad.chd"))) << name.toStdString();
        ASSERT_EQ(errors.size(), 1) << name.toStdString();
        EXPECT_EQ(errors[0][0].value<qint16>(), 3);
        EXPECT_EQ(errors[0][1].value<qint16>(), -18);
        EXPECT_EQ(chart.GetLastTime(), float(39.0 / 300)) << name.toStdString();
        EXPECT_EQ(chart.GetNotes(), QStringLiteral("kept"));
    }

    errors.clear();
    EXPECT_FALSE(chart.LoadDataFile(path("missing.chd")));
    writeFile(path("good.chl"), good);
    EXPECT_FALSE(chart.LoadDataFile(path("good.chl")));
    EXPECT_EQ(errors.size(), 2);
}

TEST_F(RunFile, FailedSaveLeavesNoFileAndKeepsTheOldOne)
{
    Quillchart chart;
    fillSmall(chart);
    EXPECT_FALSE(chart.SaveDataFile(path("no/such/dir/run.chd")));
    EXPECT_FALSE(QFile::exists(path("no/such/dir/run.chd")));
    ASSERT_TRUE(chart.SaveDataFile(path("run.chd")));
    const QByteArray before = contentOf(path("run.chd"));
    QDir(m_dir.path()).mkdir(QStringLiteral("run.chd.dir"));
    EXPECT_FALSE(chart.SaveDataFile(path("run.chd.dir")));
    EXPECT_EQ(contentOf(path("run.chd")), before);
    EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("run.chd")});
}

TEST_F(RunFile, AxisThatIsNoNumberIsRefusedAndAMarkThatIsNoNumberStillDraws)
{
    Quillchart chart;
    chart.resize(400, 300);
    RunContent::grow(chart, {}, {100, 0, 0});
    chart.AddEventMark(QStringLiteral("lost"), 0xff, 50, std::nanf(""));
    chart.AddEventMark(QStringLiteral("far"), 0xff, 50, 3e38f);
    ASSERT_TRUE(chart.SaveDataFile(path("marks.chd")));
    Quillchart loaded;
    loaded.resize(400, 300);
    ASSERT_TRUE(loaded.LoadDataFile(path("marks.chd")));
    loaded.Redraw();

    // The axes chunk follows the 12-byte header: tag, length, six floats, CRC.
    QByteArray bytes = contentOf(path("marks.chd"));
    ASSERT_EQ(bytes.mid(12, 4), QByteArray("AXES"));
    qToLittleEndian(std::numeric_limits<float>::infinity(), bytes.data() + 20 + 5 * 4);
    qToLittleEndian(crcOf(QByteArrayView(bytes).sliced(12, 32)), bytes.data() + 44);
    writeFile(path("axes.chd"), bytes);
    EXPECT_FALSE(loaded.LoadDataFile(path("axes.chd")));
}

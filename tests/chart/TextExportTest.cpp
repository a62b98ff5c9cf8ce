#include "TestEnvironment.h"
#include "chart/Quillchart.h"

#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <gtest/gtest.h>

namespace {

struct Exported
{
    QStringList before;
    QStringList heading;
    std::vector<QStringList> rows;
    QStringList after;
};

class TextExportFile : public ::testing::Test
{
protected:
    /// Exports the whole run with the count of points the export dialog promises: half up, a
    /// tie to even.
    Exported exportChart(Quillchart &chart, float rate, qint16 position = 0, qint16 cond = 1)
    {
        const float last = chart.GetLastTime();
        m_points = qint32(std::nearbyint(double(last) * rate * 60.0 + 0.5));
        const QString file = m_dir.filePath("export.txt");
        EXPECT_EQ(chart.ExportData(file, 1, cond, 1, 1, 1, position, 0.0f, last, rate, m_points),
                  0);
        QFile in(file);
        EXPECT_TRUE(in.open(QIODevice::ReadOnly));
        const QByteArray bytes = in.readAll();
        EXPECT_TRUE(bytes.startsWith("\xEF\xBB\xBF"));
        QStringList lines = QString::fromUtf8(bytes.mid(3)).split("\r\n");
        EXPECT_EQ(lines.takeLast(), QString()) << "last line without CRLF";
        Exported result;
        qsizetype at = 0;
        while (at < lines.size() && !lines[at].startsWith("Time (min)"))
            result.before << lines[at++];
        result.heading = lines.value(at++).split('\t');
        while (at < lines.size() && !lines[at].isEmpty())
            result.rows.push_back(lines[at++].split('\t'));
        result.after = lines.mid(at);
        return result;
    }

    qint32 m_points = 0;
    QTemporaryDir m_dir{testHome() + "/export-XXXXXX"};
};

} // namespace

TEST_F(TextExportFile, FullRateGivesEverySampleAndEveryRateThePromisedPointsWithThePeak)
{
    Quillchart chart;
    chart.setChartTitle("Run 5");
    // A baseline with one narrow peak whose apex is a single sample, long enough for the
    // slowest rate and with a last time that float holds exactly.
    const auto uv = [](int i) { return 0.01 + 1.5 * std::exp(-std::pow((i - 12345) / 3.0, 2)); };
    for (int i = 0; i < 29926; ++i)
        chart.AddSample(float(uv(i)), 10.0f + float(i % 7));
    chart.AddEventMark("Inject", 0xff, 50, 0.5f);
    chart.AddEventMark("Fraction 1", 0xff, -10, 1.0f);
    const Exported file = exportChart(chart, 5.0f);
    EXPECT_TRUE(file.before.contains("Run:\tRun 5"));
    EXPECT_TRUE(file.before.contains("Data points:\t29926"));
    EXPECT_EQ(file.heading,
              (QStringList{"Time (min)", "UV (AU)", "Conductivity (mS/cm)", "Event"}));
    ASSERT_EQ(file.rows.size(), 29926u);
    for (int k = 0; k < 29926; ++k) {
        EXPECT_NEAR(file.rows[k].value(0).toDouble(), k / 300.0, 5e-5) << k;
        EXPECT_NEAR(file.rows[k].value(1).toDouble(), float(uv(k)), 5e-5) << k;
        EXPECT_NEAR(file.rows[k].value(2).toDouble(), 10 + k % 7, 5e-4) << k;
        const char *mark = k == 150 ? "Inject" : k == 300 ? "Fraction 1" : "";
        EXPECT_EQ(file.rows[k].value(3), QLatin1String(mark)) << k;
    }
    for (float rate : {0.01f, 0.02f, 0.025f, 0.0333f, 0.05f, 0.1f, 0.2f, 0.25f, 0.333f, 0.5f, 1.0f,
                       2.0f, 3.0f, 4.0f}) {
        const Exported reduced = exportChart(chart, rate);
        ASSERT_EQ(qint32(reduced.rows.size()), m_points) << rate;
        double apex = 0.0;
        for (const QStringList &row : reduced.rows)
            apex = std::max(apex, row.value(1).toDouble());
        EXPECT_NEAR(apex, 1.51, 1e-4) << rate;
    }
}

TEST_F(TextExportFile, MethodAndNotesStandWhereThePositionSays)
{
    Quillchart chart;
    for (int i = 0; i < 300; ++i)
        chart.AddSample(0.1f, 1.0f);
    chart.AddMethodText("Step 1\r\nStep 2\r\n", 0.5f);
    chart.SetNotes("Fresh column\r\nBuffer B");
    const QString step = "Step 2";

    const Exported before = exportChart(chart, 1.0f, 0);
    EXPECT_TRUE(before.before.contains(step) && before.before.contains("Buffer B"));
    EXPECT_FALSE(before.after.contains(step));
    const Exported after = exportChart(chart, 1.0f, 1);
    EXPECT_FALSE(after.before.contains(step));
    EXPECT_TRUE(after.after.contains(step) && after.after.contains("Fresh column"));

    const Exported column = exportChart(chart, 1.0f, 2, 0);
    EXPECT_FALSE(column.before.contains(step));
    EXPECT_EQ(column.heading, (QStringList{"Time (min)", "UV (AU)", "Event", "Method", "Notes"}));
    ASSERT_EQ(qint32(column.rows.size()), m_points);
    EXPECT_EQ(column.rows[0].value(4), "Fresh column");
    EXPECT_EQ(column.rows[1].value(4), "Buffer B");
    EXPECT_EQ(column.rows[30].value(3), "Step 1");
    EXPECT_EQ(column.rows[31].value(3), step);
}

TEST_F(TextExportFile, NonsenseRateOrPositionIsRefused)
{
    Quillchart chart;
    chart.AddSample(0.1f, 1.0f);
    const QString file = m_dir.filePath("bad.txt");
    EXPECT_NE(chart.ExportData(file, 1, 1, 1, 1, 1, 0, 0.0f, 1.0f, 0.0f, 10), 0);
    EXPECT_NE(chart.ExportData(file, 1, 1, 1, 1, 1, 3, 0.0f, 1.0f, 1.0f, 10), 0);
    EXPECT_NE(
        chart.ExportData(m_dir.filePath("no/dir.txt"), 1, 1, 1, 1, 1, 0, 0.0f, 1.0f, 1.0f, 10), 0);
    EXPECT_FALSE(QFile::exists(file));
}

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
    Exported exportChart(Quillchart &chart, float from, float to, float rate, qint32 points,
                         qint16 position = 0, qint16 uv = 1, qint16 cond = 1)
    {
        const QString file = m_dir.filePath(QStringLiteral("export.txt"));
        EXPECT_EQ(chart.ExportData(file, uv, cond, 1, 1, 1, position, from, to, rate, points), 0);
        QFile in(file);
        EXPECT_TRUE(in.open(QIODevice::ReadOnly));
        const QByteArray bytes = in.readAll();
        EXPECT_TRUE(bytes.startsWith("\xEF\xBB\xBF"));
        const QString text = QString::fromUtf8(bytes.mid(3));
        EXPECT_TRUE(text.endsWith(QLatin1String("\r\n")));
        Exported result;
        QStringList lines = text.split(QStringLiteral("\r\n"));
        lines.removeLast();
        qsizetype at = 0;
        while (at < lines.size() && !lines[at].startsWith(QLatin1String("Time (min)")))
            result.before << lines[at++];
        EXPECT_LT(at, lines.size());
        result.heading = lines[at++].split(QLatin1Char('\t'));
        while (at < lines.size() && !lines[at].isEmpty())
            result.rows.push_back(lines[at++].split(QLatin1Char('\t')));
        result.after = lines.mid(at);
        return result;
    }

    // The count the export dialog promises: half up, a tie to even.
    static qint32 promised(float from, float to, float rate)
    {
        return qint32(std::nearbyint((double(to) - from) * rate * 60.0 + 0.5));
    }

    QTemporaryDir m_dir{testHome() + QStringLiteral("/export-XXXXXX")};
};

} // namespace

TEST_F(TextExportFile, FullRateGivesEverySampleAsMeasuredWithMarksOnTheirRows)
{
    Quillchart chart;
    chart.setChartTitle(QStringLiteral("Run 5"));
    for (int i = 0; i < 600; ++i)
        chart.AddSample(float(i) * 0.001f, 10.0f + float(i % 7));
    chart.AddEventMark(QStringLiteral("Inject"), 0xff, 50, 0.5f);
    chart.AddEventMark(QStringLiteral("Fraction 1"), 0xff, -10, 1.0f);
    const float last = chart.GetLastTime();
    const Exported file = exportChart(chart, 0.0f, last, 5.0f, promised(0.0f, last, 5.0f));
    EXPECT_TRUE(file.before.contains(QStringLiteral("Run:\tRun 5")));
    EXPECT_TRUE(file.before.contains(QStringLiteral("Data points:\t600")));
    EXPECT_EQ(file.heading,
              (QStringList{QStringLiteral("Time (min)"), QStringLiteral("UV (AU)"),
                           QStringLiteral("Conductivity (mS/cm)"), QStringLiteral("Event")}));
    ASSERT_EQ(file.rows.size(), 600u);
    for (int k = 0; k < 600; ++k) {
        ASSERT_GE(file.rows[k].size(), 3) << k;
        EXPECT_NEAR(file.rows[k][0].toDouble(), k / 300.0, 5e-5) << k;
        EXPECT_NEAR(file.rows[k][1].toDouble(), k * 0.001, 5e-5) << k;
        EXPECT_NEAR(file.rows[k][2].toDouble(), 10 + k % 7, 5e-4) << k;
    }
    EXPECT_EQ(file.rows[150].value(3), QStringLiteral("Inject"));
    EXPECT_EQ(file.rows[300].value(3), QStringLiteral("Fraction 1"));
    EXPECT_EQ(file.rows[151].value(3), QString());
}

TEST_F(TextExportFile, EveryRateHoldsThePromisedPointsAndKeepsAPeaksApex)
{
    Quillchart chart;
    // 100 minutes of flat baseline with one narrow peak whose apex is a single sample.
    for (int i = 0; i < 30000; ++i) {
        const double distance = std::abs(i - 12345) / 3.0;
        chart.AddSample(float(0.01 + 1.5 * std::exp(-distance * distance)), 5.0f);
    }
    const float last = chart.GetLastTime();
    for (float rate : {0.01f, 0.02f, 0.025f, 0.0333f, 0.05f, 0.1f, 0.2f, 0.25f, 0.333f, 0.5f, 1.0f,
                       2.0f, 3.0f, 4.0f, 5.0f}) {
        const qint32 points = promised(0.0f, last, rate);
        const Exported file = exportChart(chart, 0.0f, last, rate, points);
        ASSERT_EQ(qint32(file.rows.size()), points) << rate;
        double apex = 0.0;
        for (const QStringList &row : file.rows)
            apex = std::max(apex, row.value(1).toDouble());
        EXPECT_NEAR(apex, 1.51, 1e-4) << rate;
    }
}

TEST_F(TextExportFile, MethodAndNotesStandWhereThePositionSays)
{
    Quillchart chart;
    for (int i = 0; i < 300; ++i)
        chart.AddSample(0.1f, 1.0f);
    chart.AddMethodText(QStringLiteral("Step 1\r\nStep 2\r\n"), 0.5f);
    chart.SetNotes(QStringLiteral("Fresh column\r\nBuffer B"));
    const float last = chart.GetLastTime();
    const qint32 points = promised(0.0f, last, 1.0f);

    const Exported before = exportChart(chart, 0.0f, last, 1.0f, points, 0);
    EXPECT_TRUE(before.before.contains(QStringLiteral("Step 2")));
    EXPECT_TRUE(before.before.contains(QStringLiteral("Buffer B")));
    EXPECT_FALSE(before.after.contains(QStringLiteral("Step 2")));

    const Exported after = exportChart(chart, 0.0f, last, 1.0f, points, 1);
    EXPECT_FALSE(after.before.contains(QStringLiteral("Step 2")));
    EXPECT_TRUE(after.after.contains(QStringLiteral("Step 2")));
    EXPECT_TRUE(after.after.contains(QStringLiteral("Fresh column")));

    const Exported column = exportChart(chart, 0.0f, last, 1.0f, points, 2, 1, 0);
    EXPECT_FALSE(column.before.contains(QStringLiteral("Step 2")));
    EXPECT_EQ(column.heading, (QStringList{QStringLiteral("Time (min)"), QStringLiteral("UV (AU)"),
                                           QStringLiteral("Event"), QStringLiteral("Method"),
                                           QStringLiteral("Notes")}));
    ASSERT_EQ(qint32(column.rows.size()), points);
    EXPECT_EQ(column.rows[0].value(4), QStringLiteral("Fresh column"));
    EXPECT_EQ(column.rows[1].value(4), QStringLiteral("Buffer B"));
    EXPECT_EQ(column.rows[30].value(3), QStringLiteral("Step 1"));
    EXPECT_EQ(column.rows[31].value(3), QStringLiteral("Step 2"));
}

TEST_F(TextExportFile, NonsenseRateOrPositionIsRefused)
{
    Quillchart chart;
    chart.AddSample(0.1f, 1.0f);
    const QString file = m_dir.filePath(QStringLiteral("bad.txt"));
    EXPECT_NE(chart.ExportData(file, 1, 1, 1, 1, 1, 0, 0.0f, 1.0f, 0.0f, 10), 0);
    EXPECT_NE(chart.ExportData(file, 1, 1, 1, 1, 1, 3, 0.0f, 1.0f, 1.0f, 10), 0);
    EXPECT_NE(chart.ExportData(m_dir.filePath(QStringLiteral("no/dir.txt")), 1, 1, 1, 1, 1, 0, 0.0f,
                               1.0f, 1.0f, 10),
              0);
    EXPECT_FALSE(QFile::exists(file));
}

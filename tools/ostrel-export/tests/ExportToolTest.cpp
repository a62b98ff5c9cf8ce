#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <bit>
#include <cmath>
#include <gtest/gtest.h>

namespace {

struct Result
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

Result run(const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(OSTREL_EXPORT_PROGRAM), arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

float numberOf(const QJsonValue &value)
{
    if (value.isString()) {
        const QString text = value.toString();
        if (text == QLatin1String("NaN"))
            return std::nanf("");
        return text.startsWith(QLatin1Char('-')) ? -INFINITY : INFINITY;
    }
    return float(value.toDouble());
}

// Qt's JSON reader keeps a whole number as an integer, which drops the sign of -0.0: zeros are
// compared by value here, and the dump's text is checked for the sign instead.
bool same(float a, float b)
{
    if (a == 0.0f)
        return b == 0.0f;
    return std::isnan(a) ? std::isnan(b) : std::bit_cast<quint32>(a) == std::bit_cast<quint32>(b);
}

class ExportTool : public ::testing::Test
{
protected:
    QString path(const QString &name) const { return m_dir.filePath(name); }
    QTemporaryDir m_dir{testHome() + QStringLiteral("/tool-XXXXXX")};
};

} // namespace

TEST_F(ExportTool, JsonDumpGivesBackExactlyWhatWasSaved)
{
    const RunContent::Counts counts{2500, 7, 2};
    Quillchart chart;
    RunContent::grow(chart, {}, counts);
    chart.SetNotes(QStringLiteral("Notes \"quoted\"\r\nline 2\t\\"));
    chart.setChartTitle(QStringLiteral("Run ü"));
    chart.setUvAxisMin(-0.25f);
    chart.setCondAxisMax(77.5f);
    ASSERT_TRUE(chart.SaveDataFile(path("run.chd")));

    const Result result = run({QStringLiteral("--json"), path("run.chd")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("\"conductivity\": -0.0}"));
    QJsonParseError error;
    const QJsonObject dump = QJsonDocument::fromJson(result.out, &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    EXPECT_EQ(dump[QStringLiteral("title")].toString(), QStringLiteral("Run ü"));
    EXPECT_EQ(dump[QStringLiteral("notes")].toString(), chart.GetNotes());
    const QJsonObject axes = dump[QStringLiteral("axes")].toObject();
    EXPECT_EQ(numberOf(axes[QStringLiteral("uvMin")]), -0.25f);
    EXPECT_EQ(numberOf(axes[QStringLiteral("condMax")]), 77.5f);
    EXPECT_EQ(numberOf(axes[QStringLiteral("timeMax")]), chart.TimeAxisMax());

    const QJsonArray samples = dump[QStringLiteral("samples")].toArray();
    ASSERT_EQ(samples.size(), counts.samples);
    for (qsizetype i = 0; i < samples.size(); ++i) {
        const QJsonObject pair = samples[i].toObject();
        ASSERT_DOUBLE_EQ(pair[QStringLiteral("time")].toDouble(), double(i) / 300.0) << i;
        ASSERT_TRUE(same(numberOf(pair[QStringLiteral("uv")]), RunContent::sample(i).uv)) << i;
        ASSERT_TRUE(same(numberOf(pair[QStringLiteral("conductivity")]),
                         RunContent::sample(i).conductivity))
            << i;
    }
    const QJsonArray marks = dump[QStringLiteral("marks")].toArray();
    ASSERT_EQ(marks.size(), counts.marks);
    for (qsizetype i = 0; i < marks.size(); ++i) {
        const QJsonObject mark = marks[i].toObject();
        const EventMark want = RunContent::mark(i);
        EXPECT_EQ(mark[QStringLiteral("label")].toString(), want.label);
        EXPECT_EQ(mark[QStringLiteral("color")].toInt(), want.color);
        EXPECT_EQ(mark[QStringLiteral("height")].toInt(), want.height);
        EXPECT_EQ(numberOf(mark[QStringLiteral("time")]), want.time);
    }
    const QJsonArray texts = dump[QStringLiteral("methodTexts")].toArray();
    ASSERT_EQ(texts.size(), counts.methodTexts);
    for (qsizetype i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(texts[i].toObject()[QStringLiteral("text")].toString(),
                  RunContent::methodText(i).text);
        EXPECT_EQ(numberOf(texts[i].toObject()[QStringLiteral("time")]),
                  RunContent::methodText(i).time);
    }
}

TEST_F(ExportTool, TextIsWhatTheChartExportsAndALogDirectoryIsRecovered)
{
    const RunContent::Counts counts{3000, 4, 1};
    Quillchart logChart;
    RunContent::grow(logChart, {}, counts);
    const QString logDir = path("log");
    ASSERT_TRUE(QDir().mkpath(logDir));
    ASSERT_EQ(logChart.WriteLog(logDir + QStringLiteral("/"), 1, 20000, 24.0), 0);

    const float last = logChart.GetLastTime();
    const auto points = qint32(std::nearbyint((double(last) - 2.0) * 0.5 * 60.0 + 0.5));
    ASSERT_EQ(logChart.ExportData(path("chart.txt"), 1, 0, 1, 1, 1, 2, 2.0f, last, 0.5f, points),
              0);
    const Result text =
        run({QStringLiteral("--from"), QStringLiteral("2"), QStringLiteral("--rate"),
             QStringLiteral("0.5"), QStringLiteral("--no-cond"),
             QStringLiteral("--method-position"), QStringLiteral("column"), logDir});
    ASSERT_EQ(text.exitCode, 0) << text.err.toStdString();
    QFile expected(path("chart.txt"));
    ASSERT_TRUE(expected.open(QIODevice::ReadOnly));
    EXPECT_EQ(text.out, expected.readAll());

    const Result json = run({QStringLiteral("--json"), logDir, path("log.json")});
    ASSERT_EQ(json.exitCode, 0) << json.err.toStdString();
    QFile dumped(path("log.json"));
    ASSERT_TRUE(dumped.open(QIODevice::ReadOnly));
    const QJsonObject dump = QJsonDocument::fromJson(dumped.readAll()).object();
    EXPECT_EQ(dump[QStringLiteral("samples")].toArray().size(), counts.samples);
    EXPECT_EQ(dump[QStringLiteral("marks")].toArray().size(), counts.marks);
}

TEST_F(ExportTool, UnreadableInputOrBadOptionsGiveAClearErrorAndNonZeroExit)
{
    QFile damaged(path("damaged.chd"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("\x89QCD\r\n\x1a\n\x01\0\0\0garbage", 19);
    damaged.close();
    ASSERT_TRUE(QDir().mkpath(path("empty")));
    for (const QString &input : {path("missing.chd"), path("damaged.chd"), path("empty")}) {
        const Result result = run({input});
        EXPECT_EQ(result.exitCode, 1) << input.toStdString();
        EXPECT_TRUE(result.err.startsWith("ostrel-export: ")) << result.err.toStdString();
        EXPECT_TRUE(result.out.isEmpty());
    }
    Quillchart chart;
    ASSERT_TRUE(chart.SaveDataFile(path("empty.chd")));
    EXPECT_EQ(run({QStringLiteral("--rate"), QStringLiteral("9"), path("empty.chd")}).exitCode, 2);
    EXPECT_EQ(run({QStringLiteral("--method-position"), QStringLiteral("top"), path("empty.chd")})
                  .exitCode,
              2);
    EXPECT_EQ(run({}).exitCode, 2);
    const Result help = run({QStringLiteral("--help")});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.contains("Examples:"));
    EXPECT_TRUE(help.out.contains("highest value"));
}

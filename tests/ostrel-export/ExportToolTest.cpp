#include "HostileFiles.h"
#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"

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
#include <tuple>

namespace {

struct Result
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

Result run(const QStringList &arguments, int timeoutMs = 60000, const QString &directory = {})
{
    QProcess process;
    process.setWorkingDirectory(directory);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "C");
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(OSTREL_EXPORT_PROGRAM), arguments);
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

float numberOf(const QJsonValue &value)
{
    if (value.isString()) {
        const QString text = value.toString();
        if (text == "NaN")
            return std::nanf("");
        return text.startsWith('-') ? -INFINITY : INFINITY;
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
    QTemporaryDir m_dir{testHome() + "/tool-XXXXXX"};
};

} // namespace

TEST_F(ExportTool, JsonDumpGivesBackExactlyWhatWasSaved)
{
    const RunContent::Counts counts{2500, 7, 2};
    Quillchart chart;
    RunContent::grow(chart, {}, counts);
    chart.SetNotes("Notes \"quoted\"\r\nline 2\t\\");
    chart.setChartTitle("Run ü");
    chart.setUvAxisMin(-0.25f);
    chart.setCondAxisMax(77.5f);
    ASSERT_TRUE(chart.SaveDataFile(path("run.chd")));

    const Result result = run({"--json", path("run.chd")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("\"conductivity\": -0.0}"));
    QJsonParseError error;
    const QJsonObject dump = QJsonDocument::fromJson(result.out, &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    EXPECT_EQ(dump["title"].toString(), "Run ü");
    EXPECT_EQ(dump["notes"].toString(), chart.GetNotes());
    const QJsonObject axes = dump["axes"].toObject();
    EXPECT_EQ(numberOf(axes["uvMin"]), -0.25f);
    EXPECT_EQ(numberOf(axes["condMax"]), 77.5f);
    EXPECT_EQ(numberOf(axes["timeMax"]), chart.TimeAxisMax());

    const QJsonArray samples = dump["samples"].toArray();
    ASSERT_EQ(samples.size(), counts.samples);
    for (qsizetype i = 0; i < samples.size(); ++i) {
        const QJsonObject pair = samples[i].toObject();
        ASSERT_DOUBLE_EQ(pair["time"].toDouble(), double(i) / 300.0) << i;
        ASSERT_TRUE(same(numberOf(pair["uv"]), RunContent::sample(i).uv)) << i;
        ASSERT_TRUE(same(numberOf(pair["conductivity"]), RunContent::sample(i).conductivity)) << i;
    }
    // Times are compared as the floats they were saved as.
    const auto fields = [](const QJsonValue &value) {
        QVariantMap map = value.toObject().toVariantMap();
        map["time"] = numberOf(value["time"]);
        return map;
    };
    const QJsonArray marks = dump["marks"].toArray();
    ASSERT_EQ(marks.size(), counts.marks);
    for (qsizetype i = 0; i < marks.size(); ++i) {
        const EventMark want = RunContent::mark(i);
        EXPECT_EQ(fields(marks[i]), (QVariantMap{{"label", want.label},
                                                 {"color", want.color},
                                                 {"height", want.height},
                                                 {"time", want.time}}));
    }
    const QJsonArray texts = dump["methodTexts"].toArray();
    ASSERT_EQ(texts.size(), counts.methodTexts);
    for (qsizetype i = 0; i < texts.size(); ++i)
        EXPECT_EQ(fields(texts[i]), (QVariantMap{{"text", RunContent::methodText(i).text},
                                                 {"time", RunContent::methodText(i).time}}));
}

TEST_F(ExportTool, TextIsWhatTheChartExportsAndALogDirectoryIsRecovered)
{
    const RunContent::Counts counts{3000, 4, 1};
    Quillchart logChart;
    RunContent::grow(logChart, {}, counts);
    const QString logDir = path("log");
    ASSERT_TRUE(QDir().mkpath(logDir));
    ASSERT_EQ(logChart.WriteLog(logDir + "/", 1, 20000, 24.0), 0);

    const float last = logChart.GetLastTime();
    const auto points = qint32(std::nearbyint((double(last) - 2.0) * 0.5 * 60.0 + 0.5));
    ASSERT_EQ(logChart.ExportData(path("chart.txt"), 1, 0, 1, 1, 1, 2, 2.0f, last, 0.5f, points),
              0);
    const Result text =
        run({"--from", "2", "--rate", "0.5", "--no-cond", "--method-position", "column", logDir});
    ASSERT_EQ(text.exitCode, 0) << text.err.toStdString();
    QFile expected(path("chart.txt"));
    ASSERT_TRUE(expected.open(QIODevice::ReadOnly));
    EXPECT_EQ(text.out, expected.readAll());

    const Result json = run({"--json", logDir, path("log.json")});
    ASSERT_EQ(json.exitCode, 0) << json.err.toStdString();
    QFile dumped(path("log.json"));
    ASSERT_TRUE(dumped.open(QIODevice::ReadOnly));
    const QJsonObject dump = QJsonDocument::fromJson(dumped.readAll()).object();
    EXPECT_EQ(dump["samples"].toArray().size(), counts.samples);
    EXPECT_EQ(dump["marks"].toArray().size(), counts.marks);
}

using HostileInput = testing::TestWithParam<HostileFiles::Row>;

TEST_P(HostileInput, GivesExitOneWithAMessageOrConvertsWhateverItsName)
{
    QTemporaryDir dir(testHome() + "/hostile-XXXXXX");
    const QStringList paths = GetParam().make(QDir(dir.path()));
    if (paths.isEmpty())
        GTEST_SKIP() << "cannot be made here";
    for (const QString &path : paths) {
        SCOPED_TRACE(path.toStdString());
        const Result result = run({path}, 20000);
        if (GetParam().opens) {
            EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
            EXPECT_TRUE(result.out.contains("Data points:\t14000"));
        } else {
            EXPECT_EQ(result.exitCode, 1);
            EXPECT_TRUE(result.err.startsWith("ostrel-export: ")) << result.err.toStdString();
            EXPECT_TRUE(result.out.isEmpty());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, HostileInput, testing::ValuesIn(HostileFiles::rows()),
                         testing::PrintToStringParamName());

TEST_F(ExportTool, BadOptionsGiveExitTwoNamingTheOptionAndWriteNothing)
{
    Quillchart chart;
    RunContent::grow(chart, {}, {3001, 2, 1});
    ASSERT_TRUE(chart.SaveDataFile(path("run.chd")));
    ASSERT_TRUE(QFile::link(path("run.chd"), path("link.txt")));
    // The arguments, the word the complaint names, the exit code.
    const std::tuple<QStringList, const char *, int> cases[] = {
        {{"--to", "1e6"}, "--to", 2},
        {{"--to", "nan"}, "--to", 2},
        {{"--to", "10.01"}, "--to", 2},
        {{"--from", "inf"}, "--from", 2},
        {{"--from", "-1"}, "--from", 2},
        {{"--from", "10.01"}, "--from", 2},
        {{"--from", "5", "--to", "4"}, "--to", 2},
        {{"--rate", "9"}, "--rate", 2},
        {{"--rate", "0"}, "--rate", 2},
        {{"--method-position", "top"}, "--method-position", 2},
        {{"run.chd", "./run.chd"}, "OUTPUT", 1},
        {{"run.chd", path("link.txt")}, "OUTPUT", 1},
        {{}, "input", 2}};
    for (const auto &[given, named, exitCode] : cases) {
        QStringList arguments = given;
        if (!arguments.contains("run.chd") && !arguments.isEmpty())
            arguments += {"run.chd", "out.txt"};
        const Result result = run(arguments, 60000, m_dir.path());
        EXPECT_EQ(result.exitCode, exitCode) << arguments.join(' ').toStdString();
        EXPECT_TRUE(result.err.contains(named)) << result.err.toStdString();
        EXPECT_FALSE(QFile::exists(path("out.txt")));
    }
    const auto input = RunContent::readRunFile(path("run.chd"));
    ASSERT_TRUE(input) << "the input is left as it was";
    EXPECT_EQ(RunContent::differences(*input, {3001, 2, 1}), QString());
}

// Run files and the running log on a realistic day: load and save of a 24-hour run, bytes a
// pair on disk, one WriteLog of 20 seconds of data on a log of an hour or of a week, and the
// check and the save of a week's log a crash left behind.
#include "../chart/Chromatogram.h"
#include "chart/Quillchart.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <memory>

namespace {

constexpr long long kDay = 432000;
constexpr long long kHour = 18000;
constexpr long long kWeek = 7 * kDay;
constexpr long long kTwentySeconds = 100;
constexpr int kMarksADay = 500;

const Chromatogram &chromatogram()
{
    static const Chromatogram week(kWeek + 100 * kTwentySeconds * 20);
    return week;
}

/// A chart of `count` pairs with the run's own marks and method texts, topped up with labels
/// to kMarksADay marks a day.
void feed(Quillchart &chart, long long from, long long to)
{
    const auto &samples = chromatogram().samples();
    const auto &marks = chromatogram().marks();
    auto mark =
        std::lower_bound(marks.begin(), marks.end(), from,
                         [](const Chromatogram::Mark &m, long long s) { return m.sample < s; });
    const long long extraEvery = kDay / kMarksADay;
    for (long long i = from; i < to; ++i) {
        chart.AddSample(samples[i].uv, samples[i].conductivity);
        for (; mark != marks.end() && mark->sample == i; ++mark) {
            if (mark->methodText)
                chart.AddMethodText(mark->label, chart.GetLastTime());
            else
                chart.AddEventMark(mark->label, mark->color, mark->height, chart.GetLastTime());
        }
        if (i % extraEvery == extraEvery / 2)
            chart.AddEventMark(QString::number(i / extraEvery), 0x00FF00, 10, chart.GetLastTime());
    }
}

std::unique_ptr<Quillchart> makeChart(long long count)
{
    auto chart = std::make_unique<Quillchart>();
    chart->resize(1920, 1080);
    feed(*chart, 0, count);
    chart->SetNotes(QStringLiteral("Column 3, second use after CIP."));
    return chart;
}

// On the disk, not in memory: a save is only done once it is synced.
QString benchDirectory()
{
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/ostrel-bench-XXXXXX"));
    return dir.path();
}

void BM_SaveDataFileDay(benchmark::State &state)
{
    const auto chart = makeChart(kDay);
    const QString file = benchDirectory() + QStringLiteral("/day.chd");
    for (auto _ : state)
        benchmark::DoNotOptimize(chart->SaveDataFile(file));
    state.counters["bytes_per_pair"] = double(QFileInfo(file).size()) / kDay;
}
BENCHMARK(BM_SaveDataFileDay)->Unit(benchmark::kMillisecond);

void BM_LoadDataFileDay(benchmark::State &state)
{
    const QString file = benchDirectory() + QStringLiteral("/day.chd");
    if (!QFileInfo::exists(file) && !makeChart(kDay)->SaveDataFile(file))
        state.SkipWithError("cannot save the day's run");
    Quillchart chart;
    chart.resize(1920, 1080);
    for (auto _ : state)
        benchmark::DoNotOptimize(chart.LoadDataFile(file));
    state.counters["bytes_per_pair"] = double(QFileInfo(file).size()) / kDay;
}
BENCHMARK(BM_LoadDataFileDay)->Unit(benchmark::kMillisecond);

// One tick of the log timer: 20 seconds of new pairs, on a log that already holds `range(0)`
// hours, in files of a day.
void BM_WriteLogTwentySeconds(benchmark::State &state)
{
    const long long held = state.range(0) * kHour;
    const QString dir = benchDirectory() + QStringLiteral("/log%1").arg(state.range(0));
    QDir().mkpath(dir);
    const auto chart = makeChart(held);
    if (chart->WriteLog(dir, 1, 20000, 24.0) != 0)
        state.SkipWithError("first WriteLog failed");
    long long next = held;
    for (auto _ : state) {
        state.PauseTiming();
        if (next + kTwentySeconds > qint64(chromatogram().samples().size()))
            next = held;
        feed(*chart, next, next + kTwentySeconds);
        next += kTwentySeconds;
        state.ResumeTiming();
        if (chart->WriteLog(dir, 1, 20000, 24.0) != 0)
            state.SkipWithError("WriteLog failed");
    }
    chart->CloseLog(dir, 1);
}
BENCHMARK(BM_WriteLogTwentySeconds)->Arg(1)->Arg(168)->Unit(benchmark::kMillisecond);

/// A week's log left behind, in files of a day, as a crash leaves it.
QString weekLog()
{
    const QString dir = benchDirectory() + QStringLiteral("/week");
    if (!QDir(dir).exists()) {
        QDir().mkpath(dir);
        if (makeChart(kWeek)->WriteLog(dir, 1, 20000, 24.0) != 0)
            return {};
    }
    return dir;
}

void BM_CheckLogFileWeek(benchmark::State &state)
{
    const QString dir = weekLog();
    Quillchart chart;
    for (auto _ : state)
        if (!chart.CheckLogFile(dir))
            state.SkipWithError("no log found");
}
BENCHMARK(BM_CheckLogFileWeek)->Unit(benchmark::kMillisecond);

void BM_SaveLogAsWeek(benchmark::State &state)
{
    const QString dir = weekLog();
    Quillchart chart;
    for (auto _ : state)
        if (chart.SaveLogAs(dir, 0, benchDirectory() + QStringLiteral("/week.chl")) != 0)
            state.SkipWithError("SaveLogAs failed");
}
BENCHMARK(BM_SaveLogAsWeek)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

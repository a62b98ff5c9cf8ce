#include "Chromatogram.h"
#include "chart/Quillchart.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPen>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <malloc.h>
#include <map>
#include <memory>

namespace {

constexpr QSize kScreen(1920, 1080);
constexpr long long kDay = 432000;
constexpr long long kWeek = 3024000;

const Chromatogram &chromatogram()
{
    static const Chromatogram week(kWeek);
    return week;
}

void feed(Quillchart &chart, long long count)
{
    const auto &samples = chromatogram().samples();
    const auto &marks = chromatogram().marks();
    auto mark = marks.begin();
    for (long long i = 0; i < count; ++i) {
        chart.AddSample(samples[i].uv, samples[i].conductivity);
        for (; mark != marks.end() && mark->sample == i; ++mark) {
            if (mark->methodText)
                chart.AddMethodText(mark->label, chart.GetLastTime());
            else
                chart.AddEventMark(mark->label, mark->color, mark->height, chart.GetLastTime());
        }
    }
}

// Full view as the window sets it: from 0 to the next whole minute past the run.
void showAll(Quillchart &chart)
{
    chart.setTimeAxisMin(0.0f);
    chart.setTimeAxisMax(std::nearbyint(chart.GetLastTime() + 0.5f));
    chart.setUvAxisMin(-0.2f);
    chart.setUvAxisMax(2.0f);
    chart.setCondAxisMin(0.0f);
    chart.setCondAxisMax(500.0f);
}

std::unique_ptr<Quillchart> makeChart(long long count)
{
    auto chart = std::make_unique<Quillchart>();
    chart->resize(kScreen);
    chart->setChartTitle(QStringLiteral("Chart Recorder"));
    feed(*chart, count);
    showAll(*chart);
    chart->Redraw();
    return chart;
}

// Charts are built once per length and shared by the benchmarks that only draw them.
Quillchart &sharedChart(long long count)
{
    static std::map<long long, std::unique_ptr<Quillchart>> charts;
    auto &chart = charts[count];
    if (!chart)
        chart = makeChart(count);
    return *chart;
}

void BM_Redraw(benchmark::State &state)
{
    Quillchart &chart = sharedChart(state.range(0));
    showAll(chart);
    for (auto _ : state)
        chart.Redraw();
}
BENCHMARK(BM_Redraw)->Arg(kDay)->Arg(kWeek)->Unit(benchmark::kMillisecond);

// A zoom of range(1) minutes in the middle of the run, on half the UV scale.
void BM_RedrawZoomed(benchmark::State &state)
{
    Quillchart &chart = sharedChart(state.range(0));
    const float middle = chart.GetLastTime() / 2;
    chart.setTimeAxisMin(middle);
    chart.setTimeAxisMax(middle + float(state.range(1)));
    chart.setUvAxisMin(0.0f);
    chart.setUvAxisMax(1.0f);
    for (auto _ : state)
        chart.Redraw();
    showAll(chart);
}
BENCHMARK(BM_RedrawZoomed)
    ->ArgsProduct({{kDay, kWeek}, {1, 10, 60, 600}})
    ->Args({kWeek, 3000})
    ->Unit(benchmark::kMillisecond);

// The baseline: clear the image and draw one polyline per trace through every sample, with the
// points already mapped (a real naive chart would map them on each paint, too).
void BM_NaivePolyline(benchmark::State &state)
{
    const long long count = state.range(0);
    const auto &samples = chromatogram().samples();
    const QRectF plot(80, 40, kScreen.width() - 160, kScreen.height() - 100);
    QList<QPointF> uv(count);
    QList<QPointF> conductivity(count);
    for (long long i = 0; i < count; ++i) {
        const double x = plot.left() + double(i) / double(count) * plot.width();
        uv[i] = QPointF(x, plot.bottom() - (samples[i].uv + 0.2) / 2.2 * plot.height());
        conductivity[i] = QPointF(x, plot.bottom() - samples[i].conductivity / 500 * plot.height());
    }
    QImage image(kScreen, QImage::Format_RGB32);
    QPen uvPen(Qt::blue, 1);
    uvPen.setCosmetic(true);
    QPen conductivityPen(Qt::red, 1);
    conductivityPen.setCosmetic(true);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setPen(uvPen);
        painter.drawPolyline(uv.constData(), int(count));
        painter.setPen(conductivityPen);
        painter.drawPolyline(conductivity.constData(), int(count));
    }
}
BENCHMARK(BM_NaivePolyline)->Arg(kDay)->Arg(kWeek)->Unit(benchmark::kMillisecond);

// One live tick: four new pairs, then DrawNewData on a 24-hour chart whose axis runs a quarter
// past the data, as the live view keeps it. When the data reach the end the axis moves on, as
// the live view does, outside the timing.
void BM_DrawNewData(benchmark::State &state)
{
    auto chart = makeChart(kDay);
    chart->setTimeAxisMax(chart->GetLastTime() * 1.25f);
    chart->Redraw();
    chart->DrawNewData();
    const auto &samples = chromatogram().samples();
    long long next = kDay;
    for (auto _ : state) {
        for (int i = 0; i < 4; ++i, ++next)
            chart->AddSample(samples[next % kWeek].uv, samples[next % kWeek].conductivity);
        if (!chart->IsLastPointVisible()) {
            state.PauseTiming();
            chart->setTimeAxisMax(chart->GetLastTime() * 1.25f);
            chart->Redraw();
            state.ResumeTiming();
        }
        chart->DrawNewData();
    }
}
BENCHMARK(BM_DrawNewData)->Unit(benchmark::kMicrosecond);

size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// A whole week of pairs into a fresh chart per iteration; the time per pair is the counter
// ns_per_pair. Afterwards one more week is added with each call timed on its own (max_add_us),
// and the heap that chart holds is divided by its pairs (bytes_per_pair).
void BM_AddSample(benchmark::State &state)
{
    const auto &samples = chromatogram().samples();
    for (auto _ : state) {
        state.PauseTiming();
        auto chart = std::make_unique<Quillchart>();
        state.ResumeTiming();
        for (const auto &pair : samples)
            chart->AddSample(pair.uv, pair.conductivity);
        benchmark::DoNotOptimize(chart->GetLastTime());
        state.PauseTiming();
        chart.reset();
        state.ResumeTiming();
    }
    state.counters["ns_per_pair"] =
        benchmark::Counter(double(kWeek) * double(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);

    const size_t before = heapInUse();
    auto chart = std::make_unique<Quillchart>();
    double slowest = 0;
    for (const auto &pair : samples) {
        const auto start = std::chrono::steady_clock::now();
        chart->AddSample(pair.uv, pair.conductivity);
        const std::chrono::duration<double, std::micro> took =
            std::chrono::steady_clock::now() - start;
        slowest = std::max(slowest, took.count());
    }
    state.counters["bytes_per_pair"] = double(heapInUse() - before) / double(kWeek);
    state.counters["max_add_us"] = slowest;
}
BENCHMARK(BM_AddSample)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

// The recovery scan at start: five crashed copies left a week's log each, three of them
// registered; the scan lists the Log folder and checks each left-over for a log.
#include "chart/Quillchart.h"
#include "runtime/App.h"
#include "runtime/SettingsStore.h"
#include "shell/Recovery.h"
#include "shell/frmDataRecovery.h"
#include "view/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cmath>

namespace {

constexpr int kLeftOvers = 5;
constexpr qint64 kWeek = 7 * 24 * 60 * 300;

void leaveLogs()
{
    Quillchart chart;
    for (qint64 i = 0; i < kWeek; ++i)
        chart.AddSample(float(std::sin(double(i) / 900.0)), 20.0f + float(i % 300) / 30.0f);
    for (int copy = 0; copy < kLeftOvers; ++copy) {
        const QString tag = QString::number(4000 + copy);
        const QString directory = App::Path() + "/Log/" + tag;
        QDir().mkpath(directory);
        // A writer moved to another directory starts its log there afresh, whole.
        if (chart.WriteLog(directory, 1, 20000, 24.0) != 0)
            qFatal("no log written");
        if (copy < 3)
            SaveSetting(App::Title(), "LogInfo", QString::number(copy + 1),
                        QStringLiteral("Lab %1|11/24/26|9:0%1:00 AM|%2").arg(copy).arg(tag));
    }
    SaveSetting(App::Title(), "LogInfo", "0", "3");
}

void BM_RecoveryScanFiveWeekLogs(benchmark::State &state)
{
    frmMain window;
    const LogInfoRows table = GetAllSettings(App::Title(), "LogInfo");
    Recovery recovery(window.logPlace, table, *window.Chart[5], *window.runningLog, &window);
    qsizetype rows = 0;
    for (auto _ : state) {
        frmDataRecovery form(recovery);
        recovery.FillKnownLogs(form);
        recovery.FillUnknownLogs(form);
        rows = form.lstLogFiles->count();
    }
    if (rows != kLeftOvers)
        state.SkipWithError(qPrintable(QStringLiteral("%1 left-overs offered").arg(rows)));
}
BENCHMARK(BM_RecoveryScanFiveWeekLogs)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", (home.path() + "/data").toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    leaveLogs();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

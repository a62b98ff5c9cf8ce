// Runs into tabs through the real main window, offscreen: from the Open command to the first
// paint of the new tab, for a 24-hour data file and a 7-day log file, and the Close of the
// first of four tabs (three files read again) to the first paint of the recorder's tab.
//
//   file_tabs_bench [--repeats N]
#include "../chart/Chromatogram.h"
#include "ScriptedDialogs.h"
#include "chart/Quillchart.h"
#include "runtime/Application.h"
#include "view/frmMain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTabWidget>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr long long kDay = 432000;

/// Counts the paints of one widget.
class PaintWatch : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
    int paints = 0;
};

void fill(Quillchart &chart, const Chromatogram &run)
{
    for (const auto &pair : run.samples())
        chart.AddSample(pair.uv, pair.conductivity);
    for (const auto &mark : run.marks()) {
        const float time = float(mark.sample) / 300.0f;
        if (mark.methodText)
            chart.AddMethodText(mark.label, time);
        else
            chart.AddEventMark(mark.label, mark.color, mark.height, time);
    }
}

/// Milliseconds from `command` to the end of the next paint of `chart`.
template <typename Command> double toFirstPaint(Quillchart &chart, Command command)
{
    PaintWatch watch;
    chart.installEventFilter(&watch);
    QElapsedTimer clock;
    clock.start();
    command();
    while (watch.paints == 0)
        QCoreApplication::processEvents();
    const double ms = double(clock.nsecsElapsed()) / 1e6;
    chart.removeEventFilter(&watch);
    return ms;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir home;
    qputenv("XDG_DATA_HOME", (home.path() + "/data").toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toLocal8Bit());
    Application app(argc, argv);
    int repeats = 7;
    const int repeatsAt = int(app.arguments().indexOf(QStringLiteral("--repeats")));
    if (repeatsAt > 0 && repeatsAt + 1 < app.arguments().size())
        repeats = app.arguments()[repeatsAt + 1].toInt();

    const QString day = home.filePath(QStringLiteral("day.chd"));
    const QString week = home.filePath(QStringLiteral("week.chl"));
    {
        Quillchart chart;
        fill(chart, Chromatogram(kDay));
        chart.SaveDataFile(day);
        Quillchart log;
        fill(log, Chromatogram(7 * kDay));
        const QString logDir = home.filePath(QStringLiteral("log"));
        QDir().mkpath(logDir);
        log.WriteLog(logDir, 1, 20000, 24.0);
        log.SaveLogAs(logDir, 1, week);
    }

    ScriptedDialogs dialogs;
    frmMain window;
    window.resize(1920, 1080);
    window.show();
    QCoreApplication::processEvents();

    std::vector<double> openDay, openWeek, closeFirst;
    for (int r = 0; r < repeats; ++r) {
        dialogs.files = {day};
        openDay.push_back(toFirstPaint(*window.Chart[1], [&] { window.mnuOpenData_Click(); }));
        for (int tab = 2; tab <= 4; ++tab) {
            dialogs.files = {day};
            window.mnuOpenData_Click();
        }
        window.TabChart->setCurrentIndex(1);
        QCoreApplication::processEvents();
        closeFirst.push_back(toFirstPaint(*window.Chart[0], [&] { window.mnuClose_Click(); }));
        for (int tab = 3; tab >= 1; --tab) {
            window.TabChart->setCurrentIndex(tab);
            window.mnuClose_Click();
        }
        dialogs.files = {week};
        openWeek.push_back(toFirstPaint(*window.Chart[1], [&] { window.mnuOpenLog_Click(); }));
        window.mnuClose_Click();
        if (window.tabs.ChartCount != 1 || !dialogs.boxes.isEmpty()) {
            std::fprintf(stderr, "the tabs did not open and close as expected\n");
            return 1;
        }
    }
    std::printf("open 24-hour .chd to first paint   median %7.1f ms\n", median(openDay));
    std::printf("open 7-day .chl to first paint     median %7.1f ms\n", median(openWeek));
    std::printf("close first of four to first paint median %7.1f ms (%.1f x one opening)\n",
                median(closeFirst), median(closeFirst) / median(openDay));
    return 0;
}

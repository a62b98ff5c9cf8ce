// The live view's cost per decoding pass as a recording grows to a day. A day of the simulated
// instrument is played through the real main window, offscreen, in the bursts a 700 ms tick
// finds in the ring (about 3.5 pairs); each pass's decoding and live update are timed, and the
// passes around 1 minute, 1 hour and 24 hours of run are summarised, in full view and in a
// 10-minute window.
//
//   live_view_bench [--window] [--hours H]
#include "Pty.h"
#include "chart/Quillchart.h"
#include "runtime/Application.h"
#include "ScriptedDialogs.h"
#include "view/frmMain.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRadioButton>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

QByteArray simulatedRun(double hours, const QString &dir)
{
    const QString path = dir + QStringLiteral("/run.bin");
    QProcess::execute(QStringLiteral(VELQUIN_SIM),
                      {"--out", path, "--speed", "0", "--runs", "1", "--run-minutes",
                       QString::number(hours * 60), "--idle-seconds", "2", "--seed", "3"});
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void report(const char *when, std::vector<double> passes)
{
    if (passes.empty())
        return;
    std::sort(passes.begin(), passes.end());
    const auto at = [&](double q) { return passes[size_t(q * double(passes.size() - 1))]; };
    std::printf("%-10s passes %6zu  median %7.1f us  p99 %8.1f us  max %8.1f us\n", when,
                passes.size(), at(0.5), at(0.99), passes.back());
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir home;
    qputenv("XDG_DATA_HOME", (home.path() + "/data").toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toLocal8Bit());
    Application app(argc, argv);
    const bool windowMode = app.arguments().contains(QStringLiteral("--window"));
    double hours = 24;
    const int hoursAt = int(app.arguments().indexOf(QStringLiteral("--hours")));
    if (hoursAt > 0 && hoursAt + 1 < app.arguments().size())
        hours = app.arguments()[hoursAt + 1].toDouble();

    const QByteArray stream = simulatedRun(hours, home.path());
    Pty com1;
    qputenv("OSTREL_COMPORTS", com1.slavePath().toLocal8Bit());
    ScriptedDialogs dialogs;
    frmMain window;
    window.resize(1920, 1080);
    window.show();
    if (windowMode)
        window.optTimeAxis[1]->setChecked(true);

    // (run minutes, microseconds) of every pass that ran the live view.
    std::vector<std::pair<double, double>> passes;
    constexpr qsizetype kBurst = 42;
    QElapsedTimer clock;
    for (qsizetype at = 0; at < stream.size(); at += kBurst) {
        window.ring.store(stream.mid(at, kBurst));
        const bool recording = window.intake.Recording;
        clock.start();
        window.TimerProcess_Timer();
        const double micros = double(clock.nsecsElapsed()) / 1000.0;
        if (recording && window.intake.Recording)
            passes.emplace_back(window.Chart[0]->GetLastTime(), micros);
    }

    std::printf("%s, %.0f h run, %zu passes while recording\n",
                windowMode ? "10-minute window" : "full view", hours, passes.size());
    const struct
    {
        const char *name;
        double from;
        double to;
    } points[] = {{"1 minute", 0.5, 1.5}, {"1 hour", 59, 61}, {"24 hours", 1438, 1440}};
    for (const auto &point : points) {
        std::vector<double> near;
        for (const auto &[minutes, micros] : passes)
            if (minutes >= point.from && minutes < point.to)
                near.push_back(micros);
        report(point.name, near);
    }
    return 0;
}

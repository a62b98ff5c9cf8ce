#include "Pty.h"
#include "SimulatorRun.h"
#include "chart/Quillchart.h"
#include "ScriptedDialogs.h"
#include "view/frmMain.h"

#include <QApplication>
#include <QRadioButton>

#include <gtest/gtest.h>

namespace {

/// After each decoding pass: where the newest pair stood and what the axis showed.
struct PassView
{
    float last = 0;
    float min = 0;
    float max = 0;
};

} // namespace

// The window mode moves the axis every simulated minute, so it is the one worth the real
// time; full view over the same stream is covered by feeding the ring directly.
TEST(LiveAtSpeed, ThirtyMinutesAtTwentyTimesMoveTheWindowOnlyWhenTheNewestPairLeavesIt)
{
    // 30 simulated minutes in 90 s; the simulator is given its own options after the run's.
    SimulatorRun instrument({"--kind", "status", "--runs", "1", "--run-minutes", "30",
                             "--idle-seconds", "10", "--pauses", "0", "--holds", "0", "--speed",
                             "20"});
    ASSERT_FALSE(instrument.ptyPath().isEmpty());
    qputenv("OSTREL_COMPORTS", instrument.ptyPath().toLocal8Bit());
    ScriptedDialogs dialogs;
    frmMain window;
    window.show();
    window.optTimeAxis[1]->setChecked(true);

    Quillchart &chart = *window.Chart[0];
    PassView previous{0, chart.TimeAxisMin(), chart.TimeAxisMax()};
    int passes = 0;
    int moves = 0;
    QStringList faults;
    // Connected after the window's own handler: runs right after each pass.
    QObject::connect(&window.TimerProcess, &QTimer::timeout, [&] {
        if (!window.intake.Recording)
            return;
        const PassView now{chart.GetLastTime(), chart.TimeAxisMin(), chart.TimeAxisMax()};
        const bool moved = now.min != previous.min || now.max != previous.max;
        ++passes;
        if (moved) {
            ++moves;
            if (now.last < previous.max)
                faults << QString("moved at %1 inside %2").arg(now.last).arg(previous.max);
        } else if (now.last >= previous.max) {
            faults << QString("stayed at %1 past %2").arg(now.last).arg(previous.max);
        }
        previous = now;
    });

    ASSERT_TRUE(waitFor([&] { return instrument.finished(); }, 150000));
    // The run's end stops the recording at the next pass.
    ASSERT_TRUE(waitFor([&] { return !window.intake.Recording; }, 5000));
    EXPECT_TRUE(faults.isEmpty()) << faults.join("; ").toStdString();
    EXPECT_GT(passes, 60) << "a pass about every second of real time";
    EXPECT_GT(chart.GetLastTime(), 29.5f) << "the whole run reached the chart";
    EXPECT_GE(moves, 19) << "a jump each minute past the first ten";
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    qputenv("OSTREL_COMPORTS", "");
}

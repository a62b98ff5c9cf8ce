#include "../acquisition/StreamBytes.h"
#include "Pty.h"
#include "ScriptedDialogs.h"
#include "view/LedShape.h"
#include "view/frmMain.h"

#include <QAction>

#include <gtest/gtest.h>

using namespace StreamBytes;

namespace {
/// COM 1 on a pseudo-terminal, so that the window finds a free port at start-up.
struct Com1
{
    Com1() { qputenv("OSTREL_COMPORTS", pty.slavePath().toLocal8Bit()); }
    ~Com1() { qputenv("OSTREL_COMPORTS", ""); }
    Pty pty;
};
} // namespace

TEST(FrmMainLink, StartsWithoutALinkAndLightsUpWhenTheStreamIsRecognised)
{
    Com1 com1;
    ScriptedDialogs dialogs;
    frmMain window;
    EXPECT_EQ(window.ShapeReciveLed->FillColor(), 0u);
    for (QAction *command : {window.mnuStart, window.mnuStop, window.cmdRecord, window.cmdStop})
        EXPECT_FALSE(command->isEnabled()) << command->text().toStdString();
    EXPECT_TRUE(window.TimerProcess.isActive());
    EXPECT_EQ(window.TimerProcess.interval(), 700);
    EXPECT_FALSE(window.TimerCheckComData.isActive());

    window.intake.ChartRunActive = true;
    window.ring.store(pair(0.1f, 5.0f) + pair(0.1f, 5.0f));
    window.TimerProcess_Timer();

    EXPECT_TRUE(window.link.FirstSyncFound);
    EXPECT_EQ(window.ShapeReciveLed->FillColor(), 0x00FF00u);
    EXPECT_FALSE(window.intake.ChartRunActive);
    EXPECT_TRUE(window.TimerCheckComData.isActive());
    EXPECT_EQ(window.TimerCheckComData.interval(), 5000);
    EXPECT_TRUE(window.TimerSaveLog.isActive()) << "logging is on";
    EXPECT_TRUE(window.mnuStart->isEnabled());
    EXPECT_TRUE(window.cmdRecord->isEnabled());
    EXPECT_TRUE(window.cmdStop->isEnabled());
    EXPECT_FALSE(window.mnuStop->isEnabled()) << "Stop waits for a recording";
    EXPECT_TRUE(window.TimerProcess.isActive());
}

TEST(FrmMainLink, LogTimerFollowsLoggingAtEachSynchronisation)
{
    Com1 com1;
    ScriptedDialogs dialogs;
    frmMain window;
    window.settings.DataLogging = false;
    window.TimerSaveLog.start();
    window.ring.store(pair(0.1f, 5.0f) + pair(0.1f, 5.0f));
    window.TimerProcess_Timer();
    EXPECT_TRUE(window.link.FirstSyncFound);
    EXPECT_FALSE(window.TimerSaveLog.isActive());
}

TEST(FrmMainLink, TwoBytesInTheRingStartNoPass)
{
    Com1 com1;
    ScriptedDialogs dialogs;
    frmMain window;
    const int beepsBefore = dialogs.beeps;
    window.ring.store(QByteArray("\x96U", 2));
    window.TimerProcess_Timer();
    EXPECT_EQ(int(window.ring.ByteCount), 2);
    EXPECT_EQ(dialogs.beeps, beepsBefore) << "no search ran, so no error was logged";
    window.ring.store(QByteArray(1, 0));
    window.TimerProcess_Timer();
    EXPECT_EQ(dialogs.beeps, beepsBefore + 1) << "three bytes: the search runs and reports";
}

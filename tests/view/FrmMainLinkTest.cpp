#include "../acquisition/StreamBytes.h"
#include "ScriptedDialogs.h"
#include "view/LedShape.h"
#include "view/frmMain.h"

#include <QAction>

#include <gtest/gtest.h>

using namespace StreamBytes;

TEST(FrmMainLink, StartsWithoutALinkAndLightsUpWhenTheStreamIsRecognised)
{
    for (const bool logging : {true, false}) {
        SCOPED_TRACE(logging ? "logging" : "not logging");
        ScriptedDialogs dialogs;
        frmMain window;
        window.settings.DataLogging = logging;
        EXPECT_FALSE(window.menu.mnuStart->isEnabled());
        window.link.ring().store(pair(0.1f, 5.0f) + pair(0.1f, 5.0f));
        window.link.TimerProcess_Timer();

        ASSERT_TRUE(window.link.state().FirstSyncFound);
        EXPECT_EQ(window.ShapeReciveLed->FillColor(), 0x00FF00u);
        EXPECT_EQ(window.runningLog->TimerSaveLog().isActive(), logging);
        EXPECT_TRUE(window.toolbar.cmdRecord->isEnabled());
        EXPECT_FALSE(window.menu.mnuStop->isEnabled()) << "Stop waits for a recording";

        window.ComDataLost();
        EXPECT_EQ(window.ShapeReciveLed->FillColor(), 0u);
        EXPECT_FALSE(window.menu.mnuStart->isEnabled());
        EXPECT_FALSE(window.toolbar.cmdRecord->isEnabled());
    }
}

#include "Pty.h"
#include "ScriptedDialogs.h"
#include "SimulatorRun.h"
#include "acquisition/frmNoData.h"
#include "shell/Startup.h"
#include "view/LedShape.h"
#include "view/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

struct StateUnderDialog
{
    bool seen = false;
    qint64 atMs = 0;
    bool recording = true;
    quint32 led = 1;
    bool recordEnabled = true;
    bool stopEnabled = true;
};

} // namespace

TEST(LinkLost, MidRunTheSessionStopsAndTheDialogComesThenTheLedReturnsAlone)
{
    // A run starts after two seconds; twelve seconds in, the line falls silent for twenty.
    SimulatorRun instrument({"--kind", "status", "--runs", "1", "--run-minutes", "2",
                             "--idle-seconds", "2", "--fault", "silence@12:20"});
    ASSERT_FALSE(instrument.ptyPath().isEmpty());
    const ComPorts com1({instrument.ptyPath()});
    QElapsedTimer clock;
    clock.start();

    ScriptedDialogs dialogs;
    frmMain window;
    Startup startup(window);
    window.setShell(&startup);
    ASSERT_TRUE(startup.openPort());
    window.show();
    ASSERT_TRUE(waitFor([&] { return window.intake.Recording(); }, 15000));

    // frmNoData runs its own event loop; look at the window from inside it, then answer Ok.
    StateUnderDialog underDialog;
    int dialogsShown = 0;
    QTimer watcher;
    QObject::connect(&watcher, &QTimer::timeout, [&] {
        auto *dialog = qobject_cast<frmNoData *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        ++dialogsShown;
        underDialog = {true,
                       clock.elapsed(),
                       window.intake.Recording(),
                       window.ShapeReciveLed->FillColor(),
                       window.toolbar.cmdRecord->isEnabled() || window.menu.mnuStart->isEnabled(),
                       window.toolbar.cmdStop->isEnabled() || window.menu.mnuStop->isEnabled()};
        dialog->cmdOk->click();
    });
    watcher.start(50);

    ASSERT_TRUE(waitFor([&] { return underDialog.seen; }, 25000));
    // The last bytes came about 12 s in; the alarm comes 5 to 10 s later (plus decoding lag).
    EXPECT_LT(underDialog.atMs, 12000 + 10000 + 2000);
    EXPECT_FALSE(underDialog.recording);
    EXPECT_EQ(underDialog.led, 0u) << "black";
    EXPECT_FALSE(underDialog.recordEnabled);
    EXPECT_FALSE(underDialog.stopEnabled);

    ASSERT_TRUE(waitFor([&] { return window.ShapeReciveLed->FillColor() == 0x00FF00u; }, 25000))
        << "the stream returns 32 s in";
    EXPECT_TRUE(window.menu.mnuStart->isEnabled());
    EXPECT_TRUE(window.toolbar.cmdStop->isEnabled());
    QTest::qWait(7000);
    EXPECT_EQ(dialogsShown, 1) << "no further dialog once the stream is back";
    EXPECT_FALSE(window.intake.Recording()) << "a lost session is stopped, not suspended";
}

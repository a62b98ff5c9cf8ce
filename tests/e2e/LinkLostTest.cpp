#include "ModalDriver.h"
#include "Pty.h"
#include "ScriptedDialogs.h"
#include "SimulatorRun.h"
#include "acquisition/frmNoData.h"
#include "shell/Startup.h"
#include "shell/frmStartup.h"
#include "view/LedShape.h"
#include "view/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

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
    frmStartup splash;
    Startup startup(window, splash);
    window.setShell(&startup);
    ASSERT_TRUE(startup.openPort());
    {
        ModalDriver name;
        name.answerWith([](QDialog &form) { form.reject(); });
        ASSERT_TRUE(name.activate(window));
    }
    ASSERT_TRUE(waitFor([&] { return window.intake.Recording(); }, 15000));

    // frmNoData runs its own event loop; look at the window from inside it, then answer Ok.
    QString underDialog;
    qint64 dialogAtMs = 0;
    int dialogsShown = 0;
    QTimer watcher;
    QObject::connect(&watcher, &QTimer::timeout, [&] {
        auto *dialog = qobject_cast<frmNoData *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        ++dialogsShown;
        dialogAtMs = clock.elapsed();
        underDialog =
            QStringLiteral("recording %1, LED %2, record %3, stop %4")
                .arg(window.intake.Recording())
                .arg(window.ShapeReciveLed->FillColor())
                .arg(window.toolbar.cmdRecord->isEnabled() || window.menu.mnuStart->isEnabled())
                .arg(window.toolbar.cmdStop->isEnabled() || window.menu.mnuStop->isEnabled());
        dialog->cmdOk->click();
    });
    watcher.start(50);

    ASSERT_TRUE(waitFor([&] { return dialogsShown > 0; }, 25000));
    // The last bytes came about 12 s in; the alarm comes 5 to 10 s later (plus decoding lag).
    EXPECT_LT(dialogAtMs, 12000 + 10000 + 2000);
    EXPECT_EQ(underDialog.toStdString(), "recording 0, LED 0, record 0, stop 0")
        << "stopped, the LED black, both commands off";

    ASSERT_TRUE(waitFor([&] { return window.ShapeReciveLed->FillColor() == 0x00FF00u; }, 25000))
        << "the stream returns 32 s in";
    EXPECT_TRUE(window.menu.mnuStart->isEnabled());
    EXPECT_TRUE(window.toolbar.cmdStop->isEnabled());
    QTest::qWait(7000);
    EXPECT_EQ(dialogsShown, 1) << "no further dialog once the stream is back";
    EXPECT_FALSE(window.intake.Recording()) << "a lost session is stopped, not suspended";
}

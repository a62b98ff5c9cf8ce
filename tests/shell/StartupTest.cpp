#include "shell/Startup.h"

#include "Pty.h"
#include "ScriptedDialogs.h"
#include "runtime/App.h"
#include "runtime/SettingsStore.h"
#include "view/frmMain.h"

#include <QAction>
#include <QDir>

#include <gtest/gtest.h>

namespace {

/// The program's start as main() runs it, on COM 1 = a pseudo-terminal, with the given stored
/// options.
class StartupTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        DeleteSetting(App::Title(), "Options");
        // No crashed copy's log: recovery offers nothing.
        DeleteSetting(App::Title(), "LogInfo");
        QDir(App::Path() + "/Log").removeRecursively();
    }
    void TearDown() override { DeleteSetting(App::Title(), "Options"); }

    static QString stored(const char *key) { return GetSetting(App::Title(), "Options", key, "-"); }

    Pty pty;
    ComPorts com{{pty.slavePath()}};
    ScriptedDialogs dialogs;
};

} // namespace

TEST_F(StartupTest, FirstStartTakesTheDefaultsOpensTheLinkAndWatchesItOnceShown)
{
    frmMain window;
    Startup startup(window);
    window.setShell(&startup);
    EXPECT_FALSE(window.link.ComPort.PortOpen()) << "a window alone opens no port";
    ASSERT_TRUE(startup.openPort());
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_EQ(int(window.link.ComPort.CommPort()), 1);
    EXPECT_TRUE(window.link.ComPort.PortOpen());
    EXPECT_FALSE(window.session.TimerCheckComData().isActive());
    window.show();
    EXPECT_TRUE(window.session.TimerCheckComData().isActive()) << "from the first activation";

    EXPECT_TRUE(window.settings.DataLogging);
    EXPECT_FALSE(window.menu.mnuLogOn->isEnabled());
    EXPECT_TRUE(window.menu.mnuLogOff->isEnabled());
    EXPECT_EQ(window.windowTitle(), "Ostrel MS - Velquin System: Default");
    EXPECT_EQ(stored("ComPortNumber"), "-") << "nothing is written before the exit";
    const QString logDirectory = window.logPlace.LogDirectory;
    EXPECT_TRUE(QDir(logDirectory).exists());
    window.close();
    EXPECT_EQ(stored("ComPortNumber"), "1");
    EXPECT_EQ(stored("DataLogging"), "True");
    EXPECT_FALSE(QDir(logDirectory).exists()) << "a clean exit leaves no log behind";
    EXPECT_EQ(GetAllSettings(App::Title(), "LogInfo"),
              (QList<QPair<QString, QString>>{{"0", "0"}}));
}

TEST_F(StartupTest, LoggingStoredAsZeroStartsWithLogOnOffered)
{
    SaveSetting(App::Title(), "Options", "DataLogging", "0");
    frmMain window;
    Startup startup(window);
    window.setShell(&startup);
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_FALSE(window.settings.DataLogging);
    EXPECT_TRUE(window.menu.mnuLogOn->isEnabled());
    EXPECT_TRUE(window.toolbar.cmdLogOff->isChecked());
    window.show();
    window.close();
    EXPECT_EQ(stored("DataLogging"), "False");
}

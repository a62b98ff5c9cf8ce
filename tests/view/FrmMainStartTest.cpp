#include "Pty.h"
#include "runtime/App.h"
#include "ScriptedDialogs.h"
#include "runtime/SettingsStore.h"
#include "view/frmMain.h"

#include <QAction>

#include <gtest/gtest.h>

namespace {

/// A window started on COM 1 = a pseudo-terminal, with the given stored options.
class FrmMainStart : public ::testing::Test
{
protected:
    void SetUp() override
    {
        DeleteSetting(App::Title(), "Options");
        qputenv("OSTREL_COMPORTS", pty.slavePath().toLocal8Bit());
    }
    void TearDown() override
    {
        qputenv("OSTREL_COMPORTS", "");
        DeleteSetting(App::Title(), "Options");
    }

    static QString stored(const char *key) { return GetSetting(App::Title(), "Options", key, "-"); }

    Pty pty;
    ScriptedDialogs dialogs;
};

} // namespace

TEST_F(FrmMainStart, FirstStartWithAnEmptyStoreTakesTheDefaultsSilently)
{
    frmMain window;
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_EQ(int(window.ComPort.CommPort()), 1);
    EXPECT_TRUE(window.ComPort.PortOpen());
    EXPECT_TRUE(window.settings.DataLogging);
    EXPECT_FALSE(window.mnuLogOn->isEnabled());
    EXPECT_TRUE(window.mnuLogOff->isEnabled());
    EXPECT_EQ(window.windowTitle(), "Ostrel MS - Velquin System: Default");
    EXPECT_EQ(stored("ComPortNumber"), "-") << "nothing is written before the exit";
    window.close();
    EXPECT_EQ(stored("ComPortNumber"), "1");
    EXPECT_EQ(stored("DataLogging"), "True");
}

TEST_F(FrmMainStart, LoggingStoredAsZeroStartsWithLogOnOffered)
{
    SaveSetting(App::Title(), "Options", "DataLogging", "0");
    frmMain window;
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_FALSE(window.settings.DataLogging);
    EXPECT_TRUE(window.mnuLogOn->isEnabled());
    EXPECT_TRUE(window.cmdLogOff->isChecked());
    window.close();
    EXPECT_EQ(stored("DataLogging"), "False");
}

TEST_F(FrmMainStart, AnUnreadablePortNumberGivesTheBoxAndTheDefaults)
{
    SaveSetting(App::Title(), "Options", "ComPortNumber", "40000");
    SaveSetting(App::Title(), "Options", "DataLogging", "False");
    frmMain window;
    ASSERT_EQ(dialogs.boxes.size(), 1);
    EXPECT_EQ(dialogs.boxes[0].text,
              "Cannot load configuration file.\rOverflow\rUsing default values.");
    EXPECT_TRUE(window.settings.DataLogging) << "every value takes its default";
    EXPECT_EQ(int(window.ComPort.CommPort()), 1);
    EXPECT_EQ(stored("ComPortNumber"), "40000") << "the bad text stays until the next save";
}

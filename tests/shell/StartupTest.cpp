#include "shell/Startup.h"

#include "ModalDriver.h"
#include "Pty.h"
#include "ScriptedDialogs.h"
#include "chart/Quillchart.h"
#include "runtime/App.h"
#include "runtime/MsgBox.h"
#include "runtime/SettingsStore.h"
#include "shell/frmLogName.h"
#include "shell/frmStartup.h"
#include "view/frmMain.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using Rows = QList<QPair<QString, QString>>;

/// The program's start as main() runs it, on COM 1 = a pseudo-terminal, with the given stored
/// options; the system name dialog is answered as each test says.
/// Made before the window reads the store.
struct CleanStore
{
    CleanStore()
    {
        DeleteSetting(App::Title(), "Options");
        // No crashed copy's log: recovery offers nothing.
        DeleteSetting(App::Title(), "LogInfo");
        QDir(App::Path() + "/Log").removeRecursively();
    }
    ~CleanStore() { DeleteSetting(App::Title(), "Options"); }
};

class StartupTest : public ::testing::Test, private CleanStore
{
protected:
    static QString stored(const char *key) { return GetSetting(App::Title(), "Options", key, "-"); }
    static QString entry() { return GetSetting(App::Title(), "LogInfo", "1", "-"); }

    /// Types `keys` into the name dialog and presses OK.
    void nameWith(const QString &keys)
    {
        driver.answerWith<frmLogName>([this, keys](frmLogName &form) {
            QTest::keyClicks(form.txtLogFileName, keys);
            typed = form.txtLogFileName->text();
            okEnabled = form.cmdOKButton->isEnabled();
            form.cmdOKButton->click();
        });
    }
    void start(const QString &commandLine = {})
    {
        startup = std::make_unique<Startup>(window, splash, commandLine);
        window.setShell(startup.get());
        ASSERT_TRUE(startup->openPort());
        ASSERT_TRUE(driver.activate(window));
    }

    Pty pty;
    ComPorts com{{pty.slavePath()}};
    ScriptedDialogs dialogs;
    ModalDriver driver;
    frmStartup splash;
    frmMain window;
    std::unique_ptr<Startup> startup;
    QString typed;
    bool okEnabled = false;
};

} // namespace

TEST_F(StartupTest, FirstStartTakesTheDefaultsAsksTheNameAndTidiesEverythingAwayAtExit)
{
    driver.answerWith([](QDialog &form) { form.reject(); });
    EXPECT_FALSE(window.link.ComPort.PortOpen()) << "a window alone opens no port";
    start();
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_TRUE(window.link.ComPort.PortOpen());
    EXPECT_TRUE(window.session.TimerCheckComData().isActive());
    EXPECT_EQ(window.windowTitle(), "Ostrel MS - System: Default") << "Cancel keeps the name";
    EXPECT_TRUE(entry().startsWith("Default|"));
    EXPECT_FALSE(splash.isVisible());
    EXPECT_TRUE(splash.cmdClose->isVisibleTo(&splash)) << "the splash is the About box now";

    EXPECT_TRUE(window.settings.DataLogging);
    EXPECT_TRUE(window.toolbar.cmdLogOn->isChecked());
    EXPECT_EQ(stored("ComPortNumber"), "-") << "nothing is written before the exit";
    const QString logDirectory = window.logPlace.LogDirectory;
    EXPECT_TRUE(QDir(logDirectory).exists());
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(dialogs.boxes.isEmpty()) << "all saved and no log: no question";
    EXPECT_EQ(stored("ComPortNumber"), "1");
    EXPECT_FALSE(QDir(logDirectory).exists()) << "a clean exit leaves no log behind";
    EXPECT_EQ(GetAllSettings(App::Title(), "LogInfo"), (Rows{{"0", "0"}}));
}

TEST_F(StartupTest, LoggingStoredAsZeroStartsWithLogOnOffered)
{
    SaveSetting(App::Title(), "Options", "DataLogging", "0");
    window.settings.ReadSettings();
    driver.answerWith([](QDialog &form) { form.reject(); });
    start();
    EXPECT_TRUE(window.toolbar.cmdLogOff->isChecked()) << "set by the first activation";
}

TEST_F(StartupTest, TheNameTakesLettersDigitsAndBlanksUpTo25)
{
    nameWith("Lab 3.-_");
    start();
    EXPECT_EQ(typed, "Lab 3") << "a period, a hyphen and an underscore are dropped";
    EXPECT_EQ(dialogs.beeps, 3);
    EXPECT_EQ(window.windowTitle(), "Ostrel MS - System: Lab 3");
    EXPECT_TRUE(entry().startsWith("Lab 3|")) << "registered after the dialog";

    // The 26th character is the box's to refuse, silently.
    nameWith(QString(26, 'x'));
    window.menu.mnuLogName->trigger();
    EXPECT_EQ(typed.size(), 25);
    EXPECT_EQ(dialogs.beeps, 3);

    nameWith("   ");
    window.menu.mnuLogName->trigger();
    EXPECT_EQ(window.windowTitle(), "Ostrel MS - System:    ") << "blanks only are a name";
    EXPECT_TRUE(entry().startsWith("   |"));

    driver.answerWith<frmLogName>([this](frmLogName &form) {
        form.txtLogFileName->clear();
        okEnabled = form.cmdOKButton->isEnabled();
        QTest::keyClick(form.txtLogFileName, Qt::Key_Return);
        typed = form.isVisible() ? "still asking" : "gone";
        form.cmdCancelButton->click();
    });
    window.menu.mnuLogName->trigger();
    EXPECT_FALSE(okEnabled) << "an empty name cannot be confirmed";
    EXPECT_EQ(typed, "still asking");
    EXPECT_TRUE(entry().startsWith("   |")) << "Cancel keeps the old name";
    EXPECT_TRUE(window.close());
}

TEST_F(StartupTest, ExitAsksForTheLogAndForUnsavedChartsOfTheTabsInUse)
{
    driver.answerWith([](QDialog &form) { form.reject(); });
    start();
    window.tabs.ChartSaved[3] = false; // a stale flag: tab 3 is not in use
    window.tabs.ChartSaved[0] = false;
    window.Chart[5]->AddSample(0.1f, 2.0f);
    window.TimerSaveLog_Timer();
    dialogs.answers = {MsgBoxResult::Yes, MsgBoxResult::No};
    window.menu.mnuExit->trigger();
    ASSERT_EQ(dialogs.boxes.size(), 2);
    EXPECT_EQ(dialogs.boxes[0].text, "Do you want to save the LOG file before exiting ");
    EXPECT_EQ(dialogs.boxes[0].style, MsgBoxStyle::YesNo | MsgBoxStyle::Question);
    EXPECT_EQ(dialogs.fileDialogs.size(), 1) << "Yes runs Save Log, here cancelled";
    EXPECT_EQ(dialogs.boxes[1].title, "Data is not saved");
    EXPECT_EQ(dialogs.boxes[1].style,
              MsgBoxStyle::YesNo | MsgBoxStyle::Question | MsgBoxStyle::DefaultButton2);
    EXPECT_TRUE(window.isVisible()) << "No keeps the window";
    EXPECT_TRUE(QDir(window.logPlace.LogDirectory).exists());
    EXPECT_TRUE(entry().startsWith("Default|"));

    dialogs.boxes.clear();
    dialogs.answers = {MsgBoxResult::No, MsgBoxResult::Yes};
    EXPECT_TRUE(window.close());
    EXPECT_EQ(dialogs.boxes.size(), 2);
    EXPECT_EQ(entry(), "-");
}

TEST_F(StartupTest, TheCommandLineIsOpenedAsOneFileNameAfterTheName)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("run of monday.chd");
    window.Chart[1]->AddSample(0.5f, 10.0f);
    ASSERT_TRUE(window.Chart[1]->SaveDataFile(path));
    window.Chart[1]->ClearData();
    driver.answerWith([](QDialog &form) { form.reject(); });
    start(path);
    EXPECT_EQ(window.tabs.ChartCount, 2);
    EXPECT_EQ(window.tabs.ChartFileName[1], path);
    EXPECT_TRUE(window.close());
}

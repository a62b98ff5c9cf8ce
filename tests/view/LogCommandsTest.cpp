#include "../acquisition/StreamBytes.h"
#include "LogFile.h"
#include "ScriptedDialogs.h"
#include "documents/ErrorHandler.h"
#include "view/frmMain.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace StreamBytes;

namespace {

/// The window with its log in a directory of its own, not yet made, and 12 pairs taken.
class LogCommands : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QFile::remove(ErrorHandler::logPath());
        window.logPlace.LogDirectory = logDir() + '/';
        take(12);
    }

    [[nodiscard]] QString logDir() const { return home.filePath("4242"); }

    void take(int pairs)
    {
        QByteArray bytes;
        for (int i = 0; i < pairs; ++i)
            bytes += pair(0.001f * float(taken++), 3.0f);
        window.link.ring().store(bytes);
        window.link.TimerProcess_Timer();
    }

    static QString errorLog()
    {
        QFile log(ErrorHandler::logPath());
        return log.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(log.readAll()) : QString();
    }

    QTemporaryDir home;
    ScriptedDialogs dialogs;
    frmMain window;
    int taken = 0;
};

} // namespace

TEST_F(LogCommands, SaveLogIsOfferedOnlyOnceATickHasPutTheLogOnDisk)
{
    QAction &save = *window.menu.mnuSaveLog;
    EXPECT_FALSE(save.isEnabled());
    window.TimerSaveLog_Timer();
    EXPECT_FALSE(save.isEnabled()) << "the directory does not exist yet";
    EXPECT_GT(dialogs.beeps + dialogs.boxes.size(), 0) << "the failed write is reported";

    ASSERT_TRUE(QDir().mkpath(logDir()));
    window.TimerSaveLog_Timer();
    EXPECT_TRUE(save.isEnabled());

    window.logPlace.LogDirectory = home.filePath("gone/");
    window.TimerSaveLog_Timer();
    EXPECT_TRUE(save.isEnabled()) << "a failed tick leaves the command as it was";
}

TEST_F(LogCommands, SaveLogWritesEveryPairTakenUnderTheChosenNameAndWaitsForTheNextTick)
{
    ASSERT_TRUE(QDir().mkpath(logDir()));
    window.TimerSaveLog_Timer();
    take(5);
    window.TimerSaveLog_Timer();
    window.logPlace.SystemName = "Lab 3.5";
    dialogs.files.push_back(home.filePath("kept"));
    window.mnuSaveLog_Click();

    EXPECT_TRUE(window.runningLog->LogSaved());
    ASSERT_EQ(dialogs.fileDialogs.size(), 1);
    const ComDlg &shown = dialogs.fileDialogs[0];
    EXPECT_EQ(shown.DialogTitle, "Save Log File As...");
    EXPECT_EQ(shown.FileName, "Lab 3.5");
    EXPECT_EQ(shown.Flags, 2054);
    EXPECT_TRUE(window.ComDlg.CancelError) << "it stays on after the command";
    const auto saved = readLogFile(home.filePath("kept.chl"));
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->store.count(), 17);
    EXPECT_GE(saved->axes.timeMax, float(SampleStore::timeOf(16))) << "it opens whole";
    EXPECT_FALSE(window.menu.mnuSaveLog->isEnabled()) << "offered again after the next tick";
    EXPECT_TRUE(dialogs.boxes.isEmpty());
}

TEST_F(LogCommands, ACancelIsLoggedAndAnUnreadableLogIsReportedButCountsAsSaved)
{
    ASSERT_TRUE(QDir().mkpath(logDir()));
    window.TimerSaveLog_Timer();
    window.mnuSaveLog_Click();
    EXPECT_FALSE(window.runningLog->LogSaved()) << "the cancelled dialog";
    EXPECT_EQ(dialogs.beeps, 1);
    EXPECT_TRUE(errorLog().contains("Cancel was selected.")) << errorLog().toStdString();
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_TRUE(window.menu.mnuSaveLog->isEnabled());

    window.logPlace.LogDirectory = home.filePath("empty");
    window.mnuSaveLog_Click();
    EXPECT_TRUE(window.runningLog->LogSaved()) << "recovery then lets the row go";
    ASSERT_EQ(dialogs.boxes.size(), 1);
    EXPECT_TRUE(dialogs.boxes[0].text.startsWith("Serious Data Error!"));
    EXPECT_EQ(dialogs.fileDialogs.size(), 1) << "no dialog for a log that is not there";
}

TEST_F(LogCommands, LogOffStopsTheTimerAtOnceAndLogOnRestartsItOnlyWithDataComing)
{
    EXPECT_TRUE(window.runningLog->TimerSaveLog().isActive()) << "from the stream's first sync";
    window.mnuLogOff_Click();
    EXPECT_FALSE(window.runningLog->TimerSaveLog().isActive());
    EXPECT_TRUE(window.menu.mnuLogOn->isEnabled());
    EXPECT_FALSE(window.menu.mnuLogOff->isEnabled());
    EXPECT_TRUE(window.toolbar.cmdLogOff->isChecked());
    EXPECT_FALSE(window.toolbar.cmdLogOn->isChecked());

    window.ComDataLost();
    window.mnuLogOn_Click();
    EXPECT_TRUE(window.settings.DataLogging);
    EXPECT_FALSE(window.runningLog->TimerSaveLog().isActive()) << "no data since the loss";
    EXPECT_TRUE(window.toolbar.cmdLogOn->isChecked());
    take(2);
    EXPECT_TRUE(window.runningLog->TimerSaveLog().isActive()) << "the next sync starts it";
}

#include "shell/Recovery.h"

#include "Fakes.h"
#include "LogFile.h"
#include "ModalDriver.h"
#include "ScriptedDialogs.h"
#include "chart/Quillchart.h"
#include "runtime/App.h"
#include "runtime/SettingsStore.h"
#include "shell/InstanceRegistry.h"
#include "shell/frmDataRecovery.h"
#include "view/frmMain.h"

#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>

#include <array>
#include <deque>
#include <gtest/gtest.h>

namespace {

const QString kEntry = "Lab 3|11/24/26|2:05:09 PM|";

TEST(RegistryText, EntriesNameTheirDirectoryAndShowInColumns)
{
    const QString log = App::Path() + "/Log/";
    EXPECT_EQ(InstanceRegistry::LogDirFromEntry(kEntry + "4242"), log + "4242");
    EXPECT_EQ(InstanceRegistry::LogDirFromEntry("a|b|c|12|x"), log + "12|") << "a fourth bar";
    EXPECT_EQ(InstanceRegistry::LogDirFromEntry("a|b"), log);

    const QString row = InstanceRegistry::EntryDisplayText(kEntry + "4242");
    EXPECT_EQ(row, "  Lab 3" + QString(25, ' ') + "11/24/26" + QString(5, ' ') + "2:05:09 PM");
    EXPECT_EQ(InstanceRegistry::EntryDisplayText("Default"), "  Default");
    EXPECT_THROW((void)InstanceRegistry::EntryDisplayText("A|Wednesday 24 Nov|9:00|1"),
                 RuntimeError)
        << "a date longer than 13 characters";
}

TEST(Registry, AFirstStartMakesTheFolderAndACountThatIsNoNumberCountsAsNone)
{
    QDir(App::Path() + "/Log").removeRecursively();
    SaveSetting(App::Title(), "LogInfo", "0", "many");
    ScriptedDialogs dialogs;
    LogPlace place;
    InstanceRegistry registry(place);
    registry.prepareLogDirectory();
    EXPECT_EQ(int(place.InstanceNumber), 1);
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_EQ(place.LogDirectory, App::Path() + "/Log/" + registry.InstanceTag + "/");
    EXPECT_TRUE(QDir(place.LogDirectory).exists());
    EXPECT_EQ(GetSetting(App::Title(), "LogInfo", "1"), "Default|" + registry.StartDate + "|" +
                                                            registry.StartTime + "|" +
                                                            registry.InstanceTag);
    // The directory stands as a crashed copy's of the same number would: the next steps on.
    LogPlace next;
    InstanceRegistry nextCopy(next);
    nextCopy.prepareLogDirectory();
    EXPECT_EQ(nextCopy.InstanceTag.toLongLong(), registry.InstanceTag.toLongLong() + 65536);
}

TEST(Registry, ACopyCountingOnMeetsARunningCopysKeyAndTakesItOver)
{
    QDir(App::Path() + "/Log").removeRecursively();
    DeleteSetting(App::Title(), "LogInfo");
    ScriptedDialogs dialogs;
    std::array<LogPlace, 3> places;
    std::deque<InstanceRegistry> copies;
    for (int i : {0, 1}) {
        copies.emplace_back(places[std::size_t(i)]);
        copies.back().prepareLogDirectory();
    }
    copies[0].RemoveRegistryEntry();
    copies.emplace_back(places[2]);
    copies[2].prepareLogDirectory();
    EXPECT_EQ(int(places[2].InstanceNumber), 2);
    ASSERT_EQ(dialogs.boxes.size(), 1);
    EXPECT_EQ(dialogs.boxes[0].text,
              "Existing Registry entry will be overwritten, improved functionality to come later!");
    EXPECT_EQ(GetSetting(App::Title(), "LogInfo", "2").section('|', 3), copies[2].InstanceTag);
    copies[1].RemoveRegistryEntry();
    copies[2].RemoveRegistryEntry();
    EXPECT_EQ(GetAllSettings(App::Title(), "LogInfo"), (LogInfoRows{{"0", "0"}}));
}

/// The Log folder with left-overs of crashed copies, and the window that recovers them.
class RecoveryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QDir(App::Path() + "/Log").removeRecursively();
        DeleteSetting(App::Title(), "LogInfo");
        SaveSetting(App::Title(), "LogInfo", "0", "1");
    }

    /// A crashed copy's directory holding a log of `pairs` pairs, registered under `key` when
    /// that is given.
    static void leaveLog(const QString &tag, int pairs, const QString &key = {})
    {
        const QString directory = App::Path() + "/Log/" + tag;
        ASSERT_TRUE(QDir().mkpath(directory));
        Quillchart chart;
        for (int i = 0; i < pairs; ++i)
            chart.AddSample(0.01f * float(i), 2.0f);
        ASSERT_EQ(chart.WriteLog(directory + "/", 1, 20000, 24.0), 0);
        if (!key.isEmpty())
            SaveSetting(App::Title(), "LogInfo", key, kEntry + tag);
    }

    /// Runs recovery with the register as it stands, the dialog answered by `answer`.
    void recover(const std::function<void(frmDataRecovery &)> &answer)
    {
        const LogInfoRows table = GetAllSettings(App::Title(), "LogInfo");
        ModalDriver driver;
        driver.answerWith<frmDataRecovery>(answer);
        Recovery recovery(window.logPlace, table, *window.Chart[5], *window.runningLog, &window);
        recovery.run();
        showings = driver.showings();
    }

    static QStringList leftOvers()
    {
        return QDir(App::Path() + "/Log").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    }

    QTemporaryDir out;
    ScriptedDialogs dialogs;
    frmMain window;
    int showings = 0;
};

void tick(frmDataRecovery &form, int row)
{
    form.lstLogFiles->item(row)->setCheckState(Qt::Checked);
}

} // namespace

TEST_F(RecoveryTest, OneCrashedRunIsSavedAndEverythingGoesWithoutAQuestion)
{
    leaveLog("4242", 9, "1");
    dialogs.files.push_back(out.filePath("lab"));
    recover([&](frmDataRecovery &form) {
        EXPECT_EQ(form.lstLogFiles->item(0)->text(),
                  InstanceRegistry::EntryDisplayText(kEntry + "4242"));
        EXPECT_FALSE(form.cmdRecoverButton->isEnabled());
        tick(form, 0);
        EXPECT_TRUE(form.cmdRecoverButton->isEnabled());
        form.cmdRecoverButton->click();
    });
    EXPECT_EQ(dialogs.fileDialogs.value(0).FileName, "Lab 3");
    EXPECT_EQ(pairsInLogFile(out.filePath("lab.chl")), 9);
    EXPECT_EQ(dialogs.beeps, 1) << "the dialog's own; the save made no complaint";
    EXPECT_TRUE(dialogs.boxes.isEmpty()) << "Done ran by itself, with no warning";
    EXPECT_TRUE(leftOvers().isEmpty());
    EXPECT_TRUE(GetAllSettings(App::Title(), "LogInfo").isEmpty());
}

TEST_F(RecoveryTest, AnUnknownLogIsOfferedByItsNumberAndDoneWarnsBeforeLosingTheRest)
{
    leaveLog("4242", 9, "1");
    leaveLog("77", 4);
    dialogs.files.push_back(out.filePath("unknown"));
    dialogs.answers = {MsgBoxResult::Cancel, MsgBoxResult::Ok};
    QStringList before;
    QStringList after;
    recover([&](frmDataRecovery &form) {
        for (int i = 0; i < form.lstLogFiles->count(); ++i)
            before << form.lstLogFiles->item(i)->text();
        tick(form, 1);
        form.cmdRecoverButton->click();
        form.cmdDoneButton->click();
        for (int i = 0; i < form.lstLogFiles->count(); ++i)
            after << form.lstLogFiles->item(i)->text();
        form.cmdDoneButton->click();
    });
    EXPECT_EQ(before, QStringList({InstanceRegistry::EntryDisplayText(kEntry + "4242"),
                                   "  Unknown Log File 77"}));
    EXPECT_EQ(dialogs.fileDialogs.value(0).FileName, "77");
    EXPECT_EQ(pairsInLogFile(out.filePath("unknown.chl")), 4);
    EXPECT_EQ(after, before.mid(0, 1)) << "Cancel kept the dialog up with the known row";
    ASSERT_EQ(dialogs.boxes.size(), 2);
    EXPECT_EQ(dialogs.boxes[0].title, "Ostrel MS - Warning!");
    EXPECT_EQ(dialogs.boxes[0].style,
              MsgBoxStyle::OkCancel | MsgBoxStyle::Exclamation | MsgBoxStyle::DefaultButton2);
    EXPECT_TRUE(dialogs.boxes[0].text.startsWith("Not all Log files have been recovered!"));
    EXPECT_TRUE(leftOvers().isEmpty()) << "OK lost the known log";
}

TEST_F(RecoveryTest, ACancelledSaveKeepsTheRowUncheckedAndRecoverWaitsForATick)
{
    leaveLog("4242", 9, "1");
    int rows = -1;
    bool recoverEnabled = true;
    recover([&](frmDataRecovery &form) {
        tick(form, 0);
        form.cmdRecoverButton->click();
        rows = form.lstLogFiles->count();
        recoverEnabled = form.cmdRecoverButton->isEnabled();
        EXPECT_EQ(form.lstLogFiles->item(0)->checkState(), Qt::Unchecked);
        form.reject();
    });
    EXPECT_EQ(rows, 1);
    EXPECT_FALSE(recoverEnabled);
    EXPECT_EQ(leftOvers(), QStringList{"4242"}) << "the close box leaves it for the next start";
}

TEST_F(RecoveryTest, NothingToOfferIsSweptAwaySilently)
{
    // "11" is inside the other entry's tag, so counts as known; "111" holds no log.
    leaveLog("11", 5);
    SaveSetting(App::Title(), "LogInfo", "1", kEntry + "111");
    QDir().mkpath(App::Path() + "/Log/111");
    recover([](frmDataRecovery &) { ADD_FAILURE() << "nothing is offered"; });
    EXPECT_EQ(showings, 0);
    EXPECT_TRUE(leftOvers().isEmpty());
    EXPECT_TRUE(GetAllSettings(App::Title(), "LogInfo").isEmpty());
}

TEST_F(RecoveryTest, ALogWithoutAnyRegisterEndsTheProgram)
{
    leaveLog("77", 4);
    const LogInfoRows none;
    Recovery recovery(window.logPlace, none, *window.Chart[5], *window.runningLog, &window);
    frmDataRecovery form(recovery);
    EXPECT_THROW(recovery.FillUnknownLogs(form), RuntimeError);
}

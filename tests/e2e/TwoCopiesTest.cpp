#include "Pty.h"
#include "RunningProgram.h"
#include "ScriptedDialogs.h"
#include "acquisition/frmSetup.h"
#include "documents/LogPlace.h"
#include "runtime/App.h"
#include "runtime/SettingsStore.h"
#include "shell/InstanceRegistry.h"
#include "shell/Startup.h"
#include "view/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

TEST(TwoCopies, TheSecondMustChooseAnotherPortThanTheFirstCopys)
{
    Pty com1;
    Pty com2;
    const QString ports = com1.slavePath() + "," + com2.slavePath();
    const ComPorts comPorts({com1.slavePath(), com2.slavePath()});

    // The first copy: the real program, sharing this test's user directories.
    RunningProgram first(ports, RunningProgram::SameUser);
    ASSERT_TRUE(first.started());
    ASSERT_TRUE(first.holdsPort(com1.slavePath())) << "the first copy opens COM 1";

    App::registerInstance();
    ASSERT_TRUE(App::PrevInstance());

    ScriptedDialogs dialogs;
    bool cancelWasDisabled = false;
    bool com1WasDisabled = false;
    int step = 0;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        auto *form = qobject_cast<frmSetup *>(QApplication::activeModalWidget());
        if (!form || !form->isVisible())
            return;
        if (step == 0) {
            cancelWasDisabled = !form->cmdCancel->isEnabled();
            com1WasDisabled = !form->optCom[0]->isEnabled();
            // OK on the stored number, COM 1, tries the first copy's port.
            form->cmdOk->click();
        } else if (step == 1) {
            form->optCom[1]->click();
            form->cmdOk->click();
        }
        ++step;
    });
    answer.start(50);

    frmMain second;
    Startup startup(second);
    ASSERT_TRUE(startup.openPort());
    answer.stop();
    EXPECT_TRUE(cancelWasDisabled);
    EXPECT_TRUE(com1WasDisabled) << "the probe found COM 1 busy (8005)";
    EXPECT_EQ(dialogs.boxes.size(), 1) << "the refusal of COM 1 is told";
    EXPECT_EQ(int(second.link.ComPort.CommPort()), 2);
    EXPECT_EQ(int(second.settings.ComPortNumber), 2);
}

namespace {

QString entry(const QString &key)
{
    return GetSetting(App::Title(), "LogInfo", key, "-");
}

QStringList copyDirectories()
{
    return QDir(App::Path() + "/Log").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

} // namespace

TEST(TwoCopies, TheSecondCountsOnFromTheFirstsEntryWithALogDirectoryOfItsOwn)
{
    DeleteSetting(App::Title(), "LogInfo");
    QDir(App::Path() + "/Log").removeRecursively();
    // The real program first, as the copy that starts alone and registers as 1.
    Pty com;
    RunningProgram first(com.slavePath(), RunningProgram::SameUser);
    ASSERT_TRUE(first.started());
    ASSERT_TRUE(waitFor([] { return entry("1") != "-"; }, 20000));
    const QString firstEntry = entry("1");
    const QString firstTag = firstEntry.section('|', 3);

    App::registerInstance();
    ASSERT_TRUE(App::PrevInstance());
    LogPlace second;
    InstanceRegistry secondCopy(second);
    secondCopy.prepareLogDirectory();
    EXPECT_EQ(int(second.InstanceNumber), 2);
    EXPECT_EQ(entry("0"), "2");
    EXPECT_EQ(entry("2").section('|', 3), secondCopy.InstanceTag);
    QStringList both{firstTag, secondCopy.InstanceTag};
    both.sort();
    EXPECT_EQ(copyDirectories(), both);

    QDir().rmdir(QString(second.LogDirectory).chopped(1));
    secondCopy.RemoveRegistryEntry();
    EXPECT_EQ(GetAllSettings(App::Title(), "LogInfo"),
              (QList<QPair<QString, QString>>{{"0", "1"}, {"1", firstEntry}}));
    EXPECT_EQ(copyDirectories(), QStringList{firstTag}) << "the other copy's log stays";
}

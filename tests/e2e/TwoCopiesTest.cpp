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

/// A copy's exit as far as the registry goes: its directory and its entry go.
void leave(InstanceRegistry &registry, const LogPlace &place)
{
    QDir().rmdir(QString(place.LogDirectory).chopped(1));
    registry.RemoveRegistryEntry();
}

} // namespace

TEST(TwoCopies, EachRegistersUnderItsNumberWithItsOwnLogAndTheThirdTakesOverTheSecondsKey)
{
    App::registerInstance();
    ScriptedDialogs dialogs;
    LogPlace first;
    InstanceRegistry firstCopy(first);
    firstCopy.prepareLogDirectory();
    EXPECT_EQ(entry("0"), "1");
    EXPECT_EQ(entry("1").section('|', 3), firstCopy.InstanceTag);

    // The real program beside it, registering at its start.
    Pty com;
    RunningProgram second(com.slavePath(), RunningProgram::SameUser);
    ASSERT_TRUE(second.started());
    ASSERT_TRUE(waitFor([] { return entry("2") != "-"; }, 20000));
    EXPECT_EQ(entry("0"), "2");
    EXPECT_TRUE(entry("2").startsWith("Default|"));
    const QString secondTag = entry("2").section('|', 3);
    QStringList both{firstCopy.InstanceTag, secondTag};
    both.sort();
    EXPECT_EQ(copyDirectories(), both);

    leave(firstCopy, first);
    EXPECT_EQ(entry("0"), "1");
    EXPECT_EQ(entry("1"), "-");
    EXPECT_EQ(copyDirectories(), QStringList{secondTag}) << "the other copy's log stays";

    // A third counts on from 1 to 2, meets the second's entry, says so and takes it over.
    LogPlace third;
    InstanceRegistry thirdCopy(third);
    thirdCopy.prepareLogDirectory();
    EXPECT_EQ(int(third.InstanceNumber), 2);
    ASSERT_EQ(dialogs.boxes.size(), 1);
    EXPECT_EQ(dialogs.boxes[0].text,
              "Existing Registry entry will be overwritten, improved functionality to come later!");
    EXPECT_EQ(entry("2").section('|', 3), thirdCopy.InstanceTag);
    EXPECT_EQ(copyDirectories().size(), 2);
    leave(thirdCopy, third);
    EXPECT_EQ(GetAllSettings(App::Title(), "LogInfo"),
              (QList<QPair<QString, QString>>{{"0", "0"}}));
    EXPECT_EQ(copyDirectories(), QStringList{secondTag});
}

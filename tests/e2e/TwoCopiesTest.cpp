#include "Pty.h"
#include "RunningProgram.h"
#include "ScriptedDialogs.h"
#include "documents/LogPlace.h"
#include "runtime/App.h"
#include "runtime/SettingsStore.h"
#include "shell/InstanceRegistry.h"

#include <QDir>

#include <gtest/gtest.h>

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

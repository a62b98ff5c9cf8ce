#include "TestEnvironment.h"
#include "runtime/App.h"
#include "runtime/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
const QString kApp = QStringLiteral("Ostrel MS");
}

TEST(SettingsStore, LivesInTheUsersConfigDirectory)
{
    SaveSetting(kApp, "Options", "ComPortNumber", "3");
    EXPECT_TRUE(QFile::exists(testHome() + "/config/Ostrel MS/Ostrel MS.ini"))
        << "the store is per user, under XDG_CONFIG_HOME";
}

TEST(SettingsStore, AllSettingsComeInNumericKeyOrder)
{
    for (const char *key : {"10", "2", "0", "1", "name"})
        SaveSetting(kApp, "LogInfo", key, QString("v") + key);
    const auto rows = GetAllSettings(kApp, "LogInfo");
    QStringList keys;
    for (const auto &row : rows)
        keys << row.first;
    EXPECT_EQ(keys, QStringList({"0", "1", "2", "10", "name"}));
    DeleteSetting(kApp, "LogInfo");
    EXPECT_TRUE(GetAllSettings(kApp, "LogInfo").isEmpty());
}

TEST(SettingsStore, AnotherCopysWriteIsSeenAtOnce)
{
    // Another running copy writes the same file through its own store object.
    QSettings other(QSettings::IniFormat, QSettings::UserScope, kApp, kApp);
    other.setValue("LogInfo/0", "4");
    other.sync();
    EXPECT_EQ(GetSetting(kApp, "LogInfo", "0"), "4");
    DeleteSetting(kApp, "LogInfo");
}

TEST(App, PathIsTheUsersDataDirectory)
{
    EXPECT_EQ(App::Path(), testHome() + "/data/Ostrel MS");
    EXPECT_TRUE(QDir(App::Path()).exists());
    EXPECT_EQ(App::InstanceTag(), QString::number(::getpid()));
}

TEST(App, PrevInstanceCountsLiveCopiesButNotKilledOnes)
{
    const QString directory = App::Path() + "/instances";
    QDir().mkpath(directory);
    const QByteArray holderFile = QFile::encodeName(directory + "/424242.lock");
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t holder = ::fork();
    if (holder == 0) {
        // Another copy: holds its lock until it is killed.
        const int fd = ::open(holderFile.constData(), O_RDWR | O_CREAT, 0600);
        ::flock(fd, LOCK_EX);
        (void)!::write(ready[1], "x", 1);
        for (;;)
            ::pause();
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);

    auto registerAndReport = [] {
        App::registerInstance();
        std::_Exit(App::PrevInstance() ? 3 : 4);
    };
    EXPECT_EXIT(registerAndReport(), testing::ExitedWithCode(3), "");

    ::kill(holder, SIGKILL);
    ::waitpid(holder, nullptr, 0);
    EXPECT_EXIT(registerAndReport(), testing::ExitedWithCode(4), "");
    EXPECT_FALSE(QFile::exists(QString::fromLocal8Bit(holderFile)))
        << "the lock of a killed copy is cleared away";
    ::close(ready[0]);
    ::close(ready[1]);
}

#include "documents/Settings.h"

#include "Fakes.h"
#include "ScriptedDialogs.h"
#include "acquisition/Link.h"
#include "documents/ErrorHandler.h"
#include "documents/MenuCommands.h"
#include "runtime/App.h"
#include "runtime/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSettings>

#include <gtest/gtest.h>
#include <tuple>

namespace {

const QString kOptions = "Options";

/// The settings over a store emptied for each test, reporting through the real error route.
class SettingsTest : public ::testing::Test, public MenuCommands
{
protected:
    void SetUp() override { DeleteSetting(App::Title(), kOptions); }
    void TearDown() override
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void mnuStop_Click() override {}
    void mnuLogOff_Click() override {}

    static void store(const QString &key, const QString &value)
    {
        SaveSetting(App::Title(), kOptions, key, value);
    }
    static QString stored(const QString &key)
    {
        return GetSetting(App::Title(), kOptions, key, "<missing>");
    }

    ScriptedDialogs dialogs;
    RecordedNews news;
    RecordedWindow window;
    ErrorHandler errors{link, *this};
    Link link{errors, news, window};
    Int16 InstanceNumber = 1;
    Settings settings{errors, InstanceNumber};
};

} // namespace

TEST_F(SettingsTest, FirstStartWithAnEmptyStoreGivesTheDefaultsSilently)
{
    settings.ComPortNumber = 7;
    settings.ReadSettings();
    EXPECT_EQ(settings.ComPortNumber, 1);
    EXPECT_TRUE(dialogs.boxes.isEmpty());
}

TEST_F(SettingsTest, StoredValuesAreReadAndWrittenBackInTheirOwnForms)
{
    store("ComPortNumber", "4");
    store("DataLogging", "0");
    store("DataFileSizeHours", "12.5");
    settings.ReadSettings();
    EXPECT_EQ(settings.ComPortNumber, 4);
    EXPECT_FALSE(settings.DataLogging) << "numbers convert as well as the words";
    EXPECT_EQ(settings.DataFileSizeHours, 12.5);

    settings.SaveSettings();
    EXPECT_EQ(stored("ComPortNumber"), "4");
    EXPECT_EQ(stored("DataLogging"), "False");
    EXPECT_EQ(stored("DataFileSizeHours"), "12.5");
}

TEST_F(SettingsTest, LoggingFlagTakesWordsInAnyCaseAndAnyNumber)
{
    const std::pair<const char *, bool> rows[] = {
        {"True", true}, {"false", false}, {"FALSE", false}, {"-1", true},
        {"2.5", true},  {"0.0", false},   {" True ", true}};
    for (const auto &[text, value] : rows) {
        store("DataLogging", text);
        settings.DataLogging = !value;
        settings.ReadSettings();
        EXPECT_EQ(settings.DataLogging, value) << text;
    }
}

TEST_F(SettingsTest, ValueThatDoesNotConvertShowsTheBoxAndDefaultsEverything)
{
    // The key, its text and the description of the error it raises.
    const std::tuple<const char *, const char *, const char *> rows[] = {
        {"ComPortNumber", "40000", "Overflow"},
        {"ComPortNumber", "three", "Type mismatch"},
        {"DataLogging", "Yes", "Type mismatch"},
        {"DataFileSizeHours", "", "Type mismatch"}};
    for (const auto &[key, text, description] : rows) {
        DeleteSetting(App::Title(), kOptions);
        store("ComPortNumber", "5");
        store("DataLogging", "False");
        store("DataFileSizeHours", "6");
        store(key, text);
        dialogs.boxes.clear();

        settings.ReadSettings();
        ASSERT_EQ(dialogs.boxes.size(), 1) << key << " = " << text;
        EXPECT_TRUE(dialogs.boxes[0].text.contains(description));
        EXPECT_EQ(settings.ComPortNumber, 1) << "also a value read before the failure";
        EXPECT_TRUE(settings.DataLogging);
        EXPECT_EQ(settings.DataFileSizeHours, 24.0);
        EXPECT_EQ(stored(key), text) << "the bad text stays until the next save";
    }
}

TEST_F(SettingsTest, AStoreThatCannotBeReadShowsTheBoxAndGivesTheDefaults)
{
    store("ComPortNumber", "5");
    const QString path =
        QSettings(QSettings::IniFormat, QSettings::UserScope, App::Title(), App::Title())
            .fileName();
    ASSERT_TRUE(QFile::rename(path, path + ".aside"));
    ASSERT_TRUE(QDir().mkdir(path));
    settings.ComPortNumber = 5;
    settings.ReadSettings();
    QDir().rmdir(path);
    QFile::rename(path + ".aside", path);
    ASSERT_EQ(dialogs.boxes.size(), 1);
    EXPECT_TRUE(dialogs.boxes[0].text.startsWith("Cannot load configuration file."));
    EXPECT_EQ(settings.ComPortNumber, 1);
}

TEST_F(SettingsTest, OnlyTheFirstCopyWritesTheStore)
{
    store("DataLogging", "True");
    settings.ReadSettings();
    InstanceNumber = 2;
    settings.DataLogging = false;
    settings.ComPortNumber = 3;
    settings.SaveSettings();
    EXPECT_EQ(stored("DataLogging"), "True");
    EXPECT_EQ(stored("ComPortNumber"), "<missing>");

    // The number is looked at when saving, since a copy learns it only after the settings.
    InstanceNumber = 1;
    settings.SaveSettings();
    EXPECT_EQ(stored("DataLogging"), "False");
    EXPECT_EQ(stored("ComPortNumber"), "3");
}

TEST_F(SettingsTest, HoursUseTheSystemsDecimalSeparatorAlsoWhenEditedByHand)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    // An editor writes the comma bare, where the store would quote it.
    QFile ini(QSettings(QSettings::IniFormat, QSettings::UserScope, App::Title(), App::Title())
                  .fileName());
    ASSERT_TRUE(QDir().mkpath(QFileInfo(ini).path()) && ini.open(QIODevice::Append));
    ini.write("\n[Options]\nDataFileSizeHours=1,5\n");
    ini.close();
    settings.ReadSettings();
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_EQ(settings.DataFileSizeHours, 1.5);
    settings.DataFileSizeHours = 0.75;
    settings.SaveSettings();
    EXPECT_EQ(stored("DataFileSizeHours"), "0,75");
}

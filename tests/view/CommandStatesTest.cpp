#include "../acquisition/StreamBytes.h"
#include "WindowFixture.h"
#include "view/LedShape.h"

#include <QAction>
#include <QTabWidget>
#include <QTemporaryDir>

using namespace StreamBytes;

namespace {

/// The commands that the kind of tab in front and the recording switch.
struct Row
{
    const char *name;
    QAction *MainMenu::*item;
    QAction *MainToolbar::*button;
    bool idle, recording, file;
};

const Row kRows[] = {
    {"mnuClose", &MainMenu::mnuClose, nullptr, false, false, true},
    {"mnuClear", &MainMenu::mnuClear, nullptr, true, false, false},
    {"mnuSaveData", &MainMenu::mnuSaveData, nullptr, true, false, true},
    {"mnuSaveDataAs", &MainMenu::mnuSaveDataAs, nullptr, true, false, true},
    {"mnuSaveSlectedData", &MainMenu::mnuSaveSlectedData, nullptr, true, false, true},
    {"mnuPrint", &MainMenu::mnuPrint, nullptr, true, false, true},
    {"mnuPrintSetup", &MainMenu::mnuPrintSetup, nullptr, true, false, true},
    {"mnuExport", &MainMenu::mnuExport, nullptr, true, false, true},
    {"cmdSave", nullptr, &MainToolbar::cmdSave, true, false, true},
    {"cmdPrint", nullptr, &MainToolbar::cmdPrint, true, false, true},
    {"cmdClear", nullptr, &MainToolbar::cmdClear, true, false, true},
};

enum Column { Idle, Recording, File };

class CommandStatesTest : public WindowFixture
{
protected:
    QAction *command(const Row &row) const
    {
        return row.item ? window->menu.*row.item : window->toolbar.*row.button;
    }
    void expectColumn(Column column) const
    {
        for (const Row &row : kRows) {
            const bool expected = column == Idle        ? row.idle
                                  : column == Recording ? row.recording
                                                        : row.file;
            EXPECT_EQ(command(row)->isEnabled(), expected) << row.name << " in column " << column;
        }
    }
    /// mnuStart, cmdRecord, mnuStop, cmdStop, mnuComPort as "TTFTF".
    QString recordCommands() const
    {
        QString states;
        for (QAction *a : {window->menu.mnuStart, window->toolbar.cmdRecord, window->menu.mnuStop,
                           window->toolbar.cmdStop, window->menu.mnuComPort})
            states += a->isEnabled() ? 'T' : 'F';
        return states;
    }
    void streamFound()
    {
        window->link.ring().store(pair(0.1f, 5.0f) + pair(0.1f, 5.0f));
        window->link.TimerProcess_Timer();
    }
    void openFileTab()
    {
        Quillchart chart;
        chart.AddSample(0.1f, 20.0f);
        ASSERT_TRUE(chart.SaveDataFile(dir.filePath("run.chd")));
        dialogs.files.push_back(dir.filePath("run.chd"));
        window->mnuOpenData_Click();
        ASSERT_EQ(window->tabs.CurrentChart, 1);
    }

    QTemporaryDir dir;
};

} // namespace

TEST_F(CommandStatesTest, RecordCommandsFollowTheLinkAndTheRecordingAtEachMoment)
{
    EXPECT_EQ(recordCommands(), "FFFFT") << "at load, no link";
    expectColumn(Idle);
    streamFound();
    EXPECT_EQ(window->ShapeReciveLed->FillColor(), 0x00FF00u);
    EXPECT_EQ(recordCommands(), "TTFTT") << "the stream found: Stop waits for a recording";
    window->mnuStart_Click();
    EXPECT_EQ(recordCommands(), "FTTTF");
    EXPECT_TRUE(window->toolbar.cmdRecord->isChecked());
    expectColumn(Recording);
    window->mnuStop_Click();
    EXPECT_EQ(recordCommands(), "TTFTT");
    EXPECT_TRUE(window->toolbar.cmdStop->isChecked());
    expectColumn(Idle);
    window->mnuStart_Click();
    window->ComDataLost();
    EXPECT_EQ(window->ShapeReciveLed->FillColor(), 0u);
    EXPECT_EQ(recordCommands(), "FFFFT") << "the recording is stopped first";
    EXPECT_FALSE(window->intake.Recording());
    expectColumn(Idle);
}

TEST_F(CommandStatesTest, AFileInFrontKeepsItsCommandsThroughRecordAndStop)
{
    streamFound();
    openFileTab();
    expectColumn(File);
    window->mnuStart_Click();
    expectColumn(File);
    EXPECT_EQ(recordCommands(), "FTTTF") << "the record commands follow on every tab";
    window->TabChart->setCurrentIndex(0);
    expectColumn(Recording);
    window->TabChart->setCurrentIndex(1);
    window->mnuStop_Click();
    expectColumn(File);
    window->TabChart->setCurrentIndex(0);
    expectColumn(Idle);
}

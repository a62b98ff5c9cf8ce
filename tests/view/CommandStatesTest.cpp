#include "../acquisition/StreamBytes.h"
#include "WindowFixture.h"
#include "view/LedShape.h"

#include <QAction>
#include <QTabWidget>
#include <QTemporaryDir>

using namespace StreamBytes;

namespace {

enum Column { Idle, Recording, File };

class CommandStatesTest : public WindowFixture
{
protected:
    /// Close is a file tab's, Clear the recorder's; the others serve any tab in front, but the
    /// recorder's only while it does not record.
    void expectColumn(Column column) const
    {
        const MainMenu &m = window->menu;
        const MainToolbar &t = window->toolbar;
        for (QAction *a : {m.mnuSaveData, m.mnuSaveDataAs, m.mnuSaveSlectedData, m.mnuPrint,
                           m.mnuPrintSetup, m.mnuExport, t.cmdSave, t.cmdPrint, t.cmdClear})
            EXPECT_EQ(a->isEnabled(), column != Recording) << a->text().toStdString() << column;
        EXPECT_EQ(m.mnuClose->isEnabled(), column == File) << column;
        EXPECT_EQ(m.mnuClear->isEnabled(), column == Idle) << column;
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

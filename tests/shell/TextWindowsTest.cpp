#include "shell/TextWindows.h"

#include "ModalDriver.h"
#include "ScriptedDialogs.h"
#include "chart/Quillchart.h"
#include "runtime/MsgBox.h"
#include "shell/Startup.h"
#include "shell/frmMethod.h"
#include "shell/frmNotes.h"
#include "shell/frmStartup.h"
#include "view/HelpCommands.h"
#include "view/HelpWindow.h"
#include "view/frmMain.h"

#include <QAction>
#include <QFontMetrics>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>

#include <gtest/gtest.h>

namespace {

/// The method and notes windows over the chart of the tab in front.
class TextWindowsTest : public ::testing::Test
{
protected:
    TextWindowsTest() { window.setShell(&startup); }

    /// Opens the notes through the menu, types `text` over them and leaves by `leave`.
    void editNotes(const QString &text, std::function<void(frmNotes &)> leave)
    {
        driver.answerWith<frmNotes>([this, text, leave](frmNotes &form) {
            if (!text.isNull())
                form.txtNotes->setPlainText(text);
            leave(form);
            stayed = form.isVisible();
            pressedWhileUp = window.toolbar.cmdNotes->isChecked();
            closingAfter = form.NotesClosing;
            if (stayed)
                form.cmdOK->click();
        });
        window.menu.mnuNotes->trigger();
    }

    ScriptedDialogs dialogs;
    ModalDriver driver;
    frmMain window;
    frmStartup splash;
    Startup startup{window, splash};
    bool stayed = false;
    bool pressedWhileUp = false;
    bool closingAfter = true;
};

} // namespace

TEST_F(TextWindowsTest, MethodShowsTheTextOfTheChartInFrontAndItsButtonFollowsTheWindow)
{
    window.Chart[0]->AddMethodText("STEP  VOL   CONC\r\n1     5.0   0 %", 0.0f);
    QString shown;
    driver.answerWith<frmMethod>([&](frmMethod &form) {
        shown = form.txtMethod->toPlainText();
        EXPECT_TRUE(form.txtMethod->isReadOnly());
        const QFontMetrics metrics = form.txtMethod->fontMetrics();
        EXPECT_EQ(metrics.horizontalAdvance("iiii"), metrics.horizontalAdvance("MMMM"));
        EXPECT_TRUE(window.toolbar.cmdMethod->isChecked());
        EXPECT_EQ(window.toolbar.cmdMethod->toolTip(), "Hide method form");
        form.close(); // the close box releases the button as OK does
    });
    window.toolbar.cmdMethod->trigger();
    EXPECT_EQ(shown, "STEP  VOL   CONC\n1     5.0   0 %");
    EXPECT_FALSE(window.toolbar.cmdMethod->isChecked());
    EXPECT_EQ(window.toolbar.cmdMethod->toolTip(), "Show method form");
    EXPECT_EQ(driver.showings(), 1);
}

TEST_F(TextWindowsTest, NotesAskOnlyAboutAChangeAndKeepItOnlyWhenTold)
{
    window.Chart[0]->SetNotes("column A");

    editNotes({}, [](frmNotes &form) { form.cmdCancel->click(); });
    EXPECT_TRUE(dialogs.boxes.isEmpty()) << "Cancel on unchanged notes asks nothing";
    EXPECT_FALSE(stayed);

    editNotes({}, [](frmNotes &form) { form.cmdOK->click(); });
    EXPECT_TRUE(window.tabs.ChartSaved[0]) << "OK on unchanged notes marks nothing";

    dialogs.answers = {MsgBoxResult::Cancel};
    editNotes("column B", [](frmNotes &form) { form.cmdCancel->click(); });
    ASSERT_EQ(dialogs.boxes.size(), 1);
    EXPECT_EQ(dialogs.boxes[0].style, MsgBoxStyle::YesNoCancel | MsgBoxStyle::Question);
    EXPECT_TRUE(stayed) << "Cancel in the question stays with the edit";
    EXPECT_FALSE(closingAfter);
    // ... and OK then keeps it.
    EXPECT_EQ(window.Chart[0]->GetNotes(), "column B");
    EXPECT_FALSE(window.tabs.ChartSaved[0]);

    window.tabs.ChartSaved[0] = true;
    dialogs.answers = {MsgBoxResult::No};
    editNotes("column C", [](frmNotes &form) { form.cmdCancel->click(); });
    EXPECT_EQ(window.Chart[0]->GetNotes(), "column B") << "No drops the edit";
    EXPECT_TRUE(window.tabs.ChartSaved[0]);

    dialogs.answers = {MsgBoxResult::Yes};
    editNotes("column D", [](frmNotes &form) { form.cmdCancel->click(); });
    EXPECT_EQ(window.Chart[0]->GetNotes(), "column D");
    EXPECT_FALSE(window.tabs.ChartSaved[0]) << "Yes marks the chart as unsaved";
    EXPECT_FALSE(window.toolbar.cmdNotes->isChecked());
    EXPECT_EQ(window.toolbar.cmdNotes->toolTip(), "Show notes form");
}

TEST_F(TextWindowsTest, TheCloseBoxWithCancelInTheQuestionKeepsWindowAndButton)
{
    window.tabs.CurrentChart = 2;
    dialogs.answers = {MsgBoxResult::Cancel};
    editNotes("peak 3 shoulder", [](frmNotes &form) { form.close(); });
    EXPECT_TRUE(stayed);
    EXPECT_TRUE(pressedWhileUp);
    EXPECT_EQ(window.Chart[2]->GetNotes(), "peak 3 shoulder") << "the notes go with tab 2";
    EXPECT_TRUE(window.Chart[0]->GetNotes().isEmpty());
    EXPECT_FALSE(window.tabs.ChartSaved[2]);
}

TEST_F(TextWindowsTest, F1InAWindowOpensItsTopicModalOverItAndTheHelpStaysUsable)
{
    HelpWindow &help = window.help->helpWindow();
    editNotes({}, [&](frmNotes &form) {
        QTest::keyClick(form.txtNotes, Qt::Key_F1);
        EXPECT_TRUE(help.isVisible());
        EXPECT_EQ(help.windowModality(), Qt::ApplicationModal);
        EXPECT_EQ(help.browser()->source().fileName(), QStringLiteral("notes.html"));
        help.close();
        form.cmdCancel->click();
    });
    window.mnuIntro_Click();
    EXPECT_EQ(help.windowModality(), Qt::NonModal);
    EXPECT_EQ(help.browser()->source().fileName(), QStringLiteral("intro.html"));
}

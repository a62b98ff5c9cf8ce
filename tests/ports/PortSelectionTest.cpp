#include "Pty.h"
#include "SetupDriver.h"
#include "acquisition/ComPortStartup.h"
#include "runtime/ErrorRoute.h"
#include "acquisition/LinkState.h"
#include "acquisition/SerialControl.h"
#include "acquisition/frmSetup.h"
#include "runtime/App.h"
#include "runtime/RuntimeError.h"
#include "ScriptedDialogs.h"

#include <QGroupBox>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <gtest/gtest.h>
#include <memory>

namespace {

const QString kCannotOpen = "Cannot open the selected communication port\r";

struct RecordedRoute : ErrorRoute
{
    void HandelError(qint32 ErrorCode) override { codes << ErrorCode; }
    QList<int> codes;
};

/// COM 1 and COM 2 on pseudo-terminals, the other numbers on paths that may not exist, the
/// link's control and flags as the main window holds them, and every form answered by a driver.
class PortSelectionTest : public ::testing::Test
{
protected:
    void SetUp() override { TimerCheckComData.setInterval(5000); }

    void TearDown() override
    {
        if (holder.state() != QProcess::NotRunning) {
            holder.closeWriteChannel();
            holder.waitForFinished(10000);
        }
        qunsetenv("OSTREL_COMPORTS");
    }

    /// COM 1 and COM 2 on the terminals, then `more`, then missing devices up to COM 10.
    void mapPorts(QStringList more = {})
    {
        QStringList paths{first.slavePath(), second.slavePath()};
        paths += more;
        while (paths.size() < frmSetup::kPortCount)
            paths << QString("/dev/ostrel-missing-%1").arg(paths.size() + 1);
        qputenv("OSTREL_COMPORTS", paths.join(',').toLocal8Bit());
    }

    /// Another program takes the device and keeps it until the test ends.
    void holdElsewhere(const QString &path)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("OSTREL_COMPORTS", path);
        holder.setProcessEnvironment(environment);
        holder.start(QStringLiteral(PORT_HOLDER));
        ASSERT_TRUE(holder.waitForReadyRead(10000));
        ASSERT_EQ(holder.readLine().trimmed(), "0")
            << "the other program got " << path.toStdString();
    }

    std::unique_ptr<frmSetup> load()
    {
        return std::make_unique<frmSetup>(ComPort, ComPortNumber, link, TimerCheckComData);
    }

    void openLinkOn(int port)
    {
        ComPort.setCommPort(port);
        ComPort.setPortOpen(true);
        ASSERT_TRUE(ComPort.PortOpen());
    }

    /// Bytes written to the terminal reach the link's input buffer.
    bool linkReceivesFrom(Pty &pty)
    {
        (void)ComPort.Input();
        return pty.write("\x96U") && waitFor([&] { return ComPort.InBufferCount() > 0; }, 3000);
    }

    static std::vector<bool> enabledButtons(const frmSetup &form)
    {
        std::vector<bool> enabled;
        for (const QRadioButton *option : form.optCom)
            enabled.push_back(option->isEnabled());
        return enabled;
    }

    ScriptedDialogs dialogs;
    SetupDriver driver;
    Pty first;
    Pty second;
    QProcess holder;
    SerialControl ComPort;
    Int16 ComPortNumber = 1;
    LinkState link;
    QTimer TimerCheckComData;
};

const std::vector<bool> kTwoPorts{true,  true,  false, false, false,
                                  false, false, false, false, false};

} // namespace

TEST_F(PortSelectionTest, FormShowsTenPortsWithTheirDevicesAndDisablesMissingOnes)
{
    mapPorts();
    ComPort.setCommPort(5);
    ComPortNumber = 2;
    const auto form = load();
    EXPECT_EQ(form->windowTitle(), "Data Collection Setup");
    EXPECT_EQ(form->frameCom->title(), "COM Port");
    EXPECT_EQ(form->cmdOk->text(), "&OK");
    EXPECT_TRUE(form->cmdOk->isDefault());
    EXPECT_EQ(form->cmdCancel->text(), "&Cancel");
    for (int Index = 0; Index < frmSetup::kPortCount; ++Index) {
        const QRadioButton *option = form->optCom[Index];
        EXPECT_EQ(option->text(), QString("COM %1").arg(Index + 1));
        EXPECT_EQ(option->isChecked(), Index == 1) << "the present port is shown as chosen";
        const QString device = Index == 0   ? first.slavePath()
                               : Index == 1 ? second.slavePath()
                                            : QString("/dev/ostrel-missing-%1").arg(Index + 1);
        EXPECT_TRUE(option->toolTip().startsWith(device)) << option->toolTip().toStdString();
    }
    EXPECT_EQ(form->optCom[5]->y(), form->optCom[0]->y()) << "COM 6 heads the second column";
    EXPECT_GT(form->optCom[5]->x(), form->optCom[0]->geometry().right());

    // The link's own port (COM 5 here) is passed over, as it would seem busy.
    std::vector<bool> expected = kTwoPorts;
    expected[4] = true;
    EXPECT_EQ(enabledButtons(*form), expected);
    EXPECT_EQ(form->SelectedComPort, 2);
    EXPECT_FALSE(ComPort.PortOpen()) << "the probe leaves the link alone";
    EXPECT_EQ(ComPort.CommPort(), 5);
    EXPECT_TRUE(dialogs.boxes.isEmpty());
}

TEST_F(PortSelectionTest, PortHeldByAnotherProgramIsDisabledByEitherProbe)
{
    mapPorts();
    holdElsewhere(second.slavePath());

    ComPort.setCommPort(1);
    const auto byOwnControl = load();
    std::vector<bool> expected = kTwoPorts;
    expected[1] = false;
    EXPECT_EQ(enabledButtons(*byOwnControl), expected);

    ComPort.setCommPort(2);
    const auto byLink = load();
    EXPECT_TRUE(byLink->optCom[1]->isEnabled()) << "passed over while it is the link's port";
    byLink->FindFreeComPorts(true);
    EXPECT_EQ(enabledButtons(*byLink), expected);
    EXPECT_EQ(ComPort.CommPort(), 10);
    EXPECT_FALSE(ComPort.PortOpen());
}

TEST_F(PortSelectionTest, BusyPortChosenSaysSoRestoresTheLinkAndKeepsTheFormUp)
{
    mapPorts();
    openLinkOn(1);
    const auto form = load();
    ASSERT_TRUE(form->optCom[1]->isEnabled());
    holdElsewhere(second.slavePath());

    driver.answerWith([&](frmSetup &shown) {
        shown.optCom[1]->click();
        shown.cmdOk->click();
        ASSERT_EQ(dialogs.boxes.size(), 1);
        EXPECT_EQ(dialogs.boxes[0].text, kCannotOpen + "Port already open");
        EXPECT_EQ(dialogs.boxes[0].title, "DATA COLLECTION SETUP ERROR");
        EXPECT_EQ(dialogs.boxes[0].style, MsgBoxStyle::Exclamation);
        EXPECT_TRUE(shown.isVisible()) << "the operator may choose again";
        EXPECT_EQ(ComPortNumber, 1);
        EXPECT_EQ(ComPort.CommPort(), 1);
        EXPECT_TRUE(ComPort.PortOpen());
        EXPECT_FALSE(TimerCheckComData.isActive());
        shown.cmdCancel->click();
    });
    EXPECT_EQ(form->exec(), QDialog::Rejected);
    EXPECT_EQ(driver.showings(), 1);
    EXPECT_EQ(ComPortNumber, 1) << "Cancel forgets the choice";
    EXPECT_TRUE(linkReceivesFrom(first));
}

TEST_F(PortSelectionTest, PortFailingWithAnotherNumberStaysSelectableAndFailsWhenChosen)
{
    mapPorts({"/dev/null"});
    openLinkOn(2);
    ComPortNumber = 2;
    const auto form = load();
    EXPECT_TRUE(form->optCom[2]->isEnabled());
    driver.answerWith([&](frmSetup &shown) {
        shown.optCom[2]->click();
        shown.cmdOk->click();
        ASSERT_EQ(dialogs.boxes.size(), 1);
        EXPECT_EQ(dialogs.boxes[0].text,
                  kCannotOpen + ErrorDescription(ErrorNumber::PortNotAvailable));
        EXPECT_TRUE(shown.isVisible());
        shown.cmdCancel->click();
    });
    EXPECT_EQ(form->exec(), QDialog::Rejected);
    EXPECT_EQ(ComPortNumber, 2);
    EXPECT_EQ(ComPort.CommPort(), 2);
    EXPECT_TRUE(linkReceivesFrom(second));
}

TEST_F(PortSelectionTest, OkOnTheSamePortReopensItAndClearsStatusBlocks)
{
    mapPorts();
    openLinkOn(1);
    link.StatusBlocksSeen = true;
    link.FirstSyncFound = true;
    ASSERT_TRUE(first.write("\x96P"));
    ASSERT_TRUE(waitFor([&] { return ComPort.InBufferCount() == 2; }));

    const auto form = load();
    driver.answerWith([](frmSetup &shown) { shown.cmdOk->click(); });
    EXPECT_EQ(form->exec(), QDialog::Accepted);
    EXPECT_FALSE(link.StatusBlocksSeen);
    EXPECT_TRUE(link.FirstSyncFound) << "the stream on the port decides that";
    EXPECT_EQ(ComPort.InBufferCount(), 0) << "closed and opened again";
    EXPECT_TRUE(ComPort.PortOpen());
    EXPECT_TRUE(TimerCheckComData.isActive()) << "the watchdog looks at the new port";
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_TRUE(linkReceivesFrom(first));
}

TEST_F(PortSelectionTest, StartupKeepsAFreeStoredPortWithoutAsking)
{
    mapPorts();
    ComPortNumber = 2;
    EXPECT_FALSE(chooseComPortAtStartup(ComPort, ComPortNumber, link, TimerCheckComData, false));
    EXPECT_EQ(driver.showings(), 0);
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_EQ(ComPortNumber, 2);
    EXPECT_EQ(ComPort.CommPort(), 2);
    EXPECT_FALSE(ComPort.PortOpen()) << "opened last of all, when the window is ready";
    EXPECT_EQ(ComPort.InBufferSize(), 32000);

    RecordedRoute errors;
    openComPortAtStartup(ComPort, ComPortNumber, link, TimerCheckComData, errors);
    EXPECT_TRUE(errors.codes.isEmpty());
    EXPECT_TRUE(linkReceivesFrom(second));
}

TEST_F(PortSelectionTest, StartupOnABusyStoredPortInsistsOnAnotherPort)
{
    mapPorts();
    holdElsewhere(first.slavePath());
    ComPortNumber = 1;
    driver.answerWith([&](frmSetup &shown) {
        EXPECT_FALSE(shown.cmdCancel->isEnabled());
        EXPECT_FALSE(shown.optCom[0]->isEnabled());
        EXPECT_TRUE(shown.optCom[0]->isChecked()) << "still the stored number";
        EXPECT_EQ(ComPortNumber, 2) << "the first free port";
        shown.reject();
        EXPECT_TRUE(shown.isVisible()) << "no way out without a port";

        shown.cmdOk->click();
        ASSERT_EQ(dialogs.boxes.size(), 1);
        EXPECT_EQ(dialogs.boxes[0].text, kCannotOpen + "Port already open");
        EXPECT_TRUE(shown.isVisible());
        EXPECT_EQ(ComPortNumber, 2);

        shown.optCom[1]->click();
        shown.cmdOk->click();
    });
    EXPECT_FALSE(chooseComPortAtStartup(ComPort, ComPortNumber, link, TimerCheckComData, false));
    EXPECT_EQ(driver.showings(), 1);
    EXPECT_EQ(ComPortNumber, 2);
    EXPECT_EQ(ComPort.CommPort(), 2);
    EXPECT_FALSE(ComPort.PortOpen());
    EXPECT_FALSE(TimerCheckComData.isActive());
}

TEST_F(PortSelectionTest, StartupOfASecondCopyAlwaysAsks)
{
    mapPorts();
    ComPortNumber = 2;
    driver.answerWith([&](frmSetup &shown) {
        EXPECT_FALSE(shown.cmdCancel->isEnabled());
        EXPECT_EQ(ComPortNumber, 1);
        shown.cmdOk->click();
    });
    EXPECT_FALSE(chooseComPortAtStartup(ComPort, ComPortNumber, link, TimerCheckComData, true));
    EXPECT_EQ(driver.showings(), 1);
    EXPECT_EQ(ComPortNumber, 2) << "the option shown, still the stored one, was taken";
    EXPECT_EQ(ComPort.CommPort(), 2);
}

TEST_F(PortSelectionTest, StartupWithNoFreePortTellsSoAndAsksToExit)
{
    QStringList missing;
    for (int port = 1; port <= frmSetup::kPortCount; ++port)
        missing << QString("/dev/ostrel-missing-%1").arg(port);
    qputenv("OSTREL_COMPORTS", missing.join(',').toLocal8Bit());
    EXPECT_TRUE(chooseComPortAtStartup(ComPort, ComPortNumber, link, TimerCheckComData, false));
    EXPECT_EQ(driver.showings(), 0);
    ASSERT_EQ(dialogs.boxes.size(), 1);
    EXPECT_EQ(dialogs.boxes[0].text, "All available COM ports are already in use.  Please free "
                                     "one COM port before restarting Ostrel MS.");
    EXPECT_EQ(dialogs.boxes[0].style, MsgBoxStyle::OkOnly);
    EXPECT_EQ(dialogs.boxes[0].title, App::Title());
}

TEST_F(PortSelectionTest, FinalOpenOfAMissingPortReportsItAndOffersTheForm)
{
    mapPorts();
    ComPort.setCommPort(4);
    ComPortNumber = 4;
    driver.answerWith([](frmSetup &shown) {
        shown.optCom[0]->click();
        shown.cmdOk->click();
    });
    RecordedRoute errors;
    openComPortAtStartup(ComPort, ComPortNumber, link, TimerCheckComData, errors);
    EXPECT_EQ(errors.codes, QList<int>{ErrorNumber::InvalidPortNumber});
    EXPECT_EQ(driver.showings(), 1);
    EXPECT_EQ(ComPortNumber, 1);
    EXPECT_TRUE(linkReceivesFrom(first));
}

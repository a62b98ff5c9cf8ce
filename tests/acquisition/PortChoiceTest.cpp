#include "acquisition/PortChoice.h"

#include "IntakeRig.h"
#include "ModalDriver.h"
#include "Pty.h"
#include "ScriptedDialogs.h"
#include "acquisition/frmSetup.h"
#include "runtime/RuntimeError.h"

#include <QGroupBox>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace {

const QString kCannotOpen = "Cannot open the selected communication port\r";

/// COM 1 and COM 2 on pseudo-terminals, the other numbers on paths that may not exist, the real
/// link and session, and every form answered by a driver.
class PortChoiceTest : public ::testing::Test
{
protected:
    void TearDown() override
    {
        holder.kill();
        holder.waitForFinished(10000);
    }

    /// COM 1 and COM 2 on the terminals, then `more`, then missing devices up to COM 10.
    void mapPorts(QStringList more = {})
    {
        QStringList paths{first.slavePath(), second.slavePath()};
        paths += more;
        while (paths.size() < frmSetup::kPortCount)
            paths << QString("/dev/ostrel-missing-%1").arg(paths.size() + 1);
        ports.emplace(paths);
    }

    /// Another program opens the device without taking its lock, and keeps it until the test
    /// ends.
    void holdElsewhere(const QString &path)
    {
        holder.setStandardInputFile(path);
        holder.start(QStringLiteral("sleep"), {QStringLiteral("60")});
        ASSERT_TRUE(holder.waitForStarted(10000));
    }

    std::unique_ptr<frmSetup> load()
    {
        return std::make_unique<frmSetup>(rig.link, ComPortNumber, rig.session);
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

    ScriptedDialogs dialogs;
    ModalDriver driver;
    Pty first;
    Pty second;
    std::optional<ComPorts> ports;
    QProcess holder;
    IntakeRig rig;
    SerialControl &ComPort = rig.link.ComPort;
    Int16 ComPortNumber = 1;
    PortChoice choice{rig.link, rig.session, ComPortNumber};
};

} // namespace

TEST_F(PortChoiceTest, PortHeldByAnotherProgramIsDisabledEvenWhenItIsTheLinks)
{
    mapPorts();
    holdElsewhere(second.slavePath());

    ComPort.setCommPort(2);
    const auto byLink = load();
    EXPECT_TRUE(byLink->optCom[1]->isEnabled()) << "passed over while it is the link's port";
    byLink->FindFreeComPorts(true);
    QString enabled;
    for (const QRadioButton *option : byLink->optCom)
        enabled += option->isEnabled() ? '1' : '0';
    EXPECT_EQ(enabled, "1000000000");
    EXPECT_EQ(ComPort.CommPort(), 10);
    EXPECT_FALSE(ComPort.PortOpen());
}

TEST_F(PortChoiceTest, PortThatFailsToOpenSaysWhyRestoresTheLinkAndKeepsTheFormUp)
{
    mapPorts({"/dev/null"});
    openLinkOn(1);
    const auto form = load();
    driver.answerWith<frmSetup>([&](frmSetup &shown) {
        shown.optCom[2]->click();
        shown.cmdOk->click();
        ASSERT_EQ(dialogs.boxes.size(), 1);
        EXPECT_EQ(dialogs.boxes[0].text,
                  kCannotOpen + ErrorDescription(ErrorNumber::PortNotAvailable));
        EXPECT_TRUE(shown.isVisible()) << "the operator may choose again";
        EXPECT_EQ(ComPort.CommPort(), 1);
        EXPECT_TRUE(ComPort.PortOpen());
        // Enter presses the focused button, not the default one.
        shown.cmdCancel->setFocus();
        QTest::keyClick(shown.cmdCancel, Qt::Key_Return);
    });
    EXPECT_EQ(form->exec(), QDialog::Rejected);
    EXPECT_EQ(ComPortNumber, 1) << "Cancel forgets the choice";
    EXPECT_TRUE(linkReceivesFrom(first));
}

TEST_F(PortChoiceTest, OkOnTheSamePortReopensItForgetsStatusBlocksAndStartsTheWatchdog)
{
    mapPorts();
    openLinkOn(1);
    rig.feed(StreamBytes::sample('F', 0.0f));
    ASSERT_TRUE(rig.link.state().StatusBlocksSeen);
    ASSERT_TRUE(first.write("\x96P"));
    ASSERT_TRUE(waitFor([&] { return ComPort.InBufferCount() == 2; }));

    driver.answerWith<frmSetup>([](frmSetup &shown) { shown.cmdOk->click(); });
    choice.mnuComPort_Click(nullptr);
    EXPECT_FALSE(rig.link.state().StatusBlocksSeen);
    EXPECT_EQ(ComPort.InBufferCount(), 0) << "closed and opened again";
    EXPECT_TRUE(rig.session.TimerCheckComData().isActive()) << "it looks at the new port";
    EXPECT_TRUE(linkReceivesFrom(first));
}

TEST_F(PortChoiceTest, StartupKeepsAFreeStoredPortWithoutAsking)
{
    mapPorts();
    ComPortNumber = 2;
    EXPECT_TRUE(choice.chooseAtStartup(false, nullptr));
    EXPECT_EQ(driver.showings(), 0);
    EXPECT_EQ(ComPort.CommPort(), 2);
    EXPECT_FALSE(ComPort.PortOpen()) << "opened last of all, when the window is ready";
    EXPECT_EQ(ComPort.InBufferSize(), 32000);

    choice.openAtStartup(rig.errors, nullptr);
    EXPECT_TRUE(rig.errors.codes.isEmpty());
    EXPECT_TRUE(linkReceivesFrom(second));
}

TEST_F(PortChoiceTest, StartupOnABusyStoredPortInsistsOnAnotherPort)
{
    mapPorts();
    holdElsewhere(first.slavePath());
    ComPortNumber = 1;
    driver.answerWith<frmSetup>([&](frmSetup &shown) {
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

        shown.optCom[1]->click();
        shown.cmdOk->click();
    });
    EXPECT_TRUE(choice.chooseAtStartup(false, nullptr));
    EXPECT_EQ(driver.showings(), 1);
    EXPECT_EQ(ComPort.CommPort(), 2);
    EXPECT_FALSE(ComPort.PortOpen());
}

TEST_F(PortChoiceTest, StartupOfASecondCopyAlwaysAsks)
{
    mapPorts();
    ComPortNumber = 2;
    driver.answerWith<frmSetup>([&](frmSetup &shown) {
        EXPECT_FALSE(shown.cmdCancel->isEnabled());
        EXPECT_EQ(ComPortNumber, 1);
        shown.cmdOk->click();
    });
    EXPECT_TRUE(choice.chooseAtStartup(true, nullptr));
    EXPECT_EQ(driver.showings(), 1);
    EXPECT_EQ(ComPortNumber, 2) << "the option shown, still the stored one, was taken";
    EXPECT_EQ(ComPort.CommPort(), 2);
}

TEST_F(PortChoiceTest, StartupWithNoFreePortTellsSoAndAsksToExit)
{
    ports.emplace(QStringList()); // no COM number reaches a device
    EXPECT_FALSE(choice.chooseAtStartup(false, nullptr));
    EXPECT_EQ(driver.showings(), 0);
    EXPECT_EQ(dialogs.boxes.size(), 1);
}

TEST_F(PortChoiceTest, FinalOpenOfAMissingPortReportsItAndOffersTheForm)
{
    mapPorts();
    ComPort.setCommPort(4);
    ComPortNumber = 4;
    driver.answerWith<frmSetup>([](frmSetup &shown) {
        shown.optCom[0]->click();
        shown.cmdOk->click();
    });
    choice.openAtStartup(rig.errors, nullptr);
    EXPECT_EQ(rig.errors.codes, QList<int>{ErrorNumber::InvalidPortNumber});
    EXPECT_EQ(driver.showings(), 1);
    EXPECT_EQ(ComPortNumber, 1);
    EXPECT_TRUE(linkReceivesFrom(first));
}

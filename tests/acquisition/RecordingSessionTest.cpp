#include "IntakeRig.h"
#include "ModalDriver.h"
#include "Pty.h"
#include "acquisition/frmNoData.h"

#include <QPushButton>

#include <gtest/gtest.h>

using namespace StreamBytes;

namespace {

/// The rig's link on COM 1 = a pseudo-terminal, with the session recording.
class RecordingSessionTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        rig.link.ComPort.setCommPort(1);
        rig.link.ComPort.setPortOpen(true);
        ASSERT_TRUE(rig.link.ComPort.PortOpen());
        rig.mnuStart_Click();
        rig.window.calls.clear();
    }

    Pty pty;
    ComPorts com{{pty.slavePath()}};
    ModalDriver driver;
    IntakeRig rig;
};

} // namespace

TEST_F(RecordingSessionTest, TickWithoutDataLosesTheLinkThenDoesWhatTheOperatorChose)
{
    const std::pair<QPushButton * frmNoData::*, QStringList> cases[] = {
        {&frmNoData::cmdOk, {}},
        {&frmNoData::cmdSetup, {"ComPort"}},
        {&frmNoData::cmdExit, {"Exit"}}};
    int shown = 0;
    for (const auto &[button, after] : cases) {
        SCOPED_TRACE(shown);
        if (!rig.intake.Recording())
            rig.mnuStart_Click();
        rig.session.startWatchdog();
        rig.window.calls.clear();
        driver.answerWith<frmNoData>([&, button = button](frmNoData &form) {
            EXPECT_FALSE(rig.link.state().FirstSyncFound) << "searching while the box is up";
            (form.*button)->click();
        });
        rig.session.TimerCheckComData_Timer();
        EXPECT_EQ(driver.showings(), ++shown);
        EXPECT_EQ(rig.window.calls, QStringList({"stopLogTimer", "Stop", "linkLost"}) + after)
            << "stopped before the commands go dark";
        EXPECT_FALSE(rig.intake.Recording());
        EXPECT_FALSE(rig.session.TimerCheckComData().isActive());
    }
}

TEST_F(RecordingSessionTest, TickAfterDataLeavesTheLinkAloneAndLooksAgainNextTime)
{
    // More than the 50 bytes that raise a receive event, taken by it as the program takes them.
    ASSERT_TRUE(pty.write(pair(0.5f, 1.0f).repeated(5)));
    ASSERT_TRUE(waitFor([&] { return rig.link.ring().ByteCount >= 60; }));
    ASSERT_TRUE(rig.link.state().ComDataSeen);
    rig.session.TimerCheckComData_Timer();
    EXPECT_TRUE(rig.window.calls.isEmpty());
    EXPECT_FALSE(rig.link.state().ComDataSeen) << "the next tick needs a new event";
}

TEST_F(RecordingSessionTest, LostLinkDropsTheWaitingLabelAndSearchesForTheStreamAgain)
{
    rig.feed(sample('F', 0.0f) + status('E', 2));
    rig.window.calls.clear();
    rig.session.ComDataLost();
    EXPECT_EQ(rig.intake.ChartLabelType(), 0);
    EXPECT_NE(rig.intake.LogLabelType(), 0) << "the log keeps its label";
    EXPECT_FALSE(rig.link.state().FirstSyncFound);

    rig.feed(pair(0.5f, 1.0f));
    EXPECT_TRUE(rig.link.state().FirstSyncFound);
    EXPECT_EQ(rig.window.calls, QStringList({"Stop", "linkLost", "linkFound"}));
    EXPECT_TRUE(rig.session.TimerCheckComData().isActive());
}

TEST_F(RecordingSessionTest, ResynchronisationKeepsTheWatchdogsCountdown)
{
    rig.session.startWatchdog();
    const QTimer &watchdog = rig.session.TimerCheckComData();
    ASSERT_TRUE(waitFor([&] { return watchdog.remainingTime() < 4500; }, 2000));
    const int left = watchdog.remainingTime();
    // A decoding error, and the route's answer to it: the search starts again and finds the
    // stream.
    rig.errors.onError = [&](qint32) { rig.link.loseSync(); };
    rig.feed(status('E', 5) + pair(0.5f, 1.0f));
    rig.feed(pair(0.5f, 1.0f));
    ASSERT_FALSE(rig.errors.codes.isEmpty());
    ASSERT_TRUE(rig.window.calls.contains("linkFound"));
    EXPECT_LE(watchdog.remainingTime(), left);
}

TEST_F(RecordingSessionTest, PassesUpdateTheLiveViewOnlyWhileRecording)
{
    rig.feed(pair(0.5f, 1.0f));
    rig.mnuStop_Click();
    rig.feed(pair(0.5f, 1.0f));
    EXPECT_EQ(rig.window.calls, QStringList({"UpdateLiveView", "Stop"}));
}

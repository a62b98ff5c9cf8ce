#include "acquisition/SerialControl.h"

#include "Pty.h"
#include "runtime/RuntimeError.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

/// COM 1 on a fresh pseudo-terminal, for the life of one test.
class SerialControlTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        control.setRThreshold(50);
        control.setInBufferSize(32000);
        QObject::connect(&control, &SerialControl::OnComm,
                         [this] { events.append(control.CommEvent()); });
    }
    void open()
    {
        control.setCommPort(1);
        control.setPortOpen(true);
        ASSERT_TRUE(control.PortOpen());
    }

    Pty pty;
    const ComPorts com{{pty.slavePath(), "/dev/ostrel-no-such-port"}};
    SerialControl control;
    QList<int> events;
};

} // namespace

TEST_F(SerialControlTest, NoReceiveEventAt49BytesOneAt50)
{
    open();
    ASSERT_TRUE(pty.write(QByteArray(49, 'x')));
    waitFor([&] { return control.InBufferCount() == 49; });
    QTest::qWait(100);
    EXPECT_TRUE(events.isEmpty());
    ASSERT_TRUE(pty.write("y"));
    ASSERT_TRUE(waitFor([&] { return !events.isEmpty(); }));
    EXPECT_EQ(events, QList<int>({SerialControl::kEventReceive}));
    EXPECT_EQ(control.InBufferCount(), 50);
}

TEST_F(SerialControlTest, PortLockedByAnotherControlRaises8005UntilReleased)
{
    SerialControl other;
    other.setCommPort(1);
    other.setPortOpen(true);
    control.setCommPort(1);
    EXPECT_EQ(trapError([&] { control.setPortOpen(true); }), ErrorNumber::PortAlreadyOpen);
    other.setPortOpen(false);
    EXPECT_EQ(trapError([&] { control.setPortOpen(true); }), 0);
}

TEST_F(SerialControlTest, BurstBeyondTheInputBufferRaises1008AndKeepsTheFirstBytes)
{
    control.setRThreshold(0);
    open();
    QByteArray burst;
    for (int i = 0; i < 40000; ++i)
        burst += char(i);
    for (qsizetype done = 0; done < burst.size(); done += 2000) {
        ASSERT_TRUE(pty.write(burst.mid(done, 2000)));
        QCoreApplication::processEvents();
    }
    ASSERT_TRUE(waitFor([&] { return events.contains(SerialControl::kEventRxOverflow); }));
    EXPECT_EQ(control.InBufferCount(), 32000);
    EXPECT_EQ(control.Input(), burst.left(32000));
}

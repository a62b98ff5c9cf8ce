#include "IntakeRig.h"

IntakeRig::IntakeRig()
    : intake(chart0, chart5, link, errors, *this, DataLogging)
    , session(link, intake, *this, window)
    , link(errors, intake, session)
{
    // The search finds the block and leaves it; the rig starts on an empty ring.
    link.ring().store(StreamBytes::pair(0.0f, 0.0f));
    link.TimerProcess_Timer();
    link.ring().TakeIndex = link.ring().PutIndex;
    link.ring().ByteCount = 0;
    // No port keeps the watchdog quiet; the tests of the session start it themselves.
    session.stopWatchdog();
    window.calls.clear();
}

void IntakeRig::feed(const QByteArray &bytes)
{
    link.ring().store(bytes);
    link.TimerProcess_Timer();
}

void IntakeRig::pairs(int count, char letter)
{
    for (int i = 0; i < count; ++i)
        feed(StreamBytes::pair(0.5f, 50.0f, letter));
}

void IntakeRig::mnuStart_Click()
{
    ++recordCommands;
    window.calls << QStringLiteral("Record");
    session.record();
}

void IntakeRig::mnuStop_Click()
{
    ++stopCommands;
    window.calls << QStringLiteral("Stop");
    session.stop();
}

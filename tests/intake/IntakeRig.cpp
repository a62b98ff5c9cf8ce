#include "IntakeRig.h"

IntakeRig::IntakeRig()
    : intake(chart0, chart5, link, *this, *this, TimerStopWaitForMethod, DataLogging)
    , decoder(ring, link, *this, intake, *this, TimerProcess)
{
    link.FirstSyncFound = true;
}

void IntakeRig::feed(const QByteArray &bytes)
{
    ring.store(bytes);
    decoder.ProcessComData();
}

void IntakeRig::pairs(int count, char letter)
{
    for (int i = 0; i < count; ++i)
        feed(StreamBytes::pair(0.5f, 50.0f, letter));
}

void IntakeRig::mnuStart_Click()
{
    ++recordCommands;
    intake.Recording = true;
    intake.ChartEventNumber = 0;
    intake.ChartPausePending = false;
}

void IntakeRig::mnuStop_Click()
{
    ++stopCommands;
    intake.Recording = false;
}

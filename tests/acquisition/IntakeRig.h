#pragma once

#include "Fakes.h"
#include "StreamBytes.h"
#include "acquisition/Link.h"
#include "acquisition/RecordCommands.h"
#include "acquisition/RecordingSession.h"
#include "acquisition/SampleIntake.h"
#include "chart/Quillchart.h"

#include <QStringList>

/// The real link, intake and session between a synchronised stream and two real charts. The
/// window's Record and Stop are what they are in the program: the session's halves, counted
/// and noted among the window's calls.
class IntakeRig : public RecordCommands
{
public:
    IntakeRig();

    /// Stores the bytes and runs one tick of the main loop's timer.
    void feed(const QByteArray &bytes);
    /// `count` sample pairs whose UV block has the letter `letter`.
    void pairs(int count, char letter);

    void mnuStart_Click() override;
    void mnuStop_Click() override;

    RecordedErrors errors;
    RecordedWindow window;
    Quillchart chart0;
    Quillchart chart5;
    bool DataLogging = true;
    SampleIntake intake;
    RecordingSession session;
    Link link;

    int recordCommands = 0;
    int stopCommands = 0;
};

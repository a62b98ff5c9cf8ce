#pragma once

#include "StreamBytes.h"
#include "acquisition/DecoderHost.h"
#include "runtime/ErrorRoute.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/RecordCommands.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/StreamDecoder.h"
#include "chart/Quillchart.h"

#include <QList>
#include <QTimer>

/// The sample intake between a synchronised decoder and two real charts, in a window that does
/// to the intake what its Record and Stop commands do, and counts the commands and errors.
class IntakeRig : public RecordCommands, public ErrorRoute, public DecoderHost
{
public:
    IntakeRig();

    /// Hands the bytes to the decoder in one pass, as a tick of the process timer does.
    void feed(const QByteArray &bytes);
    /// `count` sample pairs whose UV block has the letter `letter`.
    void pairs(int count, char letter);

    void mnuStart_Click() override;
    void mnuStop_Click() override;
    void HandelError(qint32 ErrorCode) override { errors.append(ErrorCode); }
    void syncFound() override {}
    void passEnded() override {}

    Quillchart chart0;
    Quillchart chart5;
    LinkState link;
    QTimer TimerStopWaitForMethod;
    QTimer TimerProcess;
    bool DataLogging = true;
    ReceiveRing ring;
    SampleIntake intake;
    StreamDecoder decoder;

    int recordCommands = 0;
    int stopCommands = 0;
    QList<qint32> errors;
};

/// A one-byte block: "E", "H", "P" or "R" with its value.
inline QByteArray news(char type, int value)
{
    return StreamBytes::status(type, std::uint8_t(value));
}

inline QByteArray fBlock()
{
    return StreamBytes::sample('F', 0.0f);
}

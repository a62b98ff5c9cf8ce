#pragma once

#include "acquisition/DecoderHost.h"

#include <QTimer>

class Link;
class RecordCommands;
class SampleIntake;
class SessionHost;

/// @brief The recording session and the watch over the link.
///
/// Holds the state halves of the Record and Stop commands (the window does the rest), the
/// link watchdog `TimerCheckComData` with its tick and `frmNoData`, `ComDataLost`, and what a
/// found synchronisation and the end of a decoding pass mean for the session.
class RecordingSession : public DecoderHost
{
public:
    RecordingSession(Link &link, SampleIntake &intake, RecordCommands &commands,
                     SessionHost &host);
    RecordingSession(const RecordingSession &) = delete;
    RecordingSession &operator=(const RecordingSession &) = delete;

    /// The session's part of the Record and Stop commands.
    void record();
    void stop();

    /// The watchdog's tick: with no event of the serial control since the last tick the link
    /// counts as lost and `frmNoData` asks what to do.
    void TimerCheckComData_Timer();
    /// LED off, watchdog off, a running session stopped, the record commands disabled, the
    /// decoder searching again.
    void ComDataLost();
    /// `TimerCheckComData.Enabled := true`: a running watchdog keeps its countdown.
    void startWatchdog();
    void stopWatchdog();
    [[nodiscard]] const QTimer &TimerCheckComData() const { return m_watchdog; }

    void syncFound() override;
    void passEnded() override;

private:
    Link &m_link;
    SampleIntake &m_intake;
    RecordCommands &m_commands;
    SessionHost &m_host;
    QTimer m_watchdog;
};

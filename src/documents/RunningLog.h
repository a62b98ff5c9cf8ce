#pragma once

#include <QTimer>

class Link;
class SampleIntake;
class Settings;

/// @brief The running log: the switch of logging and the timer `TimerSaveLog` that brings the
/// hidden log chart to the disk every 20 seconds.
class RunningLog
{
public:
    RunningLog(Settings &settings, const Link &link, SampleIntake &intake);
    RunningLog(const RunningLog &) = delete;
    RunningLog &operator=(const RunningLog &) = delete;

    /// Logging on. With data coming in, the log starts afresh and its timer runs; without, the
    /// timer waits for the next synchronisation.
    void logOn();
    /// Logging off: the timer stops, and what came after the last write stays in the log chart.
    void logOff();
    /// `TimerSaveLog.Enabled := DataLogging`, as a found synchronisation sets it.
    void followLogging();
    void stopTimer();

    [[nodiscard]] const QTimer &TimerSaveLog() const { return m_timer; }

private:
    Settings &m_settings;
    const Link &m_link;
    SampleIntake &m_intake;
    QTimer m_timer;
};

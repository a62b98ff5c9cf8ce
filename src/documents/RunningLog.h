#pragma once

#include <QTimer>

class ComDlg;
class ErrorRoute;
class Link;
class QAction;
class Quillchart;
class SampleIntake;
class Settings;
struct LogPlace;

/// @brief The running log: the switch of logging, the timer `TimerSaveLog` that brings the
/// hidden log chart to the disk every 20 seconds, and the command that saves the log as a file.
class RunningLog
{
public:
    /// `logChart` is the hidden chart the intake logs into; `saveChart` the spare chart that
    /// saves a log directory as one file. `mnuSaveLog` is offered once a log stands on disk.
    RunningLog(Settings &settings, const Link &link, SampleIntake &intake, LogPlace &place,
               Quillchart &logChart, Quillchart &saveChart, ComDlg &dialog, ErrorRoute &errors,
               QAction &mnuSaveLog);
    RunningLog(const RunningLog &) = delete;
    RunningLog &operator=(const RunningLog &) = delete;

    /// Brings the log chart to the disk; a failure is reported and the next tick tries again.
    void TimerSaveLog_Timer();
    /// Saves the log of `LogDirectory` under a name the operator chooses; `LogSaved` tells how
    /// it went.
    void mnuSaveLog_Click();
    [[nodiscard]] bool LogSaved() const { return m_logSaved; }

    /// Logging on. With data coming in, the log starts afresh and its timer runs; without, the
    /// timer waits for the next synchronisation.
    void logOn();
    /// Logging off: the timer stops, and what came after the last write stays in the log chart.
    void logOff();
    /// `TimerSaveLog.Enabled := DataLogging`, as a found synchronisation sets it.
    void followLogging();
    void stopTimer();

    /// Writes what the log chart holds now, errors ignored: the program is about to end.
    void writeBeforeEnd();
    /// The log's files go and its directory is removed, errors ignored: a clean exit.
    void closeLog();

    [[nodiscard]] const QTimer &TimerSaveLog() const { return m_timer; }

private:
    Settings &m_settings;
    const Link &m_link;
    SampleIntake &m_intake;
    LogPlace &m_place;
    Quillchart &m_logChart;
    Quillchart &m_saveChart;
    ComDlg &m_dialog;
    ErrorRoute &m_errors;
    QAction &mnuSaveLog;
    QTimer m_timer;
    bool m_logSaved = false;
};

#pragma once

#include "shell/InstanceRegistry.h"

#include <QStringList>

class QWidget;
class Quillchart;
class RunningLog;
class frmDataRecovery;
struct LogPlace;

/// @brief Recovery of the logs that crashed copies left behind: each is offered in
/// `frmDataRecovery` and saved as a file through Save Log; when the operator is done, or when
/// nothing is offered, every left-over directory and the register of copies are swept away.
///
/// Runs only in a copy started alone: beside a running copy the directories may be its own.
class Recovery
{
public:
    /// `logChart` tests a directory for a log; `log` saves one, reading `place`.
    Recovery(LogPlace &place, const LogInfoRows &LogInfoTable, Quillchart &logChart,
             RunningLog &log, QWidget *parent);

    /// Offers the left-overs, with a beep, in the modal dialog; purges at once when there are
    /// none.
    void run();

    void FillKnownLogs(frmDataRecovery &form);
    void FillUnknownLogs(frmDataRecovery &form);
    /// Saves the log of each entry whose row reads `text`; true when one was saved.
    [[nodiscard]] bool recoverRow(const QString &text);
    /// Deletes every directory in the Log folder with its files and, when the register was
    /// read, the register; never reports.
    void PurgeLogDirectories();

private:
    /// Points the log place at `directory` under `name` and saves it; true when saved.
    bool saveLog(const QString &directory, const QString &name);

    LogPlace &m_place;
    const LogInfoRows &m_logInfoTable;
    Quillchart &m_logChart;
    RunningLog &m_log;
    QWidget *m_parent;
    bool UnknownLogsFound = false;
    QStringList UnknownLogDirs;
};

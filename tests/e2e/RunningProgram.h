#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// The recorder started as its own process, offscreen, with COM 1 on the given device and a
/// data and settings directory of its own.
class RunningProgram
{
public:
    enum Home { OwnHome, SameUser };
    /// `SameUser` shares the settings and data directories of the test process, as a second
    /// copy of the program run by the same user does.
    explicit RunningProgram(const QString &comPorts, Home home = OwnHome);
    ~RunningProgram();

    [[nodiscard]] bool started() const { return m_started; }
    /// Waits, without touching the port, until the program holds `device` for good: its serial
    /// lock file has stood for a second. A probe of the test's own could meet the program's
    /// probes at its start and send it into the setup dialog.
    [[nodiscard]] bool holdsPort(const QString &device) const;
    /// ChartErr.log of this copy, "" while it does not exist.
    [[nodiscard]] QString errorLog() const;
    /// The XDG data and config homes of an own-home copy.
    [[nodiscard]] QString home() const { return m_home.path(); }
    /// Sends `signal` and waits for the process to end; false when it did not end in time.
    bool endBy(int signal);

private:
    QTemporaryDir m_home;
    QProcess m_process;
    bool m_started = false;
};

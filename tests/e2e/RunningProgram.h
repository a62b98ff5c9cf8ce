#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// The recorder started as its own process, offscreen, with COM 1 on the given device and a
/// data and settings directory of its own.
class RunningProgram
{
public:
    explicit RunningProgram(const QString &comPorts);
    ~RunningProgram();

    [[nodiscard]] bool started() const { return m_started; }
    /// The XDG data and config homes of the copy.
    [[nodiscard]] QString home() const { return m_home.path(); }
    /// Sends `signal` and waits for the process to end; false when it did not end in time.
    bool endBy(int signal);

private:
    QTemporaryDir m_home;
    QProcess m_process;
    bool m_started = false;
};

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
    /// ChartErr.log of this copy, "" while it does not exist.
    [[nodiscard]] QString errorLog() const;
    [[nodiscard]] QString dataPath() const;

private:
    QTemporaryDir m_home;
    QProcess m_process;
    bool m_started = false;
};

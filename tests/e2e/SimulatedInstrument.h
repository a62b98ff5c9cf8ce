#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// velquin-sim on a pseudo-terminal of its own, for the life of a test.
class SimulatedInstrument
{
public:
    explicit SimulatedInstrument(const QStringList &options);
    ~SimulatedInstrument();

    /// The pty's path, "" when the simulator did not start.
    [[nodiscard]] QString ptyPath() const { return m_pty; }

private:
    QProcess m_process;
    QString m_pty;
};

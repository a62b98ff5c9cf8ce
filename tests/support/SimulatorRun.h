#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// Writes velquin-sim's stream for `options` to `path` at once (no pacing), and its manifest to
/// `manifest` when given; true when done.
bool writeSimulatedStream(const QStringList &options, const QString &path,
                          const QString &manifest = {});

/// velquin-sim playing a scenario in real time onto a pseudo-terminal of its own, with its
/// manifest written beside it. Ends the simulator with the test if it is still playing.
class SimulatorRun
{
public:
    explicit SimulatorRun(const QStringList &options);
    ~SimulatorRun();
    SimulatorRun(const SimulatorRun &) = delete;
    SimulatorRun &operator=(const SimulatorRun &) = delete;

    /// The slave path to open as the serial device; empty when the simulator did not start.
    [[nodiscard]] QString ptyPath() const { return m_ptyPath; }
    /// The simulator has played its runs, the reader has taken every byte and it has exited.
    [[nodiscard]] bool finished() const;
    [[nodiscard]] bool exitedCleanly() const;
    [[nodiscard]] QString manifestPath() const;
    [[nodiscard]] QString errorOutput();

private:
    QTemporaryDir m_dir;
    QProcess m_process;
    QString m_ptyPath;
};

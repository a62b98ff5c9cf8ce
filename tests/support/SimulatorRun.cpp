#include "SimulatorRun.h"

namespace {
constexpr int kStartMs = 10000;
constexpr int kEndMs = 5000;
} // namespace

SimulatorRun::SimulatorRun(const QStringList &options)
{
    // Real time: the recorder decodes in the pauses between receive events, as on a real line.
    const QStringList arguments =
        QStringList{"--pty", "--speed", "1", "--manifest", manifestPath()} + options;
    m_process.start(QStringLiteral(VELQUIN_SIM_PROGRAM), arguments);
    if (!m_process.waitForStarted(kStartMs))
        return;
    while (!m_process.canReadLine() && m_process.waitForReadyRead(kStartMs)) {
    }
    if (m_process.canReadLine())
        m_ptyPath = QString::fromLocal8Bit(m_process.readLine()).trimmed();
}

SimulatorRun::~SimulatorRun()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(kEndMs)) {
        m_process.kill();
        m_process.waitForFinished(kEndMs);
    }
}

bool SimulatorRun::finished() const
{
    return m_process.state() == QProcess::NotRunning;
}

bool SimulatorRun::exitedCleanly() const
{
    return finished() && m_process.exitStatus() == QProcess::NormalExit &&
           m_process.exitCode() == 0;
}

QString SimulatorRun::manifestPath() const
{
    return m_dir.filePath(QStringLiteral("manifest.json"));
}

QString SimulatorRun::errorOutput()
{
    return QString::fromLocal8Bit(m_process.readAllStandardError());
}

bool writeSimulatedStream(const QStringList &options, const QString &path, const QString &manifest)
{
    QStringList arguments{"--out", path, "--speed", "0"};
    if (!manifest.isEmpty())
        arguments << "--manifest" << manifest;
    return QProcess::execute(QStringLiteral(VELQUIN_SIM_PROGRAM), arguments + options) == 0;
}

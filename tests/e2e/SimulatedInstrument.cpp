#include "SimulatedInstrument.h"

SimulatedInstrument::SimulatedInstrument(const QStringList &options)
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.start(QStringLiteral(VELQUIN_SIM), QStringList{"--pty"} + options);
    if (m_process.waitForStarted(10000) && m_process.waitForReadyRead(10000))
        m_pty = QString::fromLocal8Bit(m_process.readLine()).trimmed();
}

SimulatedInstrument::~SimulatedInstrument()
{
    m_process.kill();
    m_process.waitForFinished(5000);
}

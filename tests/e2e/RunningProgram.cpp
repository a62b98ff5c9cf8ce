#include "RunningProgram.h"

#include <QProcessEnvironment>

#include <csignal>

RunningProgram::RunningProgram(const QString &comPorts)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("OSTREL_COMPORTS", comPorts);
    env.insert("XDG_DATA_HOME", m_home.path() + "/data");
    env.insert("XDG_CONFIG_HOME", m_home.path() + "/config");
    m_process.setProcessEnvironment(env);
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.start(QStringLiteral(OSTREL_PROGRAM), {});
    m_started = m_process.waitForStarted(10000);
}

RunningProgram::~RunningProgram()
{
    m_process.terminate();
    if (!m_process.waitForFinished(5000))
        m_process.kill();
    m_process.waitForFinished(5000);
}

bool RunningProgram::endBy(int signal)
{
    ::kill(pid_t(m_process.processId()), signal);
    return m_process.waitForFinished(10000);
}

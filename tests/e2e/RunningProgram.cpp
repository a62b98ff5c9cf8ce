#include "RunningProgram.h"

#include "Pty.h"

#include <QFile>
#include <QProcessEnvironment>

#include <csignal>

RunningProgram::RunningProgram(const QString &comPorts, Home home)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("OSTREL_COMPORTS", comPorts);
    if (home == OwnHome) {
        env.insert("XDG_DATA_HOME", m_home.path() + "/data");
        env.insert("XDG_CONFIG_HOME", m_home.path() + "/config");
    }
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

QString RunningProgram::errorLog() const
{
    QFile log(m_home.path() + "/data/Ostrel MS/ChartErr.log");
    if (!log.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(log.readAll());
}

bool RunningProgram::holdsPort(const QString &device) const
{
    const QString lockFile = "/var/lock/LCK.." + QString(device).remove("/dev/").replace('/', '_');
    int steadyTicks = 0;
    return waitFor(
        [&] {
            steadyTicks = QFile::exists(lockFile) ? steadyTicks + 1 : 0;
            QThread::msleep(100);
            return steadyTicks >= 10;
        },
        30000);
}

bool RunningProgram::endBy(int signal)
{
    ::kill(pid_t(m_process.processId()), signal);
    return m_process.waitForFinished(10000);
}

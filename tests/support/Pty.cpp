#include "Pty.h"

#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <termios.h>
#include <unistd.h>

Pty::Pty()
{
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0)
        throw std::runtime_error("no pseudo-terminal");
    m_slavePath = QString::fromLocal8Bit(::ptsname(m_master));
    termios raw{};
    ::tcgetattr(m_master, &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(m_master, TCSANOW, &raw);
    // Holding the slave open keeps the master writable before the program opens it, and keeps
    // the line from hanging up when the program closes and reopens it.
    m_slaveKeeper = ::open(m_slavePath.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ::tcgetattr(m_slaveKeeper, &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(m_slaveKeeper, TCSANOW, &raw);
}

Pty::~Pty()
{
    if (m_master >= 0)
        ::close(m_master);
    if (m_slaveKeeper >= 0)
        ::close(m_slaveKeeper);
}

bool Pty::write(const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(m_master, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += n;
    }
    return true;
}

ComPorts::ComPorts(const QStringList &devices)
{
    qputenv("OSTREL_COMPORTS", devices.join(QLatin1Char(',')).toLocal8Bit());
}

ComPorts::~ComPorts()
{
    qputenv("OSTREL_COMPORTS", "");
}

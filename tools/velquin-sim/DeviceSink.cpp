#include "DeviceSink.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace VelquinSim {

namespace {

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

DeviceSink::DeviceSink(const QString &path) : m_path(path)
{}

DeviceSink::~DeviceSink()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

bool DeviceSink::open()
{
    m_fd = ::open(m_path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    termios mode{};
    if (m_fd < 0 || ::tcgetattr(m_fd, &mode) != 0) {
        m_error = QStringLiteral("cannot open %1: %2").arg(m_path, systemError());
        return false;
    }
    ::cfmakeraw(&mode);
    ::cfsetispeed(&mode, B9600);
    ::cfsetospeed(&mode, B9600);
    mode.c_cflag &= ~(PARENB | CSTOPB | CSIZE | CRTSCTS);
    mode.c_cflag |= CS8 | CLOCAL | CREAD;
    mode.c_iflag &= ~(IXON | IXOFF | IXANY);
    if (::tcsetattr(m_fd, TCSANOW, &mode) != 0) {
        m_error = QStringLiteral("cannot set %1 to 9600 8N1: %2").arg(m_path, systemError());
        return false;
    }
    return true;
}

bool DeviceSink::write(const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(m_fd, bytes.constData() + done, bytes.size() - done);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            m_error = systemError();
            return false;
        }
        done += written;
    }
    return true;
}

void DeviceSink::drain()
{
    ::tcdrain(m_fd);
}

} // namespace VelquinSim

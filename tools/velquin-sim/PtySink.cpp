#include "PtySink.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace VelquinSim {

namespace {

/// Bytes nobody has read for a quarter of a minute of line time: no receiver is listening, and
/// a real line would have lost them, so they are dropped rather than handed to the next one
/// who opens the port.
constexpr int kStaleBytes = 1024;
/// A reader that has taken nothing for this long is not coming back for the rest.
constexpr int kStallMilliseconds = 3000;
/// Bytes still on their way into the terminal's queue do not show in it: the queue must stay
/// empty this long before the last byte counts as read.
constexpr int kQuietMilliseconds = 300;
constexpr int kPollMilliseconds = 20;

} // namespace

PtySink::PtySink(bool paced) : m_paced(paced)
{}

PtySink::~PtySink()
{
    if (m_slave >= 0)
        ::close(m_slave);
    if (m_master >= 0)
        ::close(m_master);
}

bool PtySink::open()
{
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
        m_error = QStringLiteral("cannot create a pseudo-terminal: %1")
                      .arg(QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    m_slavePath = QString::fromLocal8Bit(::ptsname(m_master));
    m_slave = ::open(::ptsname(m_master), O_RDWR | O_NOCTTY | O_NONBLOCK);
    termios mode{};
    if (m_slave < 0 || ::tcgetattr(m_slave, &mode) != 0) {
        m_error = QStringLiteral("cannot open %1: %2")
                      .arg(m_slavePath, QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    // Raw: no echo, no line editing, no CR/LF translation; the bytes pass as they are.
    ::cfmakeraw(&mode);
    ::cfsetispeed(&mode, B9600);
    ::cfsetospeed(&mode, B9600);
    mode.c_cflag |= CLOCAL | CREAD;
    ::tcsetattr(m_slave, TCSANOW, &mode);
    ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);
    return true;
}

int PtySink::unread() const
{
    int count = 0;
    ::ioctl(m_slave, FIONREAD, &count);
    return count;
}

bool PtySink::write(const QByteArray &bytes)
{
    if (m_paced && unread() > kStaleBytes)
        ::tcflush(m_slave, TCIFLUSH);
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(m_master, bytes.constData() + done, bytes.size() - done);
        if (written > 0) {
            done += written;
            continue;
        }
        if (written < 0 && errno != EAGAIN && errno != EINTR) {
            m_error = QString::fromLocal8Bit(std::strerror(errno));
            return false;
        }
        pollfd wait{m_master, POLLOUT, 0};
        const int ready = ::poll(&wait, 1, 1000);
        if (ready < 0 && errno == EINTR) {
            m_error = QStringLiteral("interrupted");
            return false;
        }
        if (ready == 0 && m_paced)
            ::tcflush(m_slave, TCIFLUSH);
    }
    return true;
}

void PtySink::drain()
{
    int stalled = 0;
    int quiet = 0;
    int last = unread();
    while (stalled < kStallMilliseconds && quiet < kQuietMilliseconds) {
        ::usleep(kPollMilliseconds * 1000);
        const int now = unread();
        stalled = now == last ? stalled + kPollMilliseconds : 0;
        quiet = now == 0 ? quiet + kPollMilliseconds : 0;
        last = now;
    }
}

} // namespace VelquinSim

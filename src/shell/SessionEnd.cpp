#include "shell/SessionEnd.h"

#include "runtime/Application.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {

std::array<int, 2> wakeUp = {-1, -1};
constexpr std::array kSignals = {SIGTERM, SIGHUP, SIGINT};

void onSignal(int number)
{
    const char byte = char(number);
    (void)!::write(wakeUp[0], &byte, 1);
}

} // namespace

SessionEnd::SessionEnd(std::function<void()> writeLog) : m_writeLog(std::move(writeLog))
{
    Application::setFlushBeforeExit(m_writeLog);
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, wakeUp.data()) != 0) {
        std::perror("Ostrel MS: no end-of-session handling");
        return;
    }
    m_notifier = new QSocketNotifier(wakeUp[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &SessionEnd::end);
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int number : kSignals)
        ::sigaction(number, &action, nullptr);
}

SessionEnd::~SessionEnd()
{
    Application::setFlushBeforeExit(nullptr);
    for (const int number : kSignals)
        ::signal(number, SIG_DFL);
    for (int &fd : wakeUp)
        if (fd >= 0)
            ::close(std::exchange(fd, -1));
}

void SessionEnd::end()
{
    char number = 0;
    if (::read(wakeUp[1], &number, 1) != 1)
        return;
    m_notifier->setEnabled(false);
    try {
        m_writeLog();
    } catch (...) {
        std::fputs("Ostrel MS: the log could not be written before the end\n", stderr);
    }
    std::fflush(nullptr);
    ::signal(number, SIG_DFL);
    ::raise(number);
}

#pragma once

#include <QObject>

#include <functional>

class QSocketNotifier;

/// @brief Whatever ends the program unasked, while this object lives, writes the log first: a
/// run-time error that no routine caught, and SIGTERM, SIGHUP and SIGINT (shutdown, logout, a
/// terminal's Ctrl+C).
///
/// A signal ends the program as a crash that loses nothing: after the write the process ends
/// by the same signal, without the exit questions and without removing its log directory, so
/// that the next start offers recovery. The signal handler only wakes the event loop: the write
/// runs between two events, never in the middle of one.
class SessionEnd : public QObject
{
public:
    explicit SessionEnd(std::function<void()> writeLog);
    ~SessionEnd() override;
    SessionEnd(const SessionEnd &) = delete;
    SessionEnd &operator=(const SessionEnd &) = delete;

private:
    void end();

    std::function<void()> m_writeLog;
    QSocketNotifier *m_notifier = nullptr;
};

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// A pseudo-terminal in raw mode: the test writes to the master, the program under test opens
/// the slave path as its serial device.
class Pty
{
public:
    Pty();
    ~Pty();
    Pty(const Pty &) = delete;
    Pty &operator=(const Pty &) = delete;

    [[nodiscard]] QString slavePath() const { return m_slavePath; }
    /// Writes all bytes to the master; false on failure.
    bool write(const QByteArray &bytes);

private:
    int m_master = -1;
    int m_slaveKeeper = -1;
    QString m_slavePath;
};

/// COM 1, COM 2, ... on the given devices for as long as it lives, as the demo hangs the
/// simulated instrument's pseudo-terminal on COM 1. Without one, no COM number reaches a device.
class ComPorts
{
public:
    explicit ComPorts(const QStringList &devices);
    ~ComPorts();
    ComPorts(const ComPorts &) = delete;
    ComPorts &operator=(const ComPorts &) = delete;
};

/// Runs the event loop until `condition` holds or `timeoutMs` passes; answers the condition.
template <typename Condition> bool waitFor(Condition condition, int timeoutMs = 5000);

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

template <typename Condition> bool waitFor(Condition condition, int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > timeoutMs)
            return condition();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(2);
    }
    return true;
}

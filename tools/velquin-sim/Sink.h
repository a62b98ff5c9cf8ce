#pragma once

#include <QByteArray>
#include <QString>

namespace VelquinSim {

/// Where the bytes go: a pseudo-terminal, a file or a serial port.
class Sink
{
public:
    virtual ~Sink() = default;
    /// Writes all the bytes, in one write where the device takes them; false on failure.
    virtual bool write(const QByteArray &bytes) = 0;
    /// Waits, within reason, until what was written has left for the receiver.
    virtual void drain() = 0;
    [[nodiscard]] QString errorString() const { return m_error; }

protected:
    QString m_error;
};

} // namespace VelquinSim

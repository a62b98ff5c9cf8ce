#pragma once

#include "Sink.h"

namespace VelquinSim {

/// A real serial port at 9600 baud, 8 data bits, no parity, 1 stop bit, no handshake, for a
/// null-modem cable to a second computer.
class DeviceSink : public Sink
{
public:
    explicit DeviceSink(const QString &path);
    ~DeviceSink() override;

    bool open();
    bool write(const QByteArray &bytes) override;
    void drain() override;

private:
    QString m_path;
    int m_fd = -1;
};

} // namespace VelquinSim

#pragma once

#include "Sink.h"

namespace VelquinSim {

/// A pseudo-terminal in raw mode whose slave side stands in for the instrument's serial port.
/// The simulator holds the slave open itself, so that the recorder can close and reopen the
/// port (as its port search does) without the terminal going away.
class PtySink : public Sink
{
public:
    /// `paced` is false at speed 0: then a write waits for the reader however long it takes.
    explicit PtySink(bool paced);
    ~PtySink() override;

    bool open();
    [[nodiscard]] QString slavePath() const { return m_slavePath; }

    bool write(const QByteArray &bytes) override;
    void drain() override;

private:
    [[nodiscard]] int unread() const;

    bool m_paced;
    int m_master = -1;
    int m_slave = -1;
    QString m_slavePath;
};

} // namespace VelquinSim

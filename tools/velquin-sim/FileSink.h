#pragma once

#include "Sink.h"

#include <QFile>

namespace VelquinSim {

/// The raw bytes into a file, for replay and for tests without a terminal.
class FileSink : public Sink
{
public:
    explicit FileSink(const QString &path);

    bool open();
    bool write(const QByteArray &bytes) override;
    void drain() override;

private:
    QFile m_file;
};

} // namespace VelquinSim

#pragma once

#include "SimBlock.h"

#include <QByteArray>
#include <QList>

namespace VelquinSim {

/// One write to the transport, due at a time in seconds of the stream's own clock.
struct WireWrite
{
    double at;
    QByteArray bytes;
};

/// Puts blocks on a 9600-baud line: a block goes out when it is ready and the line is free,
/// and takes the line for ten bit times a byte. A long block (the method text) goes out in
/// short pieces at the pace of the line, so that no write holds more than a block's worth.
/// Blocks of a burst ignore the line and go out back to back.
class WireSchedule
{
public:
    /// 9600 baud, one start bit, eight data bits, one stop bit.
    static constexpr double kBytesPerSecond = 960.0;
    static constexpr qsizetype kLongestWrite = 16;

    QList<WireWrite> place(const SimBlock &block);

private:
    double m_lineFree = 0;
};

} // namespace VelquinSim

#pragma once

#include <QByteArray>

namespace VelquinSim {

/// The method table the instrument prints after a run: a header and one fixed-column row per
/// step, lines ended by CR LF, plain ASCII (it can never hold the sync byte).
class MethodText
{
public:
    /// `variant` picks the method and column names, so that runs differ.
    static QByteArray compose(int runNumber, double runMinutes, quint32 variant);
};

} // namespace VelquinSim

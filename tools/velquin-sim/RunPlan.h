#pragma once

#include <QList>
#include <QtGlobal>

class QRandomGenerator;

namespace VelquinSim {

struct Scenario;

/// A block the instrument sends ahead of a sample pair: a parameter block, or "M" for the
/// method text.
struct SlotAction
{
    char letter;
    quint8 value;
};

/// One sample time (0.2 s) of a cycle.
struct PlannedSlot
{
    QList<SlotAction> before;
    /// A run advances: the UV block is a "V", otherwise a "U".
    bool advancing = false;
    bool inRun = false;
    bool flowing = true;
    /// The run's own clock, which stops while the run pauses or holds.
    double programSeconds = 0;
};

/// Lays out one cycle: idle time, a run with its events, pauses and holds where the seed puts
/// them, the end, pen off and the method text; after the last run an idle tail.
class RunPlan
{
public:
    static constexpr int kPairsPerSecond = 5;

    static QList<PlannedSlot> cycle(const Scenario &scenario, QRandomGenerator &random,
                                    bool lastRun);
};

} // namespace VelquinSim

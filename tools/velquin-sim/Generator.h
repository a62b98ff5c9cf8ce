#pragma once

#include "RunPlan.h"
#include "Scenario.h"
#include "SimBlock.h"
#include "TraceModel.h"

#include <QList>
#include <QRandomGenerator>

#include <deque>

namespace VelquinSim {

/// Plays a scenario into the blocks the instrument sends, in order, each with the time it is
/// ready and its place in the stream; injects the scenario's faults on the way. Runs on its
/// own clock and touches no device, so that it can be tested on its own.
class Generator
{
public:
    explicit Generator(const Scenario &scenario);

    /// The next block, or false when a scenario with a set number of runs is over.
    bool next(SimBlock &block);

private:
    void planCycle();
    void emitSlot();
    void emitFaults(double time, bool &chance96);
    void emitPair(const PlannedSlot &slot, double time, bool chance96, bool burst);
    void push(SimBlock block, double time);
    QByteArray junk(int count);

    Scenario m_scenario;
    QRandomGenerator m_random;
    /// Faults draw from a generator of their own, so that adding one leaves the traces alone.
    QRandomGenerator m_faultRandom;
    TraceModel m_trace;
    QList<Fault> m_pending;
    QList<PlannedSlot> m_cycle;
    qsizetype m_cycleSlot = 0;
    int m_runNumber = 0;
    quint32 m_methodVariant = 0;
    qint64 m_slot = 0;
    qint64 m_pair = 0;
    qint64 m_offset = 0;
    double m_silentUntil = -1;
    int m_cutFirst = 0;
    bool m_finished = false;
    std::deque<SimBlock> m_queue;
};

} // namespace VelquinSim

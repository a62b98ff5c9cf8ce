#include "RunPlan.h"

#include "Scenario.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <map>

namespace VelquinSim {

namespace {

int slotsFor(double seconds)
{
    return std::max(1, int(std::lround(seconds * RunPlan::kPairsPerSecond)));
}

/// `count` distinct program slots drawn between the fractions `from` and `to` of the run.
QList<int> drawSlots(QRandomGenerator &random, int count, int runSlots, double from, double to)
{
    QList<int> chosen;
    const int low = int(from * runSlots);
    const int span = std::max(1, int((to - from) * runSlots));
    for (int i = 0; i < count && chosen.size() < span; ++i) {
        int slot = low + int(random.bounded(span));
        while (chosen.contains(slot))
            slot = low + (slot - low + 1) % span;
        chosen.append(slot);
    }
    std::sort(chosen.begin(), chosen.end());
    return chosen;
}

enum class Break { Pause, Hold };

} // namespace

QList<PlannedSlot> RunPlan::cycle(const Scenario &scenario, QRandomGenerator &random, bool lastRun)
{
    const bool status = scenario.kind == InstrumentKind::Status;
    const int runSlots = slotsFor(scenario.runMinutes * 60);

    std::multimap<int, SlotAction> marks;
    for (int slot : drawSlots(random, scenario.events, runSlots, 0.05, 0.95))
        marks.insert({slot, {'E', 2}});
    for (int slot : drawSlots(random, scenario.labels, runSlots, 0.05, 0.95))
        marks.insert({slot, {'E', 8}});
    std::map<int, Break> breaks;
    for (int slot : drawSlots(random, scenario.pauses + scenario.holds, runSlots, 0.1, 0.9)) {
        const bool pause = int(breaks.size()) < scenario.pauses;
        breaks[slot] = pause ? Break::Pause : Break::Hold;
    }

    QList<PlannedSlot> plan(slotsFor(scenario.idleSeconds));
    PlannedSlot start;
    start.advancing = true;
    start.inRun = true;
    if (status) {
        if (scenario.pen)
            start.before.append({'P', 1});
        start.before.append({'R', 1});
    } else {
        start.before.append({'E', 4});
    }

    QList<SlotAction> pending = start.before;
    for (int programSlot = 0; programSlot < runSlots; ++programSlot) {
        PlannedSlot slot;
        slot.before = pending;
        pending.clear();
        slot.inRun = true;
        slot.programSeconds = double(programSlot) / kPairsPerSecond;
        const auto broken = breaks.find(programSlot);
        if (broken != breaks.end()) {
            const bool pause = broken->second == Break::Pause;
            if (pause && status)
                slot.before.append({'R', 2});
            if (!pause) {
                if (status)
                    slot.before.append({'R', 3});
                slot.before.append({'H', 1});
            }
            const int length = slotsFor(pause ? scenario.pauseSeconds : scenario.holdSeconds);
            for (int i = 0; i < length; ++i) {
                PlannedSlot waiting = slot;
                waiting.advancing = !pause;
                waiting.flowing = !pause;
                plan.append(waiting);
                slot.before.clear();
            }
            if (!pause)
                slot.before.append({'H', 2});
            if (status)
                slot.before.append({'R', 1});
        }
        for (auto [mark, end] = marks.equal_range(programSlot); mark != end; ++mark)
            slot.before.append(mark->second);
        slot.advancing = true;
        plan.append(slot);
    }

    PlannedSlot ended;
    ended.before.append(status ? SlotAction{'R', 0} : SlotAction{'E', 3});
    plan.append(ended);
    const int post = slotsFor(std::max(5.0, lastRun ? scenario.idleSeconds : 0.0));
    for (int i = 1; i < post; ++i) {
        PlannedSlot after;
        if (i == 2 * kPairsPerSecond && status && scenario.pen)
            after.before.append({'P', 0});
        if (i == 3 * kPairsPerSecond)
            after.before.append({'M', 0});
        plan.append(after);
    }
    return plan;
}

} // namespace VelquinSim

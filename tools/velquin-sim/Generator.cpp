#include "Generator.h"

#include "MethodText.h"

#include <algorithm>

namespace VelquinSim {

namespace {

/// Flow rate in ml/min that the status instrument reports in its "F" blocks once a second.
constexpr float kFlow = 1.0f;

} // namespace

Generator::Generator(const Scenario &scenario)
    : m_scenario(scenario)
    , m_random(quint64(scenario.seed))
    , m_faultRandom(quint64(scenario.seed) ^ Q_UINT64_C(0x5eed0fa017))
    , m_trace(m_random)
    , m_pending(scenario.faults)
{
    std::stable_sort(m_pending.begin(), m_pending.end(),
                     [](const Fault &a, const Fault &b) { return a.at < b.at; });
    for (qsizetype i = m_pending.size() - 1; i >= 0; --i) {
        if (m_pending.at(i).kind == FaultKind::MidBlock)
            m_cutFirst = m_pending.takeAt(i).count;
    }
    planCycle();
}

void Generator::planCycle()
{
    ++m_runNumber;
    const bool last = m_scenario.runs > 0 && m_runNumber == m_scenario.runs;
    m_methodVariant = m_random.generate();
    m_trace.startRun(m_scenario.runMinutes * 60);
    m_cycle = RunPlan::cycle(m_scenario, m_random, last);
    m_cycleSlot = 0;
}

bool Generator::next(SimBlock &block)
{
    while (m_queue.empty() && !m_finished)
        emitSlot();
    if (m_queue.empty())
        return false;
    block = std::move(m_queue.front());
    m_queue.pop_front();
    return true;
}

void Generator::emitSlot()
{
    if (m_cycleSlot == m_cycle.size()) {
        if (m_scenario.runs > 0 && m_runNumber == m_scenario.runs) {
            m_finished = true;
            return;
        }
        planCycle();
    }
    const PlannedSlot &slot = m_cycle.at(m_cycleSlot++);
    const double time = double(m_slot++) / RunPlan::kPairsPerSecond;
    bool chance96 = false;
    emitFaults(time, chance96);

    for (const SlotAction &action : slot.before) {
        if (action.letter == 'M')
            push(SimBlock::method(
                     MethodText::compose(m_runNumber, m_scenario.runMinutes, m_methodVariant)),
                 time);
        else
            push(SimBlock::parameter(action.letter, action.value), time);
    }
    if (m_scenario.kind == InstrumentKind::Status && (m_slot - 1) % RunPlan::kPairsPerSecond == 2)
        push(SimBlock::sample('F', slot.flowing ? kFlow : 0.0f), time);
    m_trace.step(time, slot.programSeconds, slot.inRun, slot.flowing);
    emitPair(slot, time, chance96, false);
}

void Generator::emitFaults(double time, bool &chance96)
{
    while (!m_pending.isEmpty() && m_pending.first().at <= time) {
        const Fault fault = m_pending.takeFirst();
        SimBlock block;
        switch (fault.kind) {
        case FaultKind::MidBlock:
            continue;
        case FaultKind::Garbage:
            block.bytes = junk(fault.count);
            break;
        case FaultKind::UnknownType:
            block.type = fault.type;
            block.bytes = QByteArray(1, char(kSyncByte)) + char(fault.type) + junk(4);
            break;
        case FaultKind::WrongParameter:
            block = SimBlock::parameter(char(fault.type), fault.value);
            break;
        case FaultKind::Chance96:
            chance96 = true;
            continue;
        case FaultKind::Silence:
            m_silentUntil = time + fault.seconds;
            block.value = fault.seconds;
            break;
        case FaultKind::Burst:
            block.value = fault.count;
            block.fault = fault.optionText();
            push(block, time);
            for (int i = 0; i < fault.count; ++i) {
                const PlannedSlot &slot = m_cycle.at(m_cycleSlot - 1);
                m_trace.step(time, slot.programSeconds, slot.inRun, slot.flowing);
                emitPair(slot, time, false, true);
            }
            continue;
        }
        block.fault = fault.optionText();
        push(block, time);
    }
}

void Generator::emitPair(const PlannedSlot &slot, double time, bool chance96, bool burst)
{
    SimBlock uv = SimBlock::sample(slot.advancing ? 'V' : 'U', m_trace.uv());
    if (chance96) {
        // Only the lowest mantissa bits change: a sync byte and a "V" where a receiver that
        // searches for sync could take them for a block.
        uv.bytes[4] = char(kSyncByte);
        uv.bytes[5] = 'V';
        uv.value = SimBlock::floatFromBytes(uv.bytes.mid(2));
        uv.fault = QStringLiteral("chance96");
    }
    SimBlock cond = SimBlock::sample(m_scenario.condLetter, m_trace.conductivity());
    uv.burst = burst;
    cond.burst = burst;
    push(uv, time);
    push(cond, time);
    ++m_pair;
}

void Generator::push(SimBlock block, double time)
{
    block.time = time;
    block.pair = m_pair;
    const bool silence = block.fault.startsWith(QLatin1String("silence"));
    if (time < m_silentUntil && !silence)
        return;
    if (m_cutFirst > 0 && !block.bytes.isEmpty()) {
        const int cut = std::min<int>(m_cutFirst, int(block.bytes.size()) - 1);
        block.bytes.remove(0, cut);
        block.fault = QStringLiteral("midblock:%1").arg(cut);
        m_cutFirst = 0;
    }
    block.offset = m_offset;
    m_offset += block.bytes.size();
    m_queue.push_back(std::move(block));
}

QByteArray Generator::junk(int count)
{
    QByteArray bytes;
    while (bytes.size() < count) {
        const char byte = char(m_faultRandom.bounded(256));
        if (quint8(byte) != kSyncByte)
            bytes.append(byte);
    }
    return bytes;
}

} // namespace VelquinSim

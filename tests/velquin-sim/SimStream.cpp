#include "SimStream.h"

#include "Generator.h"

using namespace VelquinSim;

SimStream SimStream::play(const Scenario &scenario)
{
    SimStream stream;
    Generator generator(scenario);
    SimBlock block;
    while (generator.next(block)) {
        stream.bytes += block.bytes;
        stream.blocks.append(block);
    }
    return stream;
}

QList<SimBlock> SimStream::ofType(char letter) const
{
    QList<SimBlock> found;
    for (const SimBlock &block : blocks) {
        if (block.type == quint8(letter) && block.fault.isEmpty())
            found.append(block);
    }
    return found;
}

Scenario shortScenario(InstrumentKind kind, quint64 seed, const QStringList &faults)
{
    Scenario scenario;
    scenario.kind = kind;
    scenario.runs = 1;
    scenario.runMinutes = 0.5;
    scenario.idleSeconds = 5;
    scenario.events = 2;
    scenario.labels = 1;
    scenario.pauses = 1;
    scenario.pauseSeconds = 3;
    scenario.holds = 1;
    scenario.holdSeconds = 2;
    scenario.speed = 0;
    scenario.seed = seed;
    for (const QString &text : faults)
        scenario.faults.append(Fault::parse(text, nullptr).value());
    return scenario;
}

#pragma once

#include "Scenario.h"
#include "SimBlock.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

/// A finite scenario played whole on the generator's own clock.
struct SimStream
{
    QByteArray bytes;
    QList<VelquinSim::SimBlock> blocks;

    static SimStream play(const VelquinSim::Scenario &scenario);
    /// Regular blocks of one type letter, in order.
    [[nodiscard]] QList<VelquinSim::SimBlock> ofType(char letter) const;
};

/// A short scenario that still holds every kind of block: 1 run of 30 s, with the faults
/// given as option texts.
VelquinSim::Scenario shortScenario(VelquinSim::InstrumentKind kind, quint64 seed = 1,
                                   const QStringList &faults = {});

#pragma once

#include "Scenario.h"

namespace VelquinSim {

class Manifest;
class Sink;

/// Plays a scenario into a sink in the scenario's time: each write waits for its moment on
/// the simulated line, divided by the speed; speed 0 writes as fast as the sink takes it.
class Player
{
public:
    Player(const Scenario &scenario, Sink &sink, Manifest *manifest);

    /// Plays to the end of the scenario or until a stop is asked for; false on a write failure.
    bool play();
    /// Safe to call from a signal handler.
    static void requestStop();

private:
    const Scenario &m_scenario;
    Sink &m_sink;
    Manifest *m_manifest;
};

} // namespace VelquinSim

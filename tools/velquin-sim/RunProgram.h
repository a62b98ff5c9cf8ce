#pragma once

#include <span>

namespace VelquinSim {

/// One step of the ion-exchange method every simulated run follows; times are fractions of
/// the run, so that a short test run and a long demo run elute alike.
struct ProgramStep
{
    double from;
    double percentBFrom;
    double percentBTo;
    const char *valve;
    const char *name;
};

/// The method behind the traces: the salt program that drives conductivity, and the step
/// table the instrument sends as its method text after the run.
class RunProgram
{
public:
    static std::span<const ProgramStep> steps();
    /// Percent of buffer B asked for at a fraction 0..1 of the run.
    static double percentB(double fraction);
};

} // namespace VelquinSim

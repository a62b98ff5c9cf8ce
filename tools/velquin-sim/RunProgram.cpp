#include "RunProgram.h"

#include <algorithm>
#include <array>

namespace VelquinSim {

namespace {

constexpr std::array<ProgramStep, 7> kSteps = {{
    {0.00, 0, 0, "LOAD", "Equilibrate"},
    {0.12, 0, 0, "INJECT", "Sample on"},
    {0.18, 0, 0, "LOAD", "Wash unbound"},
    {0.25, 0, 60, "LOAD", "Linear gradient"},
    {0.70, 100, 100, "LOAD", "High salt strip"},
    {0.80, 0, 0, "LOAD", "Re-equilibrate"},
    {1.00, 0, 0, "LOAD", "End of method"},
}};

} // namespace

std::span<const ProgramStep> RunProgram::steps()
{
    return kSteps;
}

double RunProgram::percentB(double fraction)
{
    fraction = std::clamp(fraction, 0.0, 1.0);
    for (std::size_t i = kSteps.size() - 1; i-- > 0;) {
        const ProgramStep &step = kSteps[i];
        if (fraction >= step.from) {
            const double span = kSteps[i + 1].from - step.from;
            const double within = span > 0 ? (fraction - step.from) / span : 0;
            return step.percentBFrom + (step.percentBTo - step.percentBFrom) * within;
        }
    }
    return 0;
}

} // namespace VelquinSim

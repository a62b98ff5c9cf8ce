#include "chart/AxisTicks.h"

#include <algorithm>
#include <cmath>

namespace AxisTicks {

double roundStep(double span, int maxCount)
{
    if (!(span > 0) || maxCount < 1 || !std::isfinite(span))
        return 0;
    const double rough = span / maxCount;
    const double decade = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0, 10.0}) {
        // The slack keeps 0.1 * 10 from counting as more than one decade.
        if (factor * decade >= rough * (1 - 1e-9))
            return factor * decade;
    }
    return 10 * decade;
}

std::vector<double> ticks(double min, double max, double step)
{
    std::vector<double> result;
    if (!(step > 0) || !(max >= min))
        return result;
    const double slack = step * 1e-6;
    const double first = std::ceil((min - slack) / step);
    const double last = std::floor((max + slack) / step);
    for (double k = first; k <= last; ++k)
        result.push_back(k * step == 0 ? 0.0 : k * step);
    return result;
}

int decimalsFor(double step, int fewest)
{
    if (!(step > 0) || !std::isfinite(step))
        return fewest;
    // A round step is 1, 2 or 5 times a power of ten, and that power says the last digit that
    // changes from one tick to the next.
    const int needed = -int(std::floor(std::log10(step) + 1e-9));
    return std::max(fewest, needed);
}

} // namespace AxisTicks

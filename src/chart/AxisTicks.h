#pragma once

#include <vector>

/// Round tick steps (1, 2 or 5 times a power of ten) and the ticks they put on an axis.
namespace AxisTicks {
/// The smallest round step that divides `span` into at most `maxCount` parts.
[[nodiscard]] double roundStep(double span, int maxCount);
/// The multiples of `step` from `min` to `max`, both ends included.
[[nodiscard]] std::vector<double> ticks(double min, double max, double step);
/// The decimals that tell ticks a round `step` apart from one another, and never fewer than
/// `fewest`.
[[nodiscard]] int decimalsFor(double step, int fewest);
} // namespace AxisTicks

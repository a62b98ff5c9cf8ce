#pragma once

#include <array>

class Quillchart;

/// The seven charts of the window: 0 the recorder, 1 to 4 the opened files, 5 the hidden log
/// chart, 6 the hidden chart that only saves logs.
using Charts = std::array<Quillchart *, 7>;

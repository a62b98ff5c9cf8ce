#pragma once

/// The axes and time window of one tab, as the view keeps a copy of what its chart holds.
struct ChartViewState
{
    float UvMin = 0;
    float UvMax = 0;
    float CondMin = 0;
    float CondMax = 0;
    /// Left end of what is shown, in minutes.
    float TimeFrom = 0;
    /// The window in force (under a zoom, the zoom's width), in minutes.
    float TimeSpan = 0;
};

#pragma once

#include "runtime/Int16.h"

#include <QString>

#include <array>

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

/// @brief The table of the five tabs: what each holds and how it is viewed.
///
/// Tab 0 is the recorder, tabs 1 to 4 hold opened files; the tabs in use are always the first
/// `ChartCount`. The file commands, the axis panels, the time axis and the tab switch read and
/// write the rows of the tab they act on.
struct ChartTabs
{
    static constexpr int kTabCount = 5;

    /// The tab in front, 0 to 4.
    Int16 CurrentChart;
    /// Tabs in use, the recorder's included: 1 to 5.
    Int16 ChartCount = 1;
    /// Full path of what each tab holds; empty for no file.
    std::array<QString, kTabCount> ChartFileName{};
    std::array<bool, kTabCount> ChartSaved{true, true, true, true, true};
    std::array<ChartViewState, kTabCount> ChartViews{};
    /// The window length the operator entered, in minutes.
    std::array<double, kTabCount> WindowMinutes{10.0, 10.0, 10.0, 10.0, 10.0};
    std::array<bool, kTabCount> FullView{true, true, true, true, true};
    std::array<bool, kTabCount> Zoomed{};
};

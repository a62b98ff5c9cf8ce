#pragma once

#include "view/Charts.h"

class AxisFrame;
struct ChartTabs;

/// @brief The UV and conductivity panels of the axis frame, acting on the tab in front.
///
/// A list pick applies at once; a typed full scale or minimum lights its Set button, and Set
/// (or Enter) applies it after the gap test and the limits. What reaches the chart is the
/// rounded value the operator sees.
class AxisPanels
{
public:
    AxisPanels(AxisFrame &frame, ChartTabs &tabs, const Charts &Chart);

    void FillAxisLists();
    void cmbYAxis_Click(int Index);
    void cmdSet_Click(int Index);
    /// `Which` 0 and 1 are the full scales, 2 and 3 the minima; true when the entry's text
    /// differs from the tab's state in the panel's format.
    [[nodiscard]] bool AxisEntryChanged(int Which) const;
    void cmbYAxis_Change(int Index);
    void txtYAxisMin_Change(int Index);
    /// Writes the tab's state into the five entries of the frame.
    void ShowAxisState();

private:
    AxisFrame &m_frame;
    ChartTabs &m_tabs;
    const Charts &Chart;
};

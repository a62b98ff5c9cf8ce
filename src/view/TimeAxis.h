#pragma once

#include "view/Charts.h"

#include <QtGlobal>

#include <array>

class AxisFrame;
class AxisPanels;
class QScrollBar;
class SampleIntake;
struct ChartTabs;

/// @brief The time axis of the tab in front: full view or a window moved by the tab's scroll
/// bar, a zoom on the chart taken over as a window, and the live view that keeps the
/// recorder's axis ahead of the newest sample while recording.
class TimeAxis
{
public:
    using ScrollBars = std::array<QScrollBar *, 5>;

    TimeAxis(AxisFrame &frame, AxisPanels &panels, ChartTabs &tabs, const Charts &Chart,
             const ScrollBars &ScrollChart, const SampleIntake &intake);

    void SetFullView();
    void EnableScrollBar();
    void optTimeAxis_Click(int Index);
    void cmdSetTime_Click();
    void SetScrollRange(qint32 Value);
    void GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const;
    void ScrollChart_Change(int Index);
    void txtChartTime_Change();
    void Chart_Zoomed(qint16 Index, float ZoomedTimeFrom, float ZoomedTimeTo, float UvMin,
                      float UvMax, float CondMin, float CondMax);
    void Chart_Unzoomed(qint16 Index);
    void UpdateLiveView();

    /// A session started: with the recorder in front its bar belongs to the live view.
    void recordingStarted();
    /// The recorder's bar before a session ends: its end at the run's end less the window.
    void moveRecorderBarToEnd();
    /// A session ended: with the recorder in front in window mode, its bar is free again.
    void recordingStopped();

    /// True while a zoom is being taken over.
    [[nodiscard]] bool ZoomUpdating() const { return m_zoomUpdating; }

private:
    AxisFrame &m_frame;
    AxisPanels &m_panels;
    ChartTabs &m_tabs;
    const Charts &Chart;
    const ScrollBars &ScrollChart;
    const SampleIntake &m_intake;
    bool m_zoomUpdating = false;
};

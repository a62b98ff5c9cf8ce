#pragma once

#include "documents/TabHeads.h"
#include "view/Charts.h"

class AxisFrame;
class AxisPanels;
class CommandStates;
class QTabWidget;
class SampleIntake;
class TimeAxis;
struct ChartTabs;
struct MainToolbar;

/// @brief The tab strip `TabChart`: a switch brings the tab's chart forward, refills the shared
/// axis and time controls from the tab's own state, and sets the commands for its kind.
///
/// A free "(empty)" tab never stays in front: selecting one selects the tab in front again.
/// Selections made by code run the switch as a click does.
class TabSwitch : public TabHeads
{
public:
    TabSwitch(QTabWidget &TabChart, ChartTabs &tabs, const Charts &Chart, CommandStates &commands,
              MainToolbar &toolbar, AxisFrame &frame, AxisPanels &panels, TimeAxis &timeAxis,
              const SampleIntake &intake);

    void TabChart_Click();

    [[nodiscard]] QString tabCaption(int Index) const override;
    void setTabCaption(int Index, const QString &Caption) override;
    [[nodiscard]] QString tabToolTip(int Index) const override;
    void setTabToolTip(int Index, const QString &ToolTip) override;
    void selectTab(int Index) override;
    void setChartTimeText(const QString &Text) override;

private:
    void showFileTabCommands();
    void showRecorderCommands();

    QTabWidget &TabChart;
    ChartTabs &m_tabs;
    const Charts &Chart;
    CommandStates &m_commands;
    MainToolbar &m_toolbar;
    AxisFrame &m_frame;
    AxisPanels &m_panels;
    TimeAxis &m_timeAxis;
    const SampleIntake &m_intake;
};

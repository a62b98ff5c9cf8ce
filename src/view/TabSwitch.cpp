#include "view/TabSwitch.h"

#include "acquisition/SampleIntake.h"
#include "chart/Quillchart.h"
#include "documents/ChartTabs.h"
#include "runtime/Numbers.h"
#include "view/AxisFrame.h"
#include "view/AxisPanels.h"
#include "view/CommandStates.h"
#include "view/MainToolbar.h"
#include "view/TimeAxis.h"

#include <QAction>
#include <QLineEdit>
#include <QRadioButton>
#include <QTabWidget>

TabSwitch::TabSwitch(QTabWidget &TabChart, ChartTabs &tabs, const Charts &Chart,
                     CommandStates &commands, MainToolbar &toolbar, AxisFrame &frame,
                     AxisPanels &panels, TimeAxis &timeAxis, const SampleIntake &intake)
    : TabChart(TabChart)
    , m_tabs(tabs)
    , Chart(Chart)
    , m_commands(commands)
    , m_toolbar(toolbar)
    , m_frame(frame)
    , m_panels(panels)
    , m_timeAxis(timeAxis)
    , m_intake(intake)
{
    // The strip reports selections by code and by the user alike.
    QObject::connect(&TabChart, &QTabWidget::currentChanged, &TabChart,
                     [this] { TabChart_Click(); });
}

void TabSwitch::TabChart_Click()
{
    const int Index = TabChart.currentIndex() + 1;
    if (Index > m_tabs.ChartCount) {
        // Selecting the tab in front again runs this routine once more, for that tab.
        TabChart.setCurrentIndex(m_tabs.CurrentChart);
        return;
    }
    m_tabs.CurrentChart = Index - 1;
    const int c = m_tabs.CurrentChart;
    if (c != 0)
        showFileTabCommands();
    else
        showRecorderCommands();
    Chart[c]->Redraw();
    m_frame.txtChartTime->setText(
        CStr(m_tabs.Zoomed[c] ? double(m_tabs.ChartViews[c].TimeSpan) : m_tabs.WindowMinutes[c]));
    // A changed option runs its handler for this tab: full view, or the window just written.
    m_frame.optTimeAxis[m_tabs.FullView[c] ? 0 : 1]->setChecked(true);
    if (m_frame.optTimeAxis[1]->isChecked())
        m_timeAxis.EnableScrollBar();
    m_panels.ShowAxisState();
}

void TabSwitch::showFileTabCommands()
{
    m_commands.applyTabState(CommandStates::TabState::FileTab);
    const QString caption = TabChart.tabText(m_tabs.CurrentChart);
    m_toolbar.cmdClear->setText(QStringLiteral("Close"));
    m_toolbar.cmdClear->setToolTip(QStringLiteral("Close ") + caption);
    m_toolbar.cmdSave->setToolTip(QStringLiteral("Save ") + caption);
}

void TabSwitch::showRecorderCommands()
{
    m_commands.applyTabState(m_intake.Recording() ? CommandStates::TabState::RecorderRecording
                                                  : CommandStates::TabState::RecorderIdle);
    m_toolbar.cmdClear->setText(QStringLiteral("Clear"));
    m_toolbar.cmdClear->setToolTip(QStringLiteral("Clear Chart Recorder data"));
    m_toolbar.cmdSave->setToolTip(QStringLiteral("Save Chart Recorder data"));
}

QString TabSwitch::tabCaption(int Index) const
{
    return TabChart.tabText(Index);
}

void TabSwitch::setTabCaption(int Index, const QString &Caption)
{
    TabChart.setTabText(Index, Caption);
}

QString TabSwitch::tabToolTip(int Index) const
{
    return TabChart.tabToolTip(Index);
}

void TabSwitch::setTabToolTip(int Index, const QString &ToolTip)
{
    TabChart.setTabToolTip(Index, ToolTip);
}

void TabSwitch::selectTab(int Index)
{
    TabChart.setCurrentIndex(Index);
}

void TabSwitch::setChartTimeText(const QString &Text)
{
    m_frame.txtChartTime->setText(Text);
}

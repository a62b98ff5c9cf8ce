#include "view/TimeAxis.h"

#include "acquisition/SampleIntake.h"
#include "chart/Quillchart.h"
#include "documents/ChartTabs.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "view/AxisFrame.h"
#include "view/AxisPanels.h"
#include "view/FilterNumericKey.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

namespace {

/// The bar's range ends at its Max and starts at 0. A Max below 0 (a run shorter than its
/// window) drags the bottom of the range along for as long as it stands, as the bar cannot
/// hold a reversed range; the next Max of 0 or more puts the bottom back at 0.
void setBarMaximum(QScrollBar *bar, Int16 maximum)
{
    bar->setRange(qMin(0, int(maximum)), maximum);
}

} // namespace

TimeAxis::TimeAxis(AxisFrame &frame, AxisPanels &panels, ChartTabs &tabs, const Charts &Chart,
                   const ScrollBars &ScrollChart, const SampleIntake &intake)
    : m_frame(frame)
    , m_panels(panels)
    , m_tabs(tabs)
    , Chart(Chart)
    , ScrollChart(ScrollChart)
    , m_intake(intake)
{
    for (int i = 0; i < 2; ++i)
        QObject::connect(frame.optTimeAxis[i], &QRadioButton::toggled, &frame,
                         [this, i](bool checked) {
                             if (checked)
                                 optTimeAxis_Click(i);
                         });
    QObject::connect(frame.cmdSetTime, &QPushButton::clicked, &frame,
                     [this] { cmdSetTime_Click(); });
    QObject::connect(frame.txtChartTime, &QLineEdit::textChanged, &frame,
                     [this] { txtChartTime_Change(); });
    new NumericEntry(
        frame.txtChartTime, false, [this] { cmdSetTime_Click(); }, AxisFrame::kWindowEntryLength);
    for (int i = 0; i < int(ScrollChart.size()); ++i) {
        // The bar never keeps the focus: it belongs to the chart.
        ScrollChart[i]->setFocusPolicy(Qt::NoFocus);
        QObject::connect(ScrollChart[i], &QScrollBar::valueChanged, ScrollChart[i],
                         [this, i] { ScrollChart_Change(i); });
    }
    for (Quillchart *chart : Chart) {
        QObject::connect(chart, &Quillchart::Zoomed, chart,
                         [this](qint16 Index, float from, float to, float uvMin, float uvMax,
                                float condMin, float condMax) {
                             Chart_Zoomed(Index, from, to, uvMin, uvMax, condMin, condMax);
                         });
        QObject::connect(chart, &Quillchart::Unzoomed, chart,
                         [this](qint16 Index) { Chart_Unzoomed(Index); });
    }
}

void TimeAxis::SetFullView()
{
    Quillchart &chart = *Chart[m_tabs.CurrentChart];
    m_frame.cmdSetTime->setEnabled(false);
    chart.setTimeAxisMin(0);
    m_tabs.ChartViews[m_tabs.CurrentChart].TimeFrom = 0;
    const float last = chart.GetLastTime();
    // The axis ends on a whole minute: 2.5 rounds to the even 2. It is no bar position, so a
    // run past the bar's 32767 minutes still ends on its last minute.
    chart.setTimeAxisMax(last > 0 ? float(CLng(last + 0.5)) : 10.0f);
    chart.Redraw();
    ScrollChart[m_tabs.CurrentChart]->setEnabled(false);
    m_frame.txtChartTime->setEnabled(false);
    m_tabs.FullView[m_tabs.CurrentChart] = true;
}

void TimeAxis::EnableScrollBar()
{
    // While recording, the live view owns the recorder's window.
    ScrollChart[m_tabs.CurrentChart]->setEnabled(m_tabs.CurrentChart != 0 || !m_intake.Recording());
}

void TimeAxis::optTimeAxis_Click(int Index)
{
    if (Index == 0) {
        SetFullView();
        return;
    }
    EnableScrollBar();
    if (!m_zoomUpdating)
        cmdSetTime_Click();
    m_tabs.FullView[m_tabs.CurrentChart] = false;
    m_frame.txtChartTime->setEnabled(true);
    m_frame.txtChartTime->selectAll();
    ignoreErrors([&] { m_frame.txtChartTime->setFocus(); });
}

void TimeAxis::cmdSetTime_Click()
{
    Quillchart &chart = *Chart[m_tabs.CurrentChart];
    ChartViewState &state = m_tabs.ChartViews[m_tabs.CurrentChart];
    double W = 0;
    ignoreErrors([&] { W = CDbl(m_frame.txtChartTime->text()); });
    if (W < 0.1) {
        m_frame.txtChartTime->setText(Format(state.TimeSpan, QStringLiteral("0.0")));
        Beep();
        return;
    }
    m_tabs.WindowMinutes[m_tabs.CurrentChart] = W;
    const float L = chart.GetLastTime();
    const float A = chart.TimeAxisMin() + float(W);
    float T = 0;
    if (A > L && L > 0) {
        // The window would reach beyond the data: pull it back to end on the last minute.
        ignoreErrors([&] { T = float(CLng(L + 0.5)); });
        state.TimeFrom = T - float(W);
        if (state.TimeFrom <= 0) {
            state.TimeFrom = 0;
            m_tabs.WindowMinutes[m_tabs.CurrentChart] = T;
            m_frame.txtChartTime->setText(Format(T, QStringLiteral("0.0")));
        }
    } else {
        T = state.TimeFrom + float(W);
    }
    state.TimeSpan = float(m_tabs.WindowMinutes[m_tabs.CurrentChart]);
    chart.setTimeAxisMin(state.TimeFrom);
    chart.setTimeAxisMax(T);
    chart.Redraw();
    ignoreErrors([&] { SetScrollRange(CLng(chart.TimeAxisMin())); });
    m_frame.cmdSetTime->setEnabled(false);
}

void TimeAxis::SetScrollRange(qint32 Value)
{
    QScrollBar *bar = ScrollChart[m_tabs.CurrentChart];
    const ChartViewState &state = m_tabs.ChartViews[m_tabs.CurrentChart];
    ignoreErrors([&] {
        Int16 maximum = CInt(Chart[m_tabs.CurrentChart]->GetLastTime() + 0.5 - state.TimeSpan);
        if (maximum < 0)
            maximum = 0;
        setBarMaximum(bar, maximum);
    });
    ignoreErrors([&] { bar->setValue(Int16(Value)); });
    ignoreErrors([&] {
        const Int16 N = CInt(state.TimeSpan);
        if (N >= 1) {
            bar->setPageStep(N);
            bar->setSingleStep(qMax(1, int(CInt(state.TimeSpan / 10.0))));
        } else {
            bar->setPageStep(1);
            bar->setSingleStep(1);
        }
    });
}

void TimeAxis::GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const
{
    ZoomedTimeFrom = m_tabs.ChartViews[m_tabs.CurrentChart].TimeFrom;
    ZoomedTimeTo = ZoomedTimeFrom + m_tabs.ChartViews[m_tabs.CurrentChart].TimeSpan;
}

void TimeAxis::ScrollChart_Change(int Index)
{
    if (Index == 0 && m_intake.Recording())
        return;
    if (!m_frame.optTimeAxis[1]->isChecked() || m_zoomUpdating)
        return;
    // The chart in front, whatever bar moved.
    Quillchart &chart = *Chart[m_tabs.CurrentChart];
    ChartViewState &state = m_tabs.ChartViews[m_tabs.CurrentChart];
    chart.setTimeAxisMin(float(ScrollChart[m_tabs.CurrentChart]->value()));
    const float last = chart.GetLastTime();
    if (last > 0 && last < chart.TimeAxisMin())
        chart.setTimeAxisMin(qMax(0.0f, last - state.TimeSpan + 0.1f));
    state.TimeFrom = chart.TimeAxisMin();
    chart.setTimeAxisMax(chart.TimeAxisMin() + state.TimeSpan);
    ignoreErrors([&] {
        chart.Redraw();
        chart.setFocus();
    });
}

void TimeAxis::txtChartTime_Change()
{
    m_frame.cmdSetTime->setEnabled(
        m_frame.txtChartTime->text() !=
        Format(m_tabs.ChartViews[m_tabs.CurrentChart].TimeSpan, QStringLiteral("0.0")));
}

void TimeAxis::Chart_Zoomed(qint16, float ZoomedTimeFrom, float ZoomedTimeTo, float UvMin,
                            float UvMax, float CondMin, float CondMax)
{
    m_tabs.Zoomed[m_tabs.CurrentChart] = true;
    m_tabs.ChartViews[m_tabs.CurrentChart] = {
        UvMin, UvMax, CondMin, CondMax, ZoomedTimeFrom, ZoomedTimeTo - ZoomedTimeFrom};
    m_zoomUpdating = true;
    ignoreErrors([&] { SetScrollRange(CLng(ZoomedTimeFrom)); });
    m_panels.ShowAxisState();
    m_tabs.FullView[m_tabs.CurrentChart] = false;
    m_frame.optTimeAxis[1]->setChecked(true);
    m_zoomUpdating = false;
}

void TimeAxis::Chart_Unzoomed(qint16)
{
    m_tabs.Zoomed[m_tabs.CurrentChart] = false;
    m_frame.optTimeAxis[0]->setChecked(true);
    const Quillchart &chart = *Chart[m_tabs.CurrentChart];
    m_tabs.ChartViews[m_tabs.CurrentChart] = {
        chart.UvAxisMin(),   chart.UvAxisMax(),   chart.CondAxisMin(),
        chart.CondAxisMax(), chart.TimeAxisMin(), float(m_tabs.WindowMinutes[m_tabs.CurrentChart])};
    ignoreErrors([&] { SetScrollRange(CLng(m_tabs.ChartViews[m_tabs.CurrentChart].TimeFrom)); });
    m_panels.ShowAxisState();
}

void TimeAxis::UpdateLiveView()
{
    // Always the recorder's chart, steered by the mode shown in front.
    Quillchart &chart = *Chart[0];
    if (!chart.IsLastPointVisible()) {
        if (m_frame.optTimeAxis[0]->isChecked()) {
            chart.setTimeAxisMax(chart.GetLastTime() * 1.25f);
        } else {
            chart.setTimeAxisMax(chart.GetLastTime() + float(m_tabs.WindowMinutes[0] / 10.0));
            chart.setTimeAxisMin(chart.TimeAxisMax() - float(m_tabs.WindowMinutes[0]));
        }
        m_tabs.ChartViews[0].TimeFrom = chart.TimeAxisMin();
        chart.Redraw();
    }
    chart.DrawNewData();
}

void TimeAxis::recordingStarted()
{
    if (m_tabs.CurrentChart == 0)
        ScrollChart[0]->setEnabled(false);
}

void TimeAxis::moveRecorderBarToEnd()
{
    // Not guarded: a stop after more than 32767 minutes ends the program with Overflow.
    const Int16 maximum = CInt(Chart[0]->GetLastTime() + 0.5 - m_tabs.WindowMinutes[0]);
    setBarMaximum(ScrollChart[0], maximum);
    ScrollChart[0]->setValue(ScrollChart[0]->maximum());
}

void TimeAxis::recordingStopped()
{
    if (m_tabs.CurrentChart == 0 && m_frame.optTimeAxis[1]->isChecked())
        ScrollChart[0]->setEnabled(true);
}

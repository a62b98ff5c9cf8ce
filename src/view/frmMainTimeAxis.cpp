#include "chart/Quillchart.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "view/frmMain.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

namespace {

/// The bar's range ends at its Max; a Max below 0 (a run shorter than its window) drags the
/// bottom of the range along, as the bar cannot hold a reversed range.
void setBarMaximum(QScrollBar *bar, Int16 maximum)
{
    bar->setRange(qMin(0, int(maximum)), maximum);
}

} // namespace

void frmMain::SetFullView()
{
    Quillchart &chart = *Chart[CurrentChart];
    cmdSetTime->setEnabled(false);
    chart.setTimeAxisMin(0);
    ChartViews[CurrentChart].TimeFrom = 0;
    const float last = chart.GetLastTime();
    // The axis ends on a whole minute: 2.5 rounds to the even 2.
    chart.setTimeAxisMax(last > 0 ? float(CInt(last + 0.5)) : 10.0f);
    chart.Redraw();
    ScrollChart[CurrentChart]->setEnabled(false);
    txtChartTime->setEnabled(false);
    FullView[CurrentChart] = true;
}

void frmMain::EnableScrollBar()
{
    // While recording, the live view owns the recorder's window.
    ScrollChart[CurrentChart]->setEnabled(CurrentChart != 0 || !intake.Recording);
}

void frmMain::optTimeAxis_Click(int Index)
{
    if (Index == 0) {
        SetFullView();
        return;
    }
    EnableScrollBar();
    if (!ZoomUpdating)
        cmdSetTime_Click();
    FullView[CurrentChart] = false;
    txtChartTime->setEnabled(true);
    txtChartTime->selectAll();
    ignoreErrors([&] { txtChartTime->setFocus(); });
}

void frmMain::cmdSetTime_Click()
{
    Quillchart &chart = *Chart[CurrentChart];
    ChartViewState &state = ChartViews[CurrentChart];
    double W = 0;
    ignoreErrors([&] { W = CDbl(txtChartTime->text()); });
    if (W < 0.1) {
        txtChartTime->setText(Format(state.TimeSpan, QStringLiteral("0.0")));
        Beep();
        return;
    }
    WindowMinutes[CurrentChart] = W;
    const float L = chart.GetLastTime();
    const float A = chart.TimeAxisMin() + float(W);
    float T = 0;
    if (A > L && L > 0) {
        // The window would reach beyond the data: pull it back to end on the last minute.
        ignoreErrors([&] { T = float(CInt(L + 0.5)); });
        state.TimeFrom = T - float(W);
        if (state.TimeFrom <= 0) {
            state.TimeFrom = 0;
            WindowMinutes[CurrentChart] = T;
            txtChartTime->setText(Format(T, QStringLiteral("0.0")));
        }
    } else {
        T = state.TimeFrom + float(W);
    }
    state.TimeSpan = float(WindowMinutes[CurrentChart]);
    chart.setTimeAxisMin(state.TimeFrom);
    chart.setTimeAxisMax(T);
    chart.Redraw();
    ignoreErrors([&] { SetScrollRange(CLng(chart.TimeAxisMin())); });
    cmdSetTime->setEnabled(false);
}

void frmMain::SetScrollRange(qint32 Value)
{
    QScrollBar *bar = ScrollChart[CurrentChart];
    const ChartViewState &state = ChartViews[CurrentChart];
    ignoreErrors([&] {
        Int16 maximum = CInt(Chart[CurrentChart]->GetLastTime() + 0.5 - state.TimeSpan);
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

void frmMain::GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const
{
    ZoomedTimeFrom = ChartViews[CurrentChart].TimeFrom;
    ZoomedTimeTo = ZoomedTimeFrom + ChartViews[CurrentChart].TimeSpan;
}

void frmMain::ScrollChart_Change(int Index)
{
    if (Index == 0 && intake.Recording)
        return;
    if (!optTimeAxis[1]->isChecked() || ZoomUpdating)
        return;
    // The chart in front, whatever bar moved.
    Quillchart &chart = *Chart[CurrentChart];
    ChartViewState &state = ChartViews[CurrentChart];
    chart.setTimeAxisMin(float(ScrollChart[CurrentChart]->value()));
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

void frmMain::txtChartTime_Change()
{
    cmdSetTime->setEnabled(txtChartTime->text() !=
                           Format(ChartViews[CurrentChart].TimeSpan, QStringLiteral("0.0")));
}

void frmMain::Chart_Zoomed(qint16, float ZoomedTimeFrom, float ZoomedTimeTo, float UvMin,
                           float UvMax, float CondMin, float CondMax)
{
    Zoomed[CurrentChart] = true;
    ChartViews[CurrentChart] = {UvMin,   UvMax,          CondMin,
                                CondMax, ZoomedTimeFrom, ZoomedTimeTo - ZoomedTimeFrom};
    ZoomUpdating = true;
    ignoreErrors([&] { SetScrollRange(CLng(ZoomedTimeFrom)); });
    ShowAxisState();
    FullView[CurrentChart] = false;
    optTimeAxis[1]->setChecked(true);
    ZoomUpdating = false;
}

void frmMain::Chart_Unzoomed(qint16)
{
    Zoomed[CurrentChart] = false;
    optTimeAxis[0]->setChecked(true);
    const Quillchart &chart = *Chart[CurrentChart];
    ChartViews[CurrentChart] = {chart.UvAxisMin(),   chart.UvAxisMax(),
                                chart.CondAxisMin(), chart.CondAxisMax(),
                                chart.TimeAxisMin(), float(WindowMinutes[CurrentChart])};
    ignoreErrors([&] { SetScrollRange(CLng(ChartViews[CurrentChart].TimeFrom)); });
    ShowAxisState();
}

void frmMain::UpdateLiveView()
{
    // Always the recorder's chart, steered by the mode shown in front.
    Quillchart &chart = *Chart[0];
    if (!chart.IsLastPointVisible()) {
        if (optTimeAxis[0]->isChecked()) {
            chart.setTimeAxisMax(chart.GetLastTime() * 1.25f);
        } else {
            chart.setTimeAxisMax(chart.GetLastTime() + float(WindowMinutes[0] / 10.0));
            chart.setTimeAxisMin(chart.TimeAxisMax() - float(WindowMinutes[0]));
        }
        ChartViews[0].TimeFrom = chart.TimeAxisMin();
        chart.Redraw();
    }
    chart.DrawNewData();
}

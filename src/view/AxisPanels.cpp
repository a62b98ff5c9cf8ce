#include "view/AxisPanels.h"

#include "chart/Quillchart.h"
#include "documents/ChartTabs.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "view/AxisFrame.h"
#include "view/FilterNumericKey.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace {

/// What sets one value axis apart from the other.
struct AxisPanel
{
    const char *format;
    double lowestFullScale;
    double highestFullScale;
    double lowestMinimum;
    double highestMinimum;
    double smallestGap;
    const char *gapMessage;
};

const AxisPanel kPanels[2] = {
    {"0.000", 0.001, 2.0, -2.0, 1.999, 0.001,
     "The UV Axis Full Scale (AUFS) entry must be at least 0.001 AU greater than the UV Axis "
     "Minimum entry."},
    {"0.0", 0.5, 500.0, 0.0, 499.5, 0.5,
     "The Conductivity Axis Full Scale (mSFS) entry must be at least 0.5 mS/cm greater than the "
     "Conductivity Axis Minimum entry."},
};

const double kUvList[] = {2.0, 1.0, 0.5, 0.2, 0.1, 0.05, 0.02, 0.01, 0.005, 0.002, 0.001};
const double kCondList[] = {500.0, 200.0, 100.0, 50.0, 20.0, 10.0, 5.0, 2.0, 1.0, 0.5};

/// An entry that does not convert counts as 0; the gap test and the limits then apply.
double entryValue(const QString &text)
{
    double value = 0;
    ignoreErrors([&] { value = CDbl(text); });
    return value;
}

QString panelFormat(int Index)
{
    return QLatin1String(kPanels[Index].format);
}

} // namespace

AxisPanels::AxisPanels(AxisFrame &frame, ChartTabs &tabs, const Charts &Chart)
    : m_frame(frame)
    , m_tabs(tabs)
    , Chart(Chart)
{
    for (int i = 0; i < 2; ++i) {
        QObject::connect(frame.cmbYAxis[i], &QComboBox::activated, &frame,
                         [this, i] { cmbYAxis_Click(i); });
        QObject::connect(frame.cmbYAxis[i], &QComboBox::editTextChanged, &frame,
                         [this, i] { cmbYAxis_Change(i); });
        QObject::connect(frame.txtYAxisMin[i], &QLineEdit::textChanged, &frame,
                         [this, i] { txtYAxisMin_Change(i); });
        QObject::connect(frame.cmdSet[i], &QPushButton::clicked, &frame,
                         [this, i] { cmdSet_Click(i); });
        new NumericEntry(frame.cmbYAxis[i], false, [this, i] { cmdSet_Click(i); });
        // Only the UV minimum may be negative.
        new NumericEntry(frame.txtYAxisMin[i], i == 0, [this, i] { cmdSet_Click(i); });
    }
}

void AxisPanels::FillAxisLists()
{
    m_frame.cmbYAxis[0]->clear();
    m_frame.cmbYAxis[1]->clear();
    for (int i = 0; i < 10; ++i) {
        m_frame.cmbYAxis[0]->addItem(Format(kUvList[i], panelFormat(0)));
        m_frame.cmbYAxis[1]->addItem(Format(kCondList[i], panelFormat(1)));
    }
    m_frame.cmbYAxis[0]->addItem(Format(kUvList[10], panelFormat(0)));
    for (int i = 0; i < 2; ++i) {
        m_frame.cmbYAxis[i]->setCurrentIndex(0);
        cmbYAxis_Click(i);
    }
    m_frame.txtChartTime->setText(Format(10.0, QStringLiteral("0.0")));
}

void AxisPanels::cmbYAxis_Click(int Index)
{
    if (Index == 0)
        m_frame.txtYAxisMin[0]->setText(
            Format(entryValue(m_frame.cmbYAxis[0]->currentText()) * -0.1, panelFormat(0)));
    else
        m_frame.txtYAxisMin[1]->setText(QStringLiteral("0.00"));
    cmdSet_Click(Index);
}

void AxisPanels::cmdSet_Click(int Index)
{
    const AxisPanel &panel = kPanels[Index];
    const QString format = panelFormat(Index);
    ChartViewState &state = m_tabs.ChartViews[m_tabs.CurrentChart];
    double F = entryValue(m_frame.cmbYAxis[Index]->currentText());
    double M = entryValue(m_frame.txtYAxisMin[Index]->text());

    if (!(F - M >= panel.smallestGap - 0.000000001)) {
        MsgBox(QLatin1String(panel.gapMessage), MsgBoxStyle::Exclamation);
        m_frame.cmbYAxis[Index]->setEditText(
            Format(Index == 0 ? state.UvMax : state.CondMax, format));
        m_frame.txtYAxisMin[Index]->setText(
            Format(Index == 0 ? state.UvMin : state.CondMin, format));
        return;
    }
    // Limited with a beep, full scale first; the limits keep a full gap between the two.
    if (F < panel.lowestFullScale) {
        Beep();
        F = panel.lowestFullScale;
    } else if (F > panel.highestFullScale) {
        Beep();
        F = panel.highestFullScale;
    }
    if (M < panel.lowestMinimum) {
        Beep();
        M = panel.lowestMinimum;
    } else if (M > panel.highestMinimum) {
        Beep();
        M = panel.highestMinimum;
    }
    // What reaches the chart is the rounded value the operator sees.
    m_frame.cmbYAxis[Index]->setEditText(Format(F, format));
    m_frame.txtYAxisMin[Index]->setText(Format(M, format));
    F = entryValue(m_frame.cmbYAxis[Index]->currentText());
    M = entryValue(m_frame.txtYAxisMin[Index]->text());

    Quillchart &chart = *Chart[m_tabs.CurrentChart];
    if (Index == 0) {
        chart.setUvAxisMax(float(F));
        chart.setUvAxisMin(float(M));
        state.UvMax = float(F);
        state.UvMin = float(M);
    } else {
        chart.setCondAxisMax(float(F));
        chart.setCondAxisMin(float(M));
        state.CondMax = float(F);
        state.CondMin = float(M);
    }
    chart.Redraw();
    m_frame.cmdSet[Index]->setEnabled(false);
}

bool AxisPanels::AxisEntryChanged(int Which) const
{
    const ChartViewState &state = m_tabs.ChartViews[m_tabs.CurrentChart];
    switch (Which) {
    case 0:
        return m_frame.cmbYAxis[0]->currentText() != Format(state.UvMax, panelFormat(0));
    case 1:
        return m_frame.cmbYAxis[1]->currentText() != Format(state.CondMax, panelFormat(1));
    case 2:
        return m_frame.txtYAxisMin[0]->text() != Format(state.UvMin, panelFormat(0));
    case 3:
        return m_frame.txtYAxisMin[1]->text() != Format(state.CondMin, panelFormat(1));
    default:
        return false;
    }
}

void AxisPanels::cmbYAxis_Change(int Index)
{
    m_frame.cmdSet[Index]->setEnabled(AxisEntryChanged(Index));
}

void AxisPanels::txtYAxisMin_Change(int Index)
{
    m_frame.cmdSet[Index]->setEnabled(AxisEntryChanged(Index + 2));
}

void AxisPanels::ShowAxisState()
{
    const ChartViewState &state = m_tabs.ChartViews[m_tabs.CurrentChart];
    m_frame.cmbYAxis[0]->setEditText(Format(state.UvMax, panelFormat(0)));
    m_frame.cmbYAxis[1]->setEditText(Format(state.CondMax, panelFormat(1)));
    m_frame.txtYAxisMin[0]->setText(Format(state.UvMin, panelFormat(0)));
    m_frame.txtYAxisMin[1]->setText(Format(state.CondMin, panelFormat(1)));
    m_frame.txtChartTime->setText(Format(state.TimeSpan, QStringLiteral("0.0")));
}

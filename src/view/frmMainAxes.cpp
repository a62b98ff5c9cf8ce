#include "chart/Quillchart.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "view/FilterNumericKey.h"
#include "view/frmMain.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

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

void frmMain::connectAxisPanels()
{
    for (int i = 0; i < 2; ++i) {
        connect(cmbYAxis[i], &QComboBox::activated, this, [this, i] { cmbYAxis_Click(i); });
        connect(cmbYAxis[i], &QComboBox::editTextChanged, this, [this, i] { cmbYAxis_Change(i); });
        connect(txtYAxisMin[i], &QLineEdit::textChanged, this,
                [this, i] { txtYAxisMin_Change(i); });
        connect(cmdSet[i], &QPushButton::clicked, this, [this, i] { cmdSet_Click(i); });
        new NumericEntry(cmbYAxis[i]->lineEdit(), false, [this, i] { cmdSet_Click(i); });
        // Only the UV minimum may be negative.
        new NumericEntry(txtYAxisMin[i], i == 0, [this, i] { cmdSet_Click(i); });
    }
    for (int i = 0; i < 2; ++i)
        connect(optTimeAxis[i], &QRadioButton::toggled, this, [this, i](bool checked) {
            if (checked)
                optTimeAxis_Click(i);
        });
    connect(cmdSetTime, &QPushButton::clicked, this, &frmMain::cmdSetTime_Click);
    connect(txtChartTime, &QLineEdit::textChanged, this, &frmMain::txtChartTime_Change);
    new NumericEntry(txtChartTime, false, [this] { cmdSetTime_Click(); });
    for (int i = 0; i < kTabCount; ++i) {
        // The bar never keeps the focus: it belongs to the chart.
        ScrollChart[i]->setFocusPolicy(Qt::NoFocus);
        connect(ScrollChart[i], &QScrollBar::valueChanged, this,
                [this, i] { ScrollChart_Change(i); });
    }
    for (Quillchart *chart : Chart) {
        connect(chart, &Quillchart::Zoomed, this, &frmMain::Chart_Zoomed);
        connect(chart, &Quillchart::Unzoomed, this, &frmMain::Chart_Unzoomed);
        connect(chart, &Quillchart::ChartError, this,
                [this](qint16, qint16 ErrorCode) { errors.HandelError(ErrorCode); });
    }
}

void frmMain::FillAxisLists()
{
    cmbYAxis[0]->clear();
    cmbYAxis[1]->clear();
    for (int i = 0; i < 10; ++i) {
        cmbYAxis[0]->addItem(Format(kUvList[i], panelFormat(0)));
        cmbYAxis[1]->addItem(Format(kCondList[i], panelFormat(1)));
    }
    cmbYAxis[0]->addItem(Format(kUvList[10], panelFormat(0)));
    for (int i = 0; i < 2; ++i) {
        cmbYAxis[i]->setCurrentIndex(0);
        cmbYAxis_Click(i);
    }
    txtChartTime->setText(Format(10.0, QStringLiteral("0.0")));
}

void frmMain::cmbYAxis_Click(int Index)
{
    if (Index == 0)
        txtYAxisMin[0]->setText(
            Format(entryValue(cmbYAxis[0]->currentText()) * -0.1, panelFormat(0)));
    else
        txtYAxisMin[1]->setText(QStringLiteral("0.00"));
    cmdSet_Click(Index);
}

void frmMain::cmdSet_Click(int Index)
{
    const AxisPanel &panel = kPanels[Index];
    const QString format = panelFormat(Index);
    ChartViewState &state = ChartViews[CurrentChart];
    double F = entryValue(cmbYAxis[Index]->currentText());
    double M = entryValue(txtYAxisMin[Index]->text());

    if (!(F - M >= panel.smallestGap - 0.000000001)) {
        MsgBox(QLatin1String(panel.gapMessage), MsgBoxStyle::Exclamation);
        cmbYAxis[Index]->setEditText(Format(Index == 0 ? state.UvMax : state.CondMax, format));
        txtYAxisMin[Index]->setText(Format(Index == 0 ? state.UvMin : state.CondMin, format));
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
    cmbYAxis[Index]->setEditText(Format(F, format));
    txtYAxisMin[Index]->setText(Format(M, format));
    F = entryValue(cmbYAxis[Index]->currentText());
    M = entryValue(txtYAxisMin[Index]->text());

    Quillchart &chart = *Chart[CurrentChart];
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
    cmdSet[Index]->setEnabled(false);
}

bool frmMain::AxisEntryChanged(int Which) const
{
    const ChartViewState &state = ChartViews[CurrentChart];
    switch (Which) {
    case 0:
        return cmbYAxis[0]->currentText() != Format(state.UvMax, panelFormat(0));
    case 1:
        return cmbYAxis[1]->currentText() != Format(state.CondMax, panelFormat(1));
    case 2:
        return txtYAxisMin[0]->text() != Format(state.UvMin, panelFormat(0));
    case 3:
        return txtYAxisMin[1]->text() != Format(state.CondMin, panelFormat(1));
    default:
        return false;
    }
}

void frmMain::cmbYAxis_Change(int Index)
{
    cmdSet[Index]->setEnabled(AxisEntryChanged(Index));
}

void frmMain::txtYAxisMin_Change(int Index)
{
    cmdSet[Index]->setEnabled(AxisEntryChanged(Index + 2));
}

void frmMain::ShowAxisState()
{
    const ChartViewState &state = ChartViews[CurrentChart];
    cmbYAxis[0]->setEditText(Format(state.UvMax, panelFormat(0)));
    cmbYAxis[1]->setEditText(Format(state.CondMax, panelFormat(1)));
    txtYAxisMin[0]->setText(Format(state.UvMin, panelFormat(0)));
    txtYAxisMin[1]->setText(Format(state.CondMin, panelFormat(1)));
    txtChartTime->setText(Format(state.TimeSpan, QStringLiteral("0.0")));
}

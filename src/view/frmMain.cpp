#include "view/frmMain.h"

#include "acquisition/ComPortStartup.h"
#include "chart/Quillchart.h"
#include "runtime/App.h"
#include "runtime/RuntimeError.h"
#include "view/LedShape.h"
#include "view/ToolbarIcons.h"
#include "view/Twips.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QTabWidget>

namespace {
std::array<Quillchart *, frmMain::kChartCount> createCharts()
{
    std::array<Quillchart *, frmMain::kChartCount> charts{};
    for (int i = 0; i < frmMain::kChartCount; ++i) {
        charts[i] = new Quillchart;
        charts[i]->setIndex(qint16(i));
    }
    return charts;
}
} // namespace

frmMain::frmMain(QWidget *parent)
    : QMainWindow(parent)
    , Chart(createCharts())
    , InstanceNumber(App::PrevInstance() ? 2 : 1)
    , errors(link, ComPort, *this)
    , settings(errors, InstanceNumber)
    , intake(*Chart[0], *Chart[5], link, errors, *this, TimerStopWaitForMethod,
             settings.DataLogging)
    , receiver(ComPort, ring, link, errors, TimerProcess)
    , decoder(ring, link, errors, intake, *this, TimerProcess)
{
    setWindowIcon(toolbarIcon(QStringLiteral("picLogo")));
    TimerProcess.setInterval(700);
    TimerCheckComData.setInterval(5000);
    TimerStopWaitForMethod.setInterval(15000);
    TimerSaveLog.setInterval(20000);
    connect(&TimerProcess, &QTimer::timeout, this, &frmMain::TimerProcess_Timer);
    connect(&TimerCheckComData, &QTimer::timeout, this, &frmMain::TimerCheckComData_Timer);

    buildMenus();
    buildToolbar();
    buildCharts();
    buildAxisFrame();
    buildLeds();
    connectAxisPanels();

    ComPort.setRThreshold(50);
    TimerProcess.start();
    InitMainWindow();
}

frmMain::~frmMain() = default;

void frmMain::InitMainWindow()
{
    FillAxisLists();
    setWindowTitle(App::Title() + QStringLiteral(" - Velquin System: Default"));
    settings.ReadSettings();
    CurrentChart = 0;
    resize(twips(this, 8650), twips(this, 6300));
    for (int i = 0; i < kTabCount; ++i) {
        WindowMinutes[i] = 10.0;
        ScrollChart[i]->setSingleStep(1);
        ScrollChart[i]->setPageStep(10);
        ScrollChart[i]->setRange(0, 0);
        FullView[i] = true;
        Zoomed[i] = false;
        ChartViews[i] = {Chart[i]->UvAxisMin(),   Chart[i]->UvAxisMax(),   Chart[i]->CondAxisMin(),
                         Chart[i]->CondAxisMax(), Chart[i]->TimeAxisMin(), float(WindowMinutes[i])};
    }
    ChartSaved[0] = true;
    TabChart->setCurrentIndex(0);
    txtChartTime->setEnabled(false);

    if (chooseComPortAtStartup(ComPort, settings.ComPortNumber, link, TimerCheckComData,
                               App::PrevInstance(), this)) {
        mnuExit_Click();
        return;
    }
    ComDataLost();
    ChartCount = 1;
    ComDlg.Copies = 1;
    Chart[0]->setChartTitle(QStringLiteral("Chart Recorder"));
    mnuLogOn->setEnabled(!settings.DataLogging);
    mnuLogOff->setEnabled(settings.DataLogging);
    cmdLogOn->setChecked(settings.DataLogging);
    cmdLogOff->setChecked(!settings.DataLogging);
    openComPortAtStartup(ComPort, settings.ComPortNumber, link, TimerCheckComData, errors, this);
}

void frmMain::closeEvent(QCloseEvent *event)
{
    // Only the first copy writes; a failure has nobody left to tell.
    ignoreErrors([&] { settings.SaveSettings(); });
    QMainWindow::closeEvent(event);
}

void frmMain::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (m_activated)
        return;
    m_activated = true;
    // An instrument that sends nothing brings up the no-data dialog at the watchdog's first
    // tick.
    TimerCheckComData.start();
}

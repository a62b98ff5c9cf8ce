#include "view/frmMain.h"

#include "chart/Quillchart.h"
#include "runtime/App.h"
#include "runtime/RuntimeError.h"
#include "view/LedShape.h"
#include "view/ToolbarIcons.h"
#include "view/Twips.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QTabWidget>

frmMain::frmMain(QWidget *parent)
    : QMainWindow(parent)
    , errors(link, ComPort, *this)
    , receiver(ComPort, ring, link, errors, TimerProcess)
    , decoder(ring, link, errors, *this, *this, TimerProcess)
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

    ComPort.setRThreshold(50);
    TimerProcess.start();
    InitMainWindow();
}

frmMain::~frmMain() = default;

void frmMain::InitMainWindow()
{
    setWindowTitle(App::Title() + QStringLiteral(" - Velquin System: Default"));
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

    ComPort.setCommPort(ComPortNumber);
    ComPort.setInBufferSize(32000);
    ComDataLost();
    ChartCount = 1;
    ComDlg.Copies = 1;
    Chart[0]->setChartTitle(QStringLiteral("Chart Recorder"));
    mnuLogOn->setEnabled(!DataLogging);
    mnuLogOff->setEnabled(DataLogging);
    openComPort();
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

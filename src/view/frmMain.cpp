#include "view/frmMain.h"

#include "chart/Quillchart.h"
#include "documents/FileCommands.h"
#include "reports/ReportCommands.h"
#include "runtime/App.h"
#include "runtime/RuntimeError.h"
#include "runtime/Twips.h"
#include "view/AxisFrame.h"
#include "view/AxisPanels.h"
#include "view/CommandStates.h"
#include "view/HelpCommands.h"
#include "view/LedShape.h"
#include "view/SessionCommands.h"
#include "view/TabSwitch.h"
#include "view/TimeAxis.h"
#include "view/ToolbarIcons.h"
#include "view/WindowShell.h"

#include <QCloseEvent>
#include <QEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabWidget>

namespace {

Charts createCharts()
{
    Charts charts{};
    for (std::size_t i = 0; i < charts.size(); ++i) {
        charts[i] = new Quillchart;
        charts[i]->setIndex(qint16(i));
    }
    return charts;
}

} // namespace

frmMain::frmMain(QWidget *parent)
    : QMainWindow(parent)
    , Chart(createCharts())
    , errors(link, *this)
    , settings(errors, logPlace.InstanceNumber)
    , intake(*Chart[0], *Chart[5], link, errors, *this, settings.DataLogging)
    , session(link, intake, *this, *this)
    , link(errors, intake, session)
    , ports(link, session, settings.ComPortNumber)
{
    setWindowIcon(toolbarIcon(QStringLiteral("picLogo")));
    menu.build(menuBar());
    toolbar.build(this);
    buildCharts();
    FrameScaleAxis = new AxisFrame(centralWidget());
    buildLeds();
    runningLog = std::make_unique<RunningLog>(settings, link, intake, logPlace, *Chart[5],
                                              *Chart[6], ComDlg, errors, *menu.mnuSaveLog);

    commands = std::make_unique<CommandStates>(menu, toolbar);
    axes = std::make_unique<AxisPanels>(*FrameScaleAxis, tabs, Chart);
    timeAxis = std::make_unique<TimeAxis>(*FrameScaleAxis, *axes, tabs, Chart, ScrollChart, intake);
    sessionCommands = std::make_unique<SessionCommands>(session, *runningLog, tabs, *commands,
                                                        *timeAxis, toolbar, *ShapeReciveLed, Chart);
    tabSwitch = std::make_unique<TabSwitch>(*TabChart, tabs, Chart, *commands, toolbar,
                                            *FrameScaleAxis, *axes, *timeAxis, intake);
    files =
        std::make_unique<FileCommands>(tabs, Chart, ScrollChart, ComDlg, errors, *tabSwitch, *this);
    reports = std::make_unique<ReportCommands>(
        ComDlg, errors, [this](float &from, float &to) { GetZoomedTime(from, to); }, *this);
    help = std::make_unique<HelpCommands>(*this, menu);
    connectCommands();
    InitMainWindow();
}

frmMain::~frmMain() = default;

void frmMain::InitMainWindow()
{
    FillAxisLists();
    SetHelpContexts();
    setWindowTitle(App::Title() + QStringLiteral(" - Velquin System: Default"));
    settings.ReadSettings();
    tabs.CurrentChart = 0;
    resize(twips(this, 8650), twips(this, 6300));
    for (int i = 0; i < ChartTabs::kTabCount; ++i) {
        tabs.WindowMinutes[i] = 10.0;
        ScrollChart[i]->setSingleStep(1);
        ScrollChart[i]->setPageStep(10);
        ScrollChart[i]->setRange(0, 0);
        tabs.FullView[i] = true;
        tabs.Zoomed[i] = false;
        tabs.ChartViews[i] = {Chart[i]->UvAxisMin(),   Chart[i]->UvAxisMax(),
                              Chart[i]->CondAxisMin(), Chart[i]->CondAxisMax(),
                              Chart[i]->TimeAxisMin(), float(tabs.WindowMinutes[i])};
    }
    tabs.ChartSaved[0] = true;
    TabChart->setCurrentIndex(0);
    FrameScaleAxis->txtChartTime->setEnabled(false);
    ComDataLost();
    tabs.ChartCount = 1;
    ComDlg.Copies = 1;
    Chart[0]->setChartTitle(QStringLiteral("Chart Recorder"));
    commands->showLogging(settings.DataLogging);
}

void frmMain::SetHelpContexts()
{
    help->SetHelpContexts();
}

void frmMain::mnuIntro_Click()
{
    help->mnuIntro_Click();
}

void frmMain::mnuIndex_Click()
{
    help->mnuIndex_Click();
}

void frmMain::ArrangeMainWindow()
{
    QWidget *client = centralWidget();
    // The axis frame's width sets the window's narrowest size; 5000 twips its lowest.
    ignoreErrors([&] {
        const int chrome = width() - client->width();
        setMinimumSize(FrameScaleAxis->width() + twips(this, 100) + chrome, twips(this, 5000));
    });
    const int SW = client->width();
    const int SH = client->height();
    FrameScaleAxis->move((SW - FrameScaleAxis->width()) / 2, SH - FrameScaleAxis->height());
    // The client area starts under the tool bar already.
    const int top = twips(this, 100);
    TabChart->setGeometry(0, top, SW, FrameScaleAxis->y() - top - twips(this, 100));
    // Every tab's chart and bar, shown or not.
    const QRect page = TabChart->currentWidget()->geometry();
    for (int i = 0; i < ChartTabs::kTabCount; ++i) {
        const int barHeight = ScrollChart[i]->sizeHint().height();
        TabChart->widget(i)->setGeometry(page);
        Chart[i]->setGeometry(0, 0, page.width(), page.height() - barHeight);
        ScrollChart[i]->setGeometry(0, Chart[i]->height(), page.width(), barHeight);
    }
    ignoreErrors([&] { Chart[tabs.CurrentChart]->Redraw(); });
}

void frmMain::mnuStart_Click()
{
    sessionCommands->mnuStart_Click();
}

void frmMain::mnuStop_Click()
{
    sessionCommands->mnuStop_Click();
}

void frmMain::mnuLogOn_Click()
{
    sessionCommands->mnuLogOn_Click();
}

void frmMain::mnuLogOff_Click()
{
    sessionCommands->mnuLogOff_Click();
}

void frmMain::mnuComPort_Click()
{
    ports.mnuComPort_Click(this);
}

void frmMain::mnuExit_Click()
{
    close();
}

void frmMain::mnuLogName_Click()
{
    m_shell->mnuLogName_Click();
}

void frmMain::mnuAbout_Click()
{
    m_shell->mnuAbout_Click();
}

void frmMain::mnuMethod_Click()
{
    toolbar.cmdMethod->setChecked(true);
    Toolsbar_ButtonClick(toolbar.cmdMethod);
}

void frmMain::mnuNotes_Click()
{
    toolbar.cmdNotes->setChecked(true);
    Toolsbar_ButtonClick(toolbar.cmdNotes);
}

void frmMain::mnuOpenData_Click()
{
    files->mnuOpenData_Click();
}

void frmMain::mnuOpenLog_Click()
{
    files->mnuOpenLog_Click();
}

void frmMain::DrawChartLabel(const QString &FileName)
{
    files->DrawChartLabel(FileName);
}

void frmMain::mnuSaveData_Click()
{
    files->mnuSaveData_Click();
}

void frmMain::mnuSaveDataAs_Click()
{
    files->mnuSaveDataAs_Click();
}

void frmMain::mnuSaveSlectedData_Click()
{
    files->mnuSaveSlectedData_Click();
}

void frmMain::mnuSaveLog_Click()
{
    runningLog->mnuSaveLog_Click();
}

void frmMain::TimerSaveLog_Timer()
{
    runningLog->TimerSaveLog_Timer();
}

void frmMain::mnuClear_Click()
{
    files->mnuClear_Click();
}

void frmMain::mnuClose_Click()
{
    files->mnuClose_Click();
}

void frmMain::cmdClear_Click()
{
    files->cmdClear_Click();
}

void frmMain::TabChart_Click()
{
    tabSwitch->TabChart_Click();
}

void frmMain::Toolsbar_ButtonClick(QAction *Button)
{
    const std::pair<QAction *, void (frmMain::*)()> routes[] = {
        {toolbar.cmdOpen, &frmMain::mnuOpenData_Click},
        {toolbar.cmdSave, &frmMain::mnuSaveData_Click},
        {toolbar.cmdPrint, &frmMain::mnuPrint_Click},
        {toolbar.cmdClear, &frmMain::cmdClear_Click},
        {toolbar.cmdRecord, &frmMain::mnuStart_Click},
        {toolbar.cmdStop, &frmMain::mnuStop_Click},
        {toolbar.cmdLogOn, &frmMain::mnuLogOn_Click},
        {toolbar.cmdLogOff, &frmMain::mnuLogOff_Click},
    };
    for (const auto &[button, routine] : routes)
        if (button == Button)
            (this->*routine)();
    if (Button == toolbar.cmdMethod || Button == toolbar.cmdNotes)
        m_shell->textWindowButton(Button);
}

void frmMain::mnuExport_Click()
{
    reports->mnuExport_Click(*Chart[tabs.CurrentChart]);
}

void frmMain::mnuPrint_Click()
{
    reports->mnuPrint_Click(*Chart[tabs.CurrentChart]);
}

void frmMain::mnuPrintSetup_Click()
{
    reports->mnuPrintSetup_Click();
}

void frmMain::ComDataLost()
{
    session.ComDataLost();
}

void frmMain::FillAxisLists()
{
    axes->FillAxisLists();
}

void frmMain::ShowAxisState()
{
    axes->ShowAxisState();
}

void frmMain::SetFullView()
{
    timeAxis->SetFullView();
}

void frmMain::GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const
{
    timeAxis->GetZoomedTime(ZoomedTimeFrom, ZoomedTimeTo);
}

void frmMain::UpdateLiveView()
{
    timeAxis->UpdateLiveView();
}

void frmMain::linkFound()
{
    sessionCommands->linkFound();
}

void frmMain::linkLost()
{
    sessionCommands->linkLost();
}

void frmMain::stopLogTimer()
{
    runningLog->stopTimer();
}

void frmMain::closeEvent(QCloseEvent *event)
{
    if (m_shell && !m_shell->windowClosing()) {
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
}

bool frmMain::eventFilter(QObject *watched, QEvent *event)
{
    // The client area and the tab strip's page have their final sizes only once the main
    // window's and the tab strip's own layouts have run.
    if (event->type() == QEvent::Resize &&
        (watched == centralWidget() || watched == TabChart->currentWidget()))
        ArrangeMainWindow();
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (m_activated)
        return;
    m_activated = true;
    // As an activation does, it comes once the window stands on the screen.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_shell)
                m_shell->firstActivation();
        },
        Qt::QueuedConnection);
}

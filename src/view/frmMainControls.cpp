#include "chart/Quillchart.h"
#include "runtime/Twips.h"
#include "view/LedShape.h"
#include "view/ToolbarIcons.h"
#include "view/frmMain.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QTabWidget>
#include <QToolBar>

void frmMain::buildCharts()
{
    setCentralWidget(new QWidget(this));
    centralWidget()->installEventFilter(this);
    TabChart = new QTabWidget(centralWidget());
    for (std::size_t i = ChartTabs::kTabCount; i < Chart.size(); ++i)
        Chart[i]->setParent(this);
    for (int i = 0; i < ChartTabs::kTabCount; ++i) {
        // The chart and its bar are placed by the window's layout routine.
        auto *page = new QWidget(TabChart);
        page->installEventFilter(this);
        Chart[i]->setParent(page);
        ScrollChart[i] = new QScrollBar(Qt::Horizontal, page);
        ScrollChart[i]->setEnabled(false);
        TabChart->addTab(page,
                         i == 0 ? QStringLiteral("Chart Recorder") : QStringLiteral("(empty)"));
    }
    // The log chart and the chart that only saves logs are never shown.
    Chart[5]->hide();
    Chart[6]->hide();
}

void frmMain::buildLeds()
{
    frameLeds = new QWidget(this);
    auto *row = new QHBoxLayout(frameLeds);
    row->setContentsMargins(twips(this, 60), 0, twips(this, 60), 0);
    lblRecive = new QLabel(QStringLiteral("Receive:"), frameLeds);
    ShapeReciveLed = new LedShape(frameLeds);
    ImgLogo = new QLabel(frameLeds);
    ImgLogo->setPixmap(toolbarIcon(QStringLiteral("picLogo")).pixmap(fontMetrics().height()));
    row->addWidget(lblRecive);
    row->addWidget(ShapeReciveLed);
    row->addSpacing(twips(this, 90));
    row->addWidget(ImgLogo);
    // It sits at the right edge, over the row of tab heads.
    TabChart->setCornerWidget(frameLeds, Qt::TopRightCorner);
}

void frmMain::connectCommands()
{
    const std::pair<QAction *, void (frmMain::*)()> routines[] = {
        {menu.mnuStart, &frmMain::mnuStart_Click},
        {menu.mnuStop, &frmMain::mnuStop_Click},
        {menu.mnuLogOn, &frmMain::mnuLogOn_Click},
        {menu.mnuLogOff, &frmMain::mnuLogOff_Click},
        {menu.mnuComPort, &frmMain::mnuComPort_Click},
        {menu.mnuExit, &frmMain::mnuExit_Click},
        {menu.mnuOpenData, &frmMain::mnuOpenData_Click},
        {menu.mnuOpenLog, &frmMain::mnuOpenLog_Click},
        {menu.mnuSaveData, &frmMain::mnuSaveData_Click},
        {menu.mnuSaveDataAs, &frmMain::mnuSaveDataAs_Click},
        {menu.mnuSaveSlectedData, &frmMain::mnuSaveSlectedData_Click},
        {menu.mnuClear, &frmMain::mnuClear_Click},
        {menu.mnuClose, &frmMain::mnuClose_Click},
        {menu.mnuSaveLog, &frmMain::mnuSaveLog_Click},
        {menu.mnuExport, &frmMain::mnuExport_Click},
        {menu.mnuPrint, &frmMain::mnuPrint_Click},
        {menu.mnuPrintSetup, &frmMain::mnuPrintSetup_Click},
        {menu.mnuLogName, &frmMain::mnuLogName_Click},
        {menu.mnuAbout, &frmMain::mnuAbout_Click},
        {menu.mnuIntro, &frmMain::mnuIntro_Click},
        {menu.mnuIndex, &frmMain::mnuIndex_Click},
        {menu.mnuMethod, &frmMain::mnuMethod_Click},
        {menu.mnuNotes, &frmMain::mnuNotes_Click},
    };
    for (const auto &[item, routine] : routines)
        connect(item, &QAction::triggered, this, routine);
    connect(toolbar.Toolsbar, &QToolBar::actionTriggered, this, &frmMain::Toolsbar_ButtonClick);
    for (Quillchart *chart : Chart)
        connect(chart, &Quillchart::ChartError, this,
                [this](qint16, qint16 ErrorCode) { errors.HandelError(ErrorCode); });
}

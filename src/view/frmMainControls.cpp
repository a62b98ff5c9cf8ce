#include "chart/Quillchart.h"
#include "view/LedShape.h"
#include "view/ToolbarIcons.h"
#include "view/Twips.h"
#include "view/frmMain.h"

#include <QActionGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

QAction *menuItem(QMenu *menu, const QString &caption, const QKeySequence &shortcut = {})
{
    QAction *item = menu->addAction(caption);
    item->setShortcut(shortcut);
    return item;
}

/// Blue for the UV axis, red for conductivity, as the traces are drawn.
void tint(QWidget *widget, const QColor &colour)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, colour);
    palette.setColor(QPalette::Text, colour);
    palette.setColor(QPalette::ButtonText, colour);
    widget->setPalette(palette);
}

} // namespace

void frmMain::buildMenus()
{
    mnuFile = menuBar()->addMenu(QStringLiteral("&File"));
    mnuOpenData = menuItem(mnuFile, QStringLiteral("&Open Data..."), Qt::CTRL | Qt::Key_O);
    mnuFile->addSeparator();
    mnuOpenLog = menuItem(mnuFile, QStringLiteral("Open &Log..."));
    mnuFile->addSeparator();
    mnuClose = menuItem(mnuFile, QStringLiteral("&Close"), Qt::CTRL | Qt::Key_C);
    mnuClose->setEnabled(false);
    mnuFile->addSeparator();
    mnuSaveData = menuItem(mnuFile, QStringLiteral("&Save Data"), Qt::CTRL | Qt::Key_S);
    mnuSaveDataAs = menuItem(mnuFile, QStringLiteral("Save Data &As..."));
    mnuSaveSlectedData = menuItem(mnuFile, QStringLiteral("Save Selec&ted Data As..."));
    mnuFile->addSeparator();
    mnuSaveLog = menuItem(mnuFile, QStringLiteral("Save Lo&g..."));
    mnuSaveLog->setEnabled(false);
    mnuFile->addSeparator();
    mnuExport = menuItem(mnuFile, QStringLiteral("&Export"), Qt::CTRL | Qt::Key_E);
    mnuFile->addSeparator();
    mnuPrintSetup = menuItem(mnuFile, QStringLiteral("P&rint Setup"));
    mnuPrint = menuItem(mnuFile, QStringLiteral("&Print..."), Qt::CTRL | Qt::Key_P);
    mnuFile->addSeparator();
    mnuExit = menuItem(mnuFile, QStringLiteral("E&xit"));

    mnuColectData = menuBar()->addMenu(QStringLiteral("Collect &Data"));
    mnuStart = menuItem(mnuColectData, QStringLiteral("&Record"), Qt::CTRL | Qt::Key_R);
    mnuStop = menuItem(mnuColectData, QStringLiteral("&Stop"), Qt::CTRL | Qt::Key_T);
    mnuColectData->addSeparator();
    mnuClear = menuItem(mnuColectData, QStringLiteral("&Clear Chart Recorder"));
    mnuColectData->addSeparator();
    mnuLogOn = menuItem(mnuColectData, QStringLiteral("&Log ON"));
    mnuLogOff = menuItem(mnuColectData, QStringLiteral("Log O&FF"));
    mnuColectData->addSeparator();
    mnuLogName = menuItem(mnuColectData, QStringLiteral("Velquin System &Name"));
    mnuComPort = menuItem(mnuColectData, QStringLiteral("COM &Port"));

    mnuView = menuBar()->addMenu(QStringLiteral("&View"));
    mnuMethod = menuItem(mnuView, QStringLiteral("&Method"), Qt::CTRL | Qt::Key_M);
    mnuNotes = menuItem(mnuView, QStringLiteral("&Notes"), Qt::CTRL | Qt::Key_N);

    mnuHelp = menuBar()->addMenu(QStringLiteral("&Help"));
    mnuIntro = menuItem(mnuHelp, QStringLiteral("Introduction to &Ostrel"));
    mnuIndex = menuItem(mnuHelp, QStringLiteral("Help &Index"));
    mnuAbout = menuItem(mnuHelp, QStringLiteral("&About"));

    connect(mnuStart, &QAction::triggered, this, &frmMain::mnuStart_Click);
    connect(mnuStop, &QAction::triggered, this, &frmMain::mnuStop_Click);
    connect(mnuLogOn, &QAction::triggered, this, &frmMain::mnuLogOn_Click);
    connect(mnuLogOff, &QAction::triggered, this, &frmMain::mnuLogOff_Click);
    connect(mnuComPort, &QAction::triggered, this, &frmMain::mnuComPort_Click);
    connect(mnuExit, &QAction::triggered, this, &frmMain::mnuExit_Click);
}

void frmMain::buildToolbar()
{
    Toolsbar = addToolBar(QStringLiteral("Tools"));
    Toolsbar->setObjectName(QStringLiteral("Toolsbar"));
    Toolsbar->setMovable(false);
    Toolsbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    auto button = [this](const char *key, const QString &caption, const QString &toolTip,
                         const char *imageKey) {
        QAction *action = Toolsbar->addAction(toolbarIcon(QLatin1String(imageKey)), caption);
        action->setObjectName(QLatin1String(key));
        action->setToolTip(toolTip);
        return action;
    };
    cmdOpen =
        button("cmdOpen", QStringLiteral("Open"), QStringLiteral("Open data file"), "picOpen");
    cmdSave =
        button("cmdSave", QStringLiteral("Save"), QStringLiteral("Save Chart Recorder"), "picSave");
    cmdPrint =
        button("cmdPrint", QStringLiteral("Print"), QStringLiteral("Print graph"), "picPrint");
    cmdClear = button("cmdClear", QStringLiteral("Clear"),
                      QStringLiteral("Clear Chart Recorder  data"), "picClear");
    Toolsbar->addSeparator();
    cmdRecord = button("cmdRecord", QStringLiteral("Record"),
                       QStringLiteral("Start record form Velquin"), "picRecord");
    cmdStop = button("cmdStop", QStringLiteral("Stop"), QStringLiteral("Stop record form Velquin"),
                     "picStop");
    Toolsbar->addSeparator();
    cmdMethod =
        button("cmdMethod", QStringLiteral("Methods"), QStringLiteral("Show Methods"), "picMethod");
    cmdNotes =
        button("cmdNotes", QStringLiteral("Notes"), QStringLiteral("Show Notes "), "picNotes");
    auto *placeholder = new QWidget(Toolsbar);
    placeholder->setFixedWidth(twips(this, 300));
    Toolsbar->addWidget(placeholder);
    cmdLogOn =
        button("cmdLogOn", QStringLiteral("Log ON"), QStringLiteral("Start log data."), "picLogOn");
    cmdLogOff = button("cmdLogOff", QStringLiteral("Log OFF"), QStringLiteral("Stop log data."),
                       "picLogOff");

    // Record/Stop and Log ON/OFF are button groups: pressing one releases the other.
    for (auto [first, second] : {std::pair{cmdRecord, cmdStop}, std::pair{cmdLogOn, cmdLogOff}}) {
        auto *group = new QActionGroup(this);
        for (QAction *action : {first, second}) {
            action->setCheckable(true);
            group->addAction(action);
        }
    }
    cmdStop->setChecked(true);
    cmdLogOn->setChecked(true);
    cmdMethod->setCheckable(true);
    cmdNotes->setCheckable(true);
    connect(Toolsbar, &QToolBar::actionTriggered, this, &frmMain::Toolsbar_ButtonClick);
}

void frmMain::buildCharts()
{
    TabChart = new QTabWidget(this);
    TabChart->setDocumentMode(false);
    for (int i = kTabCount; i < kChartCount; ++i)
        Chart[i]->setParent(this);
    for (int i = 0; i < kTabCount; ++i) {
        auto *page = new QWidget(TabChart);
        auto *column = new QVBoxLayout(page);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        Chart[i]->setParent(page);
        ScrollChart[i] = new QScrollBar(Qt::Horizontal, page);
        ScrollChart[i]->setEnabled(false);
        column->addWidget(Chart[i], 1);
        column->addWidget(ScrollChart[i]);
        TabChart->addTab(page,
                         i == 0 ? QStringLiteral("Chart Recorder") : QStringLiteral("(empty)"));
    }
    // The log chart and the chart that only saves logs are never shown.
    Chart[5]->hide();
    Chart[6]->hide();
    setCentralWidget(new QWidget(this));
    centralWidget()->installEventFilter(this);
    TabChart->setParent(centralWidget());
}

void frmMain::buildAxisFrame()
{
    FrameScaleAxis = new QWidget(centralWidget());
    auto *row = new QHBoxLayout(FrameScaleAxis);
    row->setContentsMargins(0, 0, 0, 0);

    const QColor uvBlue(0, 0, 192);
    const QColor condRed(192, 0, 0);
    const char *titles[] = {"UV Axis", "Time Axis", "Conductivity Axis"};
    for (int i = 0; i < 3; ++i) {
        FrameAxis[i] = new QGroupBox(QLatin1String(titles[i]), FrameScaleAxis);
        row->addWidget(FrameAxis[i]);
    }

    // The two value axes: full scale above, minimum below, each with its Set button.
    for (int axis = 0; axis < 2; ++axis) {
        QGroupBox *frame = FrameAxis[axis == 0 ? 0 : 2];
        auto *grid = new QGridLayout(frame);
        cmbYAxis[axis] = new QComboBox(frame);
        cmbYAxis[axis]->setEditable(true);
        cmbYAxis[axis]->setEditText(axis == 0 ? QStringLiteral("2.000") : QStringLiteral("500.0"));
        cmbYAxis[axis]->setMinimumContentsLength(6);
        lblAxis[axis == 0 ? 0 : 2] =
            new QLabel(axis == 0 ? QStringLiteral("AUFS") : QStringLiteral("mSFS"), frame);
        cmdSet[axis] = new QPushButton(QStringLiteral("Set"), frame);
        cmdSet[axis]->setEnabled(false);
        txtYAxisMin[axis] =
            new QLineEdit(axis == 0 ? QStringLiteral("-0.200") : QStringLiteral("0.0"), frame);
        txtYAxisMin[axis]->setMaximumWidth(cmbYAxis[axis]->sizeHint().width());
        lblAxisMin[axis] = new QLabel(QStringLiteral("Axis Minimum"), frame);
        grid->addWidget(cmbYAxis[axis], 0, 0);
        grid->addWidget(lblAxis[axis == 0 ? 0 : 2], 0, 1);
        grid->addWidget(cmdSet[axis], 0, 2);
        grid->addWidget(txtYAxisMin[axis], 1, 0);
        grid->addWidget(lblAxisMin[axis], 1, 1, 1, 2);
        tint(frame, axis == 0 ? uvBlue : condRed);
    }

    auto *timeGrid = new QGridLayout(FrameAxis[1]);
    optTimeAxis[0] = new QRadioButton(QStringLiteral("Full View"), FrameAxis[1]);
    optTimeAxis[0]->setChecked(true);
    optTimeAxis[1] = new QRadioButton(QStringLiteral("Window:"), FrameAxis[1]);
    txtChartTime = new QLineEdit(QStringLiteral("10.0"), FrameAxis[1]);
    txtChartTime->setMaxLength(6);
    txtChartTime->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000.00")) + 12);
    lblWindow = new QLabel(QStringLiteral("Minutes"), FrameAxis[1]);
    cmdSetTime = new QPushButton(QStringLiteral("Set"), FrameAxis[1]);
    cmdSetTime->setEnabled(false);
    // A diagnostic of the instance table that the operator never sees.
    cmdRegistry = new QPushButton(QStringLiteral("Registry"), FrameAxis[1]);
    cmdRegistry->setVisible(false);
    timeGrid->addWidget(optTimeAxis[0], 0, 0, 1, 3);
    timeGrid->addWidget(cmdSetTime, 0, 3);
    timeGrid->addWidget(optTimeAxis[1], 1, 0);
    timeGrid->addWidget(txtChartTime, 1, 1);
    timeGrid->addWidget(lblWindow, 1, 2, 1, 2);
    FrameScaleAxis->adjustSize();
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

#include "view/frmMain.h"

#include "runtime/App.h"
#include "runtime/RuntimeError.h"
#include "view/LedShape.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

namespace {
constexpr quint32 kLedGreen = 0x00FF00;
constexpr quint32 kLedOff = 0;
} // namespace

frmMain::frmMain(QWidget *parent)
    : QMainWindow(parent)
    , errors(link, ComPort, *this)
    , receiver(ComPort, ring, link, errors, TimerProcess)
    , decoder(ring, link, errors, *this, *this, TimerProcess)
{
    setWindowTitle(App::Title());
    TimerProcess.setInterval(700);
    TimerCheckComData.setInterval(5000);
    TimerStopWaitForMethod.setInterval(15000);
    TimerSaveLog.setInterval(20000);
    connect(&TimerProcess, &QTimer::timeout, this, &frmMain::TimerProcess_Timer);
    buildControls();

    ComPort.setRThreshold(50);
    ComPort.setInBufferSize(32000);
    ComPort.setCommPort(1);
    TimerProcess.start();
}

frmMain::~frmMain() = default;

void frmMain::buildControls()
{
    auto *mnuColectData = menuBar()->addMenu(QStringLiteral("Collect &Data"));
    mnuStart = mnuColectData->addAction(QStringLiteral("&Record"));
    mnuStart->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
    mnuStop = mnuColectData->addAction(QStringLiteral("&Stop"));
    mnuStop->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_T));

    auto *Toolsbar = addToolBar(QStringLiteral("Tools"));
    Toolsbar->setObjectName(QStringLiteral("Toolsbar"));
    auto *recordGroup = new QActionGroup(this);
    cmdRecord = Toolsbar->addAction(QStringLiteral("Record"));
    cmdRecord->setObjectName(QStringLiteral("cmdRecord"));
    cmdStop = Toolsbar->addAction(QStringLiteral("Stop"));
    cmdStop->setObjectName(QStringLiteral("cmdStop"));
    for (QAction *button : {cmdRecord, cmdStop}) {
        button->setCheckable(true);
        recordGroup->addAction(button);
    }

    auto *frameLeds = new QWidget(this);
    auto *ledLayout = new QHBoxLayout(frameLeds);
    ledLayout->setContentsMargins(6, 0, 6, 0);
    lblRecive = new QLabel(QStringLiteral("Receive:"), frameLeds);
    ShapeReciveLed = new LedShape(frameLeds);
    ledLayout->addWidget(lblRecive);
    ledLayout->addWidget(ShapeReciveLed);
    statusBar()->addPermanentWidget(frameLeds);

    // No link until the instrument's stream is recognised.
    ShapeReciveLed->setFillColor(kLedOff);
    for (QAction *command : {mnuStart, mnuStop, cmdRecord, cmdStop})
        command->setEnabled(false);
}

void frmMain::openComPort()
{
    const int number = trapError([&] { ComPort.setPortOpen(true); });
    if (number != 0)
        errors.HandelError(number);
}

void frmMain::TimerProcess_Timer()
{
    if (ring.ByteCount > 2)
        decoder.ProcessComData();
}

void frmMain::syncFound()
{
    ChartRunActive = false;
    ShapeReciveLed->setFillColor(kLedGreen);
    TimerCheckComData.start();
    if (DataLogging)
        TimerSaveLog.start();
    else
        TimerSaveLog.stop();
    mnuStart->setEnabled(true);
    cmdRecord->setEnabled(true);
    cmdStop->setEnabled(true);
}

void frmMain::passEnded()
{}

void frmMain::mnuStop_Click()
{}

void frmMain::mnuLogOff_Click()
{}

void frmMain::uvSample(quint8, float)
{}

void frmMain::condSample(float)
{}

void frmMain::eventNews(quint8)
{}

void frmMain::holdNews(quint8)
{}

void frmMain::runStatusNews(quint8)
{}

void frmMain::penStatusNews(quint8)
{}

void frmMain::methodText(const QString &)
{}

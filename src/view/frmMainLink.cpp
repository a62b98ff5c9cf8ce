#include "acquisition/frmNoData.h"
#include "chart/Quillchart.h"
#include "runtime/RuntimeError.h"
#include "view/LedShape.h"
#include "view/frmMain.h"

#include <QAction>

namespace {
constexpr quint32 kLedGreen = 0x00FF00;
constexpr quint32 kLedOff = 0;
} // namespace

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
{
    if (Recording)
        followNewData();
}

void frmMain::TimerCheckComData_Timer()
{
    if (!link.ComDataSeen) {
        TimerSaveLog.stop();
        ComDataLost();
        frmNoData dialog(this);
        dialog.exec();
        if (dialog.choice() == frmNoData::Exit)
            mnuExit->trigger();
        else if (dialog.choice() == frmNoData::Setup)
            mnuComPort->trigger();
    }
    link.ComDataSeen = false;
}

void frmMain::ComDataLost()
{
    link.DataBusy = true;
    ShapeReciveLed->setFillColor(kLedOff);
    TimerCheckComData.stop();
    if (Recording)
        mnuStop_Click();
    for (QAction *command : {mnuStart, cmdRecord, mnuStop, cmdStop})
        command->setEnabled(false);
    link.FirstSyncFound = false;
    link.DataBusy = false;
}

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

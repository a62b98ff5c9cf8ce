#include "acquisition/frmNoData.h"
#include "acquisition/frmSetup.h"
#include "chart/Quillchart.h"
#include "runtime/RuntimeError.h"
#include "view/LedShape.h"
#include "view/frmMain.h"

#include <QAction>

namespace {
constexpr quint32 kLedGreen = 0x00FF00;
constexpr quint32 kLedOff = 0;
} // namespace

void frmMain::TimerProcess_Timer()
{
    if (ring.ByteCount > 2)
        decoder.ProcessComData();
}

void frmMain::syncFound()
{
    intake.ChartRunActive = false;
    ShapeReciveLed->setFillColor(kLedGreen);
    TimerCheckComData.start();
    if (settings.DataLogging) {
        TimerSaveLog.start();
        intake.LogEventNumber = intake.ChartEventNumber;
    } else {
        TimerSaveLog.stop();
    }
    mnuStart->setEnabled(true);
    cmdRecord->setEnabled(true);
    cmdStop->setEnabled(true);
}

void frmMain::passEnded()
{
    if (intake.Recording)
        UpdateLiveView();
}

void frmMain::TimerCheckComData_Timer()
{
    if (!link.ComDataSeen) {
        TimerSaveLog.stop();
        ComDataLost();
        frmNoData dialog(this);
        dialog.exec();
        if (dialog.choice() == frmNoData::Exit)
            mnuExit_Click();
        else if (dialog.choice() == frmNoData::Setup)
            mnuComPort_Click();
    }
    link.ComDataSeen = false;
}

void frmMain::ComDataLost()
{
    link.DataBusy = true;
    ShapeReciveLed->setFillColor(kLedOff);
    TimerCheckComData.stop();
    if (intake.Recording)
        mnuStop_Click();
    for (QAction *command : {mnuStart, cmdRecord, mnuStop, cmdStop})
        command->setEnabled(false);
    link.FirstSyncFound = false;
    intake.ChartLabelType = 0;
    link.DataBusy = false;
}

void frmMain::mnuComPort_Click()
{
    frmSetup form(ComPort, settings.ComPortNumber, link, TimerCheckComData, this);
    form.exec();
}

#include "chart/Quillchart.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "view/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QRadioButton>
#include <QScrollBar>

void frmMain::setRecordCommandsEnabled(bool fileCommands)
{
    for (QAction *command : {mnuSaveData, mnuSaveSlectedData, mnuSaveDataAs, mnuClear, mnuPrint,
                             mnuPrintSetup, mnuExport, cmdPrint, cmdSave, cmdClear})
        command->setEnabled(fileCommands);
}

void frmMain::mnuStart_Click()
{
    ChartSaved[0] = false;
    intake.Recording = true;
    intake.ChartEventNumber = 0;
    intake.ChartPausePending = false;
    cmdRecord->setChecked(true);
    // A recording leaves the commands of a file tab in front as they are.
    if (CurrentChart == 0) {
        setRecordCommandsEnabled(false);
        ScrollChart[0]->setEnabled(false);
    }
    mnuComPort->setEnabled(false);
    mnuStop->setEnabled(true);
    mnuStart->setEnabled(false);
    ignoreErrors([&] { Chart[CurrentChart]->setFocus(); });
}

void frmMain::mnuStop_Click()
{
    // Not guarded: a stop after more than 32767 minutes ends the program with Overflow.
    const Int16 maximum = CInt(Chart[0]->GetLastTime() + 0.5 - WindowMinutes[0]);
    ScrollChart[0]->setMaximum(maximum);
    ScrollChart[0]->setValue(ScrollChart[0]->maximum());
    intake.Recording = false;
    cmdStop->setChecked(true);
    if (CurrentChart == 0) {
        setRecordCommandsEnabled(true);
        if (optTimeAxis[1]->isChecked())
            ScrollChart[0]->setEnabled(true);
    }
    mnuComPort->setEnabled(true);
    mnuStop->setEnabled(false);
    mnuStart->setEnabled(true);
}

void frmMain::mnuLogOn_Click()
{
    cmdLogOn->setChecked(true);
    mnuLogOn->setEnabled(false);
    mnuLogOff->setEnabled(true);
    settings.DataLogging = true;
    // Without data the log timer waits for the next synchronisation to start it.
    if (link.ComDataSeen) {
        intake.LogEventNumber = intake.ChartEventNumber;
        intake.LogLabelType = 0;
        intake.LogEndPending = false;
        intake.LogPausePending = false;
        TimerSaveLog.start();
    }
}

void frmMain::mnuLogOff_Click()
{
    // What came after the last write stays in the log chart only.
    cmdLogOff->setChecked(true);
    mnuLogOn->setEnabled(true);
    mnuLogOff->setEnabled(false);
    settings.DataLogging = false;
    TimerSaveLog.stop();
}

void frmMain::mnuExit_Click()
{
    // Before the event loop runs (no free port at start-up) the quit has to wait for it.
    QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

void frmMain::Toolsbar_ButtonClick(QAction *Button)
{
    if (Button == cmdRecord)
        mnuStart_Click();
    else if (Button == cmdStop)
        mnuStop_Click();
    else if (Button == cmdLogOn)
        mnuLogOn_Click();
    else if (Button == cmdLogOff)
        mnuLogOff_Click();
}

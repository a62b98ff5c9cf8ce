#pragma once

#include "acquisition/ComReceiver.h"
#include "acquisition/DecoderHost.h"
#include "acquisition/InstrumentNews.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/SerialControl.h"
#include "acquisition/StreamDecoder.h"
#include "documents/ErrorHandler.h"
#include "documents/MenuCommands.h"

#include <QMainWindow>
#include <QTimer>

class LedShape;
class QAction;
class QLabel;

/// The main window: owns the link, the timers and the controls, and wires the subsystems
/// through their narrow interfaces. Its controls are public under their names, as a form's
/// controls are, so that the subsystems' commands and the tests reach them.
class frmMain : public QMainWindow, private DecoderHost, private InstrumentNews, public MenuCommands
{
    Q_OBJECT

public:
    explicit frmMain(QWidget *parent = nullptr);
    ~frmMain() override;

    /// The last step of start-up: opens the link's port, reporting a failure to the error route.
    void openComPort();

    void mnuStop_Click() override;
    void mnuLogOff_Click() override;

    void TimerProcess_Timer();

    LinkState link;
    ReceiveRing ring;
    SerialControl ComPort;
    QTimer TimerProcess;
    QTimer TimerCheckComData;
    QTimer TimerStopWaitForMethod;
    QTimer TimerSaveLog;
    ErrorHandler errors;
    ComReceiver receiver;
    StreamDecoder decoder;

    bool ChartRunActive = false;
    bool DataLogging = true;

    QAction *mnuStart = nullptr;
    QAction *mnuStop = nullptr;
    QAction *cmdRecord = nullptr;
    QAction *cmdStop = nullptr;
    LedShape *ShapeReciveLed = nullptr;
    QLabel *lblRecive = nullptr;

private:
    void buildControls();

    void syncFound() override;
    void passEnded() override;

    void uvSample(quint8 type, float value) override;
    void condSample(float value) override;
    void eventNews(quint8 value) override;
    void holdNews(quint8 value) override;
    void runStatusNews(quint8 value) override;
    void penStatusNews(quint8 value) override;
    void methodText(const QString &text) override;
};

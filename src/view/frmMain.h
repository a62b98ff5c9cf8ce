#pragma once

#include "acquisition/ComReceiver.h"
#include "acquisition/DecoderHost.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/RecordCommands.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/SerialControl.h"
#include "acquisition/StreamDecoder.h"
#include "documents/ErrorHandler.h"
#include "documents/MenuCommands.h"
#include "documents/Settings.h"
#include "runtime/ComDlg.h"
#include "runtime/Int16.h"
#include "view/ViewState.h"

#include <QMainWindow>
#include <QString>
#include <QTimer>

#include <array>

class LedShape;
class QAction;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QTabWidget;
class QToolBar;
class Quillchart;

/// The main window: owns the link, the seven charts, the timers and the controls, and wires
/// the subsystems through their narrow interfaces. Its controls are public under their names,
/// as a form's controls are, so that the commands of the subsystems and the tests reach them.
/// Its routines are split over files by concern: controls, layout, link, session.
class frmMain : public QMainWindow, private DecoderHost, public RecordCommands, public MenuCommands
{
    Q_OBJECT

public:
    static constexpr int kTabCount = 5;
    static constexpr int kChartCount = 7;

    explicit frmMain(QWidget *parent = nullptr);
    ~frmMain() override;

    void InitMainWindow();
    void ArrangeMainWindow();

    // The record commands, logging and the link watchdog.
    void mnuStart_Click() override;
    void mnuStop_Click() override;
    void mnuLogOn_Click();
    void mnuLogOff_Click() override;
    void mnuComPort_Click();
    void mnuExit_Click();
    void Toolsbar_ButtonClick(QAction *Button);
    void TimerProcess_Timer();
    void TimerCheckComData_Timer();
    void ComDataLost();

    // The value axes, the time axis and the live view, on the tab in front.
    void FillAxisLists();
    void cmbYAxis_Click(int Index);
    void cmdSet_Click(int Index);
    [[nodiscard]] bool AxisEntryChanged(int Which) const;
    void cmbYAxis_Change(int Index);
    void txtYAxisMin_Change(int Index);
    void ShowAxisState();
    void SetFullView();
    void EnableScrollBar();
    void SetScrollRange(qint32 Value);
    void GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const;
    void optTimeAxis_Click(int Index);
    void cmdSetTime_Click();
    void ScrollChart_Change(int Index);
    void txtChartTime_Change();
    void Chart_Zoomed(qint16 Index, float ZoomedTimeFrom, float ZoomedTimeTo, float UvMin,
                      float UvMax, float CondMin, float CondMax);
    void Chart_Unzoomed(qint16 Index);
    void UpdateLiveView();

    // The seven charts come first: the intake holds the recorder's and the log's.
    std::array<Quillchart *, kChartCount> Chart;

    // The link.
    Int16 InstanceNumber = 1;
    LinkState link;
    ReceiveRing ring;
    SerialControl ComPort;
    QTimer TimerProcess;
    QTimer TimerCheckComData;
    QTimer TimerStopWaitForMethod;
    QTimer TimerSaveLog;
    ErrorHandler errors;
    Settings settings;
    SampleIntake intake;
    ComReceiver receiver;
    StreamDecoder decoder;
    ::ComDlg ComDlg;

    // Per-tab view state.
    Int16 CurrentChart;
    Int16 ChartCount = 1;
    std::array<bool, kTabCount> ChartSaved{true, true, true, true, true};
    std::array<ChartViewState, kTabCount> ChartViews{};
    std::array<double, kTabCount> WindowMinutes{10.0, 10.0, 10.0, 10.0, 10.0};
    std::array<bool, kTabCount> FullView{true, true, true, true, true};
    std::array<bool, kTabCount> Zoomed{};
    bool ZoomUpdating = false;

    // Controls.
    std::array<QScrollBar *, kTabCount> ScrollChart{};
    QTabWidget *TabChart = nullptr;
    QToolBar *Toolsbar = nullptr;
    QAction *cmdOpen = nullptr;
    QAction *cmdSave = nullptr;
    QAction *cmdPrint = nullptr;
    QAction *cmdClear = nullptr;
    QAction *cmdRecord = nullptr;
    QAction *cmdStop = nullptr;
    QAction *cmdMethod = nullptr;
    QAction *cmdNotes = nullptr;
    QAction *cmdLogOn = nullptr;
    QAction *cmdLogOff = nullptr;

    QMenu *mnuFile = nullptr;
    QAction *mnuOpenData = nullptr;
    QAction *mnuOpenLog = nullptr;
    QAction *mnuClose = nullptr;
    QAction *mnuSaveData = nullptr;
    QAction *mnuSaveDataAs = nullptr;
    QAction *mnuSaveSlectedData = nullptr;
    QAction *mnuSaveLog = nullptr;
    QAction *mnuExport = nullptr;
    QAction *mnuPrintSetup = nullptr;
    QAction *mnuPrint = nullptr;
    QAction *mnuExit = nullptr;
    QMenu *mnuColectData = nullptr;
    QAction *mnuStart = nullptr;
    QAction *mnuStop = nullptr;
    QAction *mnuClear = nullptr;
    QAction *mnuLogOn = nullptr;
    QAction *mnuLogOff = nullptr;
    QAction *mnuLogName = nullptr;
    QAction *mnuComPort = nullptr;
    QMenu *mnuView = nullptr;
    QAction *mnuMethod = nullptr;
    QAction *mnuNotes = nullptr;
    QMenu *mnuHelp = nullptr;
    QAction *mnuIntro = nullptr;
    QAction *mnuIndex = nullptr;
    QAction *mnuAbout = nullptr;

    QWidget *FrameScaleAxis = nullptr;
    std::array<QGroupBox *, 3> FrameAxis{};
    std::array<QComboBox *, 2> cmbYAxis{};
    std::array<QLabel *, 3> lblAxis{};
    std::array<QPushButton *, 2> cmdSet{};
    std::array<QLineEdit *, 2> txtYAxisMin{};
    std::array<QLabel *, 2> lblAxisMin{};
    std::array<QRadioButton *, 2> optTimeAxis{};
    QLineEdit *txtChartTime = nullptr;
    QLabel *lblWindow = nullptr;
    QPushButton *cmdSetTime = nullptr;
    QPushButton *cmdRegistry = nullptr;

    QWidget *frameLeds = nullptr;
    LedShape *ShapeReciveLed = nullptr;
    QLabel *lblRecive = nullptr;
    QLabel *ImgLogo = nullptr;

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void buildMenus();
    void buildToolbar();
    void buildCharts();
    void buildAxisFrame();
    void buildLeds();
    void setRecordCommandsEnabled(bool fileCommands);
    void connectAxisPanels();

    void syncFound() override;
    void passEnded() override;

    bool m_activated = false;
};

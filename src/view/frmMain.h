#pragma once

#include "acquisition/Link.h"
#include "acquisition/PortChoice.h"
#include "acquisition/RecordCommands.h"
#include "acquisition/RecordingSession.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/SessionHost.h"
#include "documents/ChartTabs.h"
#include "documents/ErrorHandler.h"
#include "documents/LogPlace.h"
#include "documents/MenuCommands.h"
#include "documents/RunningLog.h"
#include "documents/Settings.h"
#include "runtime/ComDlg.h"
#include "runtime/Int16.h"
#include "view/Charts.h"
#include "view/MainMenu.h"
#include "view/MainToolbar.h"

#include <QMainWindow>

#include <array>
#include <memory>

class AxisFrame;
class AxisPanels;
class CommandStates;
class FileCommands;
class HelpCommands;
class LedShape;
class QLabel;
class QScrollBar;
class QTabWidget;
class ReportCommands;
class SessionCommands;
class TabSwitch;
class TimeAxis;
class WindowShell;

/// @brief The main window, the program's composition root.
///
/// It owns the seven charts, the link and the session, the settings, the error route and the
/// table of tabs, builds the controls and wires one object per job through their narrow
/// interfaces. Its routines keep the names by which the rest of the program calls them, each
/// forwarding to the object that does the work. Controls are public under their names, as a
/// form's controls are. Start-up (the port, the first activation) is the shell's: a window
/// can be built without any port.
class frmMain : public QMainWindow,
                private RecordCommands,
                private SessionHost,
                private MenuCommands
{
    Q_OBJECT

public:
    explicit frmMain(QWidget *parent = nullptr);
    ~frmMain() override;

    /// The shell that the first activation and the window's other shell commands go to.
    void setShell(WindowShell *shell) { m_shell = shell; }

    void InitMainWindow();
    void ArrangeMainWindow();

    void mnuStart_Click() override;
    void mnuStop_Click() override;
    void mnuLogOn_Click();
    void mnuLogOff_Click() override;
    void mnuComPort_Click() override;
    void mnuExit_Click() override;
    void mnuLogName_Click();
    void mnuAbout_Click();
    void mnuIntro_Click();
    void mnuIndex_Click();
    void SetHelpContexts();
    void mnuMethod_Click();
    void mnuNotes_Click();
    void mnuOpenData_Click();
    void mnuOpenLog_Click();
    void DrawChartLabel(const QString &FileName);
    void mnuSaveData_Click();
    void mnuSaveDataAs_Click();
    void mnuSaveSlectedData_Click();
    void mnuSaveLog_Click();
    void mnuExport_Click();
    void mnuPrint_Click();
    void mnuPrintSetup_Click();
    void TimerSaveLog_Timer();
    void mnuClear_Click();
    void mnuClose_Click();
    void TabChart_Click();
    void Toolsbar_ButtonClick(QAction *Button);
    void ComDataLost();
    void FillAxisLists();
    void ShowAxisState();
    void SetFullView();
    void GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const;
    void UpdateLiveView() override;

    Charts Chart;
    LogPlace logPlace;
    ErrorHandler errors;
    Settings settings;
    SampleIntake intake;
    RecordingSession session;
    Link link;
    PortChoice ports;
    ChartTabs tabs;
    ::ComDlg ComDlg;

    MainMenu menu;
    MainToolbar toolbar;
    QTabWidget *TabChart = nullptr;
    std::array<QScrollBar *, ChartTabs::kTabCount> ScrollChart{};
    AxisFrame *FrameScaleAxis = nullptr;
    QWidget *frameLeds = nullptr;
    LedShape *ShapeReciveLed = nullptr;
    QLabel *lblRecive = nullptr;
    QLabel *ImgLogo = nullptr;

    std::unique_ptr<CommandStates> commands;
    std::unique_ptr<AxisPanels> axes;
    std::unique_ptr<TimeAxis> timeAxis;
    std::unique_ptr<SessionCommands> sessionCommands;
    std::unique_ptr<TabSwitch> tabSwitch;
    std::unique_ptr<FileCommands> files;
    std::unique_ptr<RunningLog> runningLog;
    std::unique_ptr<ReportCommands> reports;
    std::unique_ptr<HelpCommands> help;

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void buildCharts();
    void buildLeds();
    void connectCommands();
    void cmdClear_Click();

    void linkFound() override;
    void linkLost() override;
    void stopLogTimer() override;

    WindowShell *m_shell = nullptr;
    bool m_activated = false;
};

#pragma once

#include "acquisition/SerialControl.h"
#include "runtime/Int16.h"

#include <QDialog>

#include <array>

class Link;
class QGroupBox;
class QPushButton;
class QRadioButton;
class RecordingSession;

/// The choice of the link's serial port, COM 1 to COM 10. A form lives for one showing: its
/// construction probes the ports anew, so the buttons of ports that cannot be opened come up
/// disabled each time.
class frmSetup : public QDialog
{
    Q_OBJECT

public:
    static constexpr int kPortCount = 10;

    /// Probes the ports (the link's own is passed over) and shows `ComPortNumber` as chosen.
    frmSetup(Link &link, Int16 &ComPortNumber, RecordingSession &session,
             QWidget *parent = nullptr);

    /// Disables the button of each port that does not exist (8002) or that another program
    /// holds (8005). With `UseComPort` the link's own control tries every port and is left on
    /// COM 10; otherwise a control of the form's own tries all but the link's port, which would
    /// seem busy.
    void FindFreeComPorts(bool UseComPort);

    void optCom_Click(int Index);
    /// Moves the link to the chosen port and hides the form; when the port does not open, says
    /// so, puts the link back as it was and stays up for another choice.
    void cmdOk_Click();
    void cmdCancel_Click();

    /// Escape and the window's close box count as Cancel, and do nothing while it is disabled.
    void reject() override;

    QGroupBox *frameCom = nullptr;
    std::array<QRadioButton *, kPortCount> optCom{};
    QPushButton *cmdOk = nullptr;
    QPushButton *cmdCancel = nullptr;
    SerialControl CommTmp;
    Int16 SelectedComPort = 1;

private:
    void buildControls();
    void Form_Load();

    Link &m_link;
    SerialControl &ComPort;
    Int16 &ComPortNumber;
    RecordingSession &m_session;
};

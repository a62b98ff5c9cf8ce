#pragma once

#include "runtime/Int16.h"

class ErrorRoute;
class Link;
class QWidget;
class RecordingSession;

/// @brief Which serial port the link uses: the start-up choice of a free port, the opening of
/// the link, and the operator's change of port through `frmSetup`.
class PortChoice
{
public:
    /// `ComPortNumber` is the stored setting, changed by every choice made here.
    PortChoice(Link &link, RecordingSession &session, Int16 &ComPortNumber);

    /// Keeps the stored port when it is free and no other copy runs; otherwise the operator
    /// must pick a free port in frmSetup, with no way to cancel. Leaves the link closed on its
    /// port with the input buffer at 32000 bytes. Answers false when no port at all can be
    /// opened: the box telling so has been shown, and the program must end.
    [[nodiscard]] bool chooseAtStartup(bool PrevInstance, QWidget *parent);
    /// The last step of start-up: opens the link. A failure goes to the error route; a port
    /// that does not exist brings up frmSetup for another choice.
    void openAtStartup(ErrorRoute &errors, QWidget *parent);
    /// Shows frmSetup, which probes the ports anew at each showing.
    void mnuComPort_Click(QWidget *parent);

private:
    Link &m_link;
    RecordingSession &m_session;
    Int16 &ComPortNumber;
};

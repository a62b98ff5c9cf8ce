#pragma once

#include "runtime/Int16.h"

class ErrorRoute;
class QTimer;
class QWidget;
class SerialControl;
struct LinkState;

/// The serial steps of the main window's start-up. Keeps the stored port when it is free and
/// no other copy runs; otherwise the operator must pick a free port in frmSetup, with no way
/// to cancel. Leaves the link closed on its port with the input buffer at 32000 bytes.
/// Answers true when no port at all can be opened: the box telling so has been shown, and the
/// caller ends the program.
[[nodiscard]] bool chooseComPortAtStartup(SerialControl &ComPort, Int16 &ComPortNumber,
                                          LinkState &link, QTimer &TimerCheckComData,
                                          bool PrevInstance, QWidget *parent = nullptr);

/// The last step of start-up: opens the link. A failure goes to the error route; a port that
/// does not exist brings up frmSetup for another choice.
void openComPortAtStartup(SerialControl &ComPort, Int16 &ComPortNumber, LinkState &link,
                          QTimer &TimerCheckComData, ErrorRoute &errors, QWidget *parent = nullptr);

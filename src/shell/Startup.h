#pragma once

#include "view/WindowShell.h"

class frmMain;

/// @brief The program's start: the serial steps of the window's load and its first
/// activation, which the window itself leaves to the shell so that it can be built without a
/// port.
class Startup : public WindowShell
{
public:
    explicit Startup(frmMain &window);

    /// Chooses a free port and opens the link on it. Answers false when no port is free: the
    /// operator has been told, and the program must end.
    [[nodiscard]] bool openPort();
    /// The link watchdog starts: an instrument that sends nothing is reported at its first
    /// tick.
    void firstActivation() override;
    void windowClosing() override;

private:
    frmMain &m_window;
};

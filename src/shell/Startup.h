#pragma once

#include "shell/InstanceRegistry.h"
#include "view/WindowShell.h"

class frmMain;

/// @brief The program's start and end: the serial steps of the window's load, its first
/// activation (recovery of what crashed copies left, the copy's log directory and registration,
/// the link watchdog) and the tidying of a clean exit, which the window itself leaves to the
/// shell so that it can be built without a port.
class Startup : public WindowShell
{
public:
    explicit Startup(frmMain &window);

    /// Chooses a free port and opens the link on it. Answers false when no port is free: the
    /// operator has been told, and the program must end.
    [[nodiscard]] bool openPort();
    /// Offers the logs of crashed copies when no other copy runs, registers this copy with a
    /// log directory of its own, and starts the link watchdog.
    void firstActivation() override;
    void windowClosing() override;

private:
    frmMain &m_window;
    // Made with the splash, before anything: it reads the copies registered before this one.
    InstanceRegistry m_registry;
};

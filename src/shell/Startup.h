#pragma once

#include "shell/InstanceRegistry.h"
#include "shell/TextWindows.h"
#include "view/WindowShell.h"

#include <QString>

class frmMain;
class frmStartup;

/// @brief The program's start and end around its main window: the port of the window's load,
/// the first activation (recovery of what crashed copies left, the copy's log directory and
/// registration, the system name, the link watchdog, the file of the command line) and the
/// exit with its questions and tidying. The window itself leaves all this to the shell, so
/// that it can be built without a port.
class Startup : public WindowShell
{
public:
    /// `splash` holds the register as it stood before this copy and serves as the About box;
    /// `CommandLine` is the text after the program's name.
    Startup(frmMain &window, frmStartup &splash, QString CommandLine = {});

    /// Chooses a free port and opens the link on it. Answers false when no port is free: the
    /// operator has been told, and the program must end.
    [[nodiscard]] bool openPort();
    void firstActivation() override;
    [[nodiscard]] bool windowClosing() override;
    void mnuLogName_Click() override;
    void mnuAbout_Click() override;
    void textWindowButton(QAction *Button) override;

private:
    /// Asks about an unsaved log and unsaved charts; false when the operator keeps the window.
    [[nodiscard]] bool exitQuestions();

    frmMain &m_window;
    frmStartup &m_splash;
    QString m_commandLine;
    InstanceRegistry m_registry;
    TextWindows m_textWindows;
};

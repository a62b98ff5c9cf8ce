#include "shell/Startup.h"

#include "runtime/App.h"
#include "runtime/RuntimeError.h"
#include "shell/Recovery.h"
#include "view/frmMain.h"

Startup::Startup(frmMain &window) : m_window(window), m_registry(window.logPlace)
{}

bool Startup::openPort()
{
    if (!m_window.ports.chooseAtStartup(App::PrevInstance(), &m_window))
        return false;
    m_window.ports.openAtStartup(m_window.errors, &m_window);
    return true;
}

void Startup::firstActivation()
{
    // Beside a running copy, the directories found may be that copy's.
    if (!App::PrevInstance()) {
        Recovery recovery(m_window.logPlace, m_registry.LogInfoTable(), *m_window.Chart[5],
                          *m_window.runningLog, &m_window);
        recovery.run();
    }
    m_registry.prepareLogDirectory();
    m_window.session.startWatchdog();
}

void Startup::windowClosing()
{
    ignoreErrors([&] { m_window.settings.SaveSettings(); });
    m_window.runningLog->closeLog();
    m_registry.RemoveRegistryEntry();
}

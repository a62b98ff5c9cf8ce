#include "shell/Startup.h"

#include "runtime/App.h"
#include "runtime/RuntimeError.h"
#include "view/frmMain.h"

Startup::Startup(frmMain &window) : m_window(window)
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
    m_window.session.startWatchdog();
}

void Startup::windowClosing()
{
    ignoreErrors([&] { m_window.settings.SaveSettings(); });
    m_window.runningLog->closeLog();
}

#include "shell/Startup.h"

#include "runtime/App.h"
#include "runtime/MsgBox.h"
#include "runtime/RuntimeError.h"
#include "shell/Recovery.h"
#include "shell/frmLogName.h"
#include "shell/frmStartup.h"
#include "view/CommandStates.h"
#include "view/frmMain.h"

#include <QApplication>

Startup::Startup(frmMain &window, frmStartup &splash, QString CommandLine)
    : m_window(window)
    , m_splash(splash)
    , m_commandLine(std::move(CommandLine))
    , m_registry(window.logPlace, splash.LogInfoTable)
    , m_textWindows(window)
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
    m_window.commands->showLogging(m_window.settings.DataLogging);
    // Beside a running copy, the directories found may be that copy's.
    if (!App::PrevInstance()) {
        Recovery recovery(m_window.logPlace, m_registry.LogInfoTable(), *m_window.Chart[5],
                          *m_window.runningLog, &m_window);
        recovery.run();
    }
    m_registry.prepareLogDirectory();
    mnuLogName_Click();
    m_window.setWindowTitle(frmLogName::caption(m_window.logPlace.SystemName));
    m_window.session.startWatchdog();
    // The whole text is the file's name, as a file manager passes it.
    if (!m_commandLine.isEmpty())
        m_window.DrawChartLabel(m_commandLine);
    m_splash.mainLoaded();
}

bool Startup::exitQuestions()
{
    if (m_window.menu.mnuSaveLog->isEnabled() &&
        MsgBox(QStringLiteral("Do you want to save the LOG file before exiting "),
               MsgBoxStyle::YesNo | MsgBoxStyle::Question) == MsgBoxResult::Yes)
        m_window.mnuSaveLog_Click();
    bool allSaved = true;
    for (int i = 0; i < m_window.tabs.ChartCount; ++i)
        allSaved = allSaved && m_window.tabs.ChartSaved[std::size_t(i)];
    return allSaved ||
           MsgBox(QStringLiteral("Chart Recorder Data or opened Data is not saved.\rExit without "
                                 "save?"),
                  MsgBoxStyle::YesNo | MsgBoxStyle::Question | MsgBoxStyle::DefaultButton2,
                  QStringLiteral("Data is not saved")) != MsgBoxResult::No;
}

bool Startup::windowClosing()
{
    if (!exitQuestions())
        return false;
    ignoreErrors([&] { m_window.settings.SaveSettings(); });
    m_window.runningLog->closeLog();
    m_registry.RemoveRegistryEntry();
    m_splash.hide();
    QCoreApplication::quit();
    return true;
}

void Startup::mnuLogName_Click()
{
    frmLogName form(m_window.logPlace.SystemName, m_window);
    form.exec();
    m_registry.UpdateRegistry();
}

void Startup::mnuAbout_Click()
{
    m_splash.exec();
}

void Startup::textWindowButton(QAction *Button)
{
    m_textWindows.textWindowButton(Button);
}

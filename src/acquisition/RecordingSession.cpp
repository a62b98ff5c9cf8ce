#include "acquisition/RecordingSession.h"

#include "acquisition/Link.h"
#include "acquisition/RecordCommands.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/SessionHost.h"
#include "acquisition/frmNoData.h"
#include "runtime/Timers.h"

RecordingSession::RecordingSession(Link &link, SampleIntake &intake, RecordCommands &commands,
                                   SessionHost &host)
    : m_link(link)
    , m_intake(intake)
    , m_commands(commands)
    , m_host(host)
{
    m_watchdog.setInterval(5000);
    QObject::connect(&m_watchdog, &QTimer::timeout, &m_watchdog,
                     [this] { TimerCheckComData_Timer(); });
}

void RecordingSession::record()
{
    m_intake.startSession();
}

void RecordingSession::stop()
{
    m_intake.stopSession();
}

void RecordingSession::TimerCheckComData_Timer()
{
    if (!m_link.state().ComDataSeen) {
        m_host.stopLogTimer();
        ComDataLost();
        frmNoData dialog;
        dialog.exec();
        if (dialog.choice() == frmNoData::Exit)
            m_host.mnuExit_Click();
        else if (dialog.choice() == frmNoData::Setup)
            m_host.mnuComPort_Click();
    }
    m_link.clearComDataSeen();
}

void RecordingSession::ComDataLost()
{
    m_link.setDataBusy(true);
    m_watchdog.stop();
    // Stopped before the commands go dark, as the Stop command enables Record again.
    if (m_intake.Recording())
        m_commands.mnuStop_Click();
    m_host.linkLost();
    m_link.loseSync();
    m_intake.linkLost();
    m_link.setDataBusy(false);
}

void RecordingSession::startWatchdog()
{
    setTimerEnabled(m_watchdog, true);
}

void RecordingSession::stopWatchdog()
{
    m_watchdog.stop();
}

void RecordingSession::syncFound()
{
    m_intake.syncFound();
    startWatchdog();
    m_host.linkFound();
}

void RecordingSession::passEnded()
{
    if (m_intake.Recording())
        m_host.UpdateLiveView();
}

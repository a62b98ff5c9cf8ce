#include "documents/RunningLog.h"

#include "acquisition/Link.h"
#include "acquisition/SampleIntake.h"
#include "documents/Settings.h"
#include "runtime/Timers.h"

RunningLog::RunningLog(Settings &settings, const Link &link, SampleIntake &intake)
    : m_settings(settings)
    , m_link(link)
    , m_intake(intake)
{
    m_timer.setInterval(20000);
}

void RunningLog::logOn()
{
    m_settings.DataLogging = true;
    if (m_link.state().ComDataSeen) {
        m_intake.logOn();
        setTimerEnabled(m_timer, true);
    }
}

void RunningLog::logOff()
{
    m_settings.DataLogging = false;
    m_timer.stop();
}

void RunningLog::followLogging()
{
    setTimerEnabled(m_timer, m_settings.DataLogging);
}

void RunningLog::stopTimer()
{
    m_timer.stop();
}

#include "view/SessionCommands.h"

#include "acquisition/RecordingSession.h"
#include "chart/Quillchart.h"
#include "documents/ChartTabs.h"
#include "documents/RunningLog.h"
#include "view/CommandStates.h"
#include "view/LedShape.h"
#include "view/MainToolbar.h"
#include "view/TimeAxis.h"

#include <QAction>

namespace {
constexpr quint32 kLedGreen = 0x00FF00;
constexpr quint32 kLedOff = 0;
} // namespace

SessionCommands::SessionCommands(RecordingSession &session, RunningLog &log, ChartTabs &tabs,
                                 CommandStates &commands, TimeAxis &timeAxis,
                                 MainToolbar &toolbar, LedShape &ShapeReciveLed,
                                 const Charts &Chart)
    : m_session(session)
    , m_log(log)
    , m_tabs(tabs)
    , m_commands(commands)
    , m_timeAxis(timeAxis)
    , m_toolbar(toolbar)
    , ShapeReciveLed(ShapeReciveLed)
    , Chart(Chart)
{}

void SessionCommands::mnuStart_Click()
{
    m_tabs.ChartSaved[0] = false;
    m_session.record();
    m_toolbar.cmdRecord->setChecked(true);
    // A recording leaves the commands of a file tab in front as they are.
    if (m_tabs.CurrentChart == 0)
        m_commands.applyTabState(CommandStates::TabState::RecorderRecording);
    m_timeAxis.recordingStarted();
    m_commands.applyMoment(CommandStates::Moment::RecordStarted);
    Chart[m_tabs.CurrentChart]->setFocus();
}

void SessionCommands::mnuStop_Click()
{
    m_timeAxis.moveRecorderBarToEnd();
    m_session.stop();
    m_toolbar.cmdStop->setChecked(true);
    if (m_tabs.CurrentChart == 0)
        m_commands.applyTabState(CommandStates::TabState::RecorderIdle);
    m_timeAxis.recordingStopped();
    m_commands.applyMoment(CommandStates::Moment::RecordStopped);
}

void SessionCommands::mnuLogOn_Click()
{
    m_commands.showLogging(true);
    m_log.logOn();
}

void SessionCommands::mnuLogOff_Click()
{
    m_commands.showLogging(false);
    m_log.logOff();
}

void SessionCommands::linkFound()
{
    ShapeReciveLed.setFillColor(kLedGreen);
    m_log.followLogging();
    m_commands.applyMoment(CommandStates::Moment::LinkFound);
}

void SessionCommands::linkLost()
{
    ShapeReciveLed.setFillColor(kLedOff);
    m_commands.applyMoment(CommandStates::Moment::LinkLost);
}

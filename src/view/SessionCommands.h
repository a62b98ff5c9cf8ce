#pragma once

#include "view/Charts.h"

class CommandStates;
class LedShape;
class RecordingSession;
class RunningLog;
class TimeAxis;
struct ChartTabs;
struct MainToolbar;

/// @brief The Collect Data commands as the window carries them out: Record and Stop, Log ON and
/// Log OFF, and what a found or lost link shows. The session and the running log keep the
/// state; this class adds the commands' states, the buttons, the bar and the LED.
class SessionCommands
{
public:
    SessionCommands(RecordingSession &session, RunningLog &log, ChartTabs &tabs,
                    CommandStates &commands, TimeAxis &timeAxis, MainToolbar &toolbar,
                    LedShape &ShapeReciveLed, const Charts &Chart);

    void mnuStart_Click();
    void mnuStop_Click();
    void mnuLogOn_Click();
    void mnuLogOff_Click();
    void linkFound();
    void linkLost();

private:
    RecordingSession &m_session;
    RunningLog &m_log;
    ChartTabs &m_tabs;
    CommandStates &m_commands;
    TimeAxis &m_timeAxis;
    MainToolbar &m_toolbar;
    LedShape &ShapeReciveLed;
    const Charts &Chart;
};

#pragma once

struct MainMenu;
struct MainToolbar;

/// @brief Which commands are available: the table by kind of tab, the table of the record
/// commands by moment, and the pair of log commands.
///
/// The tables are applied at the moments the window names and at no others: a start or stop of
/// a recording leaves the commands of a file tab in front as they are.
class CommandStates
{
public:
    /// The columns of the first table.
    enum class TabState { RecorderIdle, RecorderRecording, FileTab };
    /// The rows of the second table.
    enum class Moment { LinkLost, LinkFound, RecordStarted, RecordStopped };

    CommandStates(MainMenu &menu, MainToolbar &toolbar);

    void applyTabState(TabState state);
    void applyMoment(Moment moment);
    /// Log ON enabled exactly while logging is off, Log OFF while it is on, and the pressed
    /// button of the pair showing which.
    void showLogging(bool on);

private:
    MainMenu &m_menu;
    MainToolbar &m_toolbar;
};

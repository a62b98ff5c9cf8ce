#include "view/CommandStates.h"

#include "view/MainMenu.h"
#include "view/MainToolbar.h"

#include <QAction>

#include <array>

namespace {

constexpr int kTabStates = 3;

/// T and F by kind of tab: recorder not recording, recorder recording, file tab.
struct TabRow
{
    QAction *MainMenu::*item;
    std::array<bool, kTabStates> enabled;
};

constexpr std::array<bool, kTabStates> kFileOnly{false, false, true};
constexpr std::array<bool, kTabStates> kRecorderIdle{true, false, false};
constexpr std::array<bool, kTabStates> kNotRecording{true, false, true};

constexpr std::array<TabRow, 8> kMenuRows{{
    {&MainMenu::mnuClose, kFileOnly},
    {&MainMenu::mnuClear, kRecorderIdle},
    {&MainMenu::mnuSaveData, kNotRecording},
    {&MainMenu::mnuSaveDataAs, kNotRecording},
    {&MainMenu::mnuSaveSlectedData, kNotRecording},
    {&MainMenu::mnuPrint, kNotRecording},
    {&MainMenu::mnuPrintSetup, kNotRecording},
    {&MainMenu::mnuExport, kNotRecording},
}};
constexpr std::array<QAction *MainToolbar::*, 3> kButtonsNotRecording{
    &MainToolbar::cmdSave, &MainToolbar::cmdPrint, &MainToolbar::cmdClear};

/// The record commands at each moment: 1 enabled, 0 disabled, -1 unchanged.
struct MomentRow
{
    signed char mnuStart, cmdRecord, mnuStop, cmdStop, mnuComPort;
};

constexpr std::array<MomentRow, 4> kMoments{{
    {0, 0, 0, 0, -1},   // link lost, also at load
    {1, 1, -1, 1, -1},  // the stream found
    {0, -1, 1, -1, 0},  // Record
    {1, -1, 0, -1, 1},  // Stop
}};

void apply(QAction *command, signed char value)
{
    if (value >= 0)
        command->setEnabled(value == 1);
}

} // namespace

CommandStates::CommandStates(MainMenu &menu, MainToolbar &toolbar)
    : m_menu(menu)
    , m_toolbar(toolbar)
{}

void CommandStates::applyTabState(TabState state)
{
    const auto column = std::size_t(state);
    for (const TabRow &row : kMenuRows)
        (m_menu.*row.item)->setEnabled(row.enabled[column]);
    for (QAction *MainToolbar::*button : kButtonsNotRecording)
        (m_toolbar.*button)->setEnabled(kNotRecording[column]);
}

void CommandStates::applyMoment(Moment moment)
{
    const MomentRow &row = kMoments[std::size_t(moment)];
    apply(m_menu.mnuStart, row.mnuStart);
    apply(m_toolbar.cmdRecord, row.cmdRecord);
    apply(m_menu.mnuStop, row.mnuStop);
    apply(m_toolbar.cmdStop, row.cmdStop);
    apply(m_menu.mnuComPort, row.mnuComPort);
}

void CommandStates::showLogging(bool on)
{
    m_menu.mnuLogOn->setEnabled(!on);
    m_menu.mnuLogOff->setEnabled(on);
    (on ? m_toolbar.cmdLogOn : m_toolbar.cmdLogOff)->setChecked(true);
}

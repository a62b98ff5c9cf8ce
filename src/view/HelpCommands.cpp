#include "view/HelpCommands.h"

#include "runtime/HelpContext.h"
#include "view/HelpWindow.h"
#include "view/MainMenu.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

namespace {

constexpr int kWindowContext = 1;
constexpr int kIndexContext = 0;

} // namespace

HelpCommands::HelpCommands(QWidget &window, MainMenu &menu) : m_window(window), m_menu(menu)
{
    qApp->installEventFilter(this);
    // Made before the window connects the commands' routines, so that their dialogs know
    // their topic while they are up; SetHelpContexts, later, forgets it when they return.
    for (const auto &[command, context] : commandContexts())
        connect(command, &QAction::triggered, this,
                [this, context = context] { m_commandContext = context; });
}

HelpCommands::~HelpCommands()
{
    qApp->removeEventFilter(this);
}

std::vector<std::pair<QAction *, int>> HelpCommands::commandContexts() const
{
    return {
        {m_menu.mnuExport, 2},     {m_menu.mnuMethod, 3},          {m_menu.mnuNotes, 4},
        {m_menu.mnuPrint, 5},      {m_menu.mnuComPort, 6},         {m_menu.mnuSaveData, 8},
        {m_menu.mnuSaveDataAs, 8}, {m_menu.mnuSaveSlectedData, 9}, {m_menu.mnuOpenData, 10},
        {m_menu.mnuOpenLog, 10},   {m_menu.mnuSaveLog, 11},
    };
}

void HelpCommands::SetHelpContexts()
{
    setHelpContext(&m_window, kWindowContext);
    for (const auto &[command, context] : commandContexts()) {
        setHelpContext(command, context);
        connect(command, &QAction::triggered, this, [this] { m_commandContext = -1; });
    }
}

void HelpCommands::mnuIntro_Click()
{
    helpWindow().showTopic(helpContext(&m_window));
}

void HelpCommands::mnuIndex_Click()
{
    helpWindow().showTopic(kIndexContext);
}

HelpWindow &HelpCommands::helpWindow()
{
    if (!m_help)
        m_help = new HelpWindow(&m_window);
    return *m_help;
}

int HelpCommands::contextFor(QWidget *widget) const
{
    if (const auto *menu = qobject_cast<QMenu *>(widget); menu && menu->activeAction()) {
        if (const int context = helpContext(menu->activeAction()); context >= 0)
            return context;
    }
    for (QWidget *w = widget; w; w = w->parentWidget()) {
        if (const int context = helpContext(w); context >= 0)
            return context;
        // A dialog of its own without a topic has its command's.
        if (w->isWindow() && w != &m_window && !qobject_cast<QMenu *>(w) && m_commandContext >= 0)
            return m_commandContext;
    }
    return helpContext(&m_window);
}

bool HelpCommands::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType() ||
        static_cast<QKeyEvent *>(event)->key() != Qt::Key_F1)
        return false;
    auto *widget = static_cast<QWidget *>(watched);
    if (m_help && widget->window() == m_help)
        return false;
    helpWindow().showTopic(contextFor(widget));
    return true;
}

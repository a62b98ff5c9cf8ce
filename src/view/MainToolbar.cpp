#include "view/MainToolbar.h"

#include "runtime/Twips.h"
#include "view/ToolbarIcons.h"

#include <QActionGroup>
#include <QMainWindow>
#include <QToolBar>

void MainToolbar::build(QMainWindow *window)
{
    Toolsbar = window->addToolBar(QStringLiteral("Tools"));
    Toolsbar->setObjectName(QStringLiteral("Toolsbar"));
    Toolsbar->setMovable(false);
    // The tool bar is always there: no context menu offers to hide it.
    Toolsbar->toggleViewAction()->setVisible(false);
    Toolsbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    auto button = [this](const char *key, const QString &caption, const QString &toolTip,
                         const char *imageKey) {
        QAction *action = Toolsbar->addAction(toolbarIcon(QLatin1String(imageKey)), caption);
        action->setObjectName(QLatin1String(key));
        action->setToolTip(toolTip);
        return action;
    };
    cmdOpen =
        button("cmdOpen", QStringLiteral("Open"), QStringLiteral("Open data file"), "picOpen");
    cmdSave =
        button("cmdSave", QStringLiteral("Save"), QStringLiteral("Save Chart Recorder"), "picSave");
    cmdPrint =
        button("cmdPrint", QStringLiteral("Print"), QStringLiteral("Print graph"), "picPrint");
    cmdClear = button("cmdClear", QStringLiteral("Clear"),
                      QStringLiteral("Clear Chart Recorder  data"), "picClear");
    Toolsbar->addSeparator();
    cmdRecord = button("cmdRecord", QStringLiteral("Record"),
                       QStringLiteral("Start record form Velquin"), "picRecord");
    cmdStop = button("cmdStop", QStringLiteral("Stop"), QStringLiteral("Stop record form Velquin"),
                     "picStop");
    Toolsbar->addSeparator();
    cmdMethod =
        button("cmdMethod", QStringLiteral("Methods"), QStringLiteral("Show Methods"), "picMethod");
    cmdNotes =
        button("cmdNotes", QStringLiteral("Notes"), QStringLiteral("Show Notes "), "picNotes");
    auto *placeholder = new QWidget(Toolsbar);
    placeholder->setFixedWidth(twips(window, 300));
    Toolsbar->addWidget(placeholder);
    cmdLogOn =
        button("cmdLogOn", QStringLiteral("Log ON"), QStringLiteral("Start log data."), "picLogOn");
    cmdLogOff = button("cmdLogOff", QStringLiteral("Log OFF"), QStringLiteral("Stop log data."),
                       "picLogOff");

    // Record/Stop and Log ON/OFF are button groups: pressing one releases the other.
    for (auto [first, second] : {std::pair{cmdRecord, cmdStop}, std::pair{cmdLogOn, cmdLogOff}}) {
        auto *group = new QActionGroup(Toolsbar);
        for (QAction *action : {first, second}) {
            action->setCheckable(true);
            group->addAction(action);
        }
    }
    cmdStop->setChecked(true);
    cmdLogOn->setChecked(true);
    cmdMethod->setCheckable(true);
    cmdNotes->setCheckable(true);
}

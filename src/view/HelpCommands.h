#pragma once

#include <QObject>

#include <utility>
#include <vector>

class HelpWindow;
class QAction;
class QWidget;
struct MainMenu;

/// @brief The help commands: the context numbers of the window and its commands, F1 anywhere in
/// the program, and the help menu's Introduction and Index.
///
/// F1 opens the topic of the highlighted menu item, else of the focused control or its nearest
/// parent that names one. A dialog that names no topic of its own (a file dialog, say) has the
/// topic of the command that opened it.
class HelpCommands : public QObject
{
    Q_OBJECT

public:
    HelpCommands(QWidget &window, MainMenu &menu);
    ~HelpCommands() override;

    void SetHelpContexts();
    void mnuIntro_Click();
    void mnuIndex_Click();

    /// The topic F1 opens when pressed on this widget.
    int contextFor(QWidget *widget) const;
    HelpWindow &helpWindow();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::vector<std::pair<QAction *, int>> commandContexts() const;

    QWidget &m_window;
    MainMenu &m_menu;
    HelpWindow *m_help = nullptr;
    int m_commandContext = -1;
};

#pragma once

class QAction;

/// What the window asks of the program's shell, which starts it, names it and ends it.
class WindowShell
{
public:
    virtual ~WindowShell() = default;
    /// The window has been shown for the first time.
    virtual void firstActivation() = 0;
    /// The operator closes the window: false when the operator chose to keep it. Otherwise the
    /// copy's settings, log and registration have been tidied away and the program ends.
    [[nodiscard]] virtual bool windowClosing() = 0;
    virtual void mnuLogName_Click() = 0;
    virtual void mnuAbout_Click() = 0;
    /// The method or notes button of the tool bar changed: its window opens or closes.
    virtual void textWindowButton(QAction *Button) = 0;
};

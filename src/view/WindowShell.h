#pragma once

/// What the window asks of the program's shell, which starts it and ends it.
class WindowShell
{
public:
    virtual ~WindowShell() = default;
    /// The window has been shown for the first time.
    virtual void firstActivation() = 0;
    /// The window closes for good: the copy's settings, log and registration are tidied away.
    virtual void windowClosing() = 0;
};

#pragma once

/// What the window asks of the program's shell, which starts it and ends it.
class WindowShell
{
public:
    virtual ~WindowShell() = default;
    /// The window has been shown for the first time.
    virtual void firstActivation() = 0;
};

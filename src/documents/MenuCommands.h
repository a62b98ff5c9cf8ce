#pragma once

/// The main window's menu routines that the error route runs after the out-of-memory box.
class MenuCommands
{
public:
    virtual ~MenuCommands() = default;
    virtual void mnuStop_Click() = 0;
    virtual void mnuLogOff_Click() = 0;
};

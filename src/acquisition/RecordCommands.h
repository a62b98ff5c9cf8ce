#pragma once

/// The Record and Stop commands of the window, as the instrument and the intake run them.
class RecordCommands
{
public:
    virtual ~RecordCommands() = default;
    /// Starts a recording session: `Recording` true, the numbering of events from 0 again.
    virtual void mnuStart_Click() = 0;
    /// Ends the recording session: `Recording` false.
    virtual void mnuStop_Click() = 0;
};

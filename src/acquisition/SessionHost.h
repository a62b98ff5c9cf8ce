#pragma once

/// What the recording session asks of the window around it.
class SessionHost
{
public:
    virtual ~SessionHost() = default;
    /// The stream was recognised: the Receive LED green, the log timer running while logging
    /// is on, Record and the record buttons enabled.
    virtual void linkFound() = 0;
    /// The link was lost: the LED black, Record and Stop disabled.
    virtual void linkLost() = 0;
    /// No data: nothing new for the running log to write.
    virtual void stopLogTimer() = 0;
    /// A decoding pass has ended while recording.
    virtual void UpdateLiveView() = 0;
    virtual void mnuComPort_Click() = 0;
    virtual void mnuExit_Click() = 0;
};

#pragma once

/// What the decoding loop asks of the window around it.
class DecoderHost
{
public:
    virtual ~DecoderHost() = default;
    /// Synchronisation was found (again): forget the run, light the LED, start the watchdog
    /// and the log timer, enable Record and the record/stop buttons.
    virtual void syncFound() = 0;
    /// The pass has ended and the timer runs again: time for the live view.
    virtual void passEnded() = 0;
};

#pragma once

#include <QTimer>

/// A timer's `Enabled := true` as the program has always meant it: a stopped timer starts its
/// countdown, a running one keeps the countdown it has. Restarting it instead would let any
/// event that comes more often than the interval (a resynchronisation, a repeated command)
/// hold the timer off for good.
inline void setTimerEnabled(QTimer &timer, bool enabled)
{
    if (!enabled)
        timer.stop();
    else if (!timer.isActive())
        timer.start();
}

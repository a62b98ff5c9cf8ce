#pragma once

#include <QApplication>

/// The screen's pointer is one setting, not a stack: the hourglass on, or back to the default.
inline void setHourglass(bool on)
{
    if (on) {
        if (QApplication::overrideCursor() == nullptr)
            QApplication::setOverrideCursor(Qt::WaitCursor);
        return;
    }
    while (QApplication::overrideCursor() != nullptr)
        QApplication::restoreOverrideCursor();
}

#pragma once

#include "runtime/Int16.h"

#include <QString>

/// @brief Where this copy's running log lives and under which name and number it is
/// registered: what the log commands, the registry of copies and recovery share.
///
/// Recovery points `LogDirectory` and `SystemName` at a crashed copy's log for the moment of
/// saving it.
struct LogPlace
{
    /// The copy's log directory with its trailing separator while running; empty until made.
    QString LogDirectory;
    /// The copy's key among the registered copies; 0 until registered.
    Int16 InstanceNumber = 0;
    QString SystemName = QStringLiteral("Default");
};

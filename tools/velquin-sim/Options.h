#pragma once

#include "Scenario.h"

#include <QString>
#include <QStringList>

namespace VelquinSim {

/// What the command line asks for: the scenario and where its bytes go.
struct Options
{
    enum class Transport { Pty, File, Device };

    Scenario scenario;
    Transport transport = Transport::Pty;
    /// The file of --out or the serial port of --device.
    QString target;
    QString manifest;

    /// Reads the arguments; prints help or version and exits as those options do. On a mistake
    /// returns false with the reason in `error`.
    bool parse(const QStringList &arguments, QString *error);
};

} // namespace VelquinSim

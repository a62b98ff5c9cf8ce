#pragma once

#include <QString>

/// The temporary home of one test program: XDG_CONFIG_HOME and XDG_DATA_HOME point below it,
/// so App::Path() and the settings store are the test's own.
QString testHome();

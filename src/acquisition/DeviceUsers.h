#pragma once

#include <QString>

/// True when a process other than this one holds the serial device at `path` open, as a
/// program that opens a port without taking its lock does. The process at the other end of a
/// pseudo-terminal (the one that holds its master) is the device itself and does not count.
/// Only the processes the user may look into are seen; elsewhere than Linux, none.
[[nodiscard]] bool isOpenElsewhere(const QString &path);

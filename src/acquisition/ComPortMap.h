#pragma once

#include <QString>

/// COM 1 to COM 10 on the system's serial devices. A serial adapter keeps its number: the map
/// lives in the settings store (section "Ports"), keyed by COM number, valued by a stable
/// device path (the adapter's /dev/serial/by-id link where it has one). An adapter seen for
/// the first time takes the lowest free number, USB adapters before built-in ports.
/// OSTREL_COMPORTS (comma-separated paths, COM 1 first) overrides the map for one run.
namespace ComPortMap {
constexpr int kPortCount = 10;
/// The device path of a COM number, "" when none is mapped.
[[nodiscard]] QString devicePath(int comPort);
/// The device and, where known, the adapter's description, for a tool-tip.
[[nodiscard]] QString describe(int comPort);
} // namespace ComPortMap

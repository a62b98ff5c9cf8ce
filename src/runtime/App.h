#pragma once

#include <QString>

/// What the program knows of itself: its title, its data folder, and whether another copy runs.
namespace App {
/// Where the program keeps its data (the Log folder, ChartErr.log): the per-user application
/// data directory, created on first use, since the program's own folder is not writable.
[[nodiscard]] QString Path();
/// "Ostrel MS": the settings store's application name and the caption of untitled boxes.
[[nodiscard]] QString Title();
/// True when another copy of the program ran for this user when this one registered.
[[nodiscard]] bool PrevInstance();
/// Registers this copy among the running ones; call once, early in main().
void registerInstance();
/// Unique among running copies: the process id.
[[nodiscard]] QString InstanceTag();
} // namespace App

#pragma once

#include <QByteArray>

struct RunData;

/// @brief A run as JSON: title, notes, axes, every sample pair with its time, every mark and
/// every method text with its time.
///
/// Numbers are written in their shortest form that reads back as the same 32-bit float, so a
/// dump gives back exactly what the file holds; NaN and the infinities, which JSON lacks, are
/// the strings "NaN", "Infinity" and "-Infinity".
namespace RunJson {
[[nodiscard]] QByteArray dump(const RunData &run);
} // namespace RunJson

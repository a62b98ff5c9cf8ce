#pragma once

#include "chart/RunData.h"

#include <QString>

#include <optional>

/// @brief What the converter reads, and the files it must never write over.
namespace ExportInput {
/// The run in `input`: a data or log file, whatever its name, or a log directory read as crash
/// recovery reads it. Nothing when it cannot be read, with a message in `error`.
[[nodiscard]] std::optional<RunData> read(const QString &input, QString &error);
/// True when writing `output` ("-" or empty for standard output) would write over `input`:
/// the same file under any name, or, for a log directory, a file inside it.
[[nodiscard]] bool isWrittenOver(const QString &input, const QString &output);
} // namespace ExportInput

#pragma once

#include <QString>

struct RunData;

/// @brief Reads back the running log that `LogWriter` keeps in a directory, giving back every
/// whole record.
///
/// A record cut short by a power cut can only be the last one written: it is dropped without
/// a word. Damage anywhere else (a bad record, a missing data file, a sequence that skips)
/// loses only what the damaged part held: the records after it are kept at their own times,
/// with the lost stretch of samples left empty (no number), and the log counts as salvaged.
class LogReader
{
public:
    enum class Status { Good, Salvaged, NoLog, Damaged, OutOfMemory };

    /// True exactly when `read` would give back at least one record.
    [[nodiscard]] static bool hasLog(const QString &directory);
    /// Appends the logged run to `run`, which must be empty.
    [[nodiscard]] static Status read(const QString &directory, RunData &run);
};

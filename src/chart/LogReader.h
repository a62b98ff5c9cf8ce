#pragma once

#include <QString>

struct RunData;

/// @brief Reads back the running log that `LogWriter` keeps in a directory.
///
/// A record cut short by a power cut can only be the last one written: it is dropped, and
/// everything before it comes back. Any other damage (a bad record with a good one after it, a
/// missing or foreign file, a sequence that skips) makes the whole log unusable, since what it
/// would give back is not what was logged.
class LogReader
{
public:
    enum class Status { Good, NoLog, Damaged, OutOfMemory };

    /// True when `directory` holds a log whose first record is whole: cheap, reads one record.
    [[nodiscard]] static bool hasLog(const QString &directory);
    /// Appends the logged run to `run`, which must be empty.
    [[nodiscard]] static Status read(const QString &directory, RunData &run);

private:
    [[nodiscard]] static Status readFiles(const QString &directory, RunData &run);
};

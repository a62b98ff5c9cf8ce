#pragma once

#include "chart/RunData.h"

#include <QString>

#include <optional>

/// @brief Reads a run file, data or log alike, from the disk without trusting it.
///
/// The file is sized up before it is read: anything but a regular file, a file too short for a
/// header or with a header of neither kind is refused at once, and each chunk is read only when
/// the file holds all of it, so a huge or endless input costs a few bytes of reading. Only one
/// chunk is in memory beside the run being built, and running out of memory is a failed read.
class RunFileReader
{
public:
    enum class Failure { None, Missing, NotAFile, Unreadable, NotARunFile, Damaged, TooLarge };

    /// The run in `fileName`, or nothing, with the reason in `failure` when it is given.
    [[nodiscard]] static std::optional<RunData> read(const QString &fileName,
                                                     Failure *failure = nullptr);
    /// The reason in a few words, for a message.
    [[nodiscard]] static QString describe(Failure failure);
};

#pragma once

#include "RunContent.h"

#include <QDir>
#include <QStringList>

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// Files a user may pick through "All Files": too large, endless, blocking, no file at all,
/// unreadable, empty, cut short or damaged, and good runs under names that do not tell their
/// kind. A reader must open the good ones and refuse the rest at once.
namespace HostileFiles {
struct Row
{
    const char *name;
    bool opens;
    /// Makes the row's files in `dir`: several for a run cut at each chunk boundary, none when
    /// the row cannot be made here.
    QStringList (*make)(const QDir &dir);
};

/// What each good run of the table holds: more samples than one chunk carries.
inline constexpr RunContent::Counts kRun{70000, 5, 2};

const std::vector<Row> &rows();
inline void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}
} // namespace HostileFiles

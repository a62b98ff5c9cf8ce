#pragma once

#include "chart/RunData.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

/// @brief A run as AIA/ANDI chromatography files, the netCDF form that chromatography data
/// systems import: one file per trace, each with its samples at the run's fixed interval and the
/// run's event marks as its peak table.
namespace AiaWriter {
/// What a run file does not hold and the files still need.
struct Header
{
    QDateTime injection;
    QDateTime written;
    QString sourceFile;
};

/// Why this build cannot write the files, or nothing when it can.
[[nodiscard]] QString missing();
/// The files a prefix names: the UV trace's first, then the conductivity trace's.
[[nodiscard]] QStringList fileNames(const QString &prefix);
/// A time as the template writes it: local date and time, then the offset from UTC,
/// "YYYYMMDDhhmmss+zzzz".
[[nodiscard]] QString stamp(const QDateTime &time);
/// Writes both files, each whole or not at all; false with the reason in `error`.
[[nodiscard]] bool write(const RunData &run, const Header &header, const QString &prefix,
                         QString &error);
} // namespace AiaWriter

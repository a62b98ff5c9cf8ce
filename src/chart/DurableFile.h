#pragma once

#include <QByteArrayView>
#include <QString>

/// @brief Writes a whole file so that it is either all there or not changed, and stays there.
///
/// QSaveFile makes the replacement atomic but not durable: it ignores the result of its data
/// sync and never syncs the directory, so a power cut just after a save could bring back the
/// old file, or none. Here the temporary file is synced with its result checked before the
/// rename, and the directory after it.
namespace DurableFile {
/// True when `bytes` stand in `fileName` and have reached the disk.
[[nodiscard]] bool write(const QString &fileName, QByteArrayView bytes);
/// Syncs a directory's entries, so that files created or renamed in it survive a power cut.
[[nodiscard]] bool syncDirectory(const QString &directory);
} // namespace DurableFile

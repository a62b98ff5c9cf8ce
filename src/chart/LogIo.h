#pragma once

#include <QByteArrayView>
#include <QString>

/// @brief The few file operations the running log needs, each answering 0 or an errno value.
///
/// The log writer reaches the disk only through this, so that a test can stand in a full disk
/// or a failing sync. Handles are small non-negative numbers.
class LogIo
{
public:
    virtual ~LogIo() = default;

    /// Opens `path` for writing, creating it empty; the handle goes to `handle`.
    virtual int create(const QString &path, int &handle) = 0;
    /// Writes all of `bytes` at `offset`.
    virtual int writeAt(int handle, qint64 offset, QByteArrayView bytes) = 0;
    virtual int truncate(int handle, qint64 size) = 0;
    virtual int sync(int handle) = 0;
    virtual int syncDirectory(const QString &directory) = 0;
    virtual void close(int handle) = 0;
};

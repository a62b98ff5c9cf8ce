#pragma once

#include "chart/LogIo.h"

/// The real thing: POSIX calls on the file system.
class PosixLogIo : public LogIo
{
public:
    int create(const QString &path, int &handle) override;
    int writeAt(int handle, qint64 offset, QByteArrayView bytes) override;
    int truncate(int handle, qint64 size) override;
    int sync(int handle) override;
    int syncDirectory(const QString &directory) override;
    void close(int handle) override;
};

#include "chart/PosixLogIo.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

template <typename Call> int retried(Call call)
{
    int result;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result < 0 ? errno : 0;
}

} // namespace

int PosixLogIo::create(const QString &path, int &handle)
{
    handle =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    return handle < 0 ? errno : 0;
}

int PosixLogIo::writeAt(int handle, qint64 offset, QByteArrayView bytes)
{
    const char *data = bytes.data();
    qint64 left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::pwrite(handle, data, size_t(left), off_t(offset));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return errno;
        }
        // A short write on a regular file means the disk filled up part way.
        if (written == 0)
            return ENOSPC;
        data += written;
        offset += written;
        left -= written;
    }
    return 0;
}

int PosixLogIo::truncate(int handle, qint64 size)
{
    return retried([&] { return ::ftruncate(handle, off_t(size)); });
}

int PosixLogIo::sync(int handle)
{
    return retried([&] { return ::fsync(handle); });
}

int PosixLogIo::syncDirectory(const QString &directory)
{
    const int fd =
        ::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return errno;
    const int result = sync(fd);
    ::close(fd);
    return result;
}

void PosixLogIo::close(int handle)
{
    ::close(handle);
}

#include "chart/RegularFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

RegularFile::Status statusOf(int errnoValue)
{
    return errnoValue == ENOENT || errnoValue == ENOTDIR ? RegularFile::Status::Missing
                                                         : RegularFile::Status::Unreadable;
}

} // namespace

RegularFile::RegularFile(const QString &fileName)
{
    const QByteArray path = QFile::encodeName(fileName);
    struct stat named
    {
    };
    if (fileName.isEmpty() || ::stat(path.constData(), &named) != 0) {
        m_status = fileName.isEmpty() ? Status::Missing : statusOf(errno);
        return;
    }
    if (!S_ISREG(named.st_mode)) {
        m_status = Status::NotAFile;
        return;
    }
    do {
        m_handle = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    } while (m_handle < 0 && errno == EINTR);
    if (m_handle < 0) {
        m_status = statusOf(errno);
        return;
    }
    struct stat opened
    {
    };
    if (::fstat(m_handle, &opened) != 0 || !S_ISREG(opened.st_mode) ||
        opened.st_dev != named.st_dev || opened.st_ino != named.st_ino) {
        m_status = Status::NotAFile;
        return;
    }
    m_size = qint64(opened.st_size);
    m_status = Status::Open;
}

RegularFile::~RegularFile()
{
    if (m_handle >= 0)
        ::close(m_handle);
}

std::optional<QByteArray> RegularFile::read(qint64 length)
{
    if (!isOpen() || length < 0 || length > remaining())
        return std::nullopt;
    QByteArray bytes(qsizetype(length), Qt::Uninitialized);
    qint64 done = 0;
    while (done < length) {
        const ssize_t got = ::read(m_handle, bytes.data() + done, size_t(length - done));
        if (got < 0 && errno == EINTR)
            continue;
        // A file cut shorter since it was sized ends early; that is a failed read too.
        if (got <= 0) {
            m_status = Status::Unreadable;
            return std::nullopt;
        }
        done += got;
    }
    m_position += length;
    return bytes;
}

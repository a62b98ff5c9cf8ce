#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// @brief A file opened for reading only when it is a regular file, and read only as far as it
/// goes.
///
/// A name picked by a user may stand for a named pipe, a device or a directory. Opening a pipe
/// without a writer blocks for good and reading /dev/zero never ends, so such a name is refused
/// on its status alone, before it is opened; the open itself never blocks either, should the
/// name be swapped for a pipe in between. No read asks for more than the file holds, so a
/// length taken from the file's own bytes allocates nothing the file cannot back.
class RegularFile
{
public:
    enum class Status { Open, Missing, NotAFile, Unreadable };

    explicit RegularFile(const QString &fileName);
    ~RegularFile();
    RegularFile(const RegularFile &) = delete;
    RegularFile &operator=(const RegularFile &) = delete;

    [[nodiscard]] Status status() const { return m_status; }
    [[nodiscard]] bool isOpen() const { return m_status == Status::Open; }
    [[nodiscard]] qint64 size() const { return m_size; }
    [[nodiscard]] qint64 remaining() const { return m_size - m_position; }

    /// The next `length` bytes, or nothing when the file holds fewer or a read fails. Throws
    /// std::bad_alloc when no buffer of that size can be had.
    [[nodiscard]] std::optional<QByteArray> read(qint64 length);
    /// Everything from here to the size the file had when it was opened.
    [[nodiscard]] std::optional<QByteArray> readRest() { return read(remaining()); }

private:
    int m_handle = -1;
    Status m_status = Status::Missing;
    qint64 m_size = 0;
    qint64 m_position = 0;
};

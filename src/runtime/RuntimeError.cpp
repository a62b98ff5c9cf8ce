#include "runtime/RuntimeError.h"

#include <QHash>

RuntimeError::RuntimeError(int number) : RuntimeError(number, ErrorDescription(number))
{}

namespace {
RuntimeError &lastError()
{
    static RuntimeError none(0, QString());
    return none;
}
} // namespace

RuntimeError::RuntimeError(int number, QString description)
    : m_number(number)
    , m_description(std::move(description))
    , m_what(QStringLiteral("Run-time error %1: %2").arg(number).arg(m_description).toUtf8())
{
    if (number != 0)
        lastError() = *this;
}

const RuntimeError &Err()
{
    return lastError();
}

QString ErrorDescription(int number)
{
    static const QHash<int, QString> descriptions = {
        {3, QStringLiteral("Return without GoSub")},
        {5, QStringLiteral("Invalid procedure call or argument")},
        {6, QStringLiteral("Overflow")},
        {7, QStringLiteral("Out of memory")},
        {9, QStringLiteral("Subscript out of range")},
        {11, QStringLiteral("Division by zero")},
        {13, QStringLiteral("Type mismatch")},
        {28, QStringLiteral("Out of stack space")},
        {52, QStringLiteral("Bad file name or number")},
        {53, QStringLiteral("File not found")},
        {54, QStringLiteral("Bad file mode")},
        {55, QStringLiteral("File already open")},
        {57, QStringLiteral("Device I/O error")},
        {58, QStringLiteral("File already exists")},
        {61, QStringLiteral("Disk full")},
        {62, QStringLiteral("Input past end of file")},
        {67, QStringLiteral("Too many files")},
        {68, QStringLiteral("Device unavailable")},
        {70, QStringLiteral("Permission denied")},
        {71, QStringLiteral("Disk not ready")},
        {75, QStringLiteral("Path/File access error")},
        {76, QStringLiteral("Path not found")},
        {91, QStringLiteral("Object variable or With block variable not set")},
        {380, QStringLiteral("Invalid property value")},
        {8002, QStringLiteral("Invalid port number")},
        {8005, QStringLiteral("Port already open")},
        {8010, QStringLiteral("The hardware is not available (locked by another device)")},
        {8012, QStringLiteral("The device is not open")},
        {8015, QStringLiteral("Could not set comm state")},
        {8018, QStringLiteral("Operation valid only when the port is open")},
        {32755, QStringLiteral("Cancel was selected.")},
    };
    if (number == 0)
        return {};
    return descriptions.value(number,
                              QStringLiteral("Application-defined or object-defined error"));
}

void Raise(int number)
{
    throw RuntimeError(number);
}

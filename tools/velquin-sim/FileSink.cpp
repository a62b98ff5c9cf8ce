#include "FileSink.h"

namespace VelquinSim {

FileSink::FileSink(const QString &path) : m_file(path)
{}

bool FileSink::open()
{
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return true;
    m_error = m_file.errorString();
    return false;
}

bool FileSink::write(const QByteArray &bytes)
{
    if (m_file.write(bytes) == bytes.size())
        return true;
    m_error = m_file.errorString();
    return false;
}

void FileSink::drain()
{
    m_file.flush();
}

} // namespace VelquinSim

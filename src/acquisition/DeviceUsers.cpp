#include "acquisition/DeviceUsers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_LINUX
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#endif

namespace {

#ifdef Q_OS_LINUX

/// The number N of a pseudo-terminal /dev/pts/N, or "" for any other device.
QString ptyNumber(const QString &path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QString prefix = QStringLiteral("/dev/pts/");
    return canonical.startsWith(prefix) ? canonical.mid(prefix.size()) : QString();
}

/// Only terminals are serial lines; other devices (/dev/null) are shared by nature.
bool isTerminal(dev_t device, const QString &ptyNumber)
{
    const QString subsystem =
        QStringLiteral("/sys/dev/char/%1:%2/subsystem").arg(major(device)).arg(minor(device));
    return !ptyNumber.isEmpty() ||
           QFileInfo(subsystem).canonicalFilePath().endsWith(QLatin1String("/tty"));
}

/// True when the descriptor `fd` of process `pid` is the master of pseudo-terminal `number`.
bool isPtyMaster(const QString &pid, const QString &fd, const QString &number)
{
    if (!QFile::symLinkTarget(QStringLiteral("/proc/%1/fd/%2").arg(pid, fd))
             .endsWith(QLatin1String("ptmx")))
        return false;
    QFile info(QStringLiteral("/proc/%1/fdinfo/%2").arg(pid, fd));
    if (!info.open(QIODevice::ReadOnly))
        return false;
    const QByteArray wanted = "tty-index:\t" + number.toLatin1();
    for (const QByteArray &line : info.readAll().split('\n'))
        if (line == wanted)
            return true;
    return false;
}

#endif

} // namespace

bool isOpenElsewhere(const QString &path)
{
#ifdef Q_OS_LINUX
    struct stat device = {};
    if (::stat(QFile::encodeName(path).constData(), &device) != 0 || !S_ISCHR(device.st_mode))
        return false;
    const QString number = ptyNumber(path);
    if (!isTerminal(device.st_rdev, number))
        return false;
    const QString self = QString::number(::getpid());
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &pid : processes) {
        bool isNumber = false;
        pid.toInt(&isNumber);
        if (!isNumber || pid == self)
            continue;
        const QStringList fds =
            QDir(QStringLiteral("/proc/%1/fd").arg(pid)).entryList(QDir::AllEntries | QDir::System);
        bool holdsDevice = false;
        bool holdsMaster = false;
        for (const QString &fd : fds) {
            struct stat held = {};
            const QByteArray link =
                QFile::encodeName(QStringLiteral("/proc/%1/fd/%2").arg(pid, fd));
            if (::stat(link.constData(), &held) != 0 || !S_ISCHR(held.st_mode))
                continue;
            if (held.st_rdev == device.st_rdev)
                holdsDevice = true;
            else if (!number.isEmpty() && isPtyMaster(pid, fd, number))
                holdsMaster = true;
        }
        if (holdsDevice && !holdsMaster)
            return true;
    }
#else
    Q_UNUSED(path);
#endif
    return false;
}

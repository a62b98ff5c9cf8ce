#include "runtime/App.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

bool previousInstance = false;
int instanceLockFd = -1;

QString instanceDirectory()
{
    return App::Path() + QStringLiteral("/instances");
}

/// True when another live process holds the lock on `path`; a file left by a killed copy is
/// unlocked and removed.
bool heldByOther(const QString &path)
{
    const QByteArray native = QFile::encodeName(path);
    const int fd = ::open(native.constData(), O_RDWR | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool held = ::flock(fd, LOCK_EX | LOCK_NB) != 0;
    if (!held)
        ::unlink(native.constData());
    ::close(fd);
    return held;
}

} // namespace

namespace App {

QString Path()
{
    QString path = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    if (path.isEmpty())
        path = QDir::homePath() + QStringLiteral("/.local/share/") + Title();
    QDir().mkpath(path);
    return path;
}

QString Title()
{
    return QStringLiteral("Ostrel MS");
}

bool PrevInstance()
{
    return previousInstance;
}

QString InstanceTag()
{
    return QString::number(QCoreApplication::applicationPid());
}

void registerInstance()
{
    if (instanceLockFd >= 0)
        return;
    const QString directory = instanceDirectory();
    QDir().mkpath(directory);
    const QString own = directory + QLatin1Char('/') + InstanceTag() + QStringLiteral(".lock");
    previousInstance = false;
    for (const QString &name : QDir(directory).entryList({QStringLiteral("*.lock")}, QDir::Files)) {
        const QString path = directory + QLatin1Char('/') + name;
        if (path != own && heldByOther(path))
            previousInstance = true;
    }
    const QByteArray native = QFile::encodeName(own);
    instanceLockFd = ::open(native.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (instanceLockFd >= 0)
        ::flock(instanceLockFd, LOCK_EX | LOCK_NB);
}

} // namespace App

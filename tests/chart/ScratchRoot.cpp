#include "ScratchRoot.h"

#include "TestEnvironment.h"

#include <QFileInfo>

QString scratchRoot()
{
    const QFileInfo shm(QStringLiteral("/dev/shm"));
    return shm.isDir() && shm.isWritable() ? shm.filePath() : testHome();
}

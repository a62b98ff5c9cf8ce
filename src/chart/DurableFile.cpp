#include "chart/DurableFile.h"

#include "chart/PosixLogIo.h"

#include <QFileInfo>
#include <QSaveFile>

#include <unistd.h>

bool DurableFile::syncDirectory(const QString &directory)
{
    return PosixLogIo().syncDirectory(directory) == 0;
}

bool DurableFile::write(const QString &fileName, QByteArrayView bytes)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(bytes.data(), bytes.size()) != bytes.size() || !file.flush() ||
        ::fsync(file.handle()) != 0) {
        file.cancelWriting();
        return false;
    }
    return file.commit() && syncDirectory(QFileInfo(fileName).absolutePath());
}

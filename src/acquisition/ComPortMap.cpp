#include "acquisition/ComPortMap.h"

#include "runtime/App.h"
#include "runtime/SettingsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>

namespace {

const QString kSection = QStringLiteral("Ports");

QStringList overrideList()
{
    if (!qEnvironmentVariableIsSet("OSTREL_COMPORTS"))
        return {};
    return qEnvironmentVariable("OSTREL_COMPORTS").split(QLatin1Char(','));
}

/// The by-id link of a device where udev made one, so that the number follows the adapter
/// from one USB socket to another.
QString stablePath(const QString &device)
{
    const QDir byId(QStringLiteral("/dev/serial/by-id"));
    const QString target = QFileInfo(device).canonicalFilePath();
    for (const QFileInfo &link : byId.entryInfoList(QDir::System | QDir::Files))
        if (link.canonicalFilePath() == target)
            return link.absoluteFilePath();
    return device;
}

bool isUsb(const QString &device)
{
    const QString name = QFileInfo(device).fileName();
    return name.startsWith(QLatin1String("ttyUSB")) || name.startsWith(QLatin1String("ttyACM")) ||
           device.startsWith(QLatin1String("/dev/serial/by-id"));
}

/// Reads the stored map and gives new adapters the lowest free numbers.
QStringList storedMap()
{
    QStringList map(ComPortMap::kPortCount);
    for (int port = 1; port <= ComPortMap::kPortCount; ++port)
        map[port - 1] = GetSetting(App::Title(), kSection, QString::number(port));

    QStringList found;
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts()) {
        const QString path = stablePath(info.systemLocation());
        if (!map.contains(path) && !found.contains(path))
            found << path;
    }
    std::stable_sort(found.begin(), found.end(), [](const QString &a, const QString &b) {
        return isUsb(a) != isUsb(b) ? isUsb(a) : a < b;
    });
    for (const QString &path : found) {
        const auto free = std::find(map.begin(), map.end(), QString());
        if (free == map.end())
            break;
        *free = path;
        SaveSetting(App::Title(), kSection, QString::number(free - map.begin() + 1), path);
    }
    return map;
}

} // namespace

namespace ComPortMap {

QString devicePath(int comPort)
{
    if (comPort < 1 || comPort > kPortCount)
        return {};
    const QStringList paths =
        qEnvironmentVariableIsSet("OSTREL_COMPORTS") ? overrideList() : storedMap();
    return comPort <= paths.size() ? paths[comPort - 1].trimmed() : QString();
}

QString describe(int comPort)
{
    const QString path = devicePath(comPort);
    if (path.isEmpty())
        return QStringLiteral("No device");
    const QString target = QFileInfo(path).canonicalFilePath();
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts()) {
        if (QFileInfo(info.systemLocation()).canonicalFilePath() != target)
            continue;
        QStringList parts{info.description(), info.manufacturer(), info.serialNumber()};
        parts.removeAll(QString());
        if (!parts.isEmpty())
            return path + QStringLiteral(" (") + parts.join(QStringLiteral(", ")) +
                   QLatin1Char(')');
    }
    return path;
}

} // namespace ComPortMap

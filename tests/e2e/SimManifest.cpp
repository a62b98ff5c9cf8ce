#include "SimManifest.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

QList<ManifestBlock> readManifest(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<ManifestBlock> blocks;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    for (const QJsonValue &entry : document.object().value(QStringLiteral("blocks")).toArray()) {
        const QJsonObject object = entry.toObject();
        const QString type = object.value(QStringLiteral("type")).toString();
        blocks.append(
            {object.value(QStringLiteral("offset")).toInteger(),
             object.value(QStringLiteral("pair")).toInteger(),
             type.size() == 1 ? type.front() : QChar(),
             object.value(QStringLiteral("value")).toDouble(),
             object.value(QStringLiteral("text")).toString(),
             object.value(QStringLiteral("fault")).toString(),
             QByteArray::fromHex(object.value(QStringLiteral("hex")).toString().toLatin1())});
    }
    return blocks;
}

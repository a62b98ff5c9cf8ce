#include "SimManifest.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

SimManifest::SimManifest(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QJsonValue blocks =
        QJsonDocument::fromJson(file.readAll()).object().value(QStringLiteral("blocks"));
    for (const QJsonValue &entry : blocks.toArray()) {
        const QJsonObject object = entry.toObject();
        ManifestBlock block;
        block.t = object.value(QStringLiteral("t")).toDouble();
        block.offset = object.value(QStringLiteral("offset")).toInteger();
        block.pair = object.value(QStringLiteral("pair")).toInteger();
        const QString type = object.value(QStringLiteral("type")).toString();
        block.type = type.size() == 1 ? type.front() : QChar();
        block.value = object.value(QStringLiteral("value")).toDouble();
        block.text = object.value(QStringLiteral("text")).toString();
        block.fault = object.value(QStringLiteral("fault")).toString();
        block.bytes =
            QByteArray::fromHex(object.value(QStringLiteral("hex")).toString().toLatin1());
        m_blocks.append(block);
    }
    m_valid = !m_blocks.isEmpty();
}

qint64 SimManifest::streamLength() const
{
    qint64 length = 0;
    for (const ManifestBlock &block : m_blocks)
        length = std::max(length, block.end());
    return length;
}

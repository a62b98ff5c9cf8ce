#include "SimManifest.h"

#include "chart/SampleStore.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

#include <bit>

QList<ManifestBlock> readManifest(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<ManifestBlock> blocks;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    for (const QJsonValue &entry : document.object().value("blocks").toArray()) {
        const QJsonObject object = entry.toObject();
        const QString type = object.value("type").toString();
        blocks.append({object.value("offset").toInteger(), object.value("pair").toInteger(),
                       type.size() == 1 ? type.front() : QChar(), object.value("value").toDouble(),
                       object.value("text").toString(),
                       QByteArray::fromHex(object.value("hex").toString().toLatin1())});
    }
    return blocks;
}

namespace {

quint64 pairKey(quint32 uvBits, quint32 conductivityBits)
{
    return quint64(uvBits) << 32 | conductivityBits;
}

} // namespace

QHash<quint64, qint64> pairsByBits(const QList<ManifestBlock> &blocks)
{
    QHash<quint64, qint64> pairs;
    quint32 uv = 0;
    for (const ManifestBlock &block : blocks) {
        if (!QByteArrayLiteral("UVC").contains(block.type.toLatin1()))
            continue;
        const quint32 bits = qFromBigEndian<quint32>(block.bytes.constData() + 2);
        if (block.type == 'C')
            pairs.insert(pairKey(uv, bits), block.pair);
        else
            uv = bits;
    }
    return pairs;
}

QList<qint64> pairsOf(const SampleStore &store, const QHash<quint64, qint64> &pairs)
{
    QList<qint64> out;
    for (qint64 i = 0; i < store.count(); ++i) {
        const SamplePair &sample = store.at(i);
        out.append(pairs.value(
            pairKey(std::bit_cast<quint32>(sample.uv), std::bit_cast<quint32>(sample.conductivity)),
            -1));
    }
    return out;
}

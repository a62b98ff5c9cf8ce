#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

/// One block of velquin-sim's manifest: where in the stream it went, the sample pair it belongs
/// to or precedes, what it carried and the bytes sent.
struct ManifestBlock
{
    qint64 offset = 0;
    qint64 pair = 0;
    QChar type;
    double value = 0.0;
    QString text;
    QByteArray bytes;

    [[nodiscard]] qint64 end() const { return offset + bytes.size(); }
};

/// The blocks of the manifest at `path`, none when it cannot be read.
QList<ManifestBlock> readManifest(const QString &path);

/// The stream's sample pairs by the bits of their two samples; a scenario never repeats a pair.
QHash<quint64, qint64> pairsByBits(const QList<ManifestBlock> &blocks);

class SampleStore;
/// Each sample of `store` named by the pair whose bits it carries, -1 when none does.
QList<qint64> pairsOf(const SampleStore &store, const QHash<quint64, qint64> &pairs);

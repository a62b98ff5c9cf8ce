#pragma once

#include <QByteArray>
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
    QString fault;
    QByteArray bytes;

    [[nodiscard]] qint64 end() const { return offset + bytes.size(); }
};

/// The blocks of the manifest at `path`, none when it cannot be read.
QList<ManifestBlock> readManifest(const QString &path);

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// One block as the simulator recorded it: when and where in the stream it went, the sample
/// pair it belongs to or precedes, what it carried and the bytes sent.
struct ManifestBlock
{
    double t = 0.0;
    qint64 offset = 0;
    qint64 pair = 0;
    QChar type;
    double value = 0.0;
    QString text;
    QString fault;
    QByteArray bytes;

    [[nodiscard]] qint64 end() const { return offset + bytes.size(); }
};

/// The manifest velquin-sim writes beside its stream.
class SimManifest
{
public:
    /// Reads `path`; `isValid()` tells whether it held a whole manifest.
    explicit SimManifest(const QString &path);

    [[nodiscard]] bool isValid() const { return m_valid; }
    [[nodiscard]] const QList<ManifestBlock> &blocks() const { return m_blocks; }
    /// Bytes sent in all.
    [[nodiscard]] qint64 streamLength() const;

private:
    QList<ManifestBlock> m_blocks;
    bool m_valid = false;
};

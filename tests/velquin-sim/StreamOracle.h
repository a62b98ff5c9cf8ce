#pragma once

#include "DecoderRig.h"
#include "SimStream.h"

#include <QStringList>

/// What the block format says a receiver makes of a simulated stream, worked out from the
/// manifest's blocks and bytes alone: the news of every block decoded while synchronised, and
/// the log entry of every fault, with its ring dump.
class StreamOracle
{
public:
    /// `errors` tells where a pass that met a wrong parameter ended: at the last whole block
    /// in the ring.
    StreamOracle(const SimStream &stream, const QList<DecoderRig::Reported> &errors);

    QStringList news;
    /// The expected ChartErr.log, date lines as "<date>".
    QString log;
    int syncs = 0;

private:
    [[nodiscard]] qint64 syncPosition(qint64 from) const;
    [[nodiscard]] QString dump(qint64 position) const;
    void addEntry(const QString &message, const QString &debugText, qint64 position);
    [[nodiscard]] qsizetype passEnd(qsizetype after, qint64 fed) const;

    const SimStream &m_stream;
};

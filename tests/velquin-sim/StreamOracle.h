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
    /// What the rig fed tells where a pass ended, at the last whole block in the ring: after a
    /// wrong parameter (`errors`), and when the link was dropped (`linkLosses`); bytes held
    /// back by the receive threshold before a silence are searched through after it.
    StreamOracle(const SimStream &stream, const QList<DecoderRig::Reported> &errors,
                 const QList<qint64> &linkLosses = {});

    QStringList news;
    /// The expected ChartErr.log, date lines as "<date>".
    QString log;
    int syncs = 0;

private:
    [[nodiscard]] qint64 syncPosition(qint64 from) const;
    [[nodiscard]] QString dump(qint64 position) const;
    void addEntry(const QString &message, const QString &debugText, qint64 position);
    /// The first block after `after` that the ring did not hold whole with `fed` bytes.
    [[nodiscard]] qsizetype passEnd(qsizetype after, qint64 fed) const;
    [[nodiscard]] qint64 offsetOf(qsizetype block) const;

    const SimStream &m_stream;
};

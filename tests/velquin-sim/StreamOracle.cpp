#include "StreamOracle.h"

using namespace VelquinSim;

namespace {

constexpr quint8 kSync = 0x96;

/// The news of a regular block, empty for one that brings none ("F").
QString newsOf(const SimBlock &block)
{
    switch (block.type) {
    case 'U':
    case 'V':
        return DecoderRig::uvNews(block.type, float(block.value));
    case 'C':
    case 'D':
        return DecoderRig::condNews(float(block.value));
    case 'E':
    case 'H':
    case 'P':
    case 'R':
        return QStringLiteral("%1 %2").arg(QChar(block.type)).arg(block.value);
    case 'M':
        return QStringLiteral("M ") + QString::fromLatin1(block.text);
    default:
        return {};
    }
}

QString parameterText(quint8 letter)
{
    switch (letter) {
    case 'E':
        return QStringLiteral("Sub HandelEventData; Event Byte Expected; Actual Byte Received:");
    case 'H':
        return QStringLiteral("Sub HandelHoldData; Hold Byte Expected; Actual Byte Received:");
    case 'P':
        return QStringLiteral("Sub HandelPenStatusData; Pen Byte Expected; Actual Byte Received:");
    default:
        return QStringLiteral("Sub HandelRunStatusData; Run Byte Expected; Actual Byte Received:");
    }
}

/// Bytes a block needs in the ring before the decoder takes it; "F" is taken after 3.
qsizetype need(const SimBlock &block)
{
    return QByteArrayLiteral("CDUV").contains(char(block.type)) ? 6
           : block.type == 'M'                                  ? block.bytes.size()
                                                                : 3;
}

} // namespace

StreamOracle::StreamOracle(const SimStream &stream, const QList<DecoderRig::Reported> &errors,
                           const QList<qint64> &linkLosses)
    : m_stream(stream)
{
    const QByteArray &bytes = stream.bytes;
    QList<qint64> lossOffsets;
    for (qint64 fed : linkLosses)
        lossOffsets.append(offsetOf(passEnd(-1, fed)));
    qint64 syncAt = syncPosition(0);
    syncs = syncAt < bytes.size() ? 1 : 0;
    qsizetype parameterErrors = 0;
    for (qsizetype i = 0; i < stream.blocks.size(); ++i) {
        const SimBlock &block = stream.blocks.at(i);
        while (!lossOffsets.isEmpty() && block.offset >= lossOffsets.first()) {
            const qint64 lost = lossOffsets.takeFirst();
            if (syncAt <= lost) {
                syncAt = syncPosition(lost);
                syncs += syncAt < bytes.size() ? 1 : 0;
            }
        }
        if (block.offset < syncAt)
            continue;
        const bool junk = block.fault.startsWith(QLatin1String("garbage")) ||
                          block.fault.startsWith(QLatin1String("unknown"));
        const bool parameter = block.fault.startsWith(QLatin1String("param"));
        qint64 searchFrom = -1;
        if (junk && quint8(bytes.at(block.offset)) != kSync) {
            addEntry(QStringLiteral("ERROR - Lost Sync."),
                     QStringLiteral("Sub PeekDataBlock; Sync Byte Expected; Actual Byte Received:"),
                     block.offset);
            searchFrom = block.offset;
        } else if (junk) {
            addEntry(QStringLiteral("ERROR - Unknown data type."),
                     QStringLiteral("Sub PeekDataBlock; Data Type Byte Expected; Actual Byte "
                                    "Received:"),
                     block.offset + 1);
            searchFrom = block.offset;
        } else if (parameter) {
            addEntry(QStringLiteral("ERROR - Unknown data parameter."), parameterText(block.type),
                     block.offset + 2);
            // The pass goes on with the blocks behind it; the next pass searches.
            const qint64 fed = errors.value(parameterErrors++, {0, bytes.size()}).fed;
            const qsizetype end = passEnd(i, fed);
            for (qsizetype j = i + 1; j < end; ++j) {
                if (const QString item = newsOf(stream.blocks.at(j)); !item.isEmpty())
                    news.append(item);
            }
            searchFrom = offsetOf(end);
            i = end - 1;
        } else if (const QString item = newsOf(block); !item.isEmpty()) {
            news.append(item);
        }
        if (searchFrom >= 0) {
            syncAt = syncPosition(searchFrom);
            syncs += syncAt < bytes.size() ? 1 : 0;
        }
    }
}

qint64 StreamOracle::syncPosition(qint64 from) const
{
    const QByteArray &bytes = m_stream.bytes;
    qint64 at = from;
    while (at + 7 <= bytes.size()) {
        if (quint8(bytes.at(at)) != kSync)
            at += 1;
        else if (bytes.at(at + 1) != 'U' && bytes.at(at + 1) != 'V')
            at += 2;
        else if (quint8(bytes.at(at + 6)) == kSync)
            return at;
        else
            at += 7;
    }
    return bytes.size();
}

QString StreamOracle::dump(qint64 position) const
{
    QString text = QStringLiteral("\r\n");
    for (qint64 at = position - 32; at < position; ++at)
        text += QStringLiteral(" %1").arg(at >= 0 ? quint8(m_stream.bytes.at(at)) : 0);
    return text;
}

void StreamOracle::addEntry(const QString &message, const QString &debugText, qint64 position)
{
    log += QStringLiteral("<date>\r\n") + message + debugText +
           QStringLiteral(" %1").arg(quint8(m_stream.bytes.at(position))) + dump(position) +
           QStringLiteral("\r\n");
}

qsizetype StreamOracle::passEnd(qsizetype after, qint64 fed) const
{
    for (qsizetype j = after + 1; j < m_stream.blocks.size(); ++j) {
        const SimBlock &block = m_stream.blocks.at(j);
        if (block.offset + need(block) > fed)
            return j;
    }
    return m_stream.blocks.size();
}

qint64 StreamOracle::offsetOf(qsizetype block) const
{
    return block < m_stream.blocks.size() ? m_stream.blocks.at(block).offset
                                          : m_stream.bytes.size();
}

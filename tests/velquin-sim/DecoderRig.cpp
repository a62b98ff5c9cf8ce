#include "DecoderRig.h"

#include "WireSchedule.h"

#include <QFile>

#include <bit>

using namespace VelquinSim;

namespace {

constexpr double kTickSeconds = 0.7;
constexpr qsizetype kThreshold = 50;
constexpr double kWatchdogSeconds = 10.0;

} // namespace

DecoderRig::DecoderRig()
    : m_handler(link, m_port, *this)
    , m_decoder(m_ring, link, *this, *this, *this, m_timer)
{
    QFile::remove(ErrorHandler::logPath());
}

void DecoderRig::play(const SimStream &stream)
{
    WireSchedule line;
    QByteArray held;
    double due = kTickSeconds;
    double lastWrite = 0;
    for (const SimBlock &block : stream.blocks) {
        for (const WireWrite &write : line.place(block)) {
            for (; due <= write.at; due += kTickSeconds)
                tick();
            if (write.at - lastWrite > kWatchdogSeconds) {
                link.FirstSyncFound = false;
                linkLosses.append(m_fed);
            }
            lastWrite = write.at;
            held += write.bytes;
            if (held.size() >= kThreshold) {
                m_ring.store(held);
                m_fed += held.size();
                held.clear();
                due = write.at + kTickSeconds;
            }
        }
    }
    m_ring.store(held);
    m_fed += held.size();
    for (int i = 0; i < 3; ++i)
        tick();
}

void DecoderRig::tick()
{
    if (m_ring.ByteCount > 2)
        m_decoder.ProcessComData();
}

QString DecoderRig::log() const
{
    QFile file(ErrorHandler::logPath());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromLocal8Bit(file.readAll()).split(QStringLiteral("\r\n"));
    // Every decoder entry runs over three lines: the date, the message with the start of
    // DebugText, and the ring dump.
    for (qsizetype i = 0; i < lines.size(); i += 3) {
        if (!lines.at(i).isEmpty() && !lines.at(i).startsWith(QLatin1Char(' ')))
            lines[i] = QStringLiteral("<date>");
    }
    return lines.join(QStringLiteral("\r\n"));
}

QString DecoderRig::uvNews(quint8 type, float value)
{
    return QStringLiteral("%1 %2")
        .arg(QChar(type))
        .arg(std::bit_cast<quint32>(value), 8, 16, QLatin1Char('0'));
}

QString DecoderRig::condNews(float value)
{
    return QStringLiteral("C %1").arg(std::bit_cast<quint32>(value), 8, 16, QLatin1Char('0'));
}

void DecoderRig::uvSample(quint8 type, float value)
{
    news.append(uvNews(type, value));
}

void DecoderRig::condSample(float value)
{
    news.append(condNews(value));
}

void DecoderRig::eventNews(quint8 value)
{
    news.append(QStringLiteral("E %1").arg(value));
}

void DecoderRig::holdNews(quint8 value)
{
    news.append(QStringLiteral("H %1").arg(value));
}

void DecoderRig::runStatusNews(quint8 value)
{
    news.append(QStringLiteral("R %1").arg(value));
}

void DecoderRig::penStatusNews(quint8 value)
{
    news.append(QStringLiteral("P %1").arg(value));
}

void DecoderRig::methodText(const QString &text)
{
    news.append(QStringLiteral("M ") + text);
}

void DecoderRig::HandelError(qint32 ErrorCode)
{
    errors.append({ErrorCode, m_fed});
    m_handler.HandelError(ErrorCode);
}

#include "acquisition/StreamDecoder.h"

#include "acquisition/DecoderHost.h"
#include "runtime/ErrorRoute.h"
#include "acquisition/InstrumentNews.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "runtime/Numbers.h"

#include <QTimer>

#include <bit>

namespace {

enum BlockType : std::uint8_t {
    kCond = 'C',
    kCondAlt = 'D',
    kEvent = 'E',
    kFBlock = 'F',
    kHold = 'H',
    kMethod = 'M',
    kPen = 'P',
    kRun = 'R',
    kUvIdle = 'U',
    kUvRun = 'V',
};

/// The instrument sends the most significant byte first.
float sampleFromBytes(const std::uint8_t (&bytes)[4])
{
    const std::uint32_t bits = (std::uint32_t(bytes[0]) << 24) | (std::uint32_t(bytes[1]) << 16) |
                               (std::uint32_t(bytes[2]) << 8) | std::uint32_t(bytes[3]);
    return std::bit_cast<float>(bits);
}

} // namespace

StreamDecoder::StreamDecoder(ReceiveRing &ring, LinkState &link, ErrorRoute &errors,
                             InstrumentNews &news, DecoderHost &host, QTimer &TimerProcess)
    : m_ring(ring)
    , m_link(link)
    , m_errors(errors)
    , m_news(news)
    , m_host(host)
    , TimerProcess(TimerProcess)
{}

void StreamDecoder::ProcessComData()
{
    m_link.DataBusy = true;
    TimerProcess.stop();
    m_ring.rebase();
    if (!m_link.FirstSyncFound) {
        FindFirstSync();
    } else {
        Int16 complete;
        do {
            PeekDataBlock(complete);
            if (complete) {
                std::uint8_t sync = 0;
                std::uint8_t type = 0;
                m_ring.TakeByte(sync);
                m_ring.TakeByte(type);
                switch (type) {
                case kCond:
                case kCondAlt:
                    HandelCondData();
                    break;
                case kEvent:
                    HandelEventData();
                    break;
                case kFBlock:
                    HandelFBlockData();
                    break;
                case kHold:
                    HandelHoldData();
                    break;
                case kMethod:
                    HandelMethodData();
                    break;
                case kPen:
                    HandelPenStatusData(0);
                    break;
                case kRun:
                    HandelRunStatusData();
                    break;
                case kUvIdle:
                case kUvRun:
                    HandelUvData(type);
                    break;
                default:
                    break;
                }
            }
            m_ring.rebase();
        } while (complete);
    }
    m_link.DataBusy = false;
    TimerProcess.start();
    m_host.passEnded();
}

void StreamDecoder::PeekDataBlock(Int16 &complete)
{
    complete = 0;
    if (m_ring.LookByteCount < 3)
        return;
    std::uint8_t byte = 0;
    m_ring.GetLastBytes(byte);
    if (byte != m_ring.SyncByte) {
        m_link.DebugText =
            QStringLiteral("Sub PeekDataBlock; Sync Byte Expected; Actual Byte Received:") +
            Str(byte);
        m_ring.AddDebugBytes(0, m_link.DebugText);
        m_errors.HandelError(-10);
        return;
    }
    m_ring.GetLastBytes(byte);
    switch (byte) {
    case kCond:
    case kCondAlt:
    case kUvIdle:
    case kUvRun:
        complete = m_ring.LookByteCount >= 4 ? -1 : 0;
        return;
    case kEvent:
    case kFBlock:
    case kHold:
    case kPen:
    case kRun:
        // Only one byte is asked of "F" too, though it carries four: its decoder may then run
        // the count below zero, and the next bytes bring it back.
        complete = m_ring.LookByteCount >= 1 ? -1 : 0;
        return;
    case kMethod: {
        const int remaining = m_ring.LookByteCount;
        for (int i = 0; i < remaining; ++i) {
            m_ring.GetLastBytes(byte);
            if (byte == m_ring.SyncByte) {
                complete = -1;
                return;
            }
        }
        return;
    }
    default:
        m_link.DebugText =
            QStringLiteral("Sub PeekDataBlock; Data Type Byte Expected; Actual Byte Received:") +
            Str(byte);
        m_ring.AddDebugBytes(0, m_link.DebugText);
        m_errors.HandelError(-12);
        return;
    }
}

void StreamDecoder::FindFirstSync()
{
    bool found = false;
    std::uint8_t byte = 0;
    while (m_ring.LookByteCount >= 7) {
        m_ring.GetLastBytes(byte);
        if (byte != m_ring.SyncByte) {
            m_ring.TakeByte(byte);
            continue;
        }
        m_ring.GetLastBytes(byte);
        if (byte != kUvIdle && byte != kUvRun) {
            m_ring.TakeByte(byte);
            m_ring.TakeByte(byte);
            continue;
        }
        for (int i = 0; i < 5; ++i)
            m_ring.GetLastBytes(byte);
        if (byte == m_ring.SyncByte) {
            found = true;
            break;
        }
        for (int i = 0; i < 7; ++i)
            m_ring.TakeByte(byte);
    }
    if (!found) {
        m_errors.HandelError(-13);
        return;
    }
    m_host.syncFound();
    m_link.FirstSyncFound = true;
}

float StreamDecoder::takeSample()
{
    std::uint8_t bytes[4];
    for (std::uint8_t &byte : bytes)
        m_ring.TakeByte(byte);
    return sampleFromBytes(bytes);
}

void StreamDecoder::parameterError(const char *text, std::uint8_t byte)
{
    m_link.DebugText = QLatin1String(text) + Str(byte);
    m_ring.AddDebugBytes(-1, m_link.DebugText);
    m_errors.HandelError(-11);
}

void StreamDecoder::HandelCondData()
{
    m_news.condSample(takeSample());
}

void StreamDecoder::HandelUvData(std::uint8_t &type)
{
    m_news.uvSample(type, takeSample());
}

void StreamDecoder::HandelFBlockData()
{
    takeSample();
    m_link.StatusBlocksSeen = true;
}

void StreamDecoder::HandelEventData()
{
    std::uint8_t value = 0;
    m_ring.TakeByte(value);
    if (value == 2 || value == 3 || value == 4 || value == 8)
        m_news.eventNews(value);
    else
        parameterError("Sub HandelEventData; Event Byte Expected; Actual Byte Received:", value);
}

void StreamDecoder::HandelHoldData()
{
    std::uint8_t value = 0;
    m_ring.TakeByte(value);
    if (value == 1 || value == 2)
        m_news.holdNews(value);
    else
        parameterError("Sub HandelHoldData; Hold Byte Expected; Actual Byte Received:", value);
}

void StreamDecoder::HandelPenStatusData(Int16 skip)
{
    std::uint8_t value = 0;
    m_ring.TakeByte(value);
    if (skip != 0)
        return;
    m_link.StatusBlocksSeen = true;
    if (value == 0 || value == 1)
        m_news.penStatusNews(value);
    else
        parameterError("Sub HandelPenStatusData; Pen Byte Expected; Actual Byte Received:", value);
}

void StreamDecoder::HandelRunStatusData()
{
    std::uint8_t value = 0;
    m_ring.TakeByte(value);
    m_link.StatusBlocksSeen = true;
    if (value <= 3)
        m_news.runStatusNews(value);
    else
        parameterError("Sub HandelRunStatusData; Run Byte Expected; Actual Byte Received:", value);
}

void StreamDecoder::HandelMethodData()
{
    QString text;
    std::uint8_t byte = 0;
    for (;;) {
        m_ring.TakeByte(byte);
        if (byte == m_ring.SyncByte)
            break;
        text += QChar(byte);
        if (m_ring.ByteCount <= 0)
            break;
    }
    m_news.methodText(text);
}

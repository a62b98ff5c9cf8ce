#pragma once

#include "runtime/Int16.h"

#include <cstdint>

class DecoderHost;
class ErrorRoute;
class InstrumentNews;
class QTimer;
class ReceiveRing;
struct LinkState;

/// The decoding loop and its block decoders: frames whole blocks in the ring, finds and
/// regains synchronisation, and hands each block's news on. Every fault is reported where it
/// is found, with a dump of the ring bytes before it.
class StreamDecoder
{
public:
    StreamDecoder(ReceiveRing &ring, LinkState &link, ErrorRoute &errors, InstrumentNews &news,
                  DecoderHost &host, QTimer &TimerProcess);

    /// One pass: drains every whole block in the ring, or searches for synchronisation.
    void ProcessComData();

    /// True if a whole well-formed block starts at the take position; consumes nothing.
    void PeekDataBlock(Int16 &complete);
    void FindFirstSync();

    void HandelCondData();
    void HandelUvData(std::uint8_t &type);
    void HandelFBlockData();
    void HandelEventData();
    void HandelHoldData();
    void HandelPenStatusData(Int16 skip);
    void HandelRunStatusData();
    void HandelMethodData();

private:
    float takeSample();
    void parameterError(const char *text, std::uint8_t byte);

    ReceiveRing &m_ring;
    LinkState &m_link;
    ErrorRoute &m_errors;
    InstrumentNews &m_news;
    DecoderHost &m_host;
    QTimer &TimerProcess;
};

#pragma once

#include "acquisition/ComReceiver.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/SerialControl.h"
#include "acquisition/StreamDecoder.h"

#include <QTimer>

class DecoderHost;
class ErrorRoute;
class InstrumentNews;

/// @brief The instrument link: the serial control, the receive ring, the receiver, the
/// decoder and the main loop's timer `TimerProcess`.
///
/// Bytes enter through the serial control's receive event and wait in the ring; every 700 ms
/// without a receive event the timer's tick decodes what the ring holds. Decoded news goes to
/// `InstrumentNews`, failures to `ErrorRoute`, a found synchronisation and the end of each pass
/// to `DecoderHost`. The link's flags are read by all; the few changes others may make to them
/// are the operations below.
class Link
{
public:
    Link(ErrorRoute &errors, InstrumentNews &news, DecoderHost &host);
    Link(const Link &) = delete;
    Link &operator=(const Link &) = delete;

    SerialControl ComPort;

    [[nodiscard]] const LinkState &state() const { return m_state; }
    /// The ring the receive event fills; tests and benchmarks fill it the same way.
    [[nodiscard]] ReceiveRing &ring() { return m_ring; }
    [[nodiscard]] const QTimer &TimerProcess() const { return m_timerProcess; }

    /// The main loop's tick: decodes when the ring holds more than two bytes.
    void TimerProcess_Timer();

    /// The decoder must search for synchronisation again (a decoding error, a lost link).
    void loseSync();
    /// The instrument on a newly chosen port has yet to show that it sends status blocks.
    void forgetStatusBlocks();
    /// While the link-lost handling works, a receive event leaves the ring alone.
    void setDataBusy(bool busy);
    /// The watchdog has looked; the next event of the serial control sets the flag again.
    void clearComDataSeen();

private:
    LinkState m_state;
    ReceiveRing m_ring;
    QTimer m_timerProcess;
    ComReceiver m_receiver;
    StreamDecoder m_decoder;
};

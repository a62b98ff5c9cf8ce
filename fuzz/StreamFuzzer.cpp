// libFuzzer target for the instrument stream: any bytes, in bursts of any size a tick of the
// process timer could find, pass through the ring and the decoders without a crash. The error
// route asks for a new synchronisation after a decoding error, as the program's does.
#include "acquisition/DecoderHost.h"
#include "acquisition/InstrumentNews.h"
#include "acquisition/Link.h"
#include "runtime/ErrorRoute.h"

#include <QCoreApplication>

#include <cstdint>
#include <cstdlib>

namespace {

class Sink : public ErrorRoute, public InstrumentNews, public DecoderHost
{
public:
    void HandelError(qint32 ErrorCode) override
    {
        if (ErrorCode >= -12 && ErrorCode <= -10)
            link->loseSync();
    }
    void uvSample(quint8, float) override {}
    void condSample(float) override {}
    void eventNews(quint8) override {}
    void holdNews(quint8) override {}
    void runStatusNews(quint8) override {}
    void penStatusNews(quint8) override {}
    // A method text is cut from the ring, so it can never be longer than the ring.
    void methodText(const QString &text) override
    {
        if (text.size() > ReceiveRing::kSize)
            std::abort();
    }
    void syncFound() override {}
    void passEnded() override {}

    Link *link = nullptr;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    // The first byte sets the burst: 1 to 1021 bytes, about what 700 ms bring at 9600 baud.
    const std::size_t burst = 1 + std::size_t(data[0]) * 4;
    Sink sink;
    Link link(sink, sink, sink);
    sink.link = &link;
    for (std::size_t at = 1; at < size; at += burst) {
        const std::size_t count = std::min(burst, size - at);
        link.ring().store(QByteArray(reinterpret_cast<const char *>(data + at), qsizetype(count)));
        link.TimerProcess_Timer();
    }
    // What is left in the ring is decoded by the ticks that follow.
    for (int tick = 0; tick < 4; ++tick)
        link.TimerProcess_Timer();
    const int held = link.ring().ByteCount;
    if (held > ReceiveRing::kSize)
        std::abort();
    return 0;
}

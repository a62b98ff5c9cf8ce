// Decoding throughput of a long valid stream through the ring and the decoders, fed in the
// bursts a receive event brings. The line delivers 960 bytes a second; the headroom is what
// keeps a modal dialog or a redraw from letting the stream fall behind.
#include "acquisition/DecoderHost.h"
#include "runtime/ErrorRoute.h"
#include "acquisition/InstrumentNews.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/StreamDecoder.h"

#include <QCoreApplication>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <bit>
#include <cmath>

namespace {

void appendSample(QByteArray &stream, char type, float value)
{
    const auto bits = std::bit_cast<std::uint32_t>(value);
    stream += char(0x96);
    stream += type;
    for (int shift = 24; shift >= 0; shift -= 8)
        stream += char((bits >> shift) & 0xFF);
}

/// An hour of a run: pairs at 5 a second, a numbered event a minute, a status block now and
/// then, and a method text at the end.
QByteArray hourOfStream()
{
    QByteArray stream;
    const int pairs = 3600 * 5;
    for (int i = 0; i < pairs; ++i) {
        const float t = float(i) / 300.0f;
        appendSample(stream, 'V', 0.05f + 0.8f * std::exp(-std::pow((t - 30.0f) / 2.0f, 2.0f)));
        appendSample(stream, 'C', 15.0f + t);
        if (i % 300 == 150)
            stream += QByteArray("\x96"
                                 "E\x02",
                                 3);
        if (i % 50 == 25)
            stream += QByteArray("\x96R\x01", 3);
    }
    stream += QByteArray("\x96MStep  Volume  Buffer\r\n1     5.0     A\r\n") + char(0x96);
    return stream;
}

class Sink : public ErrorRoute, public InstrumentNews, public DecoderHost
{
public:
    void HandelError(qint32) override { ++errors; }
    void uvSample(quint8, float value) override { sum += value; }
    void condSample(float value) override { sum += value; }
    void eventNews(quint8) override {}
    void holdNews(quint8) override {}
    void runStatusNews(quint8) override {}
    void penStatusNews(quint8) override {}
    void methodText(const QString &text) override { sum += float(text.size()); }
    void syncFound() override {}
    void passEnded() override {}
    double sum = 0;
    int errors = 0;
};

void BM_DecodeStream(benchmark::State &state)
{
    const QByteArray stream = hourOfStream();
    const qsizetype burst = state.range(0);
    Sink sink;
    for (auto _ : state) {
        LinkState link;
        ReceiveRing ring;
        QTimer timer;
        StreamDecoder decoder(ring, link, sink, sink, sink, timer);
        for (qsizetype at = 0; at < stream.size(); at += burst) {
            ring.store(stream.mid(at, burst));
            // The pass that finds synchronisation decodes nothing yet; the next tick does.
            if (ring.ByteCount > 2 && !link.FirstSyncFound)
                decoder.ProcessComData();
            if (ring.ByteCount > 2)
                decoder.ProcessComData();
        }
        benchmark::DoNotOptimize(sink.sum);
    }
    if (sink.errors != 0)
        state.SkipWithError("the stream did not decode cleanly");
    state.SetBytesProcessed(int64_t(state.iterations()) * stream.size());
}

} // namespace

// 50 bytes is what one receive event brings; 8000 is a backlog after a long modal dialog.
BENCHMARK(BM_DecodeStream)->Arg(50)->Arg(700)->Arg(8000)->Unit(benchmark::kMillisecond);
int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv); // the decoder restarts the main loop's timer
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

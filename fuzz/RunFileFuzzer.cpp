// libFuzzer target for the run file reader: any bytes either fail to decode or decode to a run
// that encodes and decodes back to the same bytes.
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"

#include <QByteArrayView>

#include <cstdint>
#include <cstdlib>

namespace {

QByteArray encoded(const RunData &run, RunFileCodec::Kind kind)
{
    const RunFileCodec::Source source{run.store,
                                      0,
                                      run.store.count(),
                                      run.annotations.eventMarks(),
                                      run.annotations.methodTexts(),
                                      run.annotations.notes(),
                                      run.axes,
                                      run.title};
    return RunFileCodec::encode(source, kind);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    for (const auto kind : {RunFileCodec::Kind::Data, RunFileCodec::Kind::Log}) {
        const auto run = RunFileCodec::decode(bytes, kind);
        if (!run)
            continue;
        const QByteArray first = encoded(*run, kind);
        const auto again = RunFileCodec::decode(first, kind);
        if (!again || encoded(*again, kind) != first)
            std::abort();
    }
    return 0;
}

// libFuzzer target for the run file readers: any bytes either fail to decode or decode to a run
// that encodes and decodes back to the same bytes, and the reader of files on disk, which reads
// chunk by chunk, answers exactly as the decoder of bytes in memory.
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"
#include "chart/RunFileReader.h"

#include <QByteArrayView>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

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

QString fileHolding(QByteArrayView bytes)
{
    // In memory where there is such a place: the disk is not under test.
    static QTemporaryDir directory(QDir(QStringLiteral("/dev/shm")).exists()
                                       ? QStringLiteral("/dev/shm/runfile-fuzz-XXXXXX")
                                       : QDir::tempPath() + QStringLiteral("/runfile-fuzz-XXXXXX"));
    const QString fileName = directory.filePath(QStringLiteral("input"));
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(bytes.data(), bytes.size()) != bytes.size())
        std::abort();
    return fileName;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto fromFile = RunFileReader::read(fileHolding(bytes));
    bool decoded = false;
    for (const auto kind : {RunFileCodec::Kind::Data, RunFileCodec::Kind::Log}) {
        const auto run = RunFileCodec::decode(bytes, kind);
        if (!run)
            continue;
        decoded = true;
        const QByteArray first = encoded(*run, kind);
        const auto again = RunFileCodec::decode(first, kind);
        if (!again || encoded(*again, kind) != first || !fromFile ||
            encoded(*fromFile, kind) != first)
            std::abort();
    }
    if (fromFile && !decoded)
        std::abort();
    return 0;
}

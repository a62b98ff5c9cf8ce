// libFuzzer target for the running log reader: the input becomes a log directory of one or two
// data files (a little-endian length in the first four bytes says where the second begins; 0
// for one file), which must read as good, missing or damaged, never crash or run away; a log
// read as good saves as a log file that reads back as the same run.
#include "chart/LogFormat.h"
#include "chart/LogReader.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <cstdint>
#include <cstdlib>

namespace {

void writeFile(const QString &fileName, QByteArrayView bytes)
{
    QFile::remove(fileName);
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), bytes.size()) != bytes.size())
        std::abort();
}

QByteArray encoded(const RunData &run)
{
    const RunFileCodec::Source source{run.store,
                                      0,
                                      run.store.count(),
                                      run.annotations.eventMarks(),
                                      run.annotations.methodTexts(),
                                      run.annotations.notes(),
                                      run.axes,
                                      run.title};
    return RunFileCodec::encode(source, RunFileCodec::Kind::Log);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static QTemporaryDir directory;
    if (size < 4)
        return 0;
    const QByteArrayView bytes(reinterpret_cast<const char *>(data + 4), qsizetype(size - 4));
    const quint32 first = qFromLittleEndian<quint32>(data);
    const qsizetype split = std::min<qsizetype>(bytes.size(), qsizetype(first));
    const QDir dir(directory.path());
    const bool two = first != 0;
    writeFile(dir.filePath(LogFormat::fileName(1)), two ? bytes.first(split) : bytes);
    if (two)
        writeFile(dir.filePath(LogFormat::fileName(2)), bytes.sliced(split));
    else
        QFile::remove(dir.filePath(LogFormat::fileName(2)));
    RunData run;
    const LogReader::Status status = LogReader::read(directory.path(), run);
    const bool usable = status == LogReader::Status::Good || status == LogReader::Status::Salvaged;
    // The check before a save must promise exactly what the save can keep.
    if (LogReader::hasLog(directory.path()) != usable)
        std::abort();
    if (usable) {
        const QByteArray saved = encoded(run);
        const auto again = RunFileCodec::decode(saved, RunFileCodec::Kind::Log);
        if (!again || encoded(*again) != saved)
            std::abort();
    }
    return 0;
}

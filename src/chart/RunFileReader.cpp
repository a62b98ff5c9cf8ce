#include "chart/RunFileReader.h"

#include "chart/RegularFile.h"
#include "chart/RunFileCodec.h"

#include <new>

namespace {

using Failure = RunFileReader::Failure;

Failure failureOf(RegularFile::Status status)
{
    switch (status) {
    case RegularFile::Status::Missing:
        return Failure::Missing;
    case RegularFile::Status::NotAFile:
        return Failure::NotAFile;
    default:
        return Failure::Unreadable;
    }
}

std::optional<RunData> readOpen(RegularFile &file, Failure &failure)
{
    const auto header = file.read(RunFileCodec::kHeaderSize);
    if (!header || !RunFileCodec::kindOf(*header)) {
        failure = Failure::NotARunFile;
        return std::nullopt;
    }
    failure = Failure::Damaged;
    RunFileCodec::Decoder decoder;
    while (true) {
        auto chunk = file.read(RunFileCodec::kChunkHead);
        if (!chunk)
            return std::nullopt;
        const quint64 size = RunFileCodec::chunkSize(*chunk);
        const auto rest = size - RunFileCodec::kChunkHead <= quint64(file.remaining())
                              ? file.read(qint64(size - RunFileCodec::kChunkHead))
                              : std::nullopt;
        if (!rest)
            return std::nullopt;
        chunk->append(*rest);
        switch (decoder.take(*chunk)) {
        case RunFileCodec::Decoder::Step::More:
            break;
        case RunFileCodec::Decoder::Step::End:
            if (file.remaining() != 0)
                return std::nullopt;
            failure = Failure::None;
            return std::move(decoder.run());
        case RunFileCodec::Decoder::Step::Bad:
            return std::nullopt;
        }
    }
}

} // namespace

std::optional<RunData> RunFileReader::read(const QString &fileName, Failure *failure)
{
    Failure why = Failure::None;
    std::optional<RunData> run;
    try {
        RegularFile file(fileName);
        if (file.isOpen())
            run = readOpen(file, why);
        else
            why = failureOf(file.status());
    } catch (const std::bad_alloc &) {
        run.reset();
        why = Failure::TooLarge;
    }
    if (failure)
        *failure = why;
    return run;
}

QString RunFileReader::describe(Failure failure)
{
    switch (failure) {
    case Failure::None:
        return QString();
    case Failure::Missing:
        return QStringLiteral("no such file");
    case Failure::NotAFile:
        return QStringLiteral("not a regular file");
    case Failure::Unreadable:
        return QStringLiteral("cannot be read");
    case Failure::NotARunFile:
        return QStringLiteral("not a run file");
    case Failure::Damaged:
        return QStringLiteral("damaged or cut short");
    case Failure::TooLarge:
        return QStringLiteral("too large for the memory there is");
    }
    return QString();
}

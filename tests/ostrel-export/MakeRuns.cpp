// Writes the runs that the install and AIA checks read, in DIRECTORY: run.chd and run.chl with
// marks, notes and method texts, bare.chd without marks, and run.pairs, the samples of run.chd
// as little-endian 32-bit floats, UV then conductivity of each pair.
#include "RunContent.h"
#include "chart/DurableFile.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"

#include <QtEndian>

namespace {

QByteArray encode(const RunData &run, RunFileCodec::Kind kind)
{
    const auto &notes = run.annotations;
    return RunFileCodec::encode({run.store, 0, run.store.count(), notes.eventMarks(),
                                 notes.methodTexts(), notes.notes(), run.axes, run.title},
                                kind);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    const QString directory = QString::fromLocal8Bit(argv[1]) + QLatin1Char('/');
    RunData run;
    run.title = QStringLiteral("Run 7 µ");
    run.annotations.setNotes(QStringLiteral("Column A\r\nbuffer pH 7"));
    RunContent::grow(run, {}, {3000, 6, 2});
    RunData bare;
    RunContent::grow(bare, {}, {10, 0, 0});
    QByteArray pairs;
    for (qint64 i = 0; i < run.store.count(); ++i) {
        for (float value : {run.store.at(i).uv, run.store.at(i).conductivity}) {
            const float little = qToLittleEndian(value);
            pairs.append(reinterpret_cast<const char *>(&little), sizeof little);
        }
    }
    const bool written =
        DurableFile::write(directory + "run.chd", encode(run, RunFileCodec::Kind::Data)) &&
        DurableFile::write(directory + "run.chl", encode(run, RunFileCodec::Kind::Log)) &&
        DurableFile::write(directory + "bare.chd", encode(bare, RunFileCodec::Kind::Data)) &&
        DurableFile::write(directory + "run.pairs", pairs);
    return written ? 0 : 1;
}

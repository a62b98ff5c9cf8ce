#include "HostileFiles.h"

#include "chart/Crc.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"

#include <QFile>
#include <QtEndian>

#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Kind = RunFileCodec::Kind;

QByteArray encoded(Kind kind)
{
    RunData run;
    RunContent::grow(run, {}, HostileFiles::kRun);
    run.annotations.setNotes("notes");
    return RunFileCodec::encode({run.store, 0, run.store.count(), run.annotations.eventMarks(),
                                 run.annotations.methodTexts(), run.annotations.notes(), run.axes,
                                 run.title},
                                kind);
}

const QByteArray &bytesOf(Kind kind)
{
    static const QByteArray data = encoded(Kind::Data);
    static const QByteArray log = encoded(Kind::Log);
    return kind == Kind::Data ? data : log;
}

QStringList written(const QDir &dir, const QString &name, const QByteArray &bytes)
{
    QFile file(dir.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    return {file.fileName()};
}

const std::vector<HostileFiles::Row> kRows{
    {"DevZero", false, [](const QDir &) { return QStringList{"/dev/zero"}; }},
    {"SparseFileOf200GB", false,
     [](const QDir &dir) {
         QFile file(dir.filePath("disk image.chd"));
         EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(qint64(200) << 30));
         return QStringList{file.fileName()};
     }},
    {"NamedPipe", false,
     [](const QDir &dir) {
         const QString pipe = dir.filePath("pipe.chd");
         EXPECT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
         return QStringList{pipe};
     }},
    {"Directory", false,
     [](const QDir &dir) {
         EXPECT_TRUE(dir.mkdir("folder.chd"));
         return QStringList{dir.filePath("folder.chd")};
     }},
    {"NoReadPermission", false,
     [](const QDir &dir) {
         // Root reads any file: there the row cannot be made.
         if (::geteuid() == 0)
             return QStringList{};
         const QStringList files = written(dir, "locked.chd", bytesOf(Kind::Data));
         EXPECT_EQ(::chmod(QFile::encodeName(files[0]).constData(), 0), 0);
         return files;
     }},
    {"Missing", false, [](const QDir &dir) { return QStringList{dir.filePath("missing.chd")}; }},
    {"Empty", false, [](const QDir &dir) { return written(dir, "empty.chd", {}); }},
    {"TextUnderARunName", false,
     [](const QDir &dir) { return written(dir, "notes.v2.txt.chd", "Time\tUV\r\n0.0\t0.1\r\n"); }},
    {"CutAtEachChunkBoundary", false,
     [](const QDir &dir) {
         const QByteArray &data = bytesOf(Kind::Data);
         QStringList files;
         for (qsizetype at = RunFileCodec::kHeaderSize; at < data.size();
              at += qsizetype(RunFileCodec::chunkSize(QByteArrayView(data).sliced(at))))
             files += written(dir, QStringLiteral("cut at %1.chd").arg(at), data.left(at));
         return files;
     }},
    {"ChunkLongerThanTheFile", false,
     [](const QDir &dir) {
         QByteArray bytes = bytesOf(Kind::Data);
         qToLittleEndian(quint32(bytes.size()), bytes.data() + RunFileCodec::kHeaderSize + 4);
         return written(dir, "longer.chd", bytes);
     }},
    {"BitFlippedInTheSamples", false,
     [](const QDir &dir) {
         QByteArray bytes = bytesOf(Kind::Data);
         bytes[bytes.size() / 2] = char(bytes[bytes.size() / 2] ^ 0x10);
         return written(dir, "flipped.chd", bytes);
     }},
    {"NewerVersion", false,
     [](const QDir &dir) {
         QByteArray bytes = bytesOf(Kind::Data);
         bytes[8] = 2;
         return written(dir, "newer.chd", bytes);
     }},
    {"AxisThatIsNoNumber", false,
     [](const QDir &dir) {
         // The axes chunk follows the header: tag, length, six floats, CRC.
         QByteArray bytes = bytesOf(Kind::Data);
         qToLittleEndian(std::numeric_limits<float>::infinity(), bytes.data() + 40);
         qToLittleEndian(crcOf(QByteArrayView(bytes).sliced(12, 32)), bytes.data() + 44);
         return written(dir, "axes.chd", bytes);
     }},
    {"GarbageAfterTheEnd", false,
     [](const QDir &dir) {
         return written(dir, "tail.chd", bytesOf(Kind::Data) + QByteArray(5, 0));
     }},
    {"RunsWhateverTheirName", true,
     [](const QDir &dir) {
         QStringList files;
         for (const char *name : {"log.chd", "Lab 3.5", "run.log"})
             files += written(dir, QString::fromUtf8(name), bytesOf(Kind::Log));
         for (const char *name : {"data.chl", "run 2.5.1.chd"})
             files += written(dir, QString::fromUtf8(name), bytesOf(Kind::Data));
         return files;
     }},
};

} // namespace

const std::vector<HostileFiles::Row> &HostileFiles::rows()
{
    return kRows;
}

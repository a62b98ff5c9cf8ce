#include "RunContent.h"
#include "ScratchRoot.h"
#include "chart/Crc.h"
#include "chart/Quillchart.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

namespace {

constexpr int kDataFileCases = 12000;
constexpr int kLogCases = 8000;

QByteArray contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &fileName, const QByteArray &bytes)
{
    QFile::remove(fileName);
    QFile file(fileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// Recomputes every checksum the framing still reaches, so that a mutation gets past the CRC
/// to the parser behind it. `headerSize` bytes precede the frames; `lengthAt` is where a
/// frame's length stands and `headSize` how many bytes come before its payload.
void fixChecksums(QByteArray &bytes, qsizetype headerSize, qsizetype lengthAt, qsizetype headSize)
{
    for (qsizetype at = headerSize; at + headSize <= bytes.size();) {
        const quint32 length = qFromLittleEndian<quint32>(bytes.constData() + at + lengthAt);
        if (quint64(length) + 4 > quint64(bytes.size() - at - headSize))
            return;
        const qsizetype crcAt = at + headSize + qsizetype(length);
        qToLittleEndian(crcOf(QByteArrayView(bytes).sliced(at, crcAt - at)), bytes.data() + crcAt);
        at = crcAt + 4;
    }
}

QByteArray mutated(const QByteArray &seed, QRandomGenerator &random)
{
    QByteArray bytes = seed;
    const int steps = 1 + int(random.bounded(3));
    for (int step = 0; step < steps && !bytes.isEmpty(); ++step) {
        const auto at = qsizetype(random.bounded(quint32(bytes.size())));
        switch (random.bounded(7)) {
        case 0:
            bytes[at] = char(bytes[at] ^ (1 << random.bounded(8)));
            break;
        case 1:
            bytes[at] = char(random.bounded(256));
            break;
        case 2: {
            static const quint32 values[] = {0,          1,          2,          7,     0x7fffffff,
                                             0x80000000, 0xffffffff, 0xfffffff0, 65536, 65537};
            if (at + 4 <= bytes.size())
                qToLittleEndian(values[random.bounded(10)], bytes.data() + at);
            break;
        }
        case 3:
            bytes.truncate(at);
            break;
        case 4:
            bytes.insert(at, QByteArray(1 + int(random.bounded(16)), char(random.bounded(256))));
            break;
        case 5:
            bytes.remove(at, 1 + qsizetype(random.bounded(16)));
            break;
        default:
            bytes.insert(at, bytes.mid(qsizetype(random.bounded(quint32(bytes.size()))), 24));
            break;
        }
    }
    return bytes;
}

} // namespace

TEST(FileFuzz, MutatedDataFilesFailCleanlyOrLoadAndSaveBackIdentically)
{
    QTemporaryDir dir(scratchRoot() + QStringLiteral("/ostrel-fuzz-XXXXXX"));
    std::vector<QByteArray> seeds;
    for (const RunContent::Counts &counts : {RunContent::Counts{}, RunContent::Counts{40, 3, 2}}) {
        Quillchart chart;
        RunContent::grow(chart, {}, counts);
        chart.SetNotes(QStringLiteral("n\r\n"));
        chart.setChartTitle(QStringLiteral("t"));
        ASSERT_TRUE(chart.SaveDataFile(dir.filePath(QStringLiteral("seed.chd"))));
        seeds.push_back(contentOf(dir.filePath(QStringLiteral("seed.chd"))));
    }
    QRandomGenerator random(1);
    Quillchart chart;
    QSignalSpy errors(&chart, &Quillchart::ChartError);
    int loaded = 0;
    const QString input = dir.filePath(QStringLiteral("in.chd"));
    const QString first = dir.filePath(QStringLiteral("first.chd"));
    const QString second = dir.filePath(QStringLiteral("second.chd"));
    for (int n = 0; n < kDataFileCases; ++n) {
        QByteArray bytes = mutated(seeds[n % seeds.size()], random);
        if (n % 10 != 0)
            fixChecksums(bytes, 12, 4, 8);
        writeFile(input, bytes);
        errors.clear();
        if (!chart.LoadDataFile(input)) {
            ASSERT_EQ(errors.size(), 1) << n;
            ASSERT_EQ(errors[0][1].value<qint16>(), -18) << n;
            continue;
        }
        ++loaded;
        ASSERT_TRUE(chart.SaveDataFile(first)) << n;
        ASSERT_TRUE(chart.LoadDataFile(first)) << n;
        ASSERT_TRUE(chart.SaveDataFile(second)) << n;
        ASSERT_EQ(contentOf(first), contentOf(second)) << n;
    }
    // Mutations must reach the parser: some files survive them, many do not.
    EXPECT_GT(loaded, kDataFileCases / 50);
    EXPECT_LT(loaded, kDataFileCases / 2);
}

TEST(FileFuzz, MutatedLogsAreCorruptedOrSaveAFileThatLoads)
{
    QTemporaryDir dir(scratchRoot() + QStringLiteral("/ostrel-fuzz-XXXXXX"));
    const QString seedDir = dir.filePath(QStringLiteral("seed"));
    const QString logDir = dir.filePath(QStringLiteral("log"));
    ASSERT_TRUE(QDir().mkpath(seedDir));
    ASSERT_TRUE(QDir().mkpath(logDir));
    Quillchart logChart;
    RunContent::Counts counts;
    for (int tick = 1; tick <= 4; ++tick) {
        const RunContent::Counts next{counts.samples + 30, counts.marks + 1,
                                      counts.methodTexts + 1};
        RunContent::grow(logChart, counts, next);
        counts = next;
        ASSERT_EQ(logChart.WriteLog(seedDir, 1, 20000, 0.005), 0);
    }
    const QStringList names = QDir(seedDir).entryList(QDir::Files, QDir::Name);
    ASSERT_EQ(names.size(), 2);
    std::vector<QByteArray> seeds;
    for (const QString &name : names)
        seeds.push_back(contentOf(QDir(seedDir).filePath(name)));

    QRandomGenerator random(2);
    Quillchart scratch;
    Quillchart chart;
    QSignalSpy errors(&scratch, &Quillchart::ChartError);
    int saved = 0;
    const QString chl = dir.filePath(QStringLiteral("saved.chl"));
    const QString chd = dir.filePath(QStringLiteral("saved.chd"));
    for (int n = 0; n < kLogCases; ++n) {
        const std::size_t victim = random.bounded(quint32(seeds.size()));
        for (std::size_t f = 0; f < seeds.size(); ++f) {
            QByteArray bytes = seeds[f];
            if (f == victim) {
                bytes = mutated(bytes, random);
                if (n % 10 != 0)
                    fixChecksums(bytes, 16, 8, 12);
            }
            writeFile(QDir(logDir).filePath(names[qsizetype(f)]), bytes);
        }
        errors.clear();
        const qint16 status = scratch.SaveLogAs(logDir, 0, chl);
        if (status != 0) {
            ASSERT_EQ(status, -21) << n;
            ASSERT_EQ(errors.size(), 1) << n;
            continue;
        }
        ++saved;
        ASSERT_TRUE(chart.LoadDataFile(chl)) << n;
        ASSERT_TRUE(chart.SaveDataFile(chd)) << n;
        // The same run, told apart from the log file by its magic alone.
        ASSERT_EQ(contentOf(chd).mid(8), contentOf(chl).mid(8)) << n;
    }
    EXPECT_GT(saved, kLogCases / 50);
    EXPECT_LT(saved, kLogCases - kLogCases / 10);
}

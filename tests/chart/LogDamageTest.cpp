#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/LogReader.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>
#include <gtest/gtest.h>

namespace {

struct Record
{
    QString file;
    qsizetype begin;
    qsizetype end;
};

/// A log of three files with several records each, whose last record is small, and the counts
/// each write acknowledged.
class LogDamage : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Quillchart logChart;
        RunContent::Counts counts;
        for (int tick = 0; tick < 12; ++tick) {
            const RunContent::Counts next{counts.samples + (tick == 11 ? 20 : 90 + tick),
                                          counts.marks + 1, counts.methodTexts + tick % 2};
            RunContent::grow(logChart, counts, next);
            counts = next;
            // 0.02 hours are 360 samples a file.
            ASSERT_EQ(logChart.WriteLog(m_dir.path(), 1, 20000, 0.02), 0);
            m_acks.push_back(counts);
        }
        const QDir dir(m_dir.path());
        for (const QString &name : dir.entryList(QDir::Files, QDir::Name)) {
            const QByteArray bytes = RunContent::bytesOf(dir.filePath(name));
            m_files.append(dir.filePath(name));
            for (qsizetype at = 16; at < bytes.size();) {
                const qsizetype end = at + 16 + qFromLittleEndian<quint32>(bytes.data() + at + 8);
                m_records.push_back(Record{dir.filePath(name), at, end});
                at = end;
            }
        }
        ASSERT_EQ(m_files.size(), 3);
        ASSERT_EQ(m_records.size(), m_acks.size());
    }

    static void write(const QString &fileName, const QByteArray &bytes)
    {
        // A fresh file: rewriting one in place makes ext4 flush it on close, which is slow.
        QFile::remove(fileName);
        QFile file(fileName);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    /// Reads the log with `fileName` holding `bytes`, then puts the file back.
    LogReader::Status readWith(const QString &fileName, const QByteArray &bytes, RunData &run)
    {
        const QByteArray original = RunContent::bytesOf(fileName);
        write(fileName, bytes);
        const LogReader::Status status = LogReader::read(m_dir.path(), run);
        write(fileName, original);
        return status;
    }

    QTemporaryDir m_dir{testHome() + QStringLiteral("/damage-XXXXXX")};
    std::vector<RunContent::Counts> m_acks;
    QStringList m_files;
    std::vector<Record> m_records;
};

} // namespace

TEST_F(LogDamage, AFlippedBitLosesOnlyItsRecordsStretchAndTheCheckAgrees)
{
    for (std::size_t r = 0; r + 1 < m_records.size(); ++r) {
        const Record &record = m_records[r];
        const QByteArray bytes = RunContent::bytesOf(record.file);
        const qsizetype size = record.end - record.begin;
        const RunContent::Counts before = r == 0 ? RunContent::Counts{} : m_acks[r - 1];
        for (qsizetype at : {qsizetype(0), qsizetype(5), qsizetype(9), qsizetype(12), size / 2,
                             size - 5, size - 1}) {
            QByteArray damaged = bytes;
            damaged[record.begin + at] = char(damaged[record.begin + at] ^ (1 << (at % 8)));
            RunData run;
            ASSERT_EQ(readWith(record.file, damaged, run), LogReader::Status::Salvaged)
                << "record " << r << " byte " << at;
            ASSERT_EQ(RunContent::differences(run, m_acks.back(), before, m_acks[r]), QString())
                << "record " << r << " byte " << at;
        }
    }
    // A damaged file header loses nothing: the records behind it are whole.
    for (const QString &file : m_files) {
        QByteArray damaged = RunContent::bytesOf(file);
        damaged[13] = char(damaged[13] ^ 1);
        RunData run;
        EXPECT_EQ(readWith(file, damaged, run), LogReader::Status::Good) << file.toStdString();
        EXPECT_EQ(RunContent::differences(run, m_acks.back()), QString());
    }
}

TEST_F(LogDamage, AMissingFileLosesItsStretchAndALogWithNothingWholeIsNotSaved)
{
    write(m_dir.filePath(QStringLiteral("notes.txt")), "not a log");
    ASSERT_TRUE(QFile::remove(m_files[1]));
    RunData run;
    ASSERT_EQ(LogReader::read(m_dir.path(), run), LogReader::Status::Salvaged);
    const auto first = std::find_if(m_records.begin(), m_records.end(),
                                    [&](const Record &r) { return r.file == m_files[1]; });
    const auto last =
        std::find_if(first, m_records.end(), [&](const Record &r) { return r.file != m_files[1]; });
    const std::size_t lostFrom = std::size_t(first - m_records.begin());
    const std::size_t lostTo = std::size_t(last - m_records.begin());
    EXPECT_EQ(RunContent::differences(run, m_acks.back(), m_acks[lostFrom - 1], m_acks[lostTo - 1]),
              QString());
    Quillchart chart;
    EXPECT_TRUE(chart.CheckLogFile(m_dir.path()));

    for (const QString &file : m_files)
        write(file, QByteArray(40, 'x'));
    RunData none;
    EXPECT_EQ(LogReader::read(m_dir.path(), none), LogReader::Status::Damaged);
    EXPECT_FALSE(chart.CheckLogFile(m_dir.path()));
    EXPECT_EQ(chart.SaveLogAs(m_dir.path(), 0, m_dir.filePath("saved.chl")), -21);
}

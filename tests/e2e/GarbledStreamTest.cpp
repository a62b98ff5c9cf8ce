#include "Pty.h"
#include "RunningProgram.h"
#include "SimManifest.h"
#include "SimulatorRun.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

/// The 32 stream bytes lying 33 to 2 places behind `position`, as the program dumps them.
QString dumpBefore(const QByteArray &stream, qint64 position)
{
    QString dump;
    for (qint64 i = position - 33; i <= position - 2; ++i)
        dump += ' ' + QString::number(quint8(stream[i]));
    return dump;
}

} // namespace

TEST(GarbledStream, TheProgramOnCom1LogsEachFaultWithTheBytesBeforeIt)
{
    const QTemporaryDir dir;
    const QString streamPath = dir.filePath("stream.bin");
    const QString manifestPath = dir.filePath("manifest.json");
    ASSERT_TRUE(writeSimulatedStream({"--runs", "1", "--run-minutes", "0.1", "--idle-seconds", "1",
                                      "--pauses", "0", "--holds", "0", "--fault", "param@1:E:5",
                                      "--fault", "unknown@2:0x47", "--manifest", manifestPath},
                                     streamPath));
    QFile file(streamPath);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray stream = file.readAll();
    QList<qint64> faultAt;
    for (const ManifestBlock &block : readManifest(manifestPath)) {
        if (!block.fault.isEmpty())
            faultAt << block.offset;
    }
    ASSERT_EQ(faultAt.size(), 2);
    ASSERT_GT(faultAt[0], 33) << "the dumps lie in the stream";

    Pty pty;
    RunningProgram program(pty.slavePath());
    ASSERT_TRUE(program.started());
    ASSERT_TRUE(program.holdsPort(pty.slavePath()));
    ASSERT_TRUE(pty.write(stream));

    const auto entries = [&] { return program.errorLog().count("ERROR - "); };
    ASSERT_TRUE(waitFor([&] { return entries() >= 2; }, 15000)) << program.errorLog().toStdString();
    // The decoder finds the stream again after each fault without a word.
    QTest::qWait(1500);
    const QString log = program.errorLog();
    EXPECT_EQ(entries(), 2) << log.toStdString();
    EXPECT_TRUE(log.contains("ERROR - Unknown data parameter.Sub HandelEventData; Event Byte "
                             "Expected; Actual Byte Received: 5\r\n" +
                             dumpBefore(stream, faultAt[0] + 3) + "\r\n"))
        << log.toStdString();
    EXPECT_TRUE(log.contains("ERROR - Unknown data type.Sub PeekDataBlock; Data Type Byte "
                             "Expected; Actual Byte Received: 71\r\n" +
                             dumpBefore(stream, faultAt[1] + 2) + "\r\n"))
        << log.toStdString();
}

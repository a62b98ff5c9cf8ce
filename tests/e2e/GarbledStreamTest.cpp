#include "Pty.h"
#include "RunningProgram.h"
#include "SimManifest.h"
#include "SimulatorRun.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

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
    // Each entry ends on the byte received and the 32 bytes lying 33 to 2 places behind it.
    const auto entry = [&](int received, qint64 position) {
        QString text = QStringLiteral("Received: %1\r\n").arg(received);
        for (const char byte : stream.mid(position - 33, 32))
            text += ' ' + QString::number(quint8(byte));
        return text + "\r\n";
    };
    EXPECT_TRUE(log.contains(entry(5, faultAt[0] + 3))) << log.toStdString();
    EXPECT_TRUE(log.contains(entry(71, faultAt[1] + 2))) << log.toStdString();
}

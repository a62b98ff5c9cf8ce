#include "TestEnvironment.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace {

const QString kProgram = QStringLiteral(OSTREL_BINARY_DIR "/tools/velquin-sim/velquin-sim");

const QStringList kScenario = {"--runs",         "1",           "--run-minutes", "0.3",
                               "--idle-seconds", "2",           "--seed",        "3",
                               "--fault",        "garbage@4:5", "--speed",       "0"};

/// Reads `fd` until `size` bytes came or the line stays quiet for ten seconds.
QByteArray readFrom(int fd, qsizetype size)
{
    QByteArray received;
    char buffer[4096];
    while (received.size() < size) {
        pollfd ready{fd, POLLIN, 0};
        if (::poll(&ready, 1, 10000) <= 0)
            break;
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got <= 0)
            break;
        received.append(buffer, got);
    }
    return received;
}

using Mistake = ::testing::TestWithParam<QStringList>;

} // namespace

TEST(Program, FileManifestAndTerminalsCarryTheSameBytesUntranslatedAtNineSixHundredEightNOne)
{
    const QString out = testHome() + QStringLiteral("/stream.bin");
    const QString manifest = testHome() + QStringLiteral("/manifest.json");
    QProcess toFile;
    toFile.start(kProgram, kScenario + QStringList{"--out", out, "--manifest", manifest});
    ASSERT_TRUE(toFile.waitForFinished(20000));
    ASSERT_EQ(toFile.exitCode(), 0) << toFile.readAllStandardError().toStdString();
    QFile file(out);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray expected = file.readAll();
    file.close();
    file.setFileName(manifest);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject document = QJsonDocument::fromJson(file.readAll()).object();
    EXPECT_EQ(document.value("scenario").toObject().value("seed").toInt(), 3);
    QByteArray joined;
    int pairs = 0;
    int garbage = 0;
    for (const QJsonValue &value : document.value("blocks").toArray()) {
        const QJsonObject block = value.toObject();
        EXPECT_EQ(block.value("offset").toInteger(), joined.size());
        joined += QByteArray::fromHex(block.value("hex").toString().toLatin1());
        if (block.value("type").toString() == QLatin1String("C")) {
            EXPECT_EQ(block.value("pair").toInt(), pairs++);
        }
        garbage += block.value("fault").toString().startsWith(QLatin1String("garbage@4"));
    }
    EXPECT_EQ(joined, expected);
    EXPECT_EQ(garbage, 1);
    EXPECT_GT(pairs, 5 * 18);
    ASSERT_TRUE(expected.contains("\r\n")) << "the method text tests raw mode";
    // A pseudo-terminal stands in for the serial port; the test holds its other end.
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_TRUE(master >= 0 && ::grantpt(master) == 0 && ::unlockpt(master) == 0);
    const QString device = QString::fromLatin1(::ptsname(master));
    for (const QStringList &mode : {QStringList{"--pty"}, QStringList{"--device", device}}) {
        QProcess sim;
        sim.start(kProgram, kScenario + mode);
        int fd = master;
        if (mode.size() == 1) {
            ASSERT_TRUE(sim.waitForReadyRead(10000));
            fd = ::open(sim.readLine().trimmed().constData(), O_RDONLY | O_NOCTTY | O_NONBLOCK);
            ASSERT_GE(fd, 0);
        }
        const QByteArray received = readFrom(fd, expected.size());
        if (fd != master)
            ::close(fd);
        EXPECT_TRUE(sim.waitForFinished(10000));
        EXPECT_EQ(sim.exitCode(), 0) << sim.readAllStandardError().toStdString();
        EXPECT_TRUE(received == expected)
            << mode.first().toStdString() << ": " << received.size() << " of " << expected.size();
    }
    const int slave = ::open(device.toLatin1().constData(), O_RDWR | O_NOCTTY);
    termios mode{};
    ASSERT_EQ(::tcgetattr(slave, &mode), 0);
    EXPECT_EQ(::cfgetospeed(&mode), speed_t(B9600));
    EXPECT_EQ(mode.c_cflag & CSIZE, tcflag_t(CS8));
    EXPECT_EQ(mode.c_cflag & (PARENB | CSTOPB | CRTSCTS), tcflag_t(0));
    EXPECT_EQ(mode.c_iflag & (IXON | IXOFF | ICRNL), tcflag_t(0));
    EXPECT_EQ(mode.c_oflag & OPOST, tcflag_t(0));
    ::close(slave);
    ::close(master);
}

TEST_P(Mistake, EndsWithAReasonAndNoBytes)
{
    QProcess sim;
    sim.start(kProgram, GetParam());
    ASSERT_TRUE(sim.waitForFinished(10000));
    EXPECT_EQ(sim.exitCode(), 2);
    EXPECT_TRUE(sim.readAllStandardOutput().isEmpty());
    EXPECT_TRUE(sim.readAllStandardError().startsWith("velquin-sim: "));
}

INSTANTIATE_TEST_SUITE_P(
    Program, Mistake,
    ::testing::Values(QStringList{"--kind", "fancy"}, QStringList{"--fault", "garbage@x"},
                      QStringList{"--runs", "1.5"}, QStringList{"--out", "a", "--device", "b"},
                      QStringList{"--cond-letter", "E"}, QStringList{"--run-minutes", "0.05"}));

#include "acquisition/Link.h"

#include "Fakes.h"
#include "Pty.h"
#include "StreamBytes.h"

#include <bit>
#include <gtest/gtest.h>
#include <random>
#include <tuple>

using namespace StreamBytes;

namespace {

/// The link with the window, the intake and the error route replaced by recorders. A tick is a
/// tick of the main loop's timer, as the program's timer runs it.
class LinkTest : public ::testing::Test
{
protected:
    LinkTest()
    {
        errors.onError = [this](qint32 code) {
            reported << QStringLiteral("%1 %2").arg(code).arg(link.state().DebugText);
        };
        news.onNews = [this] {
            quietDuringNews =
                quietDuringNews && link.state().DataBusy && !link.TimerProcess().isActive();
        };
    }

    void feed(const QByteArray &bytes) { link.ring().store(bytes); }
    void tick() { link.TimerProcess_Timer(); }
    void synchronise()
    {
        feed(pair(0.0f, 0.0f));
        tick();
        ASSERT_TRUE(link.state().FirstSyncFound);
        tick();
        news.lines.clear();
        window.calls.clear();
    }

    RecordedErrors errors;
    RecordedNews news;
    RecordedWindow window;
    Link link{errors, news, window};
    QStringList reported;
    bool quietDuringNews = true;
};

} // namespace

TEST_F(LinkTest, TwoBytesStartNoPassAndThreeStartTheSearch)
{
    feed(QByteArray("\x96U", 2));
    tick();
    EXPECT_TRUE(errors.codes.isEmpty());
    EXPECT_EQ(link.TimerProcess().interval(), 700);
    feed(QByteArray(1, char(0x96)));
    tick();
    EXPECT_EQ(errors.codes, QList<qint32>{-13}) << "too few bytes for a search";
    feed(QByteArray(3, char(0x96)));
    tick();
    EXPECT_EQ(errors.codes, QList<qint32>({-13, -13})) << "six are still too few";
    EXPECT_EQ(int(link.ring().ByteCount), 6) << "and the bytes stay";
}

TEST_F(LinkTest, SyncSearchDropsOneTwoOrSevenBytesAndDecodesFromTheNextTick)
{
    QByteArray stream;
    stream += char(0x01);                                 // not a sync byte: 1 dropped
    stream += QByteArray("\x96Q", 2);                     // sync, not U/V: 2 dropped
    stream += QByteArray("\x96U\x3F\x80\x00\x00\x00", 7); // no sync 6 on: 7 dropped
    const int dropped = int(stream.size());
    stream += pair(1.5f, 20.0f, 'V');
    feed(stream);

    tick();
    EXPECT_EQ(window.calls, QStringList({"syncFound", "passEnded"}));
    EXPECT_TRUE(link.state().FirstSyncFound);
    EXPECT_EQ(int(link.ring().TakeIndex), dropped) << "the UV block is left for decoding";
    EXPECT_TRUE(news.lines.isEmpty());

    tick();
    EXPECT_EQ(news.lines, QStringList({"V 1.5", "C 20"}));
    EXPECT_EQ(int(link.ring().ByteCount), 0);
}

TEST_F(LinkTest, EveryKnownBlockReachesTheIntakeInOrderMostSignificantByteFirst)
{
    synchronise();
    feed(status('E', 4) + sample('V', 0.25f) + sample('D', 3.5f) + status('E', 2) + status('E', 3) +
         status('E', 8) + status('H', 1) + status('H', 2) + status('R', 3) + status('P', 1) +
         status('P', 0) + method("Flow\r\n") +
         QByteArray::fromHex("96553f800000"
                             "96430000803f"));
    tick();
    EXPECT_EQ(news.lines, QStringList({"E 4", "V 0.25", "C 3.5", "E 2", "E 3", "E 8", "H 1", "H 2",
                                       "R 3", "P 1", "P 0", "M Flow\r\n", "U 1",
                                       QString("C %1").arg(std::bit_cast<float>(0x0000803Fu))}));
    EXPECT_TRUE(quietDuringNews) << "news arrives with DataBusy on and the timer stopped";
    EXPECT_FALSE(link.state().DataBusy);
    EXPECT_TRUE(link.TimerProcess().isActive());
    EXPECT_EQ(window.calls, QStringList({"passEnded"}));
}

TEST_F(LinkTest, ParameterErrorsConsumeTheBlockAndThePassGoesOn)
{
    const std::pair<char, std::uint8_t> rows[] = {{'E', 5}, {'H', 0}, {'P', 2}, {'R', 150}};
    synchronise();
    for (const auto &[type, bad] : rows) {
        reported.clear();
        news.lines.clear();
        feed(status('E', 2) + status(type, bad) + sample('C', 1.0f));
        tick();
        ASSERT_EQ(reported.size(), 1) << type;
        EXPECT_TRUE(reported[0].startsWith(QString("-11 ")));
        EXPECT_TRUE(reported[0].contains(QString("Received: %1\r\n").arg(bad)));
        // The dump stops short of the bad byte: ..., the E block's value, sync, type letter.
        EXPECT_TRUE(reported[0].endsWith(" 2 150 " + QString::number(type)))
            << reported[0].toStdString();
        EXPECT_EQ(news.lines, QStringList({"E 2", "C 1"}));
        EXPECT_EQ(int(link.ring().ByteCount), 0);
    }
}

TEST_F(LinkTest, UnknownTypesAndLostSyncAreReportedButNotConsumed)
{
    synchronise();
    for (const std::uint8_t type :
         {0x47, 0x49, 0x4A, 0x4B, 0x4C, 0x4E, 0x4F, 0x51, 0x53, 0x54, 0x00, 0x42, 0x57, 0x96}) {
        reported.clear();
        const int take = link.ring().TakeIndex;
        feed(QByteArray() + char(0x96) + char(type) + QByteArray(4, 0));
        tick();
        ASSERT_EQ(reported.size(), 1) << int(type);
        EXPECT_TRUE(reported[0].startsWith("-12 "));
        EXPECT_TRUE(reported[0].contains(QString("Received: %1\r\n").arg(type)));
        // The dump stops at the sync byte: the zeros of the block before, then 150.
        EXPECT_TRUE(reported[0].endsWith(" 0 0 0 0 150")) << reported[0].toStdString();
        EXPECT_EQ(int(link.ring().TakeIndex), take);
        link.ring().TakeIndex = link.ring().PutIndex; // dropped, for the next type
        link.ring().ByteCount = 0;
    }
    reported.clear();

    feed(QByteArray("\x41\x96U", 3));
    tick();
    ASSERT_EQ(reported.size(), 1);
    EXPECT_TRUE(reported[0].startsWith("-10 "));
    EXPECT_TRUE(reported[0].contains("Received: 65\r\n"));
    EXPECT_EQ(int(link.ring().ByteCount), 3);
}

TEST_F(LinkTest, ABlockIsDecodedOnlyOnceAllItsBytesAreThere)
{
    // The bytes of one tick, the news it brings and the count of bytes then in the ring.
    const std::tuple<QByteArray, QStringList, int> ticks[] = {
        {method("Step 1\tBuffer A\xB5\r\n") + method(""),
         {QString("M Step 1\tBuffer A") + QChar(0xB5) + "\r\n", "M "},
         0},
        {QByteArray::fromHex("964300"), {}, 3},
        {QByteArray::fromHex("0000009645"), {"C 0"}, 2},
        {QByteArray::fromHex("02"), {"E 2"}, 0},
        // "F" asks for one byte of its four: the count goes below zero, the timer's test stays
        // false, and the next bytes bring it back.
        {QByteArray::fromHex("964601"), {}, -3},
        {{}, {}, -3},
        {QByteArray::fromHex("020304") + pair(0.5f, 2.0f), {"U 0.5", "C 2"}, 0},
        {"\x96MColumn: Q", {}, 11},
        {{}, {}, 11},
        {QByteArray(" 5 ml") + char(0x96) + pair(0.0f, 1.0f),
         {"M Column: Q 5 ml", "U 0", "C 1"},
         0},
    };
    synchronise();
    for (const auto &[bytes, brought, left] : ticks) {
        news.lines.clear();
        feed(bytes);
        tick();
        EXPECT_EQ(news.lines, brought) << bytes.toHex().toStdString();
        EXPECT_EQ(int(link.ring().ByteCount), left) << bytes.toHex().toStdString();
    }
}

TEST_F(LinkTest, ADecodeErrorKeepsThePassGoingButTheNextPassSearches)
{
    // As the program's error route does for a decoding error.
    errors.onError = [this](qint32) { link.loseSync(); };
    synchronise();
    feed(status('E', 2) + status('E', 5) + sample('C', 4.0f));
    tick();
    EXPECT_EQ(news.lines, QStringList({"E 2", "C 4"}));
    news.lines.clear();
    feed(sample('C', 1.0f) + pair(2.0f, 3.0f));
    tick();
    EXPECT_TRUE(news.lines.isEmpty());
    tick();
    EXPECT_EQ(news.lines, QStringList({"U 2", "C 3"}));
    EXPECT_EQ(errors.codes.size(), 1) << "the search finds the stream again without a word";
}

TEST_F(LinkTest, ReceiveEventsFillTheRingOnlyWhileNothingElseWorks)
{
    Pty pty;
    const ComPorts com({pty.slavePath()});
    link.ComPort.setCommPort(1);
    link.ComPort.setPortOpen(true);

    link.setDataBusy(true);
    ASSERT_TRUE(pty.write(QByteArray(60, 'a')));
    ASSERT_TRUE(waitFor([&] { return link.state().ComDataSeen; }));
    EXPECT_EQ(int(link.ring().ByteCount), 0) << "the bytes wait in the control";

    link.setDataBusy(false);
    link.clearComDataSeen();
    ASSERT_TRUE(pty.write(QByteArray(50, 'b')));
    ASSERT_TRUE(waitFor([&] { return link.ring().ByteCount == 110; }));
    EXPECT_GT(link.TimerProcess().remainingTime(), 600) << "each receive event restarts the wait";
    EXPECT_EQ(link.ComPort.InBufferCount(), 0);
}

using GarbledStream = LinkTest;

// The instrument's second of data arrives in one piece, and the tick comes in the pause after
// it; one second in eight is damaged.
TEST_F(GarbledStream, EightMegabytesOfDamagedSecondsThenTheStreamIsBackWithinEightBlocks)
{
    // As the program's error route does for a decoding error.
    errors.onError = [this](qint32 code) {
        if (code >= -12 && code <= -10)
            link.loseSync();
    };
    std::mt19937 random(8);
    const auto any = [&](int below) { return int(random() % unsigned(below)); };
    const auto anyBlock = [&] {
        const int kind = any(100);
        if (kind < 80)
            return sample("UVCDF"[any(5)], std::bit_cast<float>(std::uint32_t(random())));
        if (kind < 98)
            return status("EHPRF"[any(5)], std::uint8_t(any(256)));
        return method(QByteArray(any(300), char('A' + any(26))));
    };
    qint64 total = 0;
    while (total < 8 * 1024 * 1024) {
        QByteArray second;
        for (int n = 0; n < 10; ++n)
            second += anyBlock();
        if (any(8) == 0) {
            const int at = any(int(second.size()));
            if (any(2) == 0)
                second.remove(at, 1 + any(8));
            else
                for (int n = any(12); n >= 0; --n)
                    second.insert(at, char(any(256)));
        }
        total += second.size();
        feed(second);
        tick();
    }
    EXPECT_GT(errors.codes.size(), 1000);
    news.lines.clear();
    QStringList sent;
    for (int n = 1; n <= 20; ++n) {
        feed(pair(float(n), float(100 + n)));
        sent << QString("U %1").arg(n) << QString("C %1").arg(100 + n);
        tick();
    }
    tick();
    const qsizetype kept = sent.size() - 8;
    ASSERT_GE(news.lines.size(), kept);
    EXPECT_EQ(news.lines.mid(news.lines.size() - kept), sent.mid(8));
}

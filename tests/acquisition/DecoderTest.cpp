#include "StreamBytes.h"
#include "acquisition/DecoderHost.h"
#include "runtime/ErrorRoute.h"
#include "acquisition/InstrumentNews.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/StreamDecoder.h"

#include <QStringList>
#include <QTimer>

#include <bit>
#include <gtest/gtest.h>

using namespace StreamBytes;

namespace {

struct Reported
{
    qint32 code;
    QString debugText;
};

/// Records what leaves the decoder: news, error numbers with the DebugText of the moment, and
/// the host's calls.
class DecoderTest : public ::testing::Test,
                    public ErrorRoute,
                    public InstrumentNews,
                    public DecoderHost
{
protected:
    void HandelError(qint32 code) override { errors.append({code, link.DebugText}); }
    void uvSample(quint8 type, float value) override
    {
        news << QString("%1 %2").arg(QChar(type)).arg(value);
        busyDuringNews = busyDuringNews && link.DataBusy && !timer.isActive();
    }
    void condSample(float value) override { news << QString("C %1").arg(value); }
    void eventNews(quint8 value) override { news << QString("E %1").arg(value); }
    void holdNews(quint8 value) override { news << QString("H %1").arg(value); }
    void runStatusNews(quint8 value) override { news << QString("R %1").arg(value); }
    void penStatusNews(quint8 value) override { news << QString("P %1").arg(value); }
    void methodText(const QString &text) override { news << "M " + text; }
    void syncFound() override
    {
        ++syncs;
        syncFlagBeforeWindowEffects = link.FirstSyncFound;
    }
    void passEnded() override { ++passes; }

    void feed(const QByteArray &bytes) { ring.store(bytes); }
    /// A tick of the main loop's timer.
    void tick()
    {
        if (ring.ByteCount > 2)
            decoder.ProcessComData();
    }
    void synchronise()
    {
        feed(pair(0.0f, 0.0f));
        tick();
        ASSERT_TRUE(link.FirstSyncFound);
        tick();
        news.clear();
    }

    LinkState link;
    ReceiveRing ring;
    QTimer timer;
    StreamDecoder decoder{ring, link, *this, *this, *this, timer};
    QList<Reported> errors;
    QStringList news;
    int syncs = 0;
    int passes = 0;
    bool syncFlagBeforeWindowEffects = true;
    bool busyDuringNews = true;
};

} // namespace

TEST_F(DecoderTest, SyncSearchDropsOneTwoOrSevenBytesAndDecodesFromTheNextTick)
{
    QByteArray stream;
    stream += char(0x01);                                 // not a sync byte: 1 dropped
    stream += QByteArray("\x96Q", 2);                     // sync, not U/V: 2 dropped
    stream += QByteArray("\x96U\x3F\x80\x00\x00\x00", 7); // no sync 6 on: 7 dropped
    const int dropped = int(stream.size());
    stream += pair(1.5f, 20.0f, 'V');
    feed(stream);

    tick();
    EXPECT_EQ(syncs, 1);
    EXPECT_TRUE(link.FirstSyncFound);
    EXPECT_FALSE(syncFlagBeforeWindowEffects) << "the flag is set after the window's effects";
    EXPECT_EQ(int(ring.TakeIndex), dropped) << "the UV block itself is left for decoding";
    EXPECT_TRUE(news.isEmpty());
    EXPECT_TRUE(errors.isEmpty());

    tick();
    EXPECT_EQ(news, QStringList({"V 1.5", "C 20"}));
    EXPECT_EQ(int(ring.ByteCount), 0);
}

TEST_F(DecoderTest, TooFewBytesForASearchReportAtOnceAndKeepTheBytes)
{
    feed(QByteArray(2, char(0x96)));
    for (int count = 3; count <= 6; ++count) {
        errors.clear();
        feed(QByteArray(1, char(0x96)));
        tick();
        ASSERT_EQ(errors.size(), 1) << count;
        EXPECT_EQ(errors[0].code, -13);
        EXPECT_EQ(int(ring.ByteCount), count);
    }
    EXPECT_FALSE(link.FirstSyncFound);
}

TEST_F(DecoderTest, SamplesAreSentMostSignificantByteFirst)
{
    synchronise();
    feed(QByteArray("\x96U\x3F\x80\x00\x00", 6));
    feed(QByteArray("\x96"
                    "C\x00\x00\x80\x3F",
                    6));
    tick();
    ASSERT_EQ(news.size(), 2);
    EXPECT_EQ(news[0], "U 1");
    EXPECT_NE(news[1], "C 1");
    EXPECT_EQ(news[1], QString("C %1").arg(std::bit_cast<float>(0x0000803Fu)));
}

TEST_F(DecoderTest, EveryKnownBlockReachesTheIntakeInOrder)
{
    synchronise();
    feed(status('E', 4) + sample('V', 0.25f) + sample('D', 3.5f) + status('E', 2) + status('E', 3) +
         status('E', 8) + status('H', 1) + status('H', 2) + status('R', 3) + status('P', 1) +
         status('P', 0) + method("Flow\r\n") + sample('U', -0.5f) + sample('C', 7.0f));
    tick();
    EXPECT_EQ(news, QStringList({"E 4", "V 0.25", "C 3.5", "E 2", "E 3", "E 8", "H 1", "H 2", "R 3",
                                 "P 1", "P 0", "M Flow\r\n", "U -0.5", "C 7"}));
    EXPECT_TRUE(errors.isEmpty());
    EXPECT_TRUE(busyDuringNews) << "news arrives with DataBusy on and the timer stopped";
    EXPECT_FALSE(link.DataBusy);
    EXPECT_TRUE(timer.isActive());
    EXPECT_GE(passes, 1);
}

TEST_F(DecoderTest, StatusBlocksMarkTheInstrumentKindEvenWhenTheirValueIsWrong)
{
    synchronise();
    feed(status('R', 9));
    tick();
    EXPECT_TRUE(link.StatusBlocksSeen);
    link.StatusBlocksSeen = false;
    link.FirstSyncFound = true;
    feed(sample('F', 0.0f));
    tick();
    EXPECT_TRUE(link.StatusBlocksSeen);
}

TEST_F(DecoderTest, ParameterErrorsConsumeTheBlockAndThePassGoesOn)
{
    const struct
    {
        char type;
        std::uint8_t bad;
        const char *text;
    } rows[] = {
        {'E', 5, "Sub HandelEventData; Event Byte Expected; Actual Byte Received: 5"},
        {'H', 0, "Sub HandelHoldData; Hold Byte Expected; Actual Byte Received: 0"},
        {'P', 2, "Sub HandelPenStatusData; Pen Byte Expected; Actual Byte Received: 2"},
        {'R', 150, "Sub HandelRunStatusData; Run Byte Expected; Actual Byte Received: 150"},
    };
    synchronise();
    for (const auto &row : rows) {
        errors.clear();
        news.clear();
        link.FirstSyncFound = true;
        feed(status('E', 2) + status(row.type, row.bad) + sample('C', 1.0f));
        tick();
        ASSERT_EQ(errors.size(), 1) << row.type;
        EXPECT_EQ(errors[0].code, -11);
        EXPECT_TRUE(errors[0].debugText.startsWith(QString(row.text) + "\r\n"))
            << errors[0].debugText.toStdString();
        // The dump stops short of the bad byte: ..., the E block's value, sync, type letter.
        EXPECT_TRUE(errors[0].debugText.endsWith(" 2 150 " + QString::number(row.type)))
            << errors[0].debugText.toStdString();
        EXPECT_EQ(news, QStringList({"E 2", "C 1"}));
        EXPECT_EQ(int(ring.ByteCount), 0);
    }
}

TEST_F(DecoderTest, UnknownTypesAndLostSyncAreReportedButNotConsumed)
{
    synchronise();
    for (const std::uint8_t type :
         {0x47, 0x49, 0x4A, 0x4B, 0x4C, 0x4E, 0x4F, 0x51, 0x53, 0x54, 0x00, 0x42, 0x57, 0x96}) {
        errors.clear();
        link.FirstSyncFound = true;
        const int take = ring.TakeIndex;
        feed(QByteArray() + char(0x96) + char(type) + QByteArray(4, 0));
        tick();
        ASSERT_EQ(errors.size(), 1) << int(type);
        EXPECT_EQ(errors[0].code, -12);
        EXPECT_TRUE(errors[0].debugText.startsWith(
            "Sub PeekDataBlock; Data Type Byte Expected; Actual Byte Received: " +
            QString::number(type) + "\r\n"));
        EXPECT_EQ(int(ring.TakeIndex), take);
        ring.TakeIndex = ring.PutIndex;
        ring.ByteCount = 0;
    }

    errors.clear();
    link.FirstSyncFound = true;
    feed(QByteArray("\x41\x96U", 3));
    tick();
    ASSERT_EQ(errors.size(), 1);
    EXPECT_EQ(errors[0].code, -10);
    EXPECT_TRUE(errors[0].debugText.startsWith(
        "Sub PeekDataBlock; Sync Byte Expected; Actual Byte Received: 65\r\n"));
    EXPECT_EQ(int(ring.ByteCount), 3);
}

TEST_F(DecoderTest, ABlockIsCompleteOnlyWithAllItsBytes)
{
    Int16 complete;
    feed(QByteArray("\x96"
                    "C\x00",
                    3));
    ring.rebase();
    decoder.PeekDataBlock(complete);
    EXPECT_FALSE(complete) << "three bytes of a C block";
    feed(QByteArray(3, 0));
    ring.rebase();
    decoder.PeekDataBlock(complete);
    EXPECT_TRUE(complete);

    ring.TakeIndex = ring.PutIndex;
    ring.ByteCount = 0;
    feed(QByteArray("\x96"
                    "E",
                    2));
    ring.rebase();
    decoder.PeekDataBlock(complete);
    EXPECT_FALSE(complete);
    feed(QByteArray(1, 2));
    ring.rebase();
    decoder.PeekDataBlock(complete);
    EXPECT_TRUE(complete);
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(DecoderTest, ShortFBlockTakesTheCountBelowZeroAndRecovers)
{
    synchronise();
    feed(QByteArray("\x96"
                    "F\x01",
                    3));
    tick();
    EXPECT_EQ(int(ring.ByteCount), -3);
    EXPECT_TRUE(link.StatusBlocksSeen);
    tick();
    EXPECT_EQ(int(ring.ByteCount), -3) << "the timer's test stays false";

    feed(QByteArray("\x02\x03\x04", 3) + pair(0.5f, 2.0f));
    tick();
    EXPECT_EQ(news, QStringList({"U 0.5", "C 2"}));
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(DecoderTest, MethodBlocksCompleteEmptyAndUnterminated)
{
    synchronise();
    feed(method("Step 1\tBuffer A\xB5\r\n") + method(""));
    tick();
    EXPECT_EQ(news, QStringList({QString("M Step 1\tBuffer A") + QChar(0xB5) + "\r\n", "M "}));

    news.clear();
    const QByteArray unterminated("\x96MColumn: Q");
    feed(unterminated);
    tick();
    tick();
    EXPECT_TRUE(news.isEmpty());
    EXPECT_EQ(int(ring.ByteCount), unterminated.size()) << "nothing consumed";
    feed(QByteArray(" 5 ml") + char(0x96) + pair(0.0f, 1.0f));
    tick();
    EXPECT_EQ(news, QStringList({"M Column: Q 5 ml", "U 0", "C 1"}));
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(DecoderTest, ADecodeErrorKeepsThePassGoingButTheNextPassSearches)
{
    synchronise();
    link.FirstSyncFound = true;
    feed(status('E', 2) + status('E', 5) + sample('C', 4.0f));
    tick();
    EXPECT_EQ(news, QStringList({"E 2", "C 4"}));
    // The error route clears the flag; the next pass then looks for a UV block again.
    link.FirstSyncFound = false;
    news.clear();
    feed(sample('C', 1.0f) + pair(2.0f, 3.0f));
    tick();
    EXPECT_TRUE(news.isEmpty());
    tick();
    EXPECT_EQ(news, QStringList({"U 2", "C 3"}));
}

#include "DecoderRig.h"
#include "SimStream.h"
#include "StreamOracle.h"

#include <gtest/gtest.h>

using namespace VelquinSim;

namespace {

Scenario scenarioWith(InstrumentKind kind, const QStringList &faults)
{
    Scenario scenario = shortScenario(kind, 21);
    for (const QString &text : faults)
        scenario.faults.append(*Fault::parse(text, nullptr));
    return scenario;
}

struct Outcome
{
    SimStream stream;
    DecoderRig rig;
};

/// Plays the scenario through the decoder and checks news, log and syncs against the oracle.
void expectAsSent(const Scenario &scenario, DecoderRig &rig, int expectedEntries)
{
    const SimStream stream = SimStream::play(scenario);
    rig.play(stream);
    const StreamOracle oracle(stream, rig.errors, rig.linkLosses);
    EXPECT_EQ(rig.log().toStdString(), oracle.log.toStdString());
    EXPECT_EQ(int(rig.errors.size()), expectedEntries);
    EXPECT_EQ(oracle.log.count(QStringLiteral("<date>")), expectedEntries);
    EXPECT_EQ(rig.syncs, oracle.syncs);
    EXPECT_EQ(rig.menuCalls, 0);
    for (qsizetype i = 0; i < std::min(rig.news.size(), oracle.news.size()); ++i)
        ASSERT_EQ(rig.news.at(i).toStdString(), oracle.news.at(i).toStdString()) << "news " << i;
    EXPECT_EQ(rig.news.size(), oracle.news.size());
}

} // namespace

TEST(StreamThroughDecoder, StatusKindArrivesAsSent)
{
    DecoderRig rig;
    expectAsSent(scenarioWith(InstrumentKind::Status, {}), rig, 0);
    EXPECT_EQ(rig.syncs, 1);
    EXPECT_TRUE(rig.link.StatusBlocksSeen);
    EXPECT_TRUE(rig.news.contains(QStringLiteral("R 1")));
    EXPECT_EQ(rig.news.filter(QStringLiteral("M VELQUIN LPC METHOD REPORT\r\n")).size(), 1);
}

TEST(StreamThroughDecoder, LettersKindArrivesAsSent)
{
    Scenario scenario = scenarioWith(InstrumentKind::Letters, {});
    scenario.condLetter = 'D';
    DecoderRig rig;
    expectAsSent(scenario, rig, 0);
    EXPECT_EQ(rig.syncs, 1);
    EXPECT_FALSE(rig.link.StatusBlocksSeen);
    EXPECT_TRUE(rig.news.contains(QStringLiteral("E 4")));
}

TEST(StreamThroughDecoder, JunkAndUnknownTypesLogLostSyncAndResync)
{
    DecoderRig rig;
    expectAsSent(scenarioWith(InstrumentKind::Status,
                              {"garbage@8:12", "unknown@18", "unknown@28:0xe1", "garbage@38:1"}),
                 rig, 4);
    EXPECT_EQ(rig.syncs, 5);
    EXPECT_EQ(rig.errors.first().code, -10);
    EXPECT_EQ(rig.errors.at(1).code, -12);
}

TEST(StreamThroughDecoder, WrongParametersLogTheirDecoderAndResync)
{
    DecoderRig status;
    expectAsSent(scenarioWith(InstrumentKind::Status, {"param@8:R:9", "param@20:P:2"}), status, 2);
    EXPECT_EQ(status.errors.first().code, -11);
    DecoderRig letters;
    expectAsSent(scenarioWith(InstrumentKind::Letters, {"param@8:E:5", "param@20:H:0"}), letters,
                 2);
    EXPECT_FALSE(letters.link.StatusBlocksSeen);
}

TEST(StreamThroughDecoder, StartInMidBlockOverAChance96DropsTheFirstPairQuietly)
{
    DecoderRig rig;
    const Scenario scenario = scenarioWith(InstrumentKind::Letters, {"midblock:4", "chance96@0"});
    expectAsSent(scenario, rig, 0);
    const SimStream stream = SimStream::play(scenario);
    ASSERT_EQ(stream.bytes.left(2), QByteArray("\x96V"));
    ASSERT_FALSE(rig.news.isEmpty());
    EXPECT_EQ(rig.news.first(), DecoderRig::uvNews('U', float(stream.blocks.at(2).value)))
        << "the search dropped 7 bytes, then the rest of the first pair";
}

TEST(StreamThroughDecoder, Chance96InASynchronisedStreamChangesNothing)
{
    DecoderRig rig;
    expectAsSent(scenarioWith(InstrumentKind::Status, {"chance96@6", "chance96@12"}), rig, 0);
    EXPECT_EQ(rig.syncs, 1);
}

TEST(StreamThroughDecoder, SilenceThenResumeSearchesAgainWithoutAnEntry)
{
    DecoderRig rig;
    expectAsSent(scenarioWith(InstrumentKind::Status, {"silence@12:15"}), rig, 0);
    EXPECT_EQ(rig.syncs, 2);
}

TEST(StreamThroughDecoder, BurstThatFitsTheRingIsTakenWhole)
{
    DecoderRig rig;
    expectAsSent(scenarioWith(InstrumentKind::Letters, {"burst@10:600"}), rig, 0);
    EXPECT_EQ(rig.syncs, 1);
}

TEST(StreamThroughDecoder, BurstBeyondTheRingFallsIntoSyncLossOnly)
{
    // 1000 pairs at once overrun the 10000-byte ring: the decoder reads overwritten bytes out
    // of order, and every fault it meets there is a lost sync, each logged with its dump.
    DecoderRig rig;
    const SimStream stream =
        SimStream::play(scenarioWith(InstrumentKind::Letters, {"burst@10:1000"}));
    rig.play(stream);
    ASSERT_FALSE(rig.errors.isEmpty());
    const QStringList lines = rig.log().split(QStringLiteral("\r\n"));
    ASSERT_EQ(lines.size(), 3 * rig.errors.size() + 1);
    for (qsizetype i = 0; i < rig.errors.size(); ++i) {
        EXPECT_EQ(rig.errors.at(i).code, -10);
        EXPECT_TRUE(lines.at(3 * i + 1).startsWith(
            QStringLiteral("ERROR - Lost Sync.Sub PeekDataBlock; Sync Byte Expected; Actual "
                           "Byte Received: ")));
        EXPECT_EQ(lines.at(3 * i + 2).split(QLatin1Char(' '), Qt::SkipEmptyParts).size(), 32);
    }
    EXPECT_EQ(rig.syncs, rig.errors.size() + 1);
    // The ring never learns it was overrun: its count keeps a whole lap too many, so the
    // decoder goes on a lap behind the put position and meets a lost sync at every crossing.
    qint64 burstEnd = 0;
    qsizetype newsBefore = 0;
    const StreamOracle sent(stream, {});
    for (const SimBlock &block : stream.blocks) {
        if (block.burst)
            burstEnd = block.offset + block.bytes.size();
        else if (block.time < 8 && QByteArrayLiteral("UVCE").contains(char(block.type)))
            ++newsBefore;
    }
    EXPECT_GE(rig.errors.first().fed, burstEnd);
    EXPECT_EQ(rig.news.mid(0, newsBefore).join(QLatin1Char('|')).toStdString(),
              sent.news.mid(0, newsBefore).join(QLatin1Char('|')).toStdString());
    EXPECT_GT(rig.news.size(), newsBefore + 100) << "decoding goes on after the overrun";
}

TEST(StreamThroughDecoder, ShippedFaultScenarioLogsOneEntryPerSyncLoss)
{
    Scenario scenario;
    QString error;
    ASSERT_TRUE(scenario.readFile(
        QStringLiteral(OSTREL_SOURCE_DIR "/tools/velquin-sim/scenarios/line-faults.json"), &error));
    scenario.speed = 0;
    DecoderRig rig;
    // Junk, an unknown type and a wrong run byte log; the cut start, the chance sync byte, the
    // silence and a burst the ring can hold do not.
    expectAsSent(scenario, rig, 3);
    EXPECT_EQ(rig.syncs, 5);
}

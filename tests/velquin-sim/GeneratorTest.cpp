#include "Generator.h"

#include "SimStream.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace VelquinSim;

namespace {

/// Reads the bytes back the way a receiver frames them, independently of the generator.
QList<qsizetype> frameOffsets(const QByteArray &bytes)
{
    QList<qsizetype> offsets;
    qsizetype at = 0;
    while (at < bytes.size()) {
        EXPECT_EQ(quint8(bytes.at(at)), 0x96) << "no sync at " << at;
        if (quint8(bytes.at(at)) != 0x96)
            break;
        offsets.append(at);
        const char type = bytes.at(at + 1);
        if (QByteArrayLiteral("CDFUV").contains(type)) {
            at += 6;
        } else if (QByteArrayLiteral("EHPR").contains(type)) {
            at += 3;
        } else if (type == 'M') {
            at = bytes.indexOf(char(0x96), at + 2) + 1;
            EXPECT_GT(at, 0) << "unterminated method text";
            if (at == 0)
                break;
        } else {
            ADD_FAILURE() << "unknown type " << int(type);
            break;
        }
    }
    return offsets;
}

/// The UV letter of the pair that follows block `index`.
char nextUvLetter(const SimStream &stream, qsizetype index)
{
    for (qsizetype i = index + 1; i < stream.blocks.size(); ++i) {
        const quint8 type = stream.blocks.at(i).type;
        if (type == 'U' || type == 'V')
            return char(type);
    }
    return 0;
}

struct KindCase
{
    InstrumentKind kind;
    /// The blocks that are no samples, in order, without the numbered events and labels.
    QStringList sequence;
    /// What starts and ends a run: the next pair is running ("V") or not ("U").
    QString start;
    QString end;
    /// A pen block every five pairs.
    bool penBlocks;
};

class Kind : public ::testing::TestWithParam<KindCase>
{
};

} // namespace

TEST(Generator, FivePairsASecondUvFirstThenConductivityBigEndian)
{
    EXPECT_EQ(SimBlock::sample('U', 1.0f).bytes, QByteArray::fromHex("96553f800000"));
    Scenario scenario = shortScenario(InstrumentKind::Letters);
    scenario.condLetter = 'D';
    const SimStream stream = SimStream::play(scenario);
    qint64 pair = 0;
    for (qsizetype i = 0; i < stream.blocks.size(); ++i) {
        const SimBlock &block = stream.blocks.at(i);
        if (block.type != 'U' && block.type != 'V')
            continue;
        ASSERT_LT(i + 1, stream.blocks.size());
        const SimBlock &cond = stream.blocks.at(i + 1);
        EXPECT_EQ(cond.type, 'D');
        EXPECT_EQ(block.pair, pair);
        EXPECT_EQ(cond.pair, pair);
        EXPECT_DOUBLE_EQ(block.time, pair / 5.0);
        EXPECT_EQ(SimBlock::floatFromBytes(cond.bytes.mid(2)), float(cond.value));
        ++pair;
    }
    EXPECT_EQ(stream.ofType('D').size(), pair);
    EXPECT_TRUE(stream.ofType('C').isEmpty());
}

TEST_P(Kind, StreamFramesIntoItsBlocksWhichReportTheRun)
{
    const KindCase &expected = GetParam();
    const SimStream stream = SimStream::play(shortScenario(expected.kind));
    const QList<qsizetype> offsets = frameOffsets(stream.bytes);
    ASSERT_EQ(offsets.size(), stream.blocks.size());
    QStringList sequence;
    QString letters;
    for (qsizetype i = 0; i < stream.blocks.size(); ++i) {
        const SimBlock &block = stream.blocks.at(i);
        EXPECT_EQ(block.offset, offsets.at(i));
        EXPECT_EQ(stream.bytes.mid(block.offset, block.bytes.size()), block.bytes);
        const QString name = QStringLiteral("%1%2").arg(QChar(block.type)).arg(block.value);
        if (name == expected.start || name == expected.end) {
            EXPECT_EQ(nextUvLetter(stream, i), name == expected.start ? 'V' : 'U') << i;
        }
        if (QByteArrayLiteral("EHPR").contains(char(block.type)))
            sequence.append(name);
        else if (block.type == 'M')
            sequence.append(QStringLiteral("M"));
        else if (block.type == 'U' || block.type == 'V')
            letters += QChar(block.type);
    }
    // Events and labels fall where the seed puts them; their number is fixed.
    EXPECT_EQ(sequence.removeAll(QStringLiteral("E2")), 2);
    EXPECT_EQ(sequence.removeAll(QStringLiteral("E8")), 1);
    EXPECT_EQ(sequence, expected.sequence);
    // Idle, the 30 s run with its 3 s pause, idle again.
    static const QRegularExpression shape(QStringLiteral("^U{25}V+U{15}V+U+$"));
    EXPECT_TRUE(shape.match(letters).hasMatch()) << letters.toStdString();
    EXPECT_EQ(letters.count(QLatin1Char('V')), 30 * 5 + 2 * 5);
    const qsizetype pairs = stream.ofType('C').size();
    EXPECT_EQ(stream.ofType('F').size(), expected.penBlocks ? (pairs + 2) / 5 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Generator, Kind,
    ::testing::Values(
        KindCase{InstrumentKind::Status,
                 {"P1", "R1", "R2", "R1", "R3", "H1", "H2", "R1", "R0", "P0", "M"},
                 "P1",
                 "R0",
                 true},
        KindCase{InstrumentKind::Letters, {"E4", "H1", "H2", "E3", "M"}, "E4", "E3", false}),
    [](const auto &info) { return std::string(info.param.penBlocks ? "Status" : "Letters"); });

TEST(Generator, MethodTextInLinesFollowsTheRunWithinTheRecordersWait)
{
    const SimStream stream = SimStream::play(shortScenario(InstrumentKind::Status));
    const QList<SimBlock> methods = stream.ofType('M');
    const QList<SimBlock> runStates = stream.ofType('R');
    ASSERT_EQ(methods.size(), 1);
    ASSERT_EQ(runStates.last().value, 0);
    EXPECT_EQ(methods.first().text.count("\r\n"), methods.first().text.count('\n'));
    EXPECT_TRUE(methods.first().text.endsWith("\r\n"));
    EXPECT_GT(methods.first().time, runStates.last().time);
    EXPECT_LT(methods.first().time - runStates.last().time, 15.0);
}

TEST(Generator, EndlessScenarioRepeatsItsRuns)
{
    Scenario scenario = shortScenario(InstrumentKind::Status);
    scenario.runs = 0;
    Generator generator(scenario);
    SimBlock block;
    QList<QByteArray> methods;
    for (int i = 0; i < 100000 && methods.size() < 3 && generator.next(block); ++i) {
        if (block.type == 'M')
            methods.append(block.text);
    }
    ASSERT_EQ(methods.size(), 3);
    EXPECT_TRUE(methods.at(2).contains("Run:     3 "));
}

#include "Generator.h"

#include "MethodText.h"
#include "SimStream.h"

#include <QRegularExpression>

#include <algorithm>
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

/// The letters of the blocks that are no samples, in order, each with its value.
QStringList statusSequence(const SimStream &stream)
{
    QStringList sequence;
    for (const SimBlock &block : stream.blocks) {
        if (QByteArrayLiteral("EHPR").contains(char(block.type)))
            sequence.append(QStringLiteral("%1%2").arg(QChar(block.type)).arg(block.value));
        else if (block.type == 'M')
            sequence.append(QStringLiteral("M"));
    }
    return sequence;
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

} // namespace

TEST(Generator, SameSeedGivesTheSameBytesAndAnotherSeedOthers)
{
    const Scenario scenario = shortScenario(InstrumentKind::Status, 11);
    const SimStream first = SimStream::play(scenario);
    EXPECT_EQ(first.bytes, SimStream::play(scenario).bytes);
    EXPECT_NE(first.bytes, SimStream::play(shortScenario(InstrumentKind::Status, 12)).bytes);
}

TEST(Generator, StreamFramesIntoTheBlocksItReports)
{
    for (InstrumentKind kind : {InstrumentKind::Status, InstrumentKind::Letters}) {
        const SimStream stream = SimStream::play(shortScenario(kind));
        const QList<qsizetype> offsets = frameOffsets(stream.bytes);
        ASSERT_EQ(offsets.size(), stream.blocks.size());
        for (qsizetype i = 0; i < offsets.size(); ++i) {
            const SimBlock &block = stream.blocks.at(i);
            EXPECT_EQ(block.offset, offsets.at(i));
            EXPECT_EQ(stream.bytes.mid(block.offset, block.bytes.size()), block.bytes);
        }
    }
}

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

TEST(Generator, StatusKindReportsItsRunInStatusBlocks)
{
    const SimStream stream = SimStream::play(shortScenario(InstrumentKind::Status));
    QStringList sequence = statusSequence(stream);
    // Events and labels fall where the seed puts them; their number is fixed.
    EXPECT_EQ(sequence.removeAll(QStringLiteral("E2")), 2);
    EXPECT_EQ(sequence.removeAll(QStringLiteral("E8")), 1);
    EXPECT_EQ(sequence,
              QStringList({"P1", "R1", "R2", "R1", "R3", "H1", "H2", "R1", "R0", "P0", "M"}));

    // "V" from the start to the end of the run, except for the 15 pairs of the pause.
    const auto isRun = [](const SimBlock &b) { return b.type == 'R'; };
    const auto start = std::find_if(stream.blocks.begin(), stream.blocks.end(), isRun);
    const auto end = std::find_if(stream.blocks.rbegin(), stream.blocks.rend(), isRun);
    int running = 0;
    int paused = 0;
    for (auto block = start; block != end.base(); ++block) {
        running += block->type == 'V';
        paused += block->type == 'U';
    }
    EXPECT_EQ(running, 30 * 5 + 2 * 5);
    EXPECT_EQ(paused, 3 * 5);
    const qsizetype pairs = stream.ofType('C').size();
    EXPECT_EQ(stream.ofType('F').size(), (pairs + 2) / 5);
}

TEST(Generator, LettersKindShowsItsRunOnlyInTheUvLetters)
{
    const SimStream stream = SimStream::play(shortScenario(InstrumentKind::Letters));
    QStringList sequence = statusSequence(stream);
    EXPECT_EQ(sequence.removeAll(QStringLiteral("E2")), 2);
    EXPECT_EQ(sequence.removeAll(QStringLiteral("E8")), 1);
    EXPECT_EQ(sequence, QStringList({"E4", "H1", "H2", "E3", "M"}));
    EXPECT_TRUE(stream.ofType('F').isEmpty());

    QString letters;
    for (qsizetype i = 0; i < stream.blocks.size(); ++i) {
        const SimBlock &block = stream.blocks.at(i);
        if (block.type == 'E' && block.value == 4) {
            EXPECT_EQ(nextUvLetter(stream, i), 'V');
        }
        if (block.type == 'E' && block.value == 3) {
            EXPECT_EQ(nextUvLetter(stream, i), 'U');
        }
        if (block.type == 'U' || block.type == 'V')
            letters += QChar(block.type);
    }
    // Idle, the run with its pause, idle again: the pause is a stretch of "U" inside the run.
    static const QRegularExpression shape(QStringLiteral("^U{25}V+U{15}V+U+$"));
    EXPECT_TRUE(shape.match(letters).hasMatch()) << letters.toStdString();
    EXPECT_EQ(letters.count(QLatin1Char('V')), 30 * 5 + 2 * 5);
}

TEST(Generator, MethodTextFollowsTheRunAsAFixedColumnTable)
{
    const SimStream stream = SimStream::play(shortScenario(InstrumentKind::Status));
    const QList<SimBlock> methods = stream.ofType('M');
    ASSERT_EQ(methods.size(), 1);
    const SimBlock &method = methods.first();
    EXPECT_EQ(method.bytes, QByteArray("\x96M") + method.text + char(0x96));
    EXPECT_FALSE(method.text.contains(char(0x96)));
    EXPECT_EQ(method.text.count("\r\n"), method.text.count('\n'));
    EXPECT_TRUE(method.text.endsWith("\r\n"));

    const QList<QByteArray> lines = method.text.split('\n');
    QList<QByteArray> rows;
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && line.startsWith("   "))
            rows.append(line);
    }
    ASSERT_EQ(rows.size(), 7);
    for (const QByteArray &row : rows)
        EXPECT_EQ(row.indexOf("LOAD") >= 0 ? row.indexOf("LOAD") : row.indexOf("INJECT"),
                  rows.first().indexOf("LOAD"));
    EXPECT_TRUE(rows.last().contains("0.50")) << "the last step ends the 0.5 min run";

    const auto end = std::find_if(stream.blocks.begin(), stream.blocks.end(),
                                  [](const SimBlock &b) { return b.type == 'R' && b.value == 0; });
    ASSERT_NE(end, stream.blocks.end());
    EXPECT_GT(method.time, end->time);
    EXPECT_LT(method.time - end->time, 15.0) << "the recorder waits 15 s for it";
}

TEST(Generator, TracesLookLikeAnIonExchangeRun)
{
    const SimStream stream = SimStream::play(shortScenario(InstrumentKind::Status, 5));
    float idleUvMax = 0;
    float runUvMax = 0;
    float condMax = 0;
    for (const SimBlock &block : stream.blocks) {
        if (block.type == 'U' && block.time < 5)
            idleUvMax = std::max(idleUvMax, std::abs(float(block.value)));
        if (block.type == 'V')
            runUvMax = std::max(runUvMax, float(block.value));
        if (block.type == 'C')
            condMax = std::max(condMax, float(block.value));
    }
    EXPECT_LT(idleUvMax, 0.01f);
    EXPECT_GT(runUvMax, 0.1f);
    EXPECT_LT(runUvMax, 3.0f);
    EXPECT_GT(condMax, 40.0f) << "the gradient and the strip raise the salt";
    const QList<SimBlock> conds = stream.ofType('C');
    EXPECT_NEAR(conds.first().value, 2.35, 0.2);
    EXPECT_LT(conds.last().value, 0.3 * condMax) << "back towards buffer A at the end";
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

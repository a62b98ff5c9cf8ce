#include "Generator.h"

#include "SimStream.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace VelquinSim;

namespace {

/// Where a receiver, independently of the generator, finds the blocks in the bytes: it stops
/// at a missing sync byte or an unterminated method text.
QList<qsizetype> frameOffsets(const QByteArray &bytes)
{
    QList<qsizetype> offsets;
    for (qsizetype at = 0; at < bytes.size() && quint8(bytes.at(at)) == 0x96;) {
        offsets.append(at);
        const char type = bytes.at(at + 1);
        at = type == 'M' ? bytes.indexOf(char(0x96), at + 2) + 1
                         : at + (QByteArrayLiteral("EHPR").contains(type) ? 3 : 6);
        if (at == 0)
            break;
    }
    return offsets;
}

struct KindCase
{
    InstrumentKind kind;
    /// What starts and ends a run: the next pair is running ("V") or not ("U").
    QString start;
    QString end;
    char condLetter;
    /// A pen block every five pairs.
    bool penBlocks;
    /// The blocks that are no samples, in order, without the numbered events and labels.
    const char *sequence;
};

using Kind = ::testing::TestWithParam<KindCase>;

} // namespace

TEST_P(Kind, FivePairsASecondFramedAndReportingTheRun)
{
    const KindCase &expected = GetParam();
    EXPECT_EQ(SimBlock::sample('U', 1.0f).bytes, QByteArray::fromHex("96553f800000"));
    Scenario scenario = shortScenario(expected.kind);
    scenario.condLetter = expected.condLetter;
    const SimStream stream = SimStream::play(scenario);
    const QList<qsizetype> offsets = frameOffsets(stream.bytes);
    ASSERT_EQ(offsets.size(), stream.blocks.size());
    QStringList sequence;
    QString letters;
    char nextLetter = 0;
    double runEnd = -1;
    for (qsizetype i = 0; i < stream.blocks.size(); ++i) {
        const SimBlock &block = stream.blocks.at(i);
        EXPECT_EQ(block.offset, offsets.at(i));
        EXPECT_EQ(stream.bytes.mid(block.offset, block.bytes.size()), block.bytes);
        const QString name = QStringLiteral("%1%2").arg(QChar(block.type)).arg(block.value);
        if (name == expected.start || name == expected.end) {
            nextLetter = name == expected.start ? 'V' : 'U';
            runEnd = block.time;
        }
        if (QByteArrayLiteral("EHPR").contains(char(block.type))) {
            sequence.append(name);
        } else if (block.type == 'M') {
            sequence.append(QStringLiteral("M"));
            EXPECT_EQ(block.text.count("\r\n"), block.text.count('\n'));
            EXPECT_TRUE(block.text.endsWith("\r\n"));
            EXPECT_TRUE(block.time > runEnd && block.time - runEnd < 15.0) << "within the wait";
        } else if (block.type == 'U' || block.type == 'V') {
            const qint64 pair = letters.size();
            letters += QChar(block.type);
            EXPECT_TRUE(nextLetter == 0 || nextLetter == block.type) << i;
            nextLetter = 0;
            ASSERT_LT(i + 1, stream.blocks.size());
            EXPECT_EQ(stream.blocks.at(i + 1).type, expected.condLetter);
            EXPECT_EQ(block.pair, pair);
            EXPECT_EQ(stream.blocks.at(i + 1).pair, pair);
            EXPECT_DOUBLE_EQ(block.time, pair / 5.0);
        }
    }
    // Events and labels fall where the seed puts them; their number is fixed.
    EXPECT_EQ(sequence.removeAll(QStringLiteral("E2")), 2);
    EXPECT_EQ(sequence.removeAll(QStringLiteral("E8")), 1);
    EXPECT_EQ(sequence, QString::fromLatin1(expected.sequence).split(' '));
    // Idle, the 30 s run with its 3 s pause, idle again.
    static const QRegularExpression shape(QStringLiteral("^U{25}V+U{15}V+U+$"));
    EXPECT_TRUE(shape.match(letters).hasMatch()) << letters.toStdString();
    EXPECT_EQ(letters.count(QLatin1Char('V')), 30 * 5 + 2 * 5);
    EXPECT_EQ(stream.ofType(expected.condLetter).size(), letters.size());
    EXPECT_EQ(stream.ofType('F').size(), expected.penBlocks ? (letters.size() + 2) / 5 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Generator, Kind,
    ::testing::Values(KindCase{InstrumentKind::Status, "P1", "R0", 'C', true,
                               "P1 R1 R2 R1 R3 H1 H2 R1 R0 P0 M"},
                      KindCase{InstrumentKind::Letters, "E4", "E3", 'D', false, "E4 H1 H2 E3 M"}),
    [](const auto &info) { return std::string(info.param.penBlocks ? "Status" : "Letters"); });

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

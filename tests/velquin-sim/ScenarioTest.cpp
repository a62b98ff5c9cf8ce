#include "Scenario.h"

#include "TestEnvironment.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace VelquinSim;

namespace {

/// A fault's text and its text read back: the same when nullptr, refused with a reason when "".
using FaultTexts = std::pair<const char *, const char *>;

using FaultText = ::testing::TestWithParam<FaultTexts>;

} // namespace

TEST_P(FaultText, ReadsBackAsItIsWrittenOrIsRefusedWithAReason)
{
    const auto [text, readBack] = GetParam();
    QString error;
    const std::optional<Fault> fault = Fault::parse(QString::fromLatin1(text), &error);
    if (readBack && !*readBack) {
        EXPECT_FALSE(fault);
        EXPECT_FALSE(error.isEmpty());
        return;
    }
    ASSERT_TRUE(fault) << error.toStdString();
    EXPECT_EQ(fault->optionText(), QString::fromLatin1(readBack ? readBack : text));
}

// Refused: a known type, the sync byte as a type, values that lie inside their block's table.
INSTANTIATE_TEST_SUITE_P(
    Scenario, FaultText,
    ::testing::Values(FaultTexts{"midblock:4", nullptr}, FaultTexts{"garbage@30:8", nullptr},
                      FaultTexts{"unknown@12:0x20", nullptr}, FaultTexts{"param@5:P:2", nullptr},
                      FaultTexts{"param@5", "param@5:E:5"}, FaultTexts{"chance96@1", nullptr},
                      FaultTexts{"silence@60:15", nullptr}, FaultTexts{"burst@2:500", nullptr},
                      FaultTexts{"unknown@1:0x43", ""}, FaultTexts{"unknown@1:0x96", ""},
                      FaultTexts{"param@1:E:4", ""}, FaultTexts{"param@1:R:3", ""},
                      FaultTexts{"param@1:P:1", ""}, FaultTexts{"param@1:H:2", ""},
                      FaultTexts{"param@1:X", ""}, FaultTexts{"midblock:6", ""},
                      FaultTexts{"garbage@-1", ""}, FaultTexts{"silence@3:0", ""},
                      FaultTexts{"flood@1", ""}, FaultTexts{"burst@1:x", ""}));

TEST(Scenario, FileUsesTheOptionNamesAndTheShippedFilesRead)
{
    const QString path = testHome() + QStringLiteral("/scenario.json");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"kind": "letters", "runs": 2, "run-minutes": 4, "cond-letter": "D",
                  "pen": false, "seed": 99, "faults": ["garbage@30:8", "midblock:1"]})");
    file.close();
    Scenario scenario;
    QString error;
    ASSERT_TRUE(scenario.readFile(path, &error)) << error.toStdString();
    EXPECT_EQ(scenario.kind, InstrumentKind::Letters);
    EXPECT_EQ(scenario.runs, 2);
    EXPECT_EQ(scenario.runMinutes, 4.0);
    EXPECT_EQ(scenario.condLetter, 'D');
    EXPECT_FALSE(scenario.pen);
    EXPECT_EQ(scenario.seed, 99u);
    ASSERT_EQ(scenario.faults.size(), 2);
    EXPECT_EQ(scenario.faults.at(1).kind, FaultKind::MidBlock);

    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(R"({"kind": "letters", "run-length": 4})");
    file.close();
    EXPECT_FALSE(Scenario().readFile(path, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("run-length")));

    Scenario shipped;
    EXPECT_TRUE(shipped.readFile(
        QStringLiteral(OSTREL_SOURCE_DIR "/tools/velquin-sim/scenarios/line-faults.json"), &error))
        << error.toStdString();
    EXPECT_EQ(shipped.faults.size(), 7);
}

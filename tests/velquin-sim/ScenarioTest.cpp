#include "Scenario.h"

#include "TestEnvironment.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace VelquinSim;

namespace {

/// A fault's text and its text read back, nullptr when the same.
class GoodFault : public ::testing::TestWithParam<std::pair<const char *, const char *>>
{
};

class BadFault : public ::testing::TestWithParam<const char *>
{
};

} // namespace

TEST_P(GoodFault, ReadsBackAsItIsWritten)
{
    const auto [text, readBack] = GetParam();
    QString error;
    const std::optional<Fault> fault = Fault::parse(QString::fromLatin1(text), &error);
    ASSERT_TRUE(fault) << error.toStdString();
    EXPECT_EQ(fault->optionText(), QString::fromLatin1(readBack ? readBack : text));
}

using Texts = std::pair<const char *, const char *>;
INSTANTIATE_TEST_SUITE_P(
    Scenario, GoodFault,
    ::testing::Values(Texts{"midblock:4", nullptr}, Texts{"garbage@30:8", nullptr},
                      Texts{"unknown@12:0x20", nullptr}, Texts{"param@5:P:2", nullptr},
                      Texts{"param@5", "param@5:E:5"}, Texts{"chance96@1", nullptr},
                      Texts{"silence@60:15", nullptr}, Texts{"burst@2:500", nullptr}));

// A known type, the sync byte as a type, and values that lie inside their block's table.
TEST_P(BadFault, IsRefusedWithAReason)
{
    QString error;
    EXPECT_FALSE(Fault::parse(QString::fromLatin1(GetParam()), &error));
    EXPECT_FALSE(error.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Scenario, BadFault,
                         ::testing::Values("unknown@1:0x43", "unknown@1:0x96", "param@1:E:4",
                                           "param@1:R:3", "param@1:P:1", "param@1:H:2", "param@1:X",
                                           "midblock:6", "garbage@-1", "silence@3:0", "flood@1",
                                           "burst@1:x"));

TEST(Scenario, FileUsesTheOptionNames)
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
}

TEST(Scenario, ShippedScenarioFilesRead)
{
    Scenario scenario;
    QString error;
    EXPECT_TRUE(scenario.readFile(
        QStringLiteral(OSTREL_SOURCE_DIR "/tools/velquin-sim/scenarios/line-faults.json"), &error))
        << error.toStdString();
    EXPECT_EQ(scenario.faults.size(), 7);
}

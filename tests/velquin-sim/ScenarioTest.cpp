#include "Scenario.h"

#include "TestEnvironment.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace VelquinSim;

TEST(Scenario, FaultTextReadsBackAsItIsWrittenOrIsRefusedWithAReason)
{
    for (const char *text : {"midblock:4", "garbage@30:8", "unknown@12:0x20", "param@5:P:2",
                             "chance96@1", "silence@60:15", "burst@2:500"})
        EXPECT_EQ(Fault::parse(QString::fromLatin1(text), nullptr).value().optionText(), text);
    EXPECT_EQ(Fault::parse("param@5", nullptr).value().optionText(), "param@5:E:5");
    // Refused: a known type, the sync byte as a type, values that lie inside their block's table.
    for (const char *text : {"unknown@1:0x43", "unknown@1:0x96", "param@1:E:4", "param@1:R:3",
                             "param@1:P:1", "param@1:H:2", "param@1:X", "midblock:6", "garbage@-1",
                             "silence@3:0", "flood@1", "burst@1:x"}) {
        QString error;
        EXPECT_FALSE(Fault::parse(QString::fromLatin1(text), &error)) << text;
        EXPECT_FALSE(error.isEmpty()) << text;
    }
}

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

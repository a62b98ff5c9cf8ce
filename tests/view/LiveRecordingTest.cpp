#include "TestEnvironment.h"
#include "WindowFixture.h"

#include <QFile>
#include <QProcess>
#include <QRadioButton>

namespace {

QByteArray simulatedRun(double minutes)
{
    const QString path = testHome() + "/live-run.bin";
    QProcess::execute(VELQUIN_SIM, {"--out", path, "--speed", "0", "--runs", "1", "--run-minutes",
                                    QString::number(minutes), "--idle-seconds", "2"});
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

class LiveRecording : public WindowFixture, public ::testing::WithParamInterface<bool>
{
};

} // namespace

TEST_P(LiveRecording, TheAxisMovesOnlyWhenTheNewestPairLeavesIt)
{
    const bool windowMode = GetParam();
    if (windowMode)
        window->optTimeAxis[1]->setChecked(true);
    const QByteArray stream = simulatedRun(30);
    ASSERT_GT(stream.size(), 30 * 300 * 12);
    Quillchart &chart = *window->Chart[0];
    int moves = 0;
    // The bursts a 700 ms tick finds in the ring.
    for (qsizetype at = 0; at < stream.size(); at += 42) {
        window->ring.store(stream.mid(at, 42));
        const float minBefore = chart.TimeAxisMin();
        const float maxBefore = chart.TimeAxisMax();
        window->TimerProcess_Timer();
        if (!window->intake.Recording)
            continue;
        const float last = chart.GetLastTime();
        const bool moved = chart.TimeAxisMin() != minBefore || chart.TimeAxisMax() != maxBefore;
        if (moved) {
            ++moves;
            ASSERT_GE(last, maxBefore) << "moved while the newest pair was inside, at " << last;
            ASSERT_LT(last, chart.TimeAxisMax());
            ASSERT_GE(last, chart.TimeAxisMin());
        } else {
            ASSERT_LT(last, maxBefore) << "the newest pair left the axis at " << last;
        }
    }
    // Full view grows by a quarter (10, 12.5, 15.6, 19.5, 24.4, 30.5); a window by a tenth.
    EXPECT_EQ(moves, windowMode ? 21 : 5);
}

INSTANTIATE_TEST_SUITE_P(FullViewAndWindow, LiveRecording, ::testing::Bool());

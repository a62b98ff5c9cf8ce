#include "../acquisition/StreamBytes.h"
#include "LogFile.h"
#include "ScriptedDialogs.h"
#include "chart/Quillchart.h"
#include "documents/LogPlace.h"
#include "shell/SessionEnd.h"
#include "view/frmMain.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

using namespace StreamBytes;

namespace {

constexpr int kPairsBeforeTick = 10;

void feed(frmMain &window, const QByteArray &bytes)
{
    for (qsizetype at = 0; at < bytes.size(); at += 3000) {
        window.link.ring().store(bytes.mid(at, 3000));
        // The first pass only finds the stream; a pass may leave blocks for the next.
        for (int pass = 0; pass < 100 && window.link.ring().ByteCount > 6; ++pass)
            window.link.TimerProcess_Timer();
    }
}

/// The program as main() runs it, logging into `directory`: pairs, one tick of the log timer,
/// more pairs, then `ending` from inside an event, where an uncaught error ends the program.
[[noreturn]] void recordThenEnd(const QString &directory, int pairsAfterTick,
                                const std::function<void(frmMain &)> &ending)
{
    ScriptedDialogs dialogs;
    frmMain window;
    const SessionEnd sessionEnd([&window] { window.runningLog->writeBeforeEnd(); });
    window.logPlace.LogDirectory = directory + '/';
    QByteArray bytes;
    for (int i = 0; i < kPairsBeforeTick; ++i)
        bytes += pair(0.01f * float(i), 1.0f);
    feed(window, bytes);
    window.TimerSaveLog_Timer();
    bytes.clear();
    for (int i = 0; i < pairsAfterTick; ++i)
        bytes += pair(0.5f, 2.0f);
    feed(window, bytes);
    QTimer::singleShot(0, [&] { ending(window); });
    for (;;)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

qint64 pairsLogged(const QString &directory)
{
    const QTemporaryDir out;
    Quillchart chart;
    const QString file = out.filePath("log.chl");
    return chart.SaveLogAs(directory, 0, file) == 0 ? pairsInLogFile(file) : -1;
}

} // namespace

TEST(Ending, AnErrorThatEndsTheProgramFirstWritesEveryPairTaken)
{
    // A stop with a window longer than 32767 minutes, and the event number past 32767: the
    // two endings the program keeps.
    const std::pair<const char *, std::function<void(frmMain &)>> endings[] = {
        {"stop with a 40000-minute window",
         [](frmMain &window) {
             window.mnuStart_Click();
             window.tabs.WindowMinutes[0] = 40000.0;
             window.mnuStop_Click();
         }},
        {"event 32768",
         [](frmMain &window) {
             QByteArray events;
             for (int i = 0; i < 32768; ++i)
                 events += status('E', 2) + pair(0.5f, 2.0f);
             feed(window, events);
         }},
    };
    for (const auto &[name, ending] : endings) {
        SCOPED_TRACE(name);
        const QTemporaryDir log;
        EXPECT_EXIT(recordThenEnd(log.path(), 7, ending), testing::ExitedWithCode(1),
                    "Run-time error '6'");
        const qint64 events = std::string(name) == "event 32768" ? 32768 : 0;
        EXPECT_EQ(pairsLogged(log.path()), kPairsBeforeTick + 7 + events)
            << "the pairs after the last tick are on disk too";
    }
}

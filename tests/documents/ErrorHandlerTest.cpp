#include "documents/ErrorHandler.h"

#include "../acquisition/StreamBytes.h"
#include "Fakes.h"
#include "Pty.h"
#include "ScriptedDialogs.h"
#include "acquisition/Link.h"
#include "documents/MenuCommands.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QStringList>

#include <gtest/gtest.h>
#include <tuple>

namespace {

const QString kDataLost = "Serious Data Error! Most recent data collected is permanently lost.";

/// The error route with a scripted dialog backend and a fresh ChartErr.log per test.
class ErrorHandlerTest : public ::testing::Test, public MenuCommands
{
protected:
    void SetUp() override { QFile::remove(ErrorHandler::logPath()); }

    void mnuStop_Click() override
    {
        calls << QString("stop after %1 boxes").arg(dialogs.boxes.size());
    }
    void mnuLogOff_Click() override { calls << "logoff"; }

    /// The entries of ChartErr.log, each as its two raw lines (CR LF kept).
    static QStringList logEntries()
    {
        QFile log(ErrorHandler::logPath());
        if (!log.open(QIODevice::ReadOnly))
            return {};
        const QString text = QString::fromLocal8Bit(log.readAll());
        QStringList lines = text.split("\r\n");
        EXPECT_EQ(lines.takeLast(), QString()) << "every line ends with CR LF";
        return lines;
    }

    ScriptedDialogs dialogs;
    QStringList calls;
    RecordedNews news;
    RecordedWindow window;
    ErrorHandler handler{link, *this};
    Link link{handler, news, window};
    SerialControl &port = link.ComPort;
};

} // namespace

TEST_F(ErrorHandlerTest, BoxCodesShowTheirWordsAndLogNothing)
{
    const std::tuple<int, const char *, int, QString> rows[] = {
        {-25, "ERROR!", 48, "Cannot Load Print Setup dialog box."},
        {-22, "ERROR!", 0, kDataLost},
        {-21, "Ostrel MS", 0, "Log file is corapted"},
        {-20, "ERROR!", 48,
         "Cannot load configuration file.\rType mismatch\rUsing default values."},
        {-19, "FILE CLOSE ERROR!", 0, "Disk reading error while closing"},
        {-18, "FILE OPEN ERROR!", 0,
         "An error occurred while opening the Data File.  The file was NOT opened."},
        {-17, "ERROR!", 0, kDataLost + "\rUnable to save the log file"},
        {-16, "FILE SAVE ERROR!", 0,
         "An error occurred while saving the data.  The data was NOT saved."},
        {-15, "Ostrel MS", 0, "Out of memory, Recording and Logging stopped.  Please exit Ostrel."},
        {-14, "PRINT ERROR!", 0,
         "An error occurred during printing the chart recording.\rPlease try again.  If the "
         "problem persists, contact Zarvex technical support."},
    };
    for (const auto &[code, caption, icon, text] : rows) {
        dialogs.boxes.clear();
        (void)trapError([] { Raise(ErrorNumber::TypeMismatch); }); // the error in force for -20
        handler.HandelError(code);
        ASSERT_EQ(dialogs.boxes.size(), 1) << code;
        EXPECT_EQ(dialogs.boxes[0].text, text) << code;
        EXPECT_EQ(dialogs.boxes[0].title, caption) << code;
        EXPECT_EQ(dialogs.boxes[0].icon(), icon) << code;
    }
    EXPECT_EQ(dialogs.beeps, 0);
    EXPECT_FALSE(QFile::exists(ErrorHandler::logPath()));
}

TEST_F(ErrorHandlerTest, OutOfMemoryStopsRecordingThenLoggingAfterTheBox)
{
    handler.HandelError(-15);
    EXPECT_EQ(calls, QStringList({"stop after 1 boxes", "logoff"}));
    calls.clear();
    handler.HandelError(-16);
    EXPECT_TRUE(calls.isEmpty()) << "no other code stops anything";
}

TEST_F(ErrorHandlerTest, LogOnlyCodesBeepAndWriteTwoLinesWithDebugText)
{
    const std::tuple<int, const char *, bool> rows[] = {
        {-13, "First Sync not found", false},
        {-12, "ERROR - Unknown data type.", true},
        {-11, "ERROR - Unknown data parameter.", true},
        {-10, "ERROR - Lost Sync.", true},
        {1001, "ERROR - Break signal received.", false},
        {1002, "ERROR - Clear-to-send timeout.", false},
        {1006, "The COM Port hardware is unable to keep up with the data transmission.", false},
        {1010, "ERROR - Transmit buffer full.", false},
    };
    // A lost synchronisation leaves its words and bytes for the entries after it.
    link.ring().store(StreamBytes::pair(1.0f, 2.0f) + "ABC");
    for (int tick = 0; tick < 3; ++tick)
        link.TimerProcess_Timer();
    const QString debugText = link.state().DebugText;
    ASSERT_EQ(debugText.count("\r\n"), 1);
    QFile::remove(ErrorHandler::logPath());
    dialogs.beeps = 0;
    QStringList expected;
    for (const auto &[code, text, clearsSync] : rows) {
        link.ring().store(StreamBytes::pair(1.0f, 2.0f));
        link.TimerProcess_Timer();
        link.TimerProcess_Timer();
        ASSERT_TRUE(link.state().FirstSyncFound);
        handler.HandelError(code);
        EXPECT_EQ(link.state().FirstSyncFound, !clearsSync) << code;
        expected << QString(text) + debugText;
    }
    const QStringList lines = logEntries();
    QStringList messages;
    for (int i = 0; i + 2 < lines.size(); i += 3)
        messages << lines[i + 1] + "\r\n" + lines[i + 2];
    EXPECT_EQ(messages, expected);
    EXPECT_EQ(dialogs.beeps, int(std::size(rows)));
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_EQ(link.state().DebugText, debugText) << "the route never clears DebugText";
}

TEST_F(ErrorHandlerTest, SilentCodesDoNothingAtAll)
{
    for (int code : {1, 4, 5, 6, 7, 1004, 1009, 3})
        handler.HandelError(code);
    EXPECT_EQ(dialogs.beeps, 0);
    EXPECT_TRUE(dialogs.boxes.isEmpty());
    EXPECT_FALSE(QFile::exists(ErrorHandler::logPath()));
}

TEST_F(ErrorHandlerTest, OtherNumbersLogTheirDescription)
{
    for (int code : {1005, 8, -26, -23, -9, 0, 2, 53, 8002})
        handler.HandelError(code);
    const QStringList lines = logEntries();
    QStringList messages;
    for (int i = 1; i < lines.size(); i += 2)
        messages << lines[i];
    EXPECT_EQ(messages,
              QStringList({ErrorDescription(1005), ErrorDescription(8), ErrorDescription(-26),
                           ErrorDescription(-23), ErrorDescription(-9), QString(),
                           ErrorDescription(2), "File not found", "Invalid port number"}));
    EXPECT_EQ(dialogs.beeps, 9);
}

TEST_F(ErrorHandlerTest, FullInputBufferIsReportedOnlyAbove32000Bytes)
{
    Pty pty;
    const ComPorts com({pty.slavePath()});
    // No receive events: the bytes stay in the input buffer.
    port.setRThreshold(0);
    port.setInBufferSize(40000);
    port.setPortOpen(true);
    for (int i = 0; i < 32; ++i) {
        // Small writes with the port read between them: a pty takes only a few KiB ahead.
        ASSERT_TRUE(pty.write(QByteArray(1000, 'x')));
        QCoreApplication::processEvents();
    }
    ASSERT_TRUE(waitFor([&] { return port.InBufferCount() == 32000; }));
    handler.HandelError(3);
    EXPECT_FALSE(QFile::exists(ErrorHandler::logPath())) << "exactly 32000 is not full";
    ASSERT_TRUE(pty.write("x"));
    ASSERT_TRUE(waitFor([&] { return port.InBufferCount() == 32001; }));
    handler.HandelError(3);
    const QStringList lines = logEntries();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[1], "ERROR - Communication buffer full.");
}

TEST_F(ErrorHandlerTest, UnwritableLogRaisesToTheCaller)
{
    QFile::remove(ErrorHandler::logPath());
    ASSERT_TRUE(QDir().mkpath(ErrorHandler::logPath())) << "a directory where the log should be";
    EXPECT_NE(trapError([&] { handler.HandelError(-13); }), 0);
    QDir(ErrorHandler::logPath()).removeRecursively();
}

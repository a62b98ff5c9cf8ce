#include "ScriptedDialogs.h"
#include "runtime/Application.h"
#include "runtime/ComDlg.h"
#include "runtime/Int16.h"
#include "runtime/RuntimeError.h"

#include <QTimer>

#include <cstdio>
#include <gtest/gtest.h>

TEST(RuntimeErrors, IgnoredStatementsSkipOnlyTheFailingOne)
{
    int reached = 0;
    ignoreErrors([&] { Raise(ErrorNumber::Overflow); });
    ignoreErrors([&] { ++reached; });
    ignoreErrors([&] {
        Int16 counter = 32767;
        ++counter;
        ++reached; // not reached: the statement ends at the overflow
    });
    EXPECT_EQ(reached, 1);
    EXPECT_EQ(Err().number(), ErrorNumber::Overflow) << "Err keeps the last error";
}

TEST(RuntimeErrors, EveryNumberHasOneLineAndZeroHasNone)
{
    EXPECT_EQ(ErrorDescription(0), QString());
    for (int number : {1, 2, 1005, 8, -26, -23, 99999}) {
        const QString text = ErrorDescription(number);
        EXPECT_FALSE(text.isEmpty()) << number;
        EXPECT_FALSE(text.contains('\n')) << number;
    }
}

TEST(CommonDialog, CancelEmptiesTheNameAndRaisesOnlyWithCancelError)
{
    ScriptedDialogs dialogs;
    ComDlg dialog;
    dialog.FileName = "offered.chd";
    dialog.ShowOpen();
    EXPECT_EQ(dialog.FileName, "");
    dialog.CancelError = true;
    EXPECT_EQ(trapError([&] { dialog.ShowSave(); }), ErrorNumber::CancelSelected);

    dialogs.files.push_back("/tmp/run 7");
    dialog.DefaultExt = "chd";
    dialog.ShowSave();
    EXPECT_EQ(dialog.FileName, "/tmp/run 7.chd");
    EXPECT_EQ(dialog.FileTitle, "run 7.chd");
}

namespace {

/// Raises from inside an event handler, as a timer tick of the program would.
[[noreturn]] void endFromAnEvent()
{
    ScriptedDialogs dialogs;
    dialogs.whileBoxShown = [](const ScriptedDialogs::Box &box) {
        std::fprintf(stderr, "box:%s\n", qPrintable(QString(box.text).replace('\n', '|')));
    };
    Application::setFlushBeforeExit([] { std::fprintf(stderr, "flushed\n"); });
    QTimer::singleShot(0, [] {
        Int16 count = -32768;
        --count;
    });
    for (;;)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

TEST(TopLevelHandler, UncaughtErrorFlushesTheLogThenEndsWithItsNumber)
{
    // The test program runs under the program's own application object and its handler.
    ASSERT_NE(dynamic_cast<Application *>(QCoreApplication::instance()), nullptr);
    EXPECT_EXIT(endFromAnEvent(), testing::ExitedWithCode(1),
                "flushed\n(.|\n)*box:Run-time error '6':\\|\\|Overflow");
}

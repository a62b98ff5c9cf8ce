#include "runtime/Application.h"

#include "runtime/App.h"
#include "runtime/MsgBox.h"
#include "runtime/RuntimeError.h"

#include <cstdio>
#include <cstdlib>

namespace {
std::function<void()> flushBeforeExit;
}

Application::Application(int &argc, char **argv) : QApplication(argc, argv)
{
    setApplicationName(App::Title());
    setApplicationVersion(QStringLiteral(OSTREL_VERSION));
    setOrganizationName(QString());
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const RuntimeError &error) {
        endByError(error);
    }
}

void Application::setFlushBeforeExit(std::function<void()> flush)
{
    flushBeforeExit = std::move(flush);
}

void Application::endByError(const RuntimeError &error)
{
    if (auto flush = std::exchange(flushBeforeExit, nullptr)) {
        try {
            flush();
        } catch (...) {
            std::fputs("Ostrel MS: the log could not be written before the end\n", stderr);
        }
    }
    const QString text =
        QStringLiteral("Run-time error '%1':\n\n%2").arg(error.number()).arg(error.description());
    std::fprintf(stderr, "%s\n", qPrintable(text));
    try {
        MsgBox(text, MsgBoxStyle::OkOnly | MsgBoxStyle::Critical);
    } catch (...) {
    }
    std::fflush(nullptr);
    // No unwinding: the windows and charts are in whatever state the error left them.
    std::_Exit(1);
}

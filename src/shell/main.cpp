#include "runtime/App.h"
#include "runtime/Application.h"
#include "runtime/RuntimeError.h"
#include "shell/SessionEnd.h"
#include "shell/Startup.h"
#include "shell/frmStartup.h"
#include "view/frmMain.h"

#include <memory>

int main(int argc, char **argv)
{
    Application app(argc, argv);
    try {
        App::registerInstance();
        const QString commandLine = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
        frmStartup splash;
        std::unique_ptr<frmMain> window;
        std::unique_ptr<Startup> startup;
        const SessionEnd sessionEnd([&window] {
            if (window)
                window->runningLog->writeBeforeEnd();
        });
        splash.loadMain = [&] {
            window = std::make_unique<frmMain>();
            startup = std::make_unique<Startup>(*window, splash, commandLine);
            window->setShell(startup.get());
            // The window unloads before the copy registered, counting it out all the same.
            if (!startup->openPort()) {
                (void)startup->windowClosing();
                return;
            }
            window->show();
        };
        splash.show();
        return Application::exec();
    } catch (const RuntimeError &error) {
        Application::endByError(error);
    }
}

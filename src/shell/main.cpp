#include "runtime/App.h"
#include "runtime/Application.h"
#include "runtime/RuntimeError.h"
#include "shell/SessionEnd.h"
#include "shell/Startup.h"
#include "view/frmMain.h"

int main(int argc, char **argv)
{
    Application app(argc, argv);
    try {
        App::registerInstance();
        frmMain window;
        Startup startup(window);
        window.setShell(&startup);
        const SessionEnd sessionEnd([&window] { window.runningLog->writeBeforeEnd(); });
        if (!startup.openPort()) {
            // The window unloads before the copy registered, counting it out all the same.
            startup.windowClosing();
            return 0;
        }
        window.show();
        return Application::exec();
    } catch (const RuntimeError &error) {
        Application::endByError(error);
    }
}

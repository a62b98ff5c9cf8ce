#include "runtime/App.h"
#include "runtime/Application.h"
#include "runtime/RuntimeError.h"
#include "view/frmMain.h"

int main(int argc, char **argv)
{
    Application app(argc, argv);
    try {
        App::registerInstance();
        frmMain window;
        window.show();
        return Application::exec();
    } catch (const RuntimeError &error) {
        Application::endByError(error);
    }
}

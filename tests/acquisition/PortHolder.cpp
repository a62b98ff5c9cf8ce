// Another program holding a serial port: opens COM 1 as the recorder would, says so on
// standard output, and keeps it until its standard input closes.
#include "acquisition/SerialControl.h"
#include "runtime/RuntimeError.h"

#include <QCoreApplication>

#include <cstdio>
#include <unistd.h>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    SerialControl port;
    const int number = trapError([&] { port.setPortOpen(true); });
    std::printf("%d\n", number);
    std::fflush(stdout);
    char byte = 0;
    while (::read(STDIN_FILENO, &byte, 1) > 0) {
    }
    return 0;
}

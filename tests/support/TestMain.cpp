#include "TestEnvironment.h"
#include "runtime/Application.h"

#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
QTemporaryDir *home = nullptr;
}

QString testHome()
{
    return home->path();
}

int main(int argc, char **argv)
{
    QTemporaryDir dir;
    home = &dir;
    qputenv("XDG_CONFIG_HOME", (dir.path() + QStringLiteral("/config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", (dir.path() + QStringLiteral("/data")).toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", dir.path().toLocal8Bit());
    // No COM number reaches a device of the machine unless a test maps one.
    qputenv("OSTREL_COMPORTS", "");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The program's own application object, so that its top-level error handler is in force.
    Application app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Ostrel MS"));
    // Tests state their expectations in US English unless they switch the locale themselves.
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

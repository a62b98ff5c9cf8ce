#include "TestEnvironment.h"

#include <QApplication>
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
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Ostrel MS"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

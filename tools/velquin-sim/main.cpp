#include "DeviceSink.h"
#include "FileSink.h"
#include "Manifest.h"
#include "Options.h"
#include "Player.h"
#include "PtySink.h"

#include <QCoreApplication>
#include <QFile>

#include <csignal>
#include <cstdio>
#include <memory>

using namespace VelquinSim;

namespace {

void onSignal(int)
{
    Player::requestStop();
}

void installSignals()
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    // No SA_RESTART: a write that waits for a reader must hear the stop.
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

int fail(const QString &message)
{
    std::fprintf(stderr, "velquin-sim: %s\n", qPrintable(message));
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("velquin-sim"));

    Options options;
    QString error;
    if (!options.parse(QCoreApplication::arguments(), &error))
        return fail(error);
    installSignals();

    std::unique_ptr<Sink> sink;
    switch (options.transport) {
    case Options::Transport::Pty: {
        auto pty = std::make_unique<PtySink>(options.scenario.speed > 0);
        if (!pty->open())
            return fail(pty->errorString());
        std::printf("%s\n", qPrintable(pty->slavePath()));
        std::fflush(stdout);
        sink = std::move(pty);
        break;
    }
    case Options::Transport::File: {
        auto file = std::make_unique<FileSink>(options.target);
        if (!file->open())
            return fail(file->errorString());
        sink = std::move(file);
        break;
    }
    case Options::Transport::Device: {
        auto device = std::make_unique<DeviceSink>(options.target);
        if (!device->open())
            return fail(device->errorString());
        sink = std::move(device);
        break;
    }
    }

    QFile manifestFile(options.manifest);
    std::unique_ptr<Manifest> manifest;
    if (!options.manifest.isEmpty()) {
        if (!manifestFile.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return fail(QStringLiteral("cannot write %1: %2")
                            .arg(options.manifest, manifestFile.errorString()));
        manifest = std::make_unique<Manifest>(manifestFile);
        manifest->begin(options.scenario);
    }

    Player player(options.scenario, *sink, manifest.get());
    const bool played = player.play();
    if (manifest)
        manifest->finish();
    return played ? 0 : fail(QStringLiteral("write failed: %1").arg(sink->errorString()));
}

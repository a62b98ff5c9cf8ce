// Starts velquin-sim on a pseudo-terminal at speed 1, reads it like a receiver for a minute,
// and compares what arrived, and when, with the schedule the same seed gives on a 9600-baud
// line. Prints the figures; exits 1 if the first minute is off by 1 % or more.

#include "Generator.h"
#include "WireSchedule.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QList>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

using namespace VelquinSim;
using Clock = std::chrono::steady_clock;

namespace {

constexpr double kMinute = 60.0;
constexpr double kListenSeconds = 62.0;

struct Arrival
{
    double at;
    qsizetype bytes;
};

Scenario benchScenario()
{
    // Short runs, so that the minute holds run start and end, events, a pause, a hold and a
    // method text that takes the line for most of a second.
    Scenario scenario;
    scenario.runMinutes = 0.5;
    scenario.idleSeconds = 5;
    scenario.pauseSeconds = 4;
    scenario.holdSeconds = 3;
    scenario.seed = 4;
    return scenario;
}

QStringList arguments(const Scenario &scenario)
{
    return {"--pty",
            "--speed",
            "1",
            "--seed",
            QString::number(scenario.seed),
            "--run-minutes",
            QString::number(scenario.runMinutes),
            "--idle-seconds",
            QString::number(scenario.idleSeconds),
            "--pause-seconds",
            QString::number(scenario.pauseSeconds),
            "--hold-seconds",
            QString::number(scenario.holdSeconds)};
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const Scenario scenario = benchScenario();

    QList<WireWrite> schedule;
    qsizetype pairs = 0;
    {
        Generator generator(scenario);
        WireSchedule line;
        SimBlock block;
        while (generator.next(block) && block.time < kListenSeconds + 5) {
            schedule += line.place(block);
            pairs += block.type == 'C' && block.time < kMinute;
        }
    }

    QProcess sim;
    sim.start(QStringLiteral(VELQUIN_SIM), arguments(scenario));
    if (!sim.waitForReadyRead(5000)) {
        std::fprintf(stderr, "velquin-sim did not start\n");
        return 2;
    }
    const QByteArray path = sim.readLine().trimmed();
    const int fd = ::open(path.constData(), O_RDONLY | O_NOCTTY | O_NONBLOCK);
    if (fd < 0) {
        std::fprintf(stderr, "cannot open %s\n", path.constData());
        return 2;
    }

    QByteArray received;
    QList<Arrival> arrivals;
    Clock::time_point start;
    char buffer[4096];
    for (;;) {
        const double now =
            received.isEmpty() ? 0 : std::chrono::duration<double>(Clock::now() - start).count();
        if (now > kListenSeconds)
            break;
        pollfd ready{fd, POLLIN, 0};
        if (::poll(&ready, 1, 200) <= 0)
            continue;
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got <= 0)
            break;
        const Clock::time_point at = Clock::now();
        if (received.isEmpty())
            start = at;
        received.append(buffer, got);
        arrivals.append({std::chrono::duration<double>(at - start).count(), qsizetype(got)});
    }
    ::close(fd);
    sim.terminate();
    sim.waitForFinished(5000);

    // Due: bytes the line schedule has sent by a time; arrived: bytes read by then.
    auto due = [&](double time) {
        qsizetype bytes = 0;
        for (const WireWrite &write : schedule) {
            if (write.at <= time)
                bytes += write.bytes.size();
        }
        return bytes;
    };
    auto arrived = [&](double time) {
        qsizetype bytes = 0;
        for (const Arrival &arrival : arrivals) {
            if (arrival.at <= time)
                bytes += arrival.bytes;
        }
        return bytes;
    };
    // When the byte that completes the minute's schedule arrived.
    const qsizetype minuteBytes = due(kMinute - 1e-9);
    double minuteDone = -1;
    qsizetype count = 0;
    for (const Arrival &arrival : arrivals) {
        count += arrival.bytes;
        if (count >= minuteBytes) {
            minuteDone = arrival.at;
            break;
        }
    }
    double lastScheduled = 0;
    for (const WireWrite &write : schedule) {
        if (write.at < kMinute)
            lastScheduled = write.at;
    }
    double worstLate = 0;
    count = 0;
    qsizetype scheduled = 0;
    qsizetype writeIndex = 0;
    for (const Arrival &arrival : arrivals) {
        count += arrival.bytes;
        while (writeIndex < schedule.size() &&
               scheduled + schedule.at(writeIndex).bytes.size() <= count)
            scheduled += schedule.at(writeIndex++).bytes.size();
        if (writeIndex > 0)
            worstLate = std::max(worstLate, arrival.at - schedule.at(writeIndex - 1).at);
    }
    qsizetype largestRead = 0;
    for (const Arrival &arrival : arrivals)
        largestRead = std::max(largestRead, arrival.bytes);
    qsizetype largestWrite = 0;
    for (const WireWrite &write : schedule)
        largestWrite = std::max(largestWrite, write.bytes.size());

    QByteArray expected;
    for (const WireWrite &write : schedule)
        expected += write.bytes;
    const bool same = expected.startsWith(received.left(expected.size()));
    const qsizetype atMinute = arrived(kMinute);
    const double byteError = 100.0 * double(atMinute - minuteBytes) / double(minuteBytes);
    const double timeError = 100.0 * (minuteDone - lastScheduled) / kMinute;

    std::printf("pairs due in the first 60 s          %lld\n", (long long)pairs);
    std::printf("bytes due by 60 s (pairs and others)  %lld\n", (long long)minuteBytes);
    std::printf("bytes read by 60.000 s                %lld  (%+.3f %%)\n", (long long)atMinute,
                byteError);
    std::printf("last byte of the minute read at       %.4f s, due %.4f s  (%+.3f %% of 60 s)\n",
                minuteDone, lastScheduled, timeError);
    std::printf("latest arrival behind its schedule    %.1f ms\n", worstLate * 1000);
    std::printf("reads: %lld, largest %lld bytes; largest write %lld bytes\n",
                (long long)arrivals.size(), (long long)largestRead, (long long)largestWrite);
    std::printf("bytes as generated                    %s\n", same ? "yes" : "NO");
    const bool good = same && pairs == 300 && std::abs(byteError) < 1.0 &&
                      std::abs(timeError) < 1.0 && minuteDone > 0;
    return good ? 0 : 1;
}

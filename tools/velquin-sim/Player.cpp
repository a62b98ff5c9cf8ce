#include "Player.h"

#include "Generator.h"
#include "Manifest.h"
#include "Sink.h"
#include "WireSchedule.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace VelquinSim {

namespace {

std::atomic<bool> stopAsked{false};

using Clock = std::chrono::steady_clock;

/// Sleeps until `due` in short slices, so that a stop is heard within a tenth of a second.
bool waitUntil(Clock::time_point due)
{
    constexpr auto kSlice = std::chrono::milliseconds(100);
    while (!stopAsked.load()) {
        const Clock::time_point now = Clock::now();
        if (now >= due)
            return true;
        std::this_thread::sleep_until(std::min(due, now + kSlice));
    }
    return false;
}

} // namespace

Player::Player(const Scenario &scenario, Sink &sink, Manifest *manifest)
    : m_scenario(scenario)
    , m_sink(sink)
    , m_manifest(manifest)
{}

void Player::requestStop()
{
    stopAsked.store(true);
}

bool Player::play()
{
    Generator generator(m_scenario);
    WireSchedule line;
    const Clock::time_point start = Clock::now();
    const auto realTime = [&](double seconds) {
        const std::chrono::duration<double> offset(seconds);
        return start + std::chrono::duration_cast<Clock::duration>(offset);
    };
    // Faster than real time, the line's pauses would shrink below what a receiver times its
    // work by (a recorder decodes when the line has been quiet for 700 ms); so the bytes of
    // each second of real time go out together at its end, and the pauses stay a second long.
    const bool batched = m_scenario.speed > 1;
    QByteArray batch;
    qint64 batchSecond = 0;
    auto sendBatch = [&] {
        if (batch.isEmpty())
            return true;
        if (!waitUntil(realTime(double(batchSecond + 1))))
            return false;
        const bool sent = m_sink.write(batch);
        batch.clear();
        return sent;
    };
    SimBlock block;
    while (!stopAsked.load() && generator.next(block)) {
        for (const WireWrite &write : line.place(block)) {
            if (batched) {
                const auto second = qint64(write.at / m_scenario.speed);
                if (second != batchSecond && !sendBatch())
                    return stopAsked.load();
                batchSecond = second;
                batch += write.bytes;
                continue;
            }
            if (m_scenario.speed > 0 && !waitUntil(realTime(write.at / m_scenario.speed)))
                return true;
            if (!m_sink.write(write.bytes))
                return stopAsked.load();
        }
        if (m_manifest)
            m_manifest->add(block);
    }
    if (!sendBatch())
        return stopAsked.load();
    m_sink.drain();
    return true;
}

} // namespace VelquinSim

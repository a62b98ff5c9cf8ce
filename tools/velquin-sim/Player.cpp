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
    SimBlock block;
    while (!stopAsked.load() && generator.next(block)) {
        for (const WireWrite &write : line.place(block)) {
            if (m_scenario.speed > 0) {
                const std::chrono::duration<double> offset(write.at / m_scenario.speed);
                if (!waitUntil(start + std::chrono::duration_cast<Clock::duration>(offset)))
                    return true;
            }
            if (!m_sink.write(write.bytes))
                return stopAsked.load();
        }
        if (m_manifest)
            m_manifest->add(block);
    }
    m_sink.drain();
    return true;
}

} // namespace VelquinSim

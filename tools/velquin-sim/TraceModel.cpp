#include "TraceModel.h"

#include "RunProgram.h"

#include <QRandomGenerator>

#include <cmath>
#include <numbers>

namespace VelquinSim {

namespace {

constexpr double kPairSeconds = 0.2;
constexpr double kBufferA = 2.35;
constexpr double kBufferB = 88.0;
/// Time constant of the gradient mixer, seconds.
constexpr double kMixerSeconds = 8.0;
constexpr double kUvNoise = 0.00025;
constexpr double kCondNoise = 0.012;

} // namespace

TraceModel::TraceModel(QRandomGenerator &random) : m_random(random), m_mixed(kBufferA)
{}

double TraceModel::uniform(double low, double high)
{
    return low + (high - low) * m_random.generateDouble();
}

double TraceModel::gaussian()
{
    // Box-Muller by hand: the standard distributions differ between libraries, and the same
    // seed must give the same bytes everywhere.
    const double u1 = 1.0 - m_random.generateDouble();
    const double u2 = m_random.generateDouble();
    return std::sqrt(-2.0 * std::log(u1)) * std::cos(2.0 * std::numbers::pi * u2);
}

void TraceModel::startRun(double runSeconds)
{
    m_runSeconds = runSeconds;
    m_peaks.clear();
    // What does not bind leaves the column shortly after injection, broad and tall.
    m_peaks.append({0.21 * runSeconds, uniform(0.25, 0.8), std::max(1.0, 0.02 * runSeconds)});
    const int eluting = 3 + int(m_random.bounded(3));
    for (int i = 0; i < eluting; ++i) {
        const double height = 0.04 * std::pow(35.0, m_random.generateDouble());
        const double width = std::max(0.6, uniform(0.006, 0.02) * runSeconds);
        m_peaks.append({uniform(0.32, 0.66) * runSeconds, height, width});
    }
    m_peaks.append({0.715 * runSeconds, uniform(0.05, 0.15), std::max(0.6, 0.008 * runSeconds)});
}

void TraceModel::step(double streamSeconds, double programSeconds, bool inRun, bool flowing)
{
    const double fraction = inRun && m_runSeconds > 0 ? programSeconds / m_runSeconds : 0;
    const double percentB = inRun ? RunProgram::percentB(fraction) : 0;

    if (flowing) {
        const double target = kBufferA + (kBufferB - kBufferA) * percentB / 100.0;
        m_mixed += (target - m_mixed) * (1.0 - std::exp(-kPairSeconds / kMixerSeconds));
    }
    // The cell warms and cools slowly with the room.
    const double temperature = 1.0 + 0.004 * std::sin(2 * std::numbers::pi * streamSeconds / 1500);
    m_conductivity = float(m_mixed * temperature + kCondNoise * gaussian());

    const double minutes = streamSeconds / 60.0;
    double absorbance = 0.0018 + 0.0012 * std::sin(2 * std::numbers::pi * streamSeconds / 2400) +
                        0.00003 * minutes + 0.010 * (m_mixed - kBufferA) / (kBufferB - kBufferA);
    if (inRun) {
        for (const Peak &peak : std::as_const(m_peaks)) {
            const double z = (programSeconds - peak.centre) / peak.width;
            if (std::abs(z) < 8)
                absorbance += peak.height * std::exp(-0.5 * z * z);
        }
    }
    m_uv = float(absorbance + kUvNoise * gaussian());
}

} // namespace VelquinSim

#include "Chromatogram.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace {

constexpr long long kPerMinute = 300;
constexpr long long kRunSamples = 120 * kPerMinute;

struct Peak
{
    double at;
    double height;
    double width;
};

double conductivityAt(double minute)
{
    if (minute < 10)
        return 5.0;
    if (minute < 20)
        return 50.0; // salt step
    if (minute < 80)
        return 50.0 + (minute - 20) / 60 * 350; // gradient
    if (minute < 95)
        return 500.0; // wash
    return 5.0;
}

} // namespace

Chromatogram::Chromatogram(long long count)
{
    std::mt19937 random(7);
    std::normal_distribution<float> noise(0.0f, 1.0f);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    m_samples.reserve(std::size_t(count));
    std::vector<Peak> peaks;
    int eventNumber = 0;
    for (long long i = 0; i < count; ++i) {
        const long long inRun = i % kRunSamples;
        const double minute = double(inRun) / kPerMinute;
        if (inRun == 0) {
            peaks.clear();
            const int peakCount = 3 + int(uniform(random) * 4);
            for (int p = 0; p < peakCount; ++p)
                peaks.push_back(Peak{10 + uniform(random) * 90, 0.05 + uniform(random) * 1.95,
                                     0.2 + uniform(random) * 1.3});
            m_marks.push_back({i, QStringLiteral("S"), 0xFFFF00, 50});
            for (const Peak &peak : peaks)
                if (peak.height > 1.0)
                    m_marks.push_back({i + qint64(peak.at * kPerMinute),
                                       QString::number(++eventNumber), 0x00FF00, 10});
            m_marks.push_back({i + 115 * kPerMinute, QStringLiteral("E"), 0xFFFF00, 40});
            m_marks.push_back({i + 116 * kPerMinute, QStringLiteral("Method\r\n"), 0, 0, true});
        }
        const double day = double(i) / (1440 * kPerMinute);
        double uv = 0.02 + 0.01 * std::sin(2 * std::numbers::pi * day) + 0.0002 * minute +
                    0.0008 * noise(random);
        for (const Peak &peak : peaks) {
            const double z = (minute - peak.at) / peak.width;
            if (std::abs(z) < 5)
                uv += peak.height * std::exp(-z * z / 2);
        }
        const double mS = conductivityAt(minute) + 0.3 * noise(random);
        m_samples.push_back(Pair{float(uv), float(mS)});
    }
    std::stable_sort(m_marks.begin(), m_marks.end(),
                     [](const Mark &a, const Mark &b) { return a.sample < b.sample; });
    std::erase_if(m_marks, [count](const Mark &m) { return m.sample >= count; });
}

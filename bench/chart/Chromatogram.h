#pragma once

#include <QString>

#include <vector>

/// @brief A deterministic log of back-to-back two-hour runs as the instrument sends them:
/// drifting, noisy UV baseline with peaks up to 2 AU, conductivity with salt steps and a
/// gradient, and the marks and method text each run carries.
class Chromatogram
{
public:
    struct Pair
    {
        float uv;
        float conductivity;
    };
    struct Mark
    {
        long long sample;
        QString label;
        qint32 color;
        qint16 height;
        bool methodText = false;
    };

    explicit Chromatogram(long long count);

    [[nodiscard]] const std::vector<Pair> &samples() const { return m_samples; }
    /// Event marks and method texts, in sample order.
    [[nodiscard]] const std::vector<Mark> &marks() const { return m_marks; }

private:
    std::vector<Pair> m_samples;
    std::vector<Mark> m_marks;
};

#pragma once

#include "chart/ChunkedArray.h"

#include <QtGlobal>

#include <limits>
#include <span>
#include <vector>

/// Lowest and highest value of a stretch; empty (min > max) when it held no finite number.
struct Extent
{
    float min = std::numeric_limits<float>::infinity();
    float max = -std::numeric_limits<float>::infinity();

    // NaN compares false both ways, so it never widens an extent. Written as selects so that
    // noisy data cost no mispredicted branches.
    void include(float value)
    {
        min = value < min ? value : min;
        max = value > max ? value : max;
    }
    void include(const Extent &other)
    {
        include(other.min);
        include(other.max);
    }
    [[nodiscard]] bool isEmpty() const { return !(min <= max); }
};

struct SamplePair
{
    float uv;
    float conductivity;
};

struct PairExtent
{
    Extent uv;
    Extent conductivity;

    void include(const SamplePair &pair)
    {
        uv.include(pair.uv);
        conductivity.include(pair.conductivity);
    }
    void include(const PairExtent &other)
    {
        uv.include(other.uv);
        conductivity.include(other.conductivity);
    }
};

/// @brief The samples of a run, five a second, with a min/max pyramid over them.
///
/// Samples sit in fixed-size chunks. Level 1 of the pyramid holds the extent of each block of
/// kFanOut samples, level 2 of each block of kFanOut level-1 entries, and so on. A block is
/// folded into the level above only when it closes, so an append is O(1) amortised, and any
/// stretch is summed from at most 2 * kFanOut entries per level.
class SampleStore
{
public:
    static constexpr double kSamplesPerMinute = 300.0;
    static constexpr qint64 kFanOut = 32;

    SampleStore();

    /// Throws std::bad_alloc when no chunk can be had; the store is unchanged then.
    void append(float uv, float conductivity);

    [[nodiscard]] qint64 count() const { return m_samples.size(); }
    [[nodiscard]] const SamplePair &at(qint64 index) const { return m_samples[index]; }
    [[nodiscard]] static double timeOf(qint64 index) { return double(index) / kSamplesPerMinute; }
    /// Index of the first sample standing at or after `minutes`, not clamped.
    [[nodiscard]] static qint64 indexAtOrAfter(double minutes);

    /// Extent of the samples [begin, end), clamped to what is held.
    [[nodiscard]] PairExtent extent(qint64 begin, qint64 end) const;
    /// Extent of each column k covering [timeFrom + k * columnWidth, timeFrom + (k + 1) *
    /// columnWidth) minutes, written to out[k].
    void columns(double timeFrom, double columnWidth, std::span<PairExtent> out) const;

private:
    using Level = ChunkedArray<PairExtent, 12>;

    // 32^12 samples outlast any run, so the level vectors never reallocate.
    static constexpr std::size_t kMaxLevels = 12;

    void reserveFor(qint64 newCount);
    void closeBlock(std::size_t level);
    void includeRange(PairExtent &result, std::size_t level, qint64 begin, qint64 end) const;

    ChunkedArray<SamplePair, 14> m_samples;
    std::vector<Level> m_levels;
    // m_open[l] gathers the block of level l + 1 that is still filling.
    std::vector<PairExtent> m_open;
};

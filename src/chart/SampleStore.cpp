#include "chart/SampleStore.h"

#include <algorithm>
#include <cmath>
#include <new>

SampleStore::SampleStore()
{
    m_levels.reserve(kMaxLevels);
    m_open.reserve(kMaxLevels + 1);
    m_open.emplace_back();
}

void SampleStore::append(float uv, float conductivity)
{
    const SamplePair pair{uv, conductivity};
    const qint64 newCount = count() + 1;
    // Only a sample that closes a block touches the levels; otherwise the one allocation that
    // may happen is the sample chunk's, before anything changes.
    if (newCount % kFanOut == 0)
        reserveFor(newCount);
    m_samples.append(pair);
    m_open[0].include(pair);
    if (newCount % kFanOut == 0)
        closeBlock(0);
}

qint64 SampleStore::indexAtOrAfter(double minutes)
{
    // The tolerance keeps a boundary that lands on a sample, give or take rounding, on it. Times
    // far beyond any run are held where a 64-bit index still takes them.
    const double index = std::ceil(minutes * kSamplesPerMinute - 1e-7);
    return std::isnan(index) ? 0 : qint64(std::clamp(index, -1e15, 1e15));
}

// Every allocation an append needs happens here, before anything changes.
void SampleStore::reserveFor(qint64 newCount)
{
    m_samples.reserveNext();
    std::size_t level = 0;
    for (qint64 n = newCount; n % kFanOut == 0; n /= kFanOut, ++level) {
        if (level == m_levels.size()) {
            if (level == kMaxLevels)
                throw std::bad_alloc();
            m_levels.emplace_back();
            m_open.emplace_back();
        }
        m_levels[level].reserveNext();
    }
}

void SampleStore::closeBlock(std::size_t level)
{
    const PairExtent closed = m_open[level];
    m_levels[level].append(closed);
    m_open[level] = PairExtent{};
    m_open[level + 1].include(closed);
    if (m_levels[level].size() % kFanOut == 0)
        closeBlock(level + 1);
}

void SampleStore::includeRange(PairExtent &result, std::size_t level, qint64 begin,
                               qint64 end) const
{
    if (level == 0) {
        for (qint64 i = begin; i < end; ++i)
            result.include(m_samples[i]);
        return;
    }
    const Level &entries = m_levels[level - 1];
    for (qint64 i = begin; i < end; ++i)
        result.include(entries[i]);
}

PairExtent SampleStore::extent(qint64 begin, qint64 end) const
{
    PairExtent result;
    qint64 lo = std::max<qint64>(begin, 0);
    qint64 hi = std::min(end, count());
    std::size_t level = 0;
    // Climb while whole blocks of the next level fit inside; the ragged ends are read at the
    // level below. The newest, part-filled block is never summarised, so it is read raw.
    while (lo < hi) {
        const qint64 loUp = (lo + kFanOut - 1) / kFanOut * kFanOut;
        const qint64 hiDown = hi / kFanOut * kFanOut;
        if (level == m_levels.size() || loUp >= hiDown) {
            includeRange(result, level, lo, hi);
            break;
        }
        includeRange(result, level, lo, loUp);
        includeRange(result, level, hiDown, hi);
        lo = loUp / kFanOut;
        hi = hiDown / kFanOut;
        ++level;
    }
    return result;
}

void SampleStore::columns(double timeFrom, double columnWidth, std::span<PairExtent> out) const
{
    qint64 begin = indexAtOrAfter(timeFrom);
    for (std::size_t k = 0; k < out.size(); ++k) {
        const qint64 end = indexAtOrAfter(timeFrom + double(k + 1) * columnWidth);
        out[k] = extent(begin, end);
        begin = end;
    }
}

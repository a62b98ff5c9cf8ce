#include "chart/SampleStore.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <tuple>

namespace {

auto fieldsOf(const PairExtent &extent)
{
    return std::tuple{extent.uv.min, extent.uv.max, extent.conductivity.min,
                      extent.conductivity.max};
}

} // namespace

TEST(SampleStore, ExtentOfAnySpanMatchesTheRawSamples)
{
    // Three full levels of the pyramid and a ragged tail, so spans cross every kind of edge.
    constexpr qint64 kCount = 3 * 32 * 32 * 32 + 7 * 32 + 13;
    SampleStore store;
    std::mt19937 random(5);
    std::normal_distribution<float> noise(0.0f, 1.0f);
    for (qint64 i = 0; i < kCount; ++i)
        store.append(noise(random), 100 + noise(random));
    // Whole blocks, block edges, the ragged tail and spans beyond the ends, then any spans.
    std::vector<std::pair<qint64, qint64>> spans{
        {0, kCount}, {31, 33}, {1024, 2048}, {kCount - 13, kCount}, {-10, kCount + 10}, {5, 5}};
    std::uniform_int_distribution<qint64> index(0, kCount);
    for (int i = 0; i < 300; ++i)
        spans.push_back(std::minmax(index(random), index(random)));
    for (const auto &[begin, end] : spans) {
        PairExtent expected;
        for (qint64 i = std::max<qint64>(begin, 0); i < std::min(end, kCount); ++i)
            expected.include(store.at(i));
        EXPECT_EQ(fieldsOf(store.extent(begin, end)), fieldsOf(expected)) << begin << ".." << end;
    }
}

TEST(SampleStore, ExtentSkipsWhatIsNoNumber)
{
    SampleStore store;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    store.append(nan, -inf);
    store.append(-0.5f, nan);
    for (int i = 0; i < 100; ++i)
        store.append(0.2f, 10.0f);
    EXPECT_EQ(fieldsOf(store.extent(0, store.count())), std::tuple(-0.5f, 0.2f, -inf, 10.0f));
    EXPECT_TRUE(store.extent(0, 1).uv.isEmpty());
}

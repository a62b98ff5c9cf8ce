#include "chart/SampleStore.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

PairExtent bruteForce(const SampleStore &store, qint64 begin, qint64 end)
{
    PairExtent result;
    for (qint64 i = std::max<qint64>(begin, 0); i < std::min(end, store.count()); ++i)
        result.include(store.at(i));
    return result;
}

void expectSame(const PairExtent &actual, const PairExtent &expected)
{
    EXPECT_EQ(actual.uv.min, expected.uv.min);
    EXPECT_EQ(actual.uv.max, expected.uv.max);
    EXPECT_EQ(actual.conductivity.min, expected.conductivity.min);
    EXPECT_EQ(actual.conductivity.max, expected.conductivity.max);
}

// Three full levels of the pyramid and a ragged tail, so spans cross every kind of edge.
constexpr qint64 kCount = 3 * 32 * 32 * 32 + 7 * 32 + 13;

SampleStore randomStore()
{
    SampleStore store;
    std::mt19937 random(5);
    std::normal_distribution<float> noise(0.0f, 1.0f);
    for (qint64 i = 0; i < kCount; ++i)
        store.append(noise(random), 100 + noise(random));
    return store;
}

} // namespace

TEST(SampleStore, ExtentOfAnySpanMatchesTheRawSamples)
{
    const SampleStore store = randomStore();
    std::mt19937 random(11);
    std::uniform_int_distribution<qint64> index(0, kCount);
    for (int i = 0; i < 300; ++i) {
        qint64 begin = index(random);
        qint64 end = index(random);
        if (begin > end)
            std::swap(begin, end);
        SCOPED_TRACE(testing::Message() << begin << ".." << end);
        expectSame(store.extent(begin, end), bruteForce(store, begin, end));
    }
    // Whole blocks, block edges, the ragged tail and spans beyond the ends.
    for (const auto &[begin, end] : {std::pair<qint64, qint64>{0, kCount},
                                     {31, 33},
                                     {1024, 2048},
                                     {kCount - 13, kCount},
                                     {-10, kCount + 10},
                                     {5, 5}}) {
        SCOPED_TRACE(testing::Message() << begin << ".." << end);
        expectSame(store.extent(begin, end), bruteForce(store, begin, end));
    }
}

TEST(SampleStore, NonFiniteAndNegativeSamplesAreHeldAsSent)
{
    SampleStore store;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    store.append(nan, -inf);
    store.append(-0.5f, nan);
    for (int i = 0; i < 100; ++i)
        store.append(0.2f, 10.0f);
    EXPECT_TRUE(std::isnan(store.at(0).uv));
    EXPECT_EQ(store.at(0).conductivity, -inf);
    EXPECT_EQ(store.at(1).uv, -0.5f);

    const PairExtent all = store.extent(0, store.count());
    EXPECT_EQ(all.uv.min, -0.5f);
    EXPECT_EQ(all.uv.max, 0.2f);
    EXPECT_EQ(all.conductivity.min, -inf);
    EXPECT_TRUE(store.extent(0, 1).uv.isEmpty());
}

TEST(SampleStore, ColumnsSumTheSamplesStandingInTheirTimeSpan)
{
    const SampleStore store = randomStore();
    const double from = 3.1;
    const double width = 0.37;
    std::vector<PairExtent> columns(40);
    store.columns(from, width, columns);
    for (std::size_t k = 0; k < columns.size(); ++k) {
        SCOPED_TRACE(k);
        const qint64 begin = SampleStore::indexAtOrAfter(from + double(k) * width);
        const qint64 end = SampleStore::indexAtOrAfter(from + double(k + 1) * width);
        EXPECT_LT(SampleStore::timeOf(begin - 1), from + double(k) * width);
        EXPECT_GE(SampleStore::timeOf(begin), from + double(k) * width - 1e-9);
        expectSame(columns[k], bruteForce(store, begin, end));
    }
}

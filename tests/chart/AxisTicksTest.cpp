#include "chart/AxisTicks.h"

#include <gtest/gtest.h>

TEST(AxisTicks, StepIsTheSmallestRoundOneThatFits)
{
    const struct
    {
        double span;
        int maxCount;
        double step;
    } cases[] = {
        {10.0, 10, 1.0},     {10.0, 4, 5.0},        {2.2, 10, 0.5},   {500.0, 8, 100.0},
        {1440.0, 12, 200.0}, {10080.0, 14, 1000.0}, {0.01, 5, 0.002}, {1.0, 10, 0.1},
        {3.0, 1, 5.0},       {0.0, 10, 0.0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.span << " in " << c.maxCount);
        EXPECT_NEAR(AxisTicks::roundStep(c.span, c.maxCount), c.step, c.step * 1e-9);
    }
}

TEST(AxisTicks, TicksAreMultiplesOfTheStepWithBothEndsIncluded)
{
    const std::vector<double> uv = AxisTicks::ticks(-0.2, 2.0, 0.2);
    ASSERT_EQ(uv.size(), 12u);
    EXPECT_NEAR(uv.front(), -0.2, 1e-12);
    EXPECT_NEAR(uv.back(), 2.0, 1e-12);
    EXPECT_EQ(uv[1], 0.0);

    const std::vector<double> time = AxisTicks::ticks(3.3, 9.9, 2.0);
    EXPECT_EQ(time, (std::vector<double>{4.0, 6.0, 8.0}));
    EXPECT_TRUE(AxisTicks::ticks(1.0, 0.0, 1.0).empty());
}

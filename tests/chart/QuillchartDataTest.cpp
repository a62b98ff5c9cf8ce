#include "chart/Quillchart.h"

#include <gtest/gtest.h>

TEST(Quillchart, NewChartIsEmptyWithTheDefaultAxesAndEachSampleAddsAThreeHundredthMinute)
{
    Quillchart chart;
    EXPECT_EQ(chart.GetLastTime(), 0.0f);
    EXPECT_FLOAT_EQ(chart.UvAxisMin(), -0.2f);
    EXPECT_FLOAT_EQ(chart.UvAxisMax(), 2.0f);
    EXPECT_FLOAT_EQ(chart.CondAxisMax(), 500.0f);
    EXPECT_FLOAT_EQ(chart.TimeAxisMax(), 10.0f);
    ASSERT_EQ(chart.AddSample(0.1f, 3.0f), 0);
    EXPECT_EQ(chart.GetLastTime(), 0.0f);
    for (int n = 2; n <= 3000; ++n) {
        const float previous = chart.GetLastTime();
        ASSERT_EQ(chart.AddSample(0.1f, 3.0f), 0);
        ASSERT_NEAR(chart.GetLastTime() - previous, 1.0 / 300, 1e-6) << n;
    }
    EXPECT_FLOAT_EQ(chart.GetLastTime(), 2999.0f / 300);
}

TEST(Quillchart, LastPointIsVisibleFromTheLeftEndUpToButNotOnTheRightEnd)
{
    Quillchart chart;
    for (int i = 0; i < 3000; ++i)
        chart.AddSample(0.0f, 0.0f);
    EXPECT_TRUE(chart.IsLastPointVisible());
    chart.AddSample(0.0f, 0.0f);
    EXPECT_FALSE(chart.IsLastPointVisible()) << "a pair on the right end has left the axis";
    chart.setTimeAxisMax(20.0f);
    chart.setTimeAxisMin(chart.GetLastTime());
    EXPECT_TRUE(chart.IsLastPointVisible());
    chart.setTimeAxisMin(chart.GetLastTime() + 0.001f);
    EXPECT_FALSE(chart.IsLastPointVisible());
}

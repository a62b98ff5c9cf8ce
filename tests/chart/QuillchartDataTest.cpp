#include "chart/Quillchart.h"

#include <gtest/gtest.h>

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

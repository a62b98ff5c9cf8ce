#include "chart/AxisTicks.h"

#include "chart/ChartFrame.h"

#include <QImage>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>
#include <tuple>

TEST(AxisTicks, StepIsTheSmallestRoundOneThatFits)
{
    const std::tuple<double, int, double> cases[] = {
        {10.0, 10, 1.0},     {10.0, 4, 5.0},        {2.2, 10, 0.5},   {500.0, 8, 100.0},
        {1440.0, 12, 200.0}, {10080.0, 14, 1000.0}, {0.01, 5, 0.002}, {1.0, 10, 0.1},
        {3.0, 1, 5.0},       {0.0, 10, 0.0},
    };
    for (const auto &[span, maxCount, step] : cases)
        EXPECT_NEAR(AxisTicks::roundStep(span, maxCount), step, step * 1e-9)
            << span << " in " << maxCount;
}

namespace {

struct View
{
    const char *name;
    ChartAxes axes;
    /// The fixed formats, 3 decimals for AU and 1 for mS/cm and minutes, are enough here.
    bool fixed;
};

using AxisLabels = testing::TestWithParam<View>;

int decimalsOf(const QString &label)
{
    const qsizetype point = label.lastIndexOf(QRegularExpression(QStringLiteral("[.,]")));
    return point < 0 ? 0 : int(label.size() - point - 1);
}

} // namespace

TEST_P(AxisLabels, NeighboursReadDifferentlyInTheFixedFormatsWhereTheySuffice)
{
    for (const QSize size : {QSize(800, 500), QSize(1600, 1000)}) {
        QImage image(size, QImage::Format_RGB32);
        const ChartFrame frame(image.rect(), GetParam().axes, QFont(), 1.0, &image);
        for (const auto &[axis, fixed] : {std::pair{ChartFrame::Axis::Uv, 3},
                                          {ChartFrame::Axis::Conductivity, 1},
                                          {ChartFrame::Axis::Time, 1}}) {
            const QStringList labels = frame.tickLabels(axis);
            SCOPED_TRACE(labels.join(QLatin1Char(' ')).toStdString());
            EXPECT_GE(labels.size(), 2);
            EXPECT_EQ(QSet<QString>(labels.begin(), labels.end()).size(), labels.size());
            for (const QString &label : labels)
                EXPECT_TRUE(GetParam().fixed ? decimalsOf(label) == fixed
                                             : decimalsOf(label) >= fixed);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Views, AxisLabels,
    testing::Values(View{"Default", ChartAxes{}, true},
                    View{"FullDay", {-2.0f, 2.0f, 0.0f, 500.0f, 0.0f, 1440.0f}, true},
                    View{"HalfMinute", {0.0f, 1.0f, 0.0f, 50.0f, 3.0f, 3.5f}, false},
                    View{"ThousandthOfAnAu", {0.615f, 0.616f, 100.0f, 100.5f, 3.0f, 3.5f}, false},
                    View{"FarOut", {1.998f, 1.999f, 499.5f, 500.0f, 10079.5f, 10080.0f}, false}),
    [](const auto &info) { return std::string(info.param.name); });

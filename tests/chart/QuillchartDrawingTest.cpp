#include "ChartImage.h"
#include "chart/ChartAnnotations.h"
#include "chart/ChartPalette.h"
#include "chart/ChartRenderer.h"
#include "chart/Quillchart.h"
#include "chart/SampleStore.h"

#include <QPainter>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <tuple>

namespace {

constexpr QSize kChartSize(800, 500);

std::set<int> rowsOf(const QList<QPoint> &pixels)
{
    std::set<int> rows;
    for (const QPoint &p : pixels)
        rows.insert(p.y());
    return rows;
}

std::set<int> changedColumns(const QImage &before, const QImage &after)
{
    std::set<int> columns;
    for (int y = 0; y < before.height(); ++y)
        for (int x = 0; x < before.width(); ++x)
            if (before.pixel(x, y) != after.pixel(x, y))
                columns.insert(x);
    return columns;
}

} // namespace

TEST(QuillchartDrawing, OneSampleSpikeShowsInAFullDayView)
{
    for (const qint64 spikeAt : {qint64(250001), qint64(431999)}) {
        SCOPED_TRACE(spikeAt);
        Quillchart chart;
        chart.resize(kChartSize);
        chart.setTimeAxisMax(1440.0f);
        for (qint64 i = 0; i < 432000; ++i)
            chart.AddSample(i == spikeAt ? 1.5f : 0.1f, 50.0f);
        chart.Redraw();
        const QImage image = grabChart(chart);
        const QRect plot = plotArea(image);
        ASSERT_TRUE(plot.isValid());

        const int x = columnAt(plot, spikeAt / 300.0, 0, 1440);
        const int spikeRow = rowAt(plot, 1.5, -0.2, 2.0);
        EXPECT_FALSE(pixelsOf(image, ChartPalette::kUv,
                              QRect(x - 1, plot.top(), 3, spikeRow + 2 - plot.top()))
                         .isEmpty());
        EXPECT_TRUE(pixelsOf(image, ChartPalette::kUv,
                             QRect(plot.left(), plot.top(), x - 1 - plot.left(),
                                   rowAt(plot, 0.2, -0.2, 2.0) - plot.top()))
                        .isEmpty());
    }
}

TEST(QuillchartDrawing, MarkStandsAtTheColumnOfItsTime)
{
    // A positive height rises from the time axis, a negative one hangs from the top.
    const QColor green(0, 255, 0);
    for (const auto &[time, height] : {std::pair{0.0f, 10}, {2.5f, 10}, {7.3f, -10}, {10.0f, 60}}) {
        SCOPED_TRACE(time);
        Quillchart chart;
        chart.resize(kChartSize);
        chart.AddEventMark(QStringLiteral("1"), 0x00FF00, qint16(height), time);
        chart.Redraw();
        const QImage image = grabChart(chart);
        const QRect plot = plotArea(image);
        const QRect foot(plot.left(), height > 0 ? plot.bottom() : plot.top(), plot.width(), 1);
        EXPECT_EQ(pixelsOf(image, green, foot),
                  QList{QPoint(columnAt(plot, time, 0, 10), foot.y())});
        const int otherEnd = height > 0 ? plot.top() : plot.bottom();
        EXPECT_TRUE(
            pixelsOf(image, green, QRect(plot.left(), otherEnd, plot.width(), 1)).isEmpty());
    }
}

TEST(QuillchartDrawing, DrawNewDataChangesOnlyTheColumnsOfTheNewSampleAsARedrawWould)
{
    // Full view draws column bars; the narrow zooms join single samples with lines, and the
    // very first sample has nothing to join.
    for (const auto &[from, to, count] :
         {std::tuple{0.0f, 10.0f, 1200}, {3.9f, 4.1f, 1200}, {0.0f, 0.2f, 0}}) {
        SCOPED_TRACE(to);
        Quillchart chart;
        chart.resize(kChartSize);
        chart.setTimeAxisMin(from);
        chart.setTimeAxisMax(to);
        for (int i = 0; i < count; ++i)
            chart.AddSample(0.5f + 0.3f * std::sin(i / 50.0f), 100.0f + i / 10.0f);
        chart.Redraw();
        const QImage before = grabChart(chart);
        chart.AddSample(1.8f, 400.0f);
        chart.DrawNewData();
        const QImage after = grabChart(chart);

        const QRect plot = plotArea(after);
        const std::set<int> changed = changedColumns(before, after);
        ASSERT_FALSE(changed.empty());
        EXPECT_GE(*changed.begin(), columnAt(plot, (count - 1) / 300.0, from, to) - 1);
        EXPECT_LE(*changed.rbegin(), columnAt(plot, count / 300.0, from, to) + 1);
        chart.Redraw();
        EXPECT_EQ(grabChart(chart), after);
    }
}

TEST(QuillchartDrawing, NonFiniteAndOffScaleSamplesDoNotBreakTheTrace)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    Quillchart chart;
    chart.resize(kChartSize);
    for (int i = 0; i < 3000; ++i) {
        const float odd = i % 3 == 0 ? nan : i % 3 == 1 ? inf : -5.0f;
        chart.AddSample(i < 1500 ? odd : 1.0f, i < 1500 ? -odd : 250.0f);
    }
    chart.Redraw();
    chart.AddSample(-inf, nan);
    chart.DrawNewData();
    const QImage image = grabChart(chart);
    const QRect plot = plotArea(image);
    const QRect secondHalf(QPoint(columnAt(plot, 5.0, 0, 10) + 1, plot.top()),
                           QPoint(columnAt(plot, 2999 / 300.0, 0, 10) - 1, plot.bottom()));
    // A steady value is one row, without a gap.
    const QList<QPoint> uv = pixelsOf(image, ChartPalette::kUv, secondHalf);
    EXPECT_EQ(rowsOf(uv), std::set<int>{rowAt(plot, 1.0, -0.2, 2.0)});
    EXPECT_EQ(uv.size(), secondHalf.width());
    EXPECT_EQ(rowsOf(pixelsOf(image, ChartPalette::kConductivity, secondHalf)),
              std::set<int>{rowAt(plot, 250.0, 0.0, 500.0)});
}

TEST(QuillchartDrawing, HiDpiImageKeepsTheTraceOneDevicePixelThick)
{
    SampleStore store;
    ChartAnnotations annotations;
    for (int i = 0; i <= 3000; ++i)
        store.append(1.0f, 100.0f);
    QImage image(QSize(1600, 1000), QImage::Format_RGB32);
    image.setDevicePixelRatio(2.0);
    QPainter painter(&image);
    ChartAxes axes;
    axes.uvMin = 0.0f;
    const PlotGeometry geometry =
        ChartRenderer(store, annotations).paint(painter, QRectF(0, 0, 800, 500), axes, {}, QFont());
    painter.end();
    image.setDevicePixelRatio(1.0);
    EXPECT_EQ(plotArea(image), geometry.plot());
    EXPECT_GT(geometry.plot().width(), 1300);
    const QList<QPoint> blue = pixelsOf(image, ChartPalette::kUv, geometry.plot());
    EXPECT_EQ(rowsOf(blue), std::set<int>{geometry.uvRow(1.0)});
    EXPECT_EQ(blue.size(), geometry.plot().width());
}

#include "ChartImage.h"
#include "chart/Quillchart.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace {

constexpr QSize kChartSize(800, 500);
// 0xBBGGRR values, told apart on screen and not used by the frame or traces.
constexpr qint32 kColors[] = {0x00ff00, 0xff00ff, 0x00ffff, 0x808000, 0x0080ff};

qsizetype labelPixels(const QImage &image, qint32 bgr, int aboveRow)
{
    const QColor color(bgr & 0xff, (bgr >> 8) & 0xff, (bgr >> 16) & 0xff);
    QRect area = plotArea(image);
    area.setBottom(aboveRow);
    return pixelsOf(image, color, area).size();
}

} // namespace

TEST(MarkLabels, CrowdedLabelsStandApartAndStayOverTracesDrawnLive)
{
    Quillchart live;
    live.resize(kChartSize);
    live.show();
    live.Redraw();
    for (int i = 0; i < 1500; ++i)
        live.AddSample(0.0f, 0.0f);
    live.DrawNewData();
    // Five marks a pixel or two apart, all of the same height: their labels would cover one
    // another where they stand.
    for (int i = 0; i < 5; ++i) {
        live.AddEventMark(QStringLiteral("Fraction"), kColors[i], 30, 5.0f + float(i) * 0.02f);
        live.DrawNewData();
    }
    // Traces and a method mark that then come through the labels pass under them, as after a
    // redraw.
    for (int i = 0; i < 300; ++i) {
        live.AddSample(0.3f + 0.9f * std::abs(std::sin(i / 7.0f)), 0.0f);
        if (i == 150)
            live.AddMethodText(QStringLiteral("Step 2"), live.GetLastTime());
        if (i % 10 == 9)
            live.DrawNewData();
    }
    const QImage drawnLive = grabChart(live);
    live.Redraw();
    const QImage redrawn = grabChart(live);
    const QRect plot = plotArea(redrawn);
    const int tip = plot.bottom() - int(0.3 * (plot.height() - 1)) - 2;
    std::vector<qsizetype> counts;
    for (qint32 color : kColors) {
        counts.push_back(labelPixels(redrawn, color, tip));
        EXPECT_EQ(labelPixels(drawnLive, color, tip), counts.back());
    }
    const auto [least, most] = std::minmax_element(counts.begin(), counts.end());
    EXPECT_GT(*least, 100);
    EXPECT_GE(*least * 2, *most);
}

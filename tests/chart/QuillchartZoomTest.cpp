#include "ChartImage.h"
#include "chart/ChartAxes.h"
#include "chart/Quillchart.h"

#include <QTest>

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <optional>

namespace {

struct ZoomEvent
{
    qint16 index;
    ChartAxes event;
    ChartAxes properties;
};

ChartAxes propertiesOf(const Quillchart &chart)
{
    return ChartAxes{chart.UvAxisMin(),   chart.UvAxisMax(),   chart.CondAxisMin(),
                     chart.CondAxisMax(), chart.TimeAxisMin(), chart.TimeAxisMax()};
}

class QuillchartZoom : public testing::Test
{
protected:
    void SetUp() override
    {
        m_chart.setIndex(3);
        m_chart.resize(800, 500);
        for (int i = 0; i < 2400; ++i)
            m_chart.AddSample(0.5f, 200.0f);
        m_chart.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_chart));
        m_chart.Redraw();
        m_plot = plotArea(grabChart(m_chart));
        ASSERT_TRUE(m_plot.isValid());
        QObject::connect(&m_chart, &Quillchart::Zoomed,
                         [this](qint16 index, float from, float to, float uvMin, float uvMax,
                                float condMin, float condMax) {
                             m_zoomed.push_back(
                                 {index, ChartAxes{uvMin, uvMax, condMin, condMax, from, to},
                                  propertiesOf(m_chart)});
                         });
        QObject::connect(&m_chart, &Quillchart::Unzoomed, [this](qint16 index) {
            m_unzoomed.push_back({index, {}, propertiesOf(m_chart)});
        });
    }

    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(&m_chart, Qt::LeftButton, {}, from);
        QTest::mouseMove(&m_chart, (from + to) / 2);
        QTest::mouseMove(&m_chart, to);
        QTest::mouseRelease(&m_chart, Qt::LeftButton, {}, to);
    }

    Quillchart m_chart;
    QRect m_plot;
    std::vector<ZoomEvent> m_zoomed;
    std::vector<ZoomEvent> m_unzoomed;
};

double along(int from, int to, int at, double min, double max)
{
    return min + double(at - from) / (to - from) * (max - min);
}

} // namespace

TEST_F(QuillchartZoom, DraggedRectangleBecomesTheAxesBeforeZoomedIsRaised)
{
    const QPoint from = m_plot.topLeft() + QPoint(m_plot.width() / 5, m_plot.height() / 4);
    const QPoint to = m_plot.topLeft() + QPoint(m_plot.width() / 2, m_plot.height() * 3 / 4);
    // A click that moves a pixel or so is no rectangle.
    drag(m_plot.center(), m_plot.center() + QPoint(1, 40));
    EXPECT_TRUE(m_zoomed.empty());
    drag(to, from);

    ASSERT_EQ(m_zoomed.size(), 1u);
    const ZoomEvent &zoom = m_zoomed.front();
    EXPECT_EQ(zoom.index, 3);
    EXPECT_EQ(zoom.event, zoom.properties);
    EXPECT_EQ(zoom.properties, propertiesOf(m_chart));
    const auto [left, top, right, bottom] =
        std::array{m_plot.left(), m_plot.top(), m_plot.right(), m_plot.bottom()};
    EXPECT_NEAR(zoom.event.timeMin, along(left, right, from.x(), 0, 10), 1e-4);
    EXPECT_NEAR(zoom.event.timeMax, along(left, right, to.x(), 0, 10), 1e-4);
    EXPECT_NEAR(zoom.event.uvMax, along(bottom, top, from.y(), -0.2, 2.0), 1e-4);
    EXPECT_NEAR(zoom.event.uvMin, along(bottom, top, to.y(), -0.2, 2.0), 1e-4);
    EXPECT_NEAR(zoom.event.condMax, along(bottom, top, from.y(), 0, 500), 1e-2);
    EXPECT_NEAR(zoom.event.condMin, along(bottom, top, to.y(), 0, 500), 1e-2);
    EXPECT_TRUE(m_unzoomed.empty());
}

TEST_F(QuillchartZoom, LeavingTheZoomRestoresTheAxesBeforeUnzoomedIsRaised)
{
    const ChartAxes original = propertiesOf(m_chart);
    const std::function<void()> gestures[] = {
        [this] { QTest::mouseClick(&m_chart, Qt::RightButton, {}, m_plot.center()); },
        [this] { QTest::keyClick(&m_chart, Qt::Key_Escape); },
    };
    for (const auto &leave : gestures) {
        m_unzoomed.clear();
        const QPoint corner = m_plot.topLeft() + QPoint(20, 20);
        drag(corner, corner + QPoint(100, 80));
        drag(corner + QPoint(10, 10), corner + QPoint(60, 50));
        ASSERT_NE(propertiesOf(m_chart), original);
        leave();
        ASSERT_EQ(m_unzoomed.size(), 1u);
        EXPECT_EQ(m_unzoomed.front().index, 3);
        EXPECT_EQ(m_unzoomed.front().properties, original);
        EXPECT_EQ(propertiesOf(m_chart), original);
        leave();
        EXPECT_EQ(m_unzoomed.size(), 1u);
    }
}

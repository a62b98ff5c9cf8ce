#include "ChartImage.h"
#include "chart/ChartAxes.h"
#include "chart/Quillchart.h"

#include <QTest>

#include <functional>
#include <gtest/gtest.h>

namespace {

ChartAxes propertiesOf(const Quillchart &chart)
{
    return ChartAxes{chart.UvAxisMin(),   chart.UvAxisMax(),   chart.CondAxisMin(),
                     chart.CondAxisMax(), chart.TimeAxisMin(), chart.TimeAxisMax()};
}

/// A chart of index 3 that records, with each Zoomed or Unzoomed, the axes the signal gives and
/// those the chart already has when it is raised.
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
                             EXPECT_EQ(index, 3);
                             m_zoomed.push_back({uvMin, uvMax, condMin, condMax, from, to});
                             EXPECT_EQ(m_zoomed.back(), propertiesOf(m_chart));
                         });
        QObject::connect(&m_chart, &Quillchart::Unzoomed, [this](qint16 index) {
            EXPECT_EQ(index, 3);
            m_unzoomed.push_back(propertiesOf(m_chart));
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
    std::vector<ChartAxes> m_zoomed;
    std::vector<ChartAxes> m_unzoomed;
};

} // namespace

TEST_F(QuillchartZoom, DragZoomsAndRightClickOrEscapeRestoresTheAxesBeforeEachSignal)
{
    const ChartAxes original = propertiesOf(m_chart);
    const QPoint from = m_plot.topLeft() + QPoint(m_plot.width() / 5, m_plot.height() / 4);
    const QPoint to = m_plot.topLeft() + QPoint(m_plot.width() / 2, m_plot.height() * 3 / 4);
    // A click that moves a pixel or so is no rectangle.
    drag(m_plot.center(), m_plot.center() + QPoint(1, 40));
    EXPECT_TRUE(m_zoomed.empty());
    drag(to, from);
    ASSERT_EQ(m_zoomed.size(), 1u);
    // The rectangle spans a fifth to a half of the width and a quarter to three quarters of the
    // height, to within a pixel.
    const ChartAxes &zoom = m_zoomed.front();
    EXPECT_NEAR(zoom.timeMin, 2.0, 0.05);
    EXPECT_NEAR(zoom.timeMax, 5.0, 0.05);
    EXPECT_NEAR(zoom.uvMax, 1.45, 0.01);
    EXPECT_NEAR(zoom.uvMin, 0.35, 0.01);
    EXPECT_NEAR(zoom.condMax, 375, 2);
    EXPECT_NEAR(zoom.condMin, 125, 2);
    EXPECT_TRUE(m_unzoomed.empty());

    const std::function<void()> gestures[] = {
        [this] { QTest::mouseClick(&m_chart, Qt::RightButton, {}, m_plot.center()); },
        [this] { QTest::keyClick(&m_chart, Qt::Key_Escape); },
    };
    for (const auto &leave : gestures) {
        m_unzoomed.clear();
        const QPoint corner = m_plot.topLeft() + QPoint(20, 20);
        drag(corner + QPoint(10, 10), corner + QPoint(60, 50));
        ASSERT_NE(propertiesOf(m_chart), original);
        leave();
        leave();
        EXPECT_EQ(m_unzoomed, std::vector<ChartAxes>{original});
        EXPECT_EQ(propertiesOf(m_chart), original);
    }

    // No span is too small to zoom into.
    m_chart.setUvAxisMin(0);
    m_chart.setUvAxisMax(0.001f);
    m_chart.setCondAxisMin(0);
    m_chart.setCondAxisMax(0.5f);
    m_chart.Redraw();
    drag(from, to);
    EXPECT_LT(m_chart.UvAxisMax() - m_chart.UvAxisMin(), 0.001f);
    EXPECT_LT(m_chart.CondAxisMax() - m_chart.CondAxisMin(), 0.5f);
}

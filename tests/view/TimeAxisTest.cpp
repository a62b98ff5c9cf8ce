#include "WindowFixture.h"
#include "chart/Quillchart.h"
#include "runtime/Numbers.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

namespace {

class TimeAxisTest : public WindowFixture
{
protected:
    Quillchart &recorder() { return *window->Chart[0]; }
    void setWindow(const QString &minutes)
    {
        window->FrameScaleAxis->txtChartTime->setText(minutes);
        window->FrameScaleAxis->cmdSetTime->click();
    }
};

} // namespace

TEST_F(TimeAxisTest, FullViewEndsOnTheWholeMinuteRoundedHalfToEven)
{
    window->SetFullView();
    EXPECT_FLOAT_EQ(recorder().TimeAxisMax(), 10.0f) << "an empty chart shows ten minutes";
    recordMinutes(2.0);
    window->SetFullView();
    EXPECT_FLOAT_EQ(recorder().TimeAxisMax(), 2.0f) << "2.5 rounds to the even 2";
    recordMinutes(1.1);
    window->SetFullView();
    EXPECT_FLOAT_EQ(recorder().TimeAxisMax(), 4.0f);
    EXPECT_FALSE(window->FrameScaleAxis->txtChartTime->isEnabled());
    recordMinutes(32767.5 - 3.1);
    window->SetFullView();
    EXPECT_FLOAT_EQ(recorder().TimeAxisMax(), 32768.0f) << "beyond the bar's range";
}

TEST_F(TimeAxisTest, AWindowBeyondTheDataIsPulledBack)
{
    recordMinutes(20.4);
    window->FrameScaleAxis->optTimeAxis[1]->setChecked(true);
    EXPECT_TRUE(window->FrameScaleAxis->txtChartTime->isEnabled());
    EXPECT_TRUE(window->ScrollChart[0]->isEnabled());

    window->tabs.ChartViews[0].TimeFrom = 15;
    recorder().setTimeAxisMin(15);
    setWindow("10");
    EXPECT_FLOAT_EQ(recorder().TimeAxisMax(), 21.0f);
    EXPECT_FLOAT_EQ(window->tabs.ChartViews[0].TimeFrom, 11.0f);

    setWindow("50");
    EXPECT_FLOAT_EQ(window->tabs.ChartViews[0].TimeFrom, 0.0f);
    EXPECT_DOUBLE_EQ(window->tabs.WindowMinutes[0], 21.0);
    EXPECT_EQ(window->FrameScaleAxis->txtChartTime->text(), "21.0");
    EXPECT_FALSE(window->FrameScaleAxis->cmdSetTime->isEnabled());

    setWindow("0.05");
    EXPECT_EQ(window->FrameScaleAxis->txtChartTime->text(), "21.0") << "refused with a beep";
    EXPECT_EQ(dialogs.beeps, 1);
}

TEST_F(TimeAxisTest, ScrollBarRangeAndStepsFollowTheWindow)
{
    recordMinutes(40.0);
    window->FrameScaleAxis->optTimeAxis[1]->setChecked(true);
    QScrollBar *bar = window->ScrollChart[0];
    EXPECT_EQ(bar->maximum(), 30) << "40.5 - 10 rounds to 30";
    EXPECT_EQ(bar->pageStep(), 10);

    // Dragging the thumb moves the chart with it.
    bar->setSliderDown(true);
    bar->setSliderPosition(12);
    EXPECT_FLOAT_EQ(recorder().TimeAxisMin(), 12.0f);
    EXPECT_FLOAT_EQ(recorder().TimeAxisMax(), 22.0f);
    EXPECT_FLOAT_EQ(window->tabs.ChartViews[0].TimeFrom, 12.0f);
    bar->setSliderDown(false);

    setWindow("0.5");
    EXPECT_EQ(bar->pageStep(), 1) << "a window under a minute steps by one";
}

TEST_F(TimeAxisTest, ZoomIsTakenOverAsAWindowAndUnzoomGoesBackToFullView)
{
    recordMinutes(8.0);
    window->SetFullView();
    Quillchart &chart = recorder();
    const QRect plot = chart.rect();
    QTest::mousePress(&chart, Qt::LeftButton, {}, QPoint(plot.width() * 3 / 10, plot.height() / 4));
    QTest::mouseMove(&chart, QPoint(plot.width() * 6 / 10, plot.height() * 3 / 4));
    QTest::mouseRelease(&chart, Qt::LeftButton, {},
                        QPoint(plot.width() * 6 / 10, plot.height() * 3 / 4));

    ASSERT_TRUE(window->tabs.Zoomed[0]);
    EXPECT_TRUE(window->FrameScaleAxis->optTimeAxis[1]->isChecked());
    const ChartViewState &state = window->tabs.ChartViews[0];
    EXPECT_FLOAT_EQ(state.TimeFrom, chart.TimeAxisMin());
    EXPECT_FLOAT_EQ(state.UvMax, chart.UvAxisMax());
    EXPECT_EQ(window->FrameScaleAxis->txtChartTime->text(), Format(state.TimeSpan, "0.0"));

    QTest::mouseClick(&chart, Qt::RightButton);
    EXPECT_FALSE(window->tabs.Zoomed[0]);
    EXPECT_TRUE(window->FrameScaleAxis->optTimeAxis[0]->isChecked());
    EXPECT_FLOAT_EQ(chart.TimeAxisMax(), 8.0f);
    EXPECT_FLOAT_EQ(window->tabs.ChartViews[0].UvMax, 2.0f);
    EXPECT_EQ(window->FrameScaleAxis->cmbYAxis[0]->currentText(), "2.000");

    // The entry's six characters limit typing, not what the window writes there.
    emit chart.Zoomed(0, 0.0f, 12345.6f, -0.2f, 2.0f, 0.0f, 500.0f);
    QLineEdit *entry = window->FrameScaleAxis->txtChartTime;
    EXPECT_EQ(entry->text(), "12345.6");
    EXPECT_FALSE(window->FrameScaleAxis->cmdSetTime->isEnabled());
    entry->selectAll();
    QTest::keyClicks(entry, "1234567");
    EXPECT_EQ(entry->text(), "123456");
}

TEST_F(TimeAxisTest, LiveViewJumpsOnlyWhenTheNewestPairLeavesTheAxis)
{
    window->FrameScaleAxis->optTimeAxis[1]->setChecked(true);
    window->mnuStart_Click();
    recordMinutes(10.0); // the last pair at 9.997
    window->UpdateLiveView();
    EXPECT_FLOAT_EQ(recorder().TimeAxisMin(), 0.0f) << "still inside: the axis stays";
    recordMinutes(1.0 / 300.0); // the last pair at 10.0, the right end
    window->UpdateLiveView();
    EXPECT_FLOAT_EQ(recorder().TimeAxisMin(), 1.0f);
    EXPECT_FLOAT_EQ(recorder().TimeAxisMax(), 11.0f);
    EXPECT_FLOAT_EQ(window->tabs.ChartViews[0].TimeFrom, 1.0f);
    EXPECT_FALSE(window->ScrollChart[0]->isEnabled()) << "the live view owns the window";

    // Full view gives a quarter more room than the run has, from where the axis starts.
    window->FrameScaleAxis->optTimeAxis[0]->setChecked(true);
    window->Chart[0]->setTimeAxisMin(0);
    window->Chart[0]->setTimeAxisMax(11);
    recordMinutes(0.5);
    window->UpdateLiveView();
    EXPECT_FLOAT_EQ(recorder().TimeAxisMax(), 11.0f);
    recordMinutes(0.5);
    window->UpdateLiveView();
    EXPECT_FLOAT_EQ(recorder().TimeAxisMax(), recorder().GetLastTime() * 1.25f);
}

TEST_F(TimeAxisTest, StopGivesTheBarANegativeMaximumForAShortRun)
{
    window->mnuStart_Click();
    recordMinutes(3.0 + 1.0 / 300.0); // the last pair at 3.0
    window->mnuStop_Click();
    EXPECT_EQ(window->ScrollChart[0]->maximum(), -6) << "3.5 - 10 = -6.5, half to even";
    EXPECT_EQ(window->ScrollChart[0]->value(), -6);
    EXPECT_FALSE(window->ScrollChart[0]->isEnabled()) << "full view keeps the bar off";

    window->mnuStart_Click();
    recordMinutes(20.0);
    window->mnuStop_Click();
    EXPECT_EQ(window->ScrollChart[0]->minimum(), 0) << "a later run cannot scroll before 0";
}

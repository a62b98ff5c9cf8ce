#include "WindowFixture.h"
#include "chart/Quillchart.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace {

class AxisPanelsTest : public WindowFixture
{
protected:
    /// Types into an entry as the operator does: select all, type, press Enter. The keys go
    /// through the window to whatever has the focus, as the platform delivers them.
    void type(QWidget *entry, const QString &text, bool enter = true)
    {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        window->setFocus();
        entry->setFocus(); // which selects the whole entry
        QCoreApplication::processEvents();
        QTest::keyClicks(nullptr, text);
        if (enter)
            QTest::keyClick(window->windowHandle(), Qt::Key_Return);
    }
    QComboBox *fullScale(int panel) { return window->FrameScaleAxis->cmbYAxis[panel]; }
};

} // namespace

TEST_F(AxisPanelsTest, TypedFullScalesAreLimitedWithABeepAndTooSmallAGapIsRefused)
{
    type(fullScale(0), "5");
    EXPECT_EQ(fullScale(0)->currentText(), "2.000");
    EXPECT_EQ(dialogs.beeps, 1);
    EXPECT_FLOAT_EQ(window->Chart[0]->UvAxisMax(), 2.0f);

    type(window->FrameScaleAxis->txtYAxisMin[0], "-1", false);
    type(fullScale(0), "0.0005");
    EXPECT_EQ(fullScale(0)->currentText(), "0.001");
    EXPECT_EQ(dialogs.beeps, 2);

    type(window->FrameScaleAxis->txtYAxisMin[1], "600", false);
    type(fullScale(1), "700");
    EXPECT_EQ(dialogs.beeps, 4) << "full scale and minimum both limited";
    EXPECT_EQ(fullScale(1)->currentText(), "500.0");
    EXPECT_EQ(window->FrameScaleAxis->txtYAxisMin[1]->text(), "499.5");
    EXPECT_FLOAT_EQ(window->Chart[0]->CondAxisMin(), 499.5f);

    type(window->FrameScaleAxis->txtYAxisMin[0], "1", false);
    type(fullScale(0), "1");
    ASSERT_EQ(dialogs.boxes.size(), 1) << "too small a gap: refused, and the entries go back";
    EXPECT_EQ(fullScale(0)->currentText(), "0.001");
    EXPECT_EQ(window->FrameScaleAxis->txtYAxisMin[0]->text(), "-1.000");
    EXPECT_FLOAT_EQ(window->Chart[0]->UvAxisMin(), -1.0f);
}

TEST_F(AxisPanelsTest, ListPicksApplyAtOnceAndTypedValuesNeedNotBeInTheList)
{
    window->FrameScaleAxis->cmbYAxis[0]->setCurrentIndex(2);
    emit window->FrameScaleAxis->cmbYAxis[0]->activated(2);
    EXPECT_EQ(window->FrameScaleAxis->txtYAxisMin[0]->text(), "-0.050")
        << "a tenth of the full scale below 0";
    EXPECT_FLOAT_EQ(window->Chart[0]->UvAxisMax(), 0.5f);

    type(window->FrameScaleAxis->txtYAxisMin[0], "-0.5", false);
    type(fullScale(0), "1x.5");
    EXPECT_EQ(dialogs.beeps, 1) << "the letter is refused";
    EXPECT_FLOAT_EQ(window->tabs.ChartViews[0].UvMax, 1.5f);
    EXPECT_EQ(fullScale(0)->currentText(), "1.500");
    EXPECT_FLOAT_EQ(window->tabs.ChartViews[0].UvMin, -0.5f) << "Enter is no list pick";
    EXPECT_EQ(fullScale(0)->count(), 11) << "nor does it add to the list";

    type(fullScale(1), "10");
    EXPECT_FLOAT_EQ(window->Chart[0]->CondAxisMax(), 10.0f) << "not completed to 100.0";
}

TEST_F(AxisPanelsTest, SetIsLitWhileItsEntryDiffersAsText)
{
    type(fullScale(0), "0.5", false);
    EXPECT_TRUE(window->FrameScaleAxis->cmdSet[0]->isEnabled()) << "0.5 is not the 0.500 shown";
    type(window->FrameScaleAxis->txtYAxisMin[0], "-0.200", false);
    EXPECT_FALSE(window->FrameScaleAxis->cmdSet[0]->isEnabled()) << "the last edit decides";
    type(window->FrameScaleAxis->txtYAxisMin[0], "-0.1", false);
    EXPECT_TRUE(window->FrameScaleAxis->cmdSet[0]->isEnabled());
    window->FrameScaleAxis->cmdSet[0]->click();
    EXPECT_FALSE(window->FrameScaleAxis->cmdSet[0]->isEnabled());
    EXPECT_FLOAT_EQ(window->Chart[0]->UvAxisMin(), -0.1f);
}

TEST_F(AxisPanelsTest, KeyFilterFollowsTheLocalesSeparatorAndTheMinusRule)
{
    QLineEdit *minimum = window->FrameScaleAxis->txtYAxisMin[0];
    minimum->clear();
    QTest::keyClicks(minimum, "-1.5x");
    EXPECT_EQ(minimum->text(), "-1.5");
    EXPECT_EQ(dialogs.beeps, 1);
    QTest::keyClicks(minimum, ".-");
    EXPECT_EQ(minimum->text(), "-1.5") << "a second point and a later minus are refused";
    window->FrameScaleAxis->txtYAxisMin[1]->clear();
    QTest::keyClicks(window->FrameScaleAxis->txtYAxisMin[1], "-");
    EXPECT_EQ(window->FrameScaleAxis->txtYAxisMin[1]->text(), "")
        << "only the UV minimum may be negative";

    QLocale::setDefault(QLocale(QLocale::German));
    window->FrameScaleAxis->optTimeAxis[1]->setChecked(true);
    window->FrameScaleAxis->txtChartTime->clear();
    QTest::keyClicks(window->FrameScaleAxis->txtChartTime, "2.5");
    EXPECT_EQ(window->FrameScaleAxis->txtChartTime->text(), "25") << "the point is refused";
    window->FrameScaleAxis->txtChartTime->clear();
    QTest::keyClicks(window->FrameScaleAxis->txtChartTime, "2,5");
    EXPECT_EQ(window->FrameScaleAxis->txtChartTime->text(), "2,5") << "the comma passes";
}

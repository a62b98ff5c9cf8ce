#include "WindowFixture.h"
#include "runtime/Twips.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>

using MainWindowTest = WindowFixture;

TEST_F(MainWindowTest, AxisFrameKeepsItsDesignSizeAndEveryTabIsLaidOut)
{
    const AxisFrame &frame = *window->FrameScaleAxis;
    EXPECT_NEAR(frame.width(), twips(&frame, 7750), 1);
    EXPECT_NEAR(frame.height(), twips(&frame, 1095), 1);
    EXPECT_NEAR(window->minimumWidth(), twips(window.get(), 7850), 1);
    EXPECT_NEAR(window->TabChart->y(), twips(window.get(), 100), 1);
    EXPECT_NEAR(frame.y() - window->TabChart->geometry().bottom() - 1, twips(window.get(), 100), 1);
    for (int i = 1; i < 5; ++i)
        EXPECT_EQ(window->ScrollChart[i]->geometry(), window->ScrollChart[0]->geometry()) << i;
}

TEST_F(MainWindowTest, ADimmedSetButtonLooksTheSameInEveryPanel)
{
    const AxisFrame &frame = *window->FrameScaleAxis;
    const QImage timeSet = frame.cmdSetTime->grab().toImage();
    for (QPushButton *button : {frame.cmdSet[0], frame.cmdSet[1]})
        EXPECT_TRUE(button->grab().toImage() == timeSet) << "not in the axis colour";
}

TEST_F(MainWindowTest, TheToolbarCannotBeHiddenFromAContextMenu)
{
    QToolBar *bar = window->toolbar.Toolsbar;
    QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(5, 5), bar->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(bar, &click);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(MainWindowTest, MenuShortcutsWinOverTheFocusedEntry)
{
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    window->menu.mnuClose->setEnabled(true);
    QSignalSpy closed(window->menu.mnuClose, &QAction::triggered);
    for (QWidget *entry : std::initializer_list<QWidget *>{window->FrameScaleAxis->txtYAxisMin[0],
                                                           window->FrameScaleAxis->cmbYAxis[1]}) {
        entry->setFocus();
        QTest::keyClick(window->windowHandle(), Qt::Key_C, Qt::ControlModifier);
    }
    EXPECT_EQ(closed.count(), 2) << "Close, not Copy";
}

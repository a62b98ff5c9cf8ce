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

TEST_F(MainWindowTest, TheToolbarCannotBeHiddenFromAContextMenu)
{
    QToolBar *bar = window->toolbar.Toolsbar;
    QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(5, 5), bar->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(bar, &click);
    QWidget *popup = QApplication::activePopupWidget();
    EXPECT_EQ(popup, nullptr);
    if (popup)
        popup->close();
}

TEST_F(MainWindowTest, MenuShortcutsWinOverTheFocusedEntry)
{
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    window->menu.mnuClose->setEnabled(true);
    QSignalSpy closed(window->menu.mnuClose, &QAction::triggered);
    QSignalSpy exported(window->menu.mnuExport, &QAction::triggered);
    for (QWidget *entry : {static_cast<QWidget *>(window->FrameScaleAxis->txtYAxisMin[0]),
                           static_cast<QWidget *>(window->FrameScaleAxis->cmbYAxis[1])}) {
        entry->setFocus();
        QTest::keyClick(window->windowHandle(), Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(window->windowHandle(), Qt::Key_E, Qt::ControlModifier);
    }
    EXPECT_EQ(closed.count(), 2) << "Close, not Copy";
    EXPECT_EQ(exported.count(), 2);
}

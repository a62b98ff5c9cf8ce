#include "WindowFixture.h"
#include "view/HelpCommands.h"
#include "view/HelpWindow.h"

#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>

namespace {

QString shownPage(frmMain &window)
{
    return window.help->helpWindow().browser()->source().fileName();
}

} // namespace

using Help = WindowFixture;

TEST_F(Help, EveryTopicHasAPageWhoseLinksAndPicturesAllResolve)
{
    const QRegularExpression reference(QStringLiteral(R"((?:href|src)="([^"#:]+)[^"]*")"));
    for (int context : {0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 11}) {
        QFile page(HelpWindow::topicPage(context).mid(3));
        ASSERT_TRUE(page.open(QIODevice::ReadOnly)) << context;
        const QString html = QString::fromUtf8(page.readAll());
        EXPECT_TRUE(html.contains(QStringLiteral("<h1"))) << context;
        for (const auto &match : reference.globalMatch(html))
            EXPECT_TRUE(QFile::exists(QStringLiteral(":/help/") + match.captured(1)))
                << page.fileName().toStdString() << " -> " << match.captured(1).toStdString();
    }
    EXPECT_EQ(HelpWindow::topicPage(7), HelpWindow::topicPage(0));
}

TEST_F(Help, F1OpensTheTopicOfTheHighlightedItemElseOfTheWindow)
{
    window->menu.mnuFile->popup(window->mapToGlobal(QPoint()));
    window->menu.mnuFile->setActiveAction(window->menu.mnuOpenLog);
    QTest::keyClick(window->menu.mnuFile, Qt::Key_F1);
    EXPECT_EQ(shownPage(*window), QStringLiteral("open.html"));
    window->menu.mnuFile->setActiveAction(window->menu.mnuExit);
    QTest::keyClick(window->menu.mnuFile, Qt::Key_F1);
    EXPECT_EQ(shownPage(*window), QStringLiteral("intro.html"));
    window->menu.mnuFile->hide();

    window->mnuIndex_Click();
    EXPECT_EQ(shownPage(*window), QStringLiteral("index.html"));
    QTest::keyClick(window->FrameScaleAxis->txtChartTime, Qt::Key_F1);
    EXPECT_EQ(shownPage(*window), QStringLiteral("intro.html"));
    EXPECT_TRUE(window->help->helpWindow().isVisible());
}

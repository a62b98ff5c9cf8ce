#include "documents/FileNames.h"

#include "runtime/Twips.h"

#include <QWidget>

#include <cmath>
#include <gtest/gtest.h>

TEST(FileNames, TitleIsBehindTheLastSeparatorAndNameBeforeTheFirstPoint)
{
    const std::pair<QString, QString> titles[] = {
        {"/runs/2024/a.b.chd", "a.b.chd"}, {"run.chd", "run.chd"}, {"/runs/", ""}};
    for (const auto &[path, title] : titles)
        EXPECT_EQ(GetFileTitle(path), title) << path.toStdString();
    const std::pair<QString, QString> names[] = {
        {"run.2.chd", "run"}, {".chd", ""}, {"run", "run"}, {"a.b.chd", "a"}};
    for (const auto &[title, name] : names)
        EXPECT_EQ(StripExtension(title), name) << title.toStdString();
}

TEST(FileNames, CaptionTakesAnEllipsisOnlyWhenItDoesNotFit)
{
    QWidget window;
    const auto width = [&](const QString &text) {
        return toTwips(&window, window.fontMetrics().horizontalAdvance(text));
    };
    const QString text = "Gradient run of the twelfth column";
    EXPECT_EQ(ShortenCaption(text, float(std::ceil(width(text))), window), text)
        << "what fits the whole width stays whole, though wider than the room left by ...";

    const QString shortened = ShortenCaption(text, 1080, window);
    ASSERT_TRUE(shortened.endsWith("..."));
    const QString kept = shortened.chopped(3);
    const double room = 1080 - width("...");
    EXPECT_TRUE(text.startsWith(kept));
    EXPECT_LE(width(kept), room);
    EXPECT_GT(width(text.left(kept.size() + 1)), room) << "the longest start that fits is kept";

    EXPECT_EQ(ShortenCaption("WW", 1, window), "W...") << "one character always stays";
}

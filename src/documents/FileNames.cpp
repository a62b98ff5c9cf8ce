#include "documents/FileNames.h"

#include "runtime/Twips.h"

#include <QDir>
#include <QWidget>

QString GetFileTitle(const QString &path)
{
    // Qt hands paths over with "/" on every platform; the platform's own separator counts too.
    const qsizetype cut =
        qMax(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QDir::separator()));
    return path.mid(cut + 1);
}

QString StripExtension(const QString &name)
{
    const qsizetype point = name.indexOf(QLatin1Char('.'));
    return point < 0 ? name : name.left(point);
}

QString ShortenCaption(const QString &Text, float MaxWidth, const QWidget &window)
{
    const auto width = [&window](const QString &text) {
        return toTwips(&window, window.fontMetrics().horizontalAdvance(text));
    };
    const QString ellipsis = QStringLiteral("...");
    const double Room = MaxWidth - width(ellipsis);
    if (width(Text) <= MaxWidth)
        return Text;
    QString cut = Text;
    for (qsizetype n = Text.size() - 1; n >= 1; --n) {
        cut = Text.left(n);
        if (width(cut) <= Room)
            break;
    }
    return cut + ellipsis;
}

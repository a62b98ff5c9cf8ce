#pragma once

#include <QString>

class QWidget;

/// All behind the last directory separator of `path`; the whole text when there is none.
[[nodiscard]] QString GetFileTitle(const QString &path);
/// All before the first point, so run.2.chd is named run, and .chd nothing.
[[nodiscard]] QString StripExtension(const QString &name);
/// `Text` as it stands when it fits `MaxWidth` twips in the window's font; else cut short
/// enough to take "..." within that width, keeping at least one character.
[[nodiscard]] QString ShortenCaption(const QString &Text, float MaxWidth, const QWidget &window);

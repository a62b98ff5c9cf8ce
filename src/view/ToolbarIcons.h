#pragma once

#include <QIcon>
#include <QString>

/// The toolbar's pictures, drawn as vectors so they stay crisp at any scale. Keys are the
/// image keys of the toolbar: picOpen, picSave, picPrint, picClear, picRecord, picStop,
/// picMethod, picNotes, picLogOn, picLogOff; and picLogo, the program's own picture.
[[nodiscard]] QIcon toolbarIcon(const QString &imageKey);

#pragma once

#include <QImage>

/// The splash picture: the program's name over a drawn chromatogram, a 24-bit image.
[[nodiscard]] QImage splashPicture();

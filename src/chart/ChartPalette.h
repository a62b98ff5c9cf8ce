#pragma once

#include <QColor>

/// The chart's colours, chosen so that each thing drawn can be told apart on paper and on screen.
namespace ChartPalette {
inline const QColor kBackground{255, 255, 255};
inline const QColor kFrame{64, 64, 64};
inline const QColor kGrid{222, 222, 222};
inline const QColor kText{0, 0, 0};
inline const QColor kUv{0, 0, 255};
inline const QColor kConductivity{220, 0, 0};
inline const QColor kMethod{96, 96, 96};
} // namespace ChartPalette

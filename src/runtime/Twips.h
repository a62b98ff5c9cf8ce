#pragma once

#include <QWidget>

/// Lengths of the window's design are in twips. The original laid them out for an 8-point
/// face 13 pixels high at 15 twips a pixel; scaling by the line height of the font in use keeps
/// the proportions on any screen and with any desktop font.
inline int twips(const QWidget *widget, double length)
{
    const double lineHeight = widget->fontMetrics().height();
    return int(length / 15.0 * lineHeight / 13.0 + 0.5);
}

inline double toTwips(const QWidget *widget, int pixels)
{
    return pixels * 15.0 * 13.0 / widget->fontMetrics().height();
}

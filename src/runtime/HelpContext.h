#pragma once

#include <QObject>
#include <QVariant>

/// A window, a control or a menu command names its help topic by a context number; F1 opens
/// the topic of the highlighted menu command, else of the focused control or its nearest
/// parent that names one.
inline constexpr const char *helpContextProperty = "helpContext";

inline void setHelpContext(QObject *object, int context)
{
    object->setProperty(helpContextProperty, context);
}

/// -1 where the object names no topic.
inline int helpContext(const QObject *object)
{
    const QVariant value = object->property(helpContextProperty);
    return value.isValid() ? value.toInt() : -1;
}

#pragma once

#include <QList>
#include <QPair>
#include <QString>

/// The per-user settings store: application, section, key, text value. Every call reads or
/// writes the store anew, so that copies running side by side see each other's changes.
[[nodiscard]] QString GetSetting(const QString &appName, const QString &section, const QString &key,
                                 const QString &defaultValue = {});
void SaveSetting(const QString &appName, const QString &section, const QString &key,
                 const QString &value);
/// Deletes one key, or the whole section when `key` is empty.
void DeleteSetting(const QString &appName, const QString &section, const QString &key = {});
/// The rows of a section, in numeric key order (keys that are not numbers after them).
[[nodiscard]] QList<QPair<QString, QString>> GetAllSettings(const QString &appName,
                                                            const QString &section);

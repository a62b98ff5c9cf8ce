#include "runtime/SettingsStore.h"

#include "runtime/RuntimeError.h"

#include <QSettings>

#include <algorithm>

namespace {

QSettings store(const QString &appName)
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, appName, appName);
}

void check(const QSettings &settings)
{
    if (settings.status() == QSettings::AccessError)
        Raise(ErrorNumber::PermissionDenied);
    if (settings.status() == QSettings::FormatError)
        Raise(ErrorNumber::DeviceIo);
}

/// A value as it stands in the file: an unquoted comma, as in a decimal number edited by hand
/// where the comma is the separator, makes the store read a list.
QString textOf(const QVariant &value)
{
    return value.userType() == QMetaType::QStringList ? value.toStringList().join(QLatin1Char(','))
                                                      : value.toString();
}

} // namespace

QString GetSetting(const QString &appName, const QString &section, const QString &key,
                   const QString &defaultValue)
{
    QSettings settings = store(appName);
    const QVariant value = settings.value(section + QLatin1Char('/') + key);
    check(settings);
    return value.isValid() ? textOf(value) : defaultValue;
}

void SaveSetting(const QString &appName, const QString &section, const QString &key,
                 const QString &value)
{
    QSettings settings = store(appName);
    settings.setValue(section + QLatin1Char('/') + key, value);
    settings.sync();
    check(settings);
}

void DeleteSetting(const QString &appName, const QString &section, const QString &key)
{
    QSettings settings = store(appName);
    settings.remove(key.isEmpty() ? section : section + QLatin1Char('/') + key);
    settings.sync();
    check(settings);
}

QList<QPair<QString, QString>> GetAllSettings(const QString &appName, const QString &section)
{
    QSettings settings = store(appName);
    settings.beginGroup(section);
    check(settings);
    QList<QPair<QString, QString>> rows;
    for (const QString &key : settings.childKeys())
        rows.append({key, textOf(settings.value(key))});
    std::stable_sort(rows.begin(), rows.end(), [](const auto &a, const auto &b) {
        bool aNumber = false;
        bool bNumber = false;
        const qlonglong aValue = a.first.toLongLong(&aNumber);
        const qlonglong bValue = b.first.toLongLong(&bNumber);
        if (aNumber != bNumber)
            return aNumber;
        return aNumber ? aValue < bValue : a.first < b.first;
    });
    return rows;
}

#include "documents/Settings.h"

#include "runtime/ErrorRoute.h"
#include "runtime/App.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "runtime/SettingsStore.h"

namespace {

const QString kSection = QStringLiteral("Options");
const QString kComPortNumber = QStringLiteral("ComPortNumber");
const QString kDataLogging = QStringLiteral("DataLogging");
const QString kDataFileSizeHours = QStringLiteral("DataFileSizeHours");
const QString kTrue = QStringLiteral("True");
const QString kFalse = QStringLiteral("False");

QString readKey(const QString &key, const QString &defaultValue)
{
    return GetSetting(App::Title(), kSection, key, defaultValue);
}

void saveKey(const QString &key, const QString &value)
{
    SaveSetting(App::Title(), kSection, key, value);
}

/// The words in any case, or a number, zero being false; anything else is a type mismatch.
bool toBoolean(const QString &text)
{
    const QString word = text.trimmed();
    if (word.compare(kTrue, Qt::CaseInsensitive) == 0)
        return true;
    if (word.compare(kFalse, Qt::CaseInsensitive) == 0)
        return false;
    return CDbl(word) != 0.0;
}

} // namespace

Settings::Settings(ErrorRoute &errors, const Int16 &InstanceNumber)
    : m_errors(errors)
    , m_instanceNumber(InstanceNumber)
{}

void Settings::ReadSettings()
{
    const int failure = trapError([this] {
        ComPortNumber = CInt(CDbl(readKey(kComPortNumber, QStringLiteral("1"))));
        DataLogging = toBoolean(readKey(kDataLogging, kTrue));
        DataFileSizeHours = CDbl(readKey(kDataFileSizeHours, CStr(24LL)));
    });
    if (failure == 0)
        return;
    m_errors.HandelError(-20);
    SetDefaultSettings();
}

void Settings::SaveSettings()
{
    // A second copy keeps its changes to itself, so the first copy's choices stand.
    if (m_instanceNumber != 1)
        return;
    saveKey(kComPortNumber, CStr(static_cast<long long>(ComPortNumber.value())));
    saveKey(kDataLogging, DataLogging ? kTrue : kFalse);
    saveKey(kDataFileSizeHours, CStr(DataFileSizeHours));
}

void Settings::SetDefaultSettings()
{
    ComPortNumber = 1;
    DataLogging = true;
    DataFileSizeHours = 24.0;
}

#include "shell/InstanceRegistry.h"

#include "documents/LogPlace.h"
#include "runtime/App.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "runtime/SettingsStore.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QLocale>
#include <QRegularExpression>
#include <QTime>

namespace {

const QString kSection = QStringLiteral("LogInfo");
const QString kCount = QStringLiteral("0");

/// The numeric value of a text as the store's values are read: its leading number, else 0.
double numericValue(const QString &text)
{
    static const QRegularExpression leading(QStringLiteral(R"(^\s*[-+]?(\d+\.?\d*|\.\d+))"));
    const QRegularExpressionMatch match = leading.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}

/// Runs a routine whose failures it reports itself, keeping what it already wrote.
template <typename Body> void reporting(const char *routine, Body &&body)
{
    try {
        body();
    } catch (const RuntimeError &error) {
        MsgBox(QStringLiteral("Error in %1!  ").arg(QLatin1String(routine)) +
               QString::number(error.number()) + error.description());
    }
}

QString entryKey(int number)
{
    return QString::number(number);
}

/// A decimal name unique among running copies: the process id, stepped on past a directory a
/// crashed copy left under the same number, as after a reboot.
QString freeTag(const QString &folder)
{
    qint64 tag = QCoreApplication::applicationPid();
    while (QDir(folder + QLatin1Char('/') + QString::number(tag)).exists())
        tag += 65536;
    return QString::number(tag);
}

/// Pads `text` with blanks up to `width`; a negative pad is an invalid call, as ever.
void padTo(QString &text, int width)
{
    if (text.size() > width)
        Raise(ErrorNumber::InvalidProcedureCall);
    text = text.leftJustified(width, QLatin1Char(' '));
}

} // namespace

InstanceRegistry::InstanceRegistry(LogPlace &place, LogInfoRows LogInfoTable)
    : m_place(place)
    , m_logInfoTable(std::move(LogInfoTable))
{}

LogInfoRows InstanceRegistry::readLogInfo()
{
    LogInfoRows rows;
    ignoreErrors([&] { rows = GetAllSettings(App::Title(), kSection); });
    return rows;
}

QString InstanceRegistry::logFolder()
{
    return App::Path() + QStringLiteral("/Log");
}

void InstanceRegistry::prepareLogDirectory()
{
    const QString folder = logFolder();
    InstanceTag = freeTag(folder);
    const QLocale locale;
    StartDate = locale.toString(QDate::currentDate(), QLocale::ShortFormat);
    StartTime = locale.toString(QTime::currentTime(), QLocale::LongFormat);
    m_place.SystemName = QStringLiteral("Default");
    const QString directory = folder + QLatin1Char('/') + InstanceTag;
    // There is no hidden attribute to set here: the folder lies in the per-user data
    // directory, out of the operator's way already.
    if (!QDir(folder).exists() && !QDir().mkdir(folder))
        Raise(ErrorNumber::PathFileAccess);
    if (!QDir().mkdir(directory))
        Raise(ErrorNumber::PathFileAccess);
    m_place.LogDirectory = directory + QLatin1Char('/');
    AddInstance();
    UpdateRegistry();
}

void InstanceRegistry::AddInstance()
{
    reporting("AddInstance", [&] {
        const Int16 number =
            CInt(numericValue(GetSetting(App::Title(), kSection, kCount, kCount)) + 1);
        SaveSetting(App::Title(), kSection, kCount, CStr(static_cast<long long>(number.value())));
        m_place.InstanceNumber = number;
        if (GetSetting(App::Title(), kSection, entryKey(number), kCount) != kCount)
            MsgBox(QStringLiteral("Existing Registry entry will be overwritten, improved "
                                  "functionality to come later!"));
    });
}

void InstanceRegistry::UpdateRegistry()
{
    reporting("UpdateRegistry", [&] {
        const QChar bar = QLatin1Char('|');
        SaveSetting(App::Title(), kSection, entryKey(m_place.InstanceNumber),
                    m_place.SystemName + bar + StartDate + bar + StartTime + bar + InstanceTag);
    });
}

void InstanceRegistry::RemoveRegistryEntry()
{
    reporting("RemoveRegistryEntry", [&] {
        DeleteSetting(App::Title(), kSection, entryKey(m_place.InstanceNumber));
        const Int16 count =
            CInt(numericValue(GetSetting(App::Title(), kSection, kCount, kCount)) - 1);
        SaveSetting(App::Title(), kSection, kCount, CStr(static_cast<long long>(count.value())));
    });
}

QString InstanceRegistry::LogDirFromEntry(const QString &value)
{
    QString tag;
    int bars = 0;
    for (const QChar c : value) {
        if (bars == 3)
            tag += c;
        if (c == QLatin1Char('|'))
            ++bars;
    }
    return logFolder() + QLatin1Char('/') + tag;
}

QString InstanceRegistry::EntryDisplayText(const QString &value)
{
    QString text = QStringLiteral("  ");
    int bars = 0;
    for (const QChar c : value) {
        if (c != QLatin1Char('|')) {
            if (bars == 3)
                break;
            text += c;
            continue;
        }
        if (bars == 0)
            padTo(text, 32);
        else if (bars == 1)
            padTo(text, 45);
        ++bars;
    }
    return text;
}

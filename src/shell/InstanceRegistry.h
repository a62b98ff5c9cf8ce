#pragma once

#include <QList>
#include <QPair>
#include <QString>

struct LogPlace;

/// The rows of the settings section of the running copies, as the store gives them.
using LogInfoRows = QList<QPair<QString, QString>>;

/// @brief The register of running copies: one key per copy in the settings section "LogInfo",
/// key "0" counting them, and one log directory per copy under the Log folder.
///
/// A clean exit removes the copy's key and directory; what a later start finds is a crashed
/// copy's, which recovery offers.
class InstanceRegistry
{
public:
    /// Takes the copies registered before this one; by default it reads them now.
    explicit InstanceRegistry(LogPlace &place, LogInfoRows LogInfoTable = readLogInfo());

    /// The register as the store holds it, in the order of the copies' numbers.
    [[nodiscard]] static LogInfoRows readLogInfo();

    [[nodiscard]] const LogInfoRows &LogInfoTable() const { return m_logInfoTable; }

    /// Names this copy, makes the Log folder and the copy's own directory (a failure is a
    /// run-time error that ends the program), then registers the copy.
    void prepareLogDirectory();
    /// Takes the count plus one as this copy's number, saying so when that key is taken.
    void AddInstance();
    /// Writes this copy's entry: system name, start date, start time and tag.
    void UpdateRegistry();
    /// Deletes this copy's key and counts it out.
    void RemoveRegistryEntry();

    /// The log directory an entry names, without a trailing separator.
    [[nodiscard]] static QString LogDirFromEntry(const QString &value);
    /// An entry as a row of the recovery list: name, date from column 33, time from column 46.
    [[nodiscard]] static QString EntryDisplayText(const QString &value);
    /// The Log folder, without a trailing separator.
    [[nodiscard]] static QString logFolder();

    QString InstanceTag;
    QString StartDate;
    QString StartTime;

private:
    LogPlace &m_place;
    LogInfoRows m_logInfoTable;
};

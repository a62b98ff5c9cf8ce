#include "shell/Recovery.h"

#include "chart/Quillchart.h"
#include "documents/LogPlace.h"
#include "documents/RunningLog.h"
#include "runtime/App.h"
#include "runtime/MsgBox.h"
#include "runtime/RuntimeError.h"
#include "runtime/SettingsStore.h"
#include "shell/frmDataRecovery.h"

#include <QDir>
#include <QFile>
#include <QListWidget>

namespace {

const QString kUnknown = QStringLiteral("  Unknown Log File ");

QStringList entriesOf(const QString &directory, QDir::Filters filters)
{
    return QDir(directory).entryList(filters | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

Recovery::Recovery(LogPlace &place, const LogInfoRows &LogInfoTable, Quillchart &logChart,
                   RunningLog &log, QWidget *parent)
    : m_place(place)
    , m_logInfoTable(LogInfoTable)
    , m_logChart(logChart)
    , m_log(log)
    , m_parent(parent)
{}

void Recovery::run()
{
    frmDataRecovery form(*this, m_parent);
    FillKnownLogs(form);
    FillUnknownLogs(form);
    if (form.lstLogFiles->count() > 0) {
        Beep();
        form.exec();
    } else {
        PurgeLogDirectories();
    }
}

void Recovery::FillKnownLogs(frmDataRecovery &form)
{
    if (App::PrevInstance()) {
        MsgBox(QStringLiteral("Found Previous Instance!"));
        return;
    }
    if (m_logInfoTable.size() < 2)
        return;
    for (const auto &[key, value] : m_logInfoTable) {
        if (key == QLatin1String("0"))
            continue;
        m_place.LogDirectory = InstanceRegistry::LogDirFromEntry(value);
        if (m_logChart.CheckLogFile(m_place.LogDirectory))
            form.addRow(InstanceRegistry::EntryDisplayText(value));
    }
}

void Recovery::FillUnknownLogs(frmDataRecovery &form)
{
    UnknownLogsFound = false;
    UnknownLogDirs.clear();
    const QString folder = InstanceRegistry::logFolder();
    // "." and ".." are tested too; they never hold a log.
    const QStringList names =
        QDir(folder).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &name : names) {
        if (!m_logChart.CheckLogFile(folder + QLatin1Char('/') + name))
            continue;
        // The register is read as a table; a start that found none has nothing to search, and
        // that ends the program, as it always has.
        if (m_logInfoTable.isEmpty())
            Raise(ErrorNumber::TypeMismatch);
        const bool known = std::any_of(m_logInfoTable.begin(), m_logInfoTable.end(),
                                       [&](const auto &row) { return row.second.contains(name); });
        if (!known) {
            UnknownLogsFound = true;
            UnknownLogDirs << name;
        }
    }
    if (UnknownLogsFound)
        for (const QString &name : UnknownLogDirs)
            form.addRow(kUnknown + name);
}

bool Recovery::saveLog(const QString &directory, const QString &name)
{
    m_place.LogDirectory = directory;
    m_place.SystemName = name;
    m_log.mnuSaveLog_Click();
    return m_log.LogSaved();
}

bool Recovery::recoverRow(const QString &text)
{
    bool saved = false;
    for (const auto &[key, value] : m_logInfoTable)
        if (InstanceRegistry::EntryDisplayText(value) == text &&
            saveLog(InstanceRegistry::LogDirFromEntry(value),
                    value.section(QLatin1Char('|'), 0, 0)))
            saved = true;
    if (UnknownLogsFound)
        for (const QString &name : UnknownLogDirs)
            if (kUnknown + name == text &&
                saveLog(InstanceRegistry::logFolder() + QLatin1Char('/') + name, name))
                saved = true;
    return saved;
}

void Recovery::PurgeLogDirectories()
{
    const QString folder = InstanceRegistry::logFolder();
    QStringList directories = entriesOf(folder, QDir::Dirs);
    // With no directory left, the Log folder itself is emptied and removed; start-up makes it
    // anew.
    const bool none = directories.isEmpty();
    if (none)
        directories << QString();
    for (const QString &name : directories) {
        const QString directory = none ? folder : folder + QLatin1Char('/') + name;
        // Nested directories are not descended into: such a directory stays.
        for (const QString &file : entriesOf(directory, QDir::Files | QDir::Dirs))
            QFile::remove(directory + QLatin1Char('/') + file);
        QDir().rmdir(directory);
    }
    if (!m_logInfoTable.isEmpty())
        ignoreErrors([] { DeleteSetting(App::Title(), QStringLiteral("LogInfo")); });
}

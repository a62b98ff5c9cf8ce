#include "documents/RunningLog.h"

#include "acquisition/Link.h"
#include "acquisition/SampleIntake.h"
#include "chart/Quillchart.h"
#include "documents/LogPlace.h"
#include "documents/Settings.h"
#include "runtime/ComDlg.h"
#include "runtime/ErrorRoute.h"
#include "runtime/RuntimeError.h"
#include "runtime/Timers.h"

#include <QAction>
#include <QDir>

namespace {
constexpr qint32 kLogUnreadable = -22;
constexpr qint32 kLogNotSaved = -17;
} // namespace

RunningLog::RunningLog(Settings &settings, const Link &link, SampleIntake &intake, LogPlace &place,
                       Quillchart &logChart, Quillchart &saveChart, ComDlg &dialog,
                       ErrorRoute &errors, QAction &mnuSaveLog)
    : m_settings(settings)
    , m_link(link)
    , m_intake(intake)
    , m_place(place)
    , m_logChart(logChart)
    , m_saveChart(saveChart)
    , m_dialog(dialog)
    , m_errors(errors)
    , mnuSaveLog(mnuSaveLog)
{
    m_timer.setInterval(20000);
    QObject::connect(&m_timer, &QTimer::timeout, [this] { TimerSaveLog_Timer(); });
}

void RunningLog::TimerSaveLog_Timer()
{
    const qint16 status = m_logChart.WriteLog(m_place.LogDirectory, m_place.InstanceNumber,
                                              m_timer.interval(), m_settings.DataFileSizeHours);
    if (status == 0)
        mnuSaveLog.setEnabled(true);
    else
        m_errors.HandelError(status);
}

void RunningLog::mnuSaveLog_Click()
{
    m_logSaved = true;
    try {
        if (!m_logChart.CheckLogFile(m_place.LogDirectory)) {
            m_errors.HandelError(kLogUnreadable);
            return;
        }
        m_dialog.Flags =
            ComDlgFlags::OverwritePrompt | ComDlgFlags::HideReadOnly | ComDlgFlags::PathMustExist;
        m_dialog.DialogTitle = QStringLiteral("Save Log File As...");
        m_dialog.FileName = m_place.SystemName;
        m_dialog.CancelError = true;
        m_dialog.Filter = QStringLiteral("Quillchart Log(*.chl)|*.chl|All Files(*.*)|*.*");
        m_dialog.DefaultExt = QStringLiteral("chl");
        m_dialog.ShowSave();
        if (m_dialog.FileName.isEmpty())
            return;
        if (m_saveChart.SaveLogAs(m_place.LogDirectory, m_place.InstanceNumber,
                                  m_dialog.FileName) == 0) {
            mnuSaveLog.setEnabled(false);
        } else {
            m_errors.HandelError(kLogNotSaved);
            m_logSaved = false;
        }
    } catch (const RuntimeError &error) {
        m_errors.HandelError(error.number());
        m_logSaved = false;
    }
}

void RunningLog::logOn()
{
    m_settings.DataLogging = true;
    if (m_link.state().ComDataSeen) {
        m_intake.logOn();
        setTimerEnabled(m_timer, true);
    }
}

void RunningLog::logOff()
{
    m_settings.DataLogging = false;
    m_timer.stop();
}

void RunningLog::followLogging()
{
    setTimerEnabled(m_timer, m_settings.DataLogging);
}

void RunningLog::stopTimer()
{
    m_timer.stop();
}

void RunningLog::writeBeforeEnd()
{
    ignoreErrors([&] {
        (void)m_logChart.WriteLog(m_place.LogDirectory, m_place.InstanceNumber, m_timer.interval(),
                                  m_settings.DataFileSizeHours);
    });
}

void RunningLog::closeLog()
{
    ignoreErrors([&] { m_logChart.CloseLog(m_place.LogDirectory, m_place.InstanceNumber); });
    QString directory = m_place.LogDirectory;
    directory.chop(1);
    if (!directory.isEmpty())
        QDir().rmdir(directory);
}

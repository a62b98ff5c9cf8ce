#pragma once

#include "acquisition/InstrumentNews.h"
#include "runtime/Int16.h"

#include <QString>
#include <QTimer>

class ErrorRoute;
class Link;
class Quillchart;
class RecordCommands;

/// @brief The run state machine between the decoder and the two charts.
///
/// The recorder chart `Chart(0)` takes samples while a session is on; the hidden log chart
/// `Chart(5)` takes them whenever logging is on. News never touches a chart at once: it leaves a
/// waiting label or flag, and the conductivity sample that closes the next pair applies it, so
/// that every mark stands on a sample. An instrument that sends no status blocks has its run
/// state read from the letters of its UV blocks instead. The state is the intake's own: others
/// read it and change it only through the operations below.
class SampleIntake : public InstrumentNews
{
public:
    SampleIntake(Quillchart &chart0, Quillchart &chart5, const Link &link, ErrorRoute &errors,
                 RecordCommands &commands, const bool &DataLogging);
    SampleIntake(const SampleIntake &) = delete;
    SampleIntake &operator=(const SampleIntake &) = delete;

    void uvSample(quint8 type, float value) override;
    void condSample(float value) override;
    void eventNews(quint8 value) override;
    void holdNews(quint8 value) override;
    void runStatusNews(quint8 value) override;
    void penStatusNews(quint8 value) override;
    void methodText(const QString &text) override;

    /// Adds the pair to `Chart(0)` and works off its waiting label and flags.
    void AddChartSample();
    /// The same for `Chart(5)`, which also advances `LogTime`.
    void AddLogSample();
    /// The end of the wait for a run's method text.
    void TimerStopWaitForMethod_Timer();

    /// A session starts (the Record command): numbering from 0 again, no pause waiting.
    void startSession();
    /// The session ends (the Stop command).
    void stopSession();
    /// The stream was synchronised (again): the run is forgotten, and the log's numbering
    /// follows the recorder's while logging.
    void syncFound();
    /// Logging was switched on while data come in: the log starts with no label waiting.
    void logOn();
    /// The link was lost: the recorder's waiting label is dropped, the log's stays.
    void linkLost();

    [[nodiscard]] bool Recording() const { return m_recording; }
    [[nodiscard]] bool ChartRunActive() const { return m_chartRunActive; }
    [[nodiscard]] bool ChartPaused() const { return m_chartPaused; }
    [[nodiscard]] bool LogRunActive() const { return m_logRunActive; }
    [[nodiscard]] bool LogPaused() const { return m_logPaused; }
    [[nodiscard]] Int16 ChartEventNumber() const { return m_chartEventNumber; }
    [[nodiscard]] Int16 LogEventNumber() const { return m_logEventNumber; }
    [[nodiscard]] Int16 ChartLabelType() const { return m_chartLabelType; }
    [[nodiscard]] Int16 LogLabelType() const { return m_logLabelType; }
    [[nodiscard]] bool WaitForMethod() const { return m_waitForMethod; }
    [[nodiscard]] float UvValue() const { return m_uvValue; }
    [[nodiscard]] float CondValue() const { return m_condValue; }
    [[nodiscard]] float LogTime() const { return m_logTime; }
    [[nodiscard]] qint32 LogSampleCount() const { return m_logSampleCount; }
    [[nodiscard]] const QTimer &TimerStopWaitForMethod() const { return m_waitTimer; }

private:
    /// A new run on each chart: numbering from 0, the start label waiting.
    void startRun();
    void startLogRun();
    /// Draws the label on `Chart(5)` if `Log`, else on `Chart(0)`, and clears it.
    void AddLabel(Int16 &LabelType, bool Log);
    /// Reads the log chart's pause and resume from the UV letter of an instrument without
    /// status blocks.
    void TrackLogRunFromUv(quint8 type);
    [[nodiscard]] bool statusBlocksSeen() const;

    Quillchart &m_chart0;
    Quillchart &m_chart5;
    const Link &m_link;
    ErrorRoute &m_errors;
    RecordCommands &m_commands;
    const bool &DataLogging;
    QTimer m_waitTimer;

    bool m_recording = false;
    bool m_chartRunActive = false;
    bool m_chartPaused = false;
    bool m_logRunActive = false;
    bool m_logPaused = false;
    /// Last number used on a numbered label.
    Int16 m_chartEventNumber;
    Int16 m_logEventNumber;
    /// The label waiting for the next sample, 0 for none.
    Int16 m_chartLabelType;
    Int16 m_logLabelType;
    /// After this sample, the next label becomes the end or the pause label.
    bool m_chartEndPending = false;
    bool m_chartPausePending = false;
    bool m_logEndPending = false;
    bool m_logPausePending = false;
    /// A start event came; the next UV letter confirms ("V") or drops ("U") it.
    bool m_runStartArmed = false;
    /// The run has ended and its method text may still reach `Chart(0)`.
    bool m_waitForMethod = false;
    float m_uvValue = 0.0f;
    float m_condValue = 0.0f;
    /// Minutes of the log chart; runs on across all runs.
    float m_logTime = 0.0f;
    qint32 m_logSampleCount = 0;
};

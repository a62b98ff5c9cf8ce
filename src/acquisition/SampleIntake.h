#pragma once

#include "acquisition/InstrumentNews.h"
#include "runtime/Int16.h"

#include <QMetaObject>
#include <QString>

class ErrorRoute;
class QTimer;
class Quillchart;
class RecordCommands;
struct LinkState;

/// @brief The run state machine between the decoder and the two charts.
///
/// The recorder chart `Chart(0)` takes samples while a session is on; the hidden log chart
/// `Chart(5)` takes them whenever logging is on. News never touches a chart at once: it leaves a
/// waiting label or flag, and the conductivity sample that closes the next pair applies it, so
/// that every mark stands on a sample. An instrument that sends no status blocks has its run
/// state read from the letters of its UV blocks instead.
class SampleIntake : public InstrumentNews
{
public:
    SampleIntake(Quillchart &chart0, Quillchart &chart5, LinkState &link, ErrorRoute &errors,
                 RecordCommands &commands, QTimer &TimerStopWaitForMethod, const bool &DataLogging);
    ~SampleIntake() override;
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
    /// Draws the label `LabelType` on `Chart(5)` if `Log`, else on `Chart(0)`, and clears it.
    void AddLabel(Int16 &LabelType, bool Log);
    /// Reads the log chart's pause and resume from the UV letter of an instrument without
    /// status blocks.
    void TrackLogRunFromUv(quint8 type);
    /// The end of the wait for a run's method text.
    void TimerStopWaitForMethod_Timer();

    bool Recording = false;
    bool ChartRunActive = false;
    bool ChartPaused = false;
    bool LogRunActive = false;
    bool LogPaused = false;
    /// Last number used on a numbered label.
    Int16 ChartEventNumber;
    Int16 LogEventNumber;
    /// The label waiting for the next sample, 0 for none.
    Int16 ChartLabelType;
    Int16 LogLabelType;
    /// After this sample, the next label becomes the end or the pause label.
    bool ChartEndPending = false;
    bool ChartPausePending = false;
    bool LogEndPending = false;
    bool LogPausePending = false;
    /// A start event came; the next UV letter confirms ("V") or drops ("U") it.
    bool RunStartArmed = false;
    /// The run has ended and its method text may still reach `Chart(0)`.
    bool WaitForMethod = false;
    float UvValue = 0.0f;
    float CondValue = 0.0f;
    /// Minutes of the log chart; runs on across all runs.
    float LogTime = 0.0f;
    qint32 LogSampleCount = 0;

private:
    /// A new run on each chart: numbering from 0, the start label waiting.
    void startRun();
    void startLogRun();

    Quillchart &m_chart0;
    Quillchart &m_chart5;
    LinkState &m_link;
    ErrorRoute &m_errors;
    RecordCommands &m_commands;
    QTimer &TimerStopWaitForMethod;
    const bool &DataLogging;
    QMetaObject::Connection m_waitTimeout;
};

#include "acquisition/SampleIntake.h"

#include "acquisition/Link.h"
#include "acquisition/RecordCommands.h"
#include "chart/Quillchart.h"
#include "runtime/ErrorRoute.h"
#include "runtime/Numbers.h"
#include "runtime/Timers.h"

#include <array>

namespace {

enum UvLetter : quint8 {
    kUvIdle = 0x55,
    kUvRun = 0x56,
};

enum LabelType : int {
    kNoLabel = 0,
    kStartLabel = 1,
    kEndLabel = 2,
    kNumberLabel = 3,
    kPauseLabel = 4,
    kHoldLabel = 5,
    kContinueLabel = 6,
    kMarkLabel = 7,
};

struct LabelStyle
{
    const char16_t *text;
    qint32 color; // 0xBBGGRR
    qint16 height;
};

// Indexed by label type - 1. "F" is produced by no block, but stays with its style.
constexpr std::array<LabelStyle, 8> kLabelStyles{{
    {u"S", 0xFFFF00, 50},
    {u"E", 0xFFFF00, 40},
    {nullptr, 0x00FF00, 10},
    {u"P", 0xFFFF00, 30},
    {u"H", 0xFFFF00, 20},
    {u"C", 0xFFFF00, 20},
    {u"M", 0xFFFF00, 60},
    {u"F", 0x0000FF, -10},
}};

// 1/300 minute as the log's time base has always had it, so that log times match old logs.
constexpr double kMinutesPerSample = 0.0033333333333333335;

constexpr qint32 kOutOfMemory = -15;

QString chartText(const QString &method)
{
    return Now() + QStringLiteral("\r\n") + method + QStringLiteral("\r\n");
}

} // namespace

SampleIntake::SampleIntake(Quillchart &chart0, Quillchart &chart5, const Link &link,
                           ErrorRoute &errors, RecordCommands &commands, const bool &DataLogging)
    : m_chart0(chart0)
    , m_chart5(chart5)
    , m_link(link)
    , m_errors(errors)
    , m_commands(commands)
    , DataLogging(DataLogging)
{
    m_waitTimer.setInterval(15000);
    QObject::connect(&m_waitTimer, &QTimer::timeout, &m_waitTimer,
                     [this] { TimerStopWaitForMethod_Timer(); });
}

void SampleIntake::uvSample(quint8 type, float value)
{
    if (m_runStartArmed) {
        m_runStartArmed = false;
        if (type != kUvIdle) {
            startRun();
            startLogRun();
        }
    }
    if (!statusBlocksSeen()) {
        if (type == kUvIdle && m_chartRunActive) {
            if (!m_chartPaused && m_recording)
                m_chartPausePending = true;
        } else if (type == kUvRun && m_chartPaused) {
            m_chartPaused = false;
        }
    }
    TrackLogRunFromUv(type);
    m_uvValue = value;
}

void SampleIntake::condSample(float value)
{
    m_condValue = value;
    AddChartSample();
    AddLogSample();
}

void SampleIntake::eventNews(quint8 value)
{
    switch (value) {
    case 8:
        if (m_recording)
            m_chartLabelType = kMarkLabel;
        m_logLabelType = kMarkLabel;
        break;
    case 4:
        if (m_runStartArmed) {
            m_runStartArmed = false;
            startRun();
            startLogRun();
        } else {
            m_runStartArmed = true;
        }
        break;
    case 3:
        m_chartRunActive = false;
        if (m_recording) {
            m_chartEndPending = true;
            m_chartPausePending = false;
            m_chartPaused = false;
        }
        m_logEndPending = true;
        m_logPausePending = false;
        break;
    case 2:
        // A number would overwrite a waiting end label: the end goes back to its flag and
        // returns after the number.
        if (m_recording || m_chartPaused) {
            if (m_chartLabelType == kEndLabel)
                m_chartEndPending = true;
            m_chartLabelType = kNumberLabel;
        }
        if (m_logLabelType == kEndLabel)
            m_logEndPending = true;
        m_logLabelType = kNumberLabel;
        break;
    }
}

void SampleIntake::holdNews(quint8 value)
{
    const int label = value == 1 ? kHoldLabel : kContinueLabel;
    if (m_recording)
        m_chartLabelType = label;
    m_logLabelType = label;
}

void SampleIntake::runStatusNews(quint8 value)
{
    switch (value) {
    case 0:
        m_chartRunActive = false;
        if (m_recording || m_chartPaused)
            m_chartLabelType = kEndLabel;
        m_logLabelType = kEndLabel;
        break;
    case 1:
        // A resume out of a pause draws nothing; only a continue over a running chart does.
        if (m_chartPaused)
            m_chartPaused = false;
        else if (!m_chartRunActive)
            startRun();
        else if (m_recording)
            m_chartLabelType = kContinueLabel;
        if (m_logPaused) {
            m_logPaused = false;
        } else if (!m_logRunActive) {
            startLogRun();
        } else {
            m_logLabelType = kContinueLabel;
        }
        break;
    case 2:
        if (m_recording)
            m_chartLabelType = kPauseLabel;
        m_logLabelType = kPauseLabel;
        break;
    case 3:
        if (m_recording)
            m_chartLabelType = kHoldLabel;
        m_logLabelType = kHoldLabel;
        break;
    }
}

void SampleIntake::penStatusNews(quint8 value)
{
    if (value == 0)
        m_commands.mnuStop_Click();
    else
        m_commands.mnuStart_Click();
}

void SampleIntake::methodText(const QString &text)
{
    if (m_recording || m_waitForMethod || m_chartPaused) {
        if (m_chart0.AddMethodText(chartText(text), m_chart0.GetLastTime()) != 0)
            m_errors.HandelError(kOutOfMemory);
        TimerStopWaitForMethod_Timer();
    }
    if (DataLogging) {
        if (m_chart5.AddMethodText(chartText(text), m_logTime) != 0)
            m_errors.HandelError(kOutOfMemory);
    }
}

void SampleIntake::AddChartSample()
{
    if (m_recording && !m_chartPaused) {
        if (m_chart0.AddSample(m_uvValue, m_condValue) > 0)
            m_errors.HandelError(kOutOfMemory);
        switch (m_chartLabelType) {
        case kStartLabel:
            m_commands.mnuStart_Click();
            m_chartRunActive = true;
            m_chartPaused = false;
            break;
        case kEndLabel:
            m_chartPausePending = false;
            m_chartEndPending = false;
            m_waitForMethod = true;
            setTimerEnabled(m_waitTimer, true);
            m_commands.mnuStop_Click();
            m_chartRunActive = false;
            m_chartPaused = false;
            m_chartEventNumber = 0;
            break;
        case kNumberLabel:
            ++m_chartEventNumber;
            break;
        case kPauseLabel:
            m_chartPausePending = false;
            if (m_chartRunActive)
                m_chartPaused = true;
            else
                m_chartLabelType = kNoLabel;
            break;
        }
        AddLabel(m_chartLabelType, false);
        if (m_chartEndPending) {
            m_chartPausePending = false;
            m_chartEndPending = false;
            m_chartLabelType = kEndLabel;
        }
        if (m_chartPausePending) {
            m_chartPausePending = false;
            m_chartLabelType = kPauseLabel;
        }
        return;
    }
    // No sample: the label waits, but a run's start and end still count, and a paused run
    // still shows its end and its numbers. Ending here does not stop the session.
    if (m_chartLabelType == kStartLabel) {
        m_chartRunActive = true;
    } else if (m_chartLabelType == kEndLabel) {
        m_chartRunActive = false;
        if (m_chartPaused) {
            AddLabel(m_chartLabelType, false);
            m_chartPaused = false;
        }
    } else if (m_chartLabelType == kNumberLabel && m_chartPaused) {
        ++m_chartEventNumber;
        AddLabel(m_chartLabelType, false);
    }
}

void SampleIntake::AddLogSample()
{
    if (!DataLogging) {
        if (m_logLabelType == kStartLabel)
            m_logRunActive = true;
        else if (m_logLabelType == kEndLabel)
            m_logRunActive = false;
        return;
    }
    if (m_logPaused)
        return;
    if (m_chart5.AddSample(m_uvValue, m_condValue) > 0)
        m_errors.HandelError(kOutOfMemory);
    switch (m_logLabelType) {
    case kStartLabel:
        m_logRunActive = true;
        m_logPaused = false;
        break;
    case kEndLabel:
        m_logPausePending = false;
        m_logEndPending = false;
        m_logRunActive = false;
        m_logPaused = false;
        m_logEventNumber = 0;
        break;
    case kNumberLabel:
        ++m_logEventNumber;
        break;
    case kPauseLabel:
        m_logPausePending = false;
        if (m_logRunActive)
            m_logPaused = true;
        else
            m_logLabelType = kNoLabel;
        break;
    }
    // Drawn at the time of the sample before: log labels stand one sample behind.
    AddLabel(m_logLabelType, true);
    if (m_logEndPending) {
        m_logPausePending = false;
        m_logEndPending = false;
        m_logLabelType = kEndLabel;
    }
    if (m_logPausePending) {
        m_logPausePending = false;
        m_logLabelType = kPauseLabel;
    }
    m_logTime = float(double(m_logSampleCount) * kMinutesPerSample);
    ++m_logSampleCount;
}

void SampleIntake::AddLabel(Int16 &LabelType, bool Log)
{
    if (LabelType == kNoLabel)
        return;
    const LabelStyle &style = kLabelStyles[LabelType - 1];
    const QString text = style.text
                             ? QString::fromUtf16(style.text)
                             : QString::number((Log ? m_logEventNumber : m_chartEventNumber).value());
    const qint16 result =
        Log ? m_chart5.AddEventMark(text, style.color, style.height, m_logTime)
            : m_chart0.AddEventMark(text, style.color, style.height, m_chart0.GetLastTime());
    if (result > 0)
        m_errors.HandelError(kOutOfMemory);
    LabelType = kNoLabel;
}

void SampleIntake::TrackLogRunFromUv(quint8 type)
{
    if (statusBlocksSeen())
        return;
    if (type == kUvIdle && m_logRunActive) {
        if (!m_logPaused)
            m_logPausePending = true;
    } else if (type == kUvRun && m_logPaused) {
        m_logPaused = false;
    }
}

void SampleIntake::TimerStopWaitForMethod_Timer()
{
    m_waitTimer.stop();
    m_waitForMethod = false;
}

void SampleIntake::startRun()
{
    m_recording = true;
    m_chartEventNumber = 0;
    m_chartLabelType = kStartLabel;
}

void SampleIntake::startLogRun()
{
    m_logEventNumber = 0;
    m_logLabelType = kStartLabel;
}

void SampleIntake::startSession()
{
    m_recording = true;
    m_chartEventNumber = 0;
    m_chartPausePending = false;
}

void SampleIntake::stopSession()
{
    m_recording = false;
}

void SampleIntake::syncFound()
{
    m_chartRunActive = false;
    if (DataLogging)
        m_logEventNumber = m_chartEventNumber;
}

void SampleIntake::logOn()
{
    m_logEventNumber = m_chartEventNumber;
    m_logLabelType = kNoLabel;
    m_logEndPending = false;
    m_logPausePending = false;
}

void SampleIntake::linkLost()
{
    m_chartLabelType = kNoLabel;
}

bool SampleIntake::statusBlocksSeen() const
{
    return m_link.state().StatusBlocksSeen;
}

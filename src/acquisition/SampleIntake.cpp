#include "acquisition/SampleIntake.h"

#include "acquisition/ErrorRoute.h"
#include "acquisition/LinkState.h"
#include "acquisition/RecordCommands.h"
#include "chart/Quillchart.h"
#include "runtime/Numbers.h"

#include <QTimer>

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

SampleIntake::SampleIntake(Quillchart &chart0, Quillchart &chart5, LinkState &link,
                           ErrorRoute &errors, RecordCommands &commands,
                           QTimer &TimerStopWaitForMethod, const bool &DataLogging)
    : m_chart0(chart0)
    , m_chart5(chart5)
    , m_link(link)
    , m_errors(errors)
    , m_commands(commands)
    , TimerStopWaitForMethod(TimerStopWaitForMethod)
    , DataLogging(DataLogging)
{
    m_waitTimeout =
        QObject::connect(&TimerStopWaitForMethod, &QTimer::timeout, &TimerStopWaitForMethod,
                         [this] { TimerStopWaitForMethod_Timer(); });
}

SampleIntake::~SampleIntake()
{
    QObject::disconnect(m_waitTimeout);
}

void SampleIntake::uvSample(quint8 type, float value)
{
    if (RunStartArmed) {
        RunStartArmed = false;
        if (type != kUvIdle) {
            startRun();
            startLogRun();
        }
    }
    if (!m_link.StatusBlocksSeen) {
        if (type == kUvIdle && ChartRunActive) {
            if (!ChartPaused && Recording)
                ChartPausePending = true;
        } else if (type == kUvRun && ChartPaused) {
            ChartPaused = false;
        }
    }
    TrackLogRunFromUv(type);
    UvValue = value;
}

void SampleIntake::condSample(float value)
{
    CondValue = value;
    AddChartSample();
    AddLogSample();
}

void SampleIntake::eventNews(quint8 value)
{
    switch (value) {
    case 8:
        if (Recording)
            ChartLabelType = kMarkLabel;
        LogLabelType = kMarkLabel;
        break;
    case 4:
        if (RunStartArmed) {
            RunStartArmed = false;
            startRun();
            startLogRun();
        } else {
            RunStartArmed = true;
        }
        break;
    case 3:
        ChartRunActive = false;
        if (Recording) {
            ChartEndPending = true;
            ChartPausePending = false;
            ChartPaused = false;
        }
        LogEndPending = true;
        LogPausePending = false;
        break;
    case 2:
        // A number would overwrite a waiting end label: the end goes back to its flag and
        // returns after the number.
        if (Recording || ChartPaused) {
            if (ChartLabelType == kEndLabel)
                ChartEndPending = true;
            ChartLabelType = kNumberLabel;
        }
        if (LogLabelType == kEndLabel)
            LogEndPending = true;
        LogLabelType = kNumberLabel;
        break;
    }
}

void SampleIntake::holdNews(quint8 value)
{
    const int label = value == 1 ? kHoldLabel : kContinueLabel;
    if (Recording)
        ChartLabelType = label;
    LogLabelType = label;
}

void SampleIntake::runStatusNews(quint8 value)
{
    switch (value) {
    case 0:
        ChartRunActive = false;
        if (Recording || ChartPaused)
            ChartLabelType = kEndLabel;
        LogLabelType = kEndLabel;
        break;
    case 1:
        // A resume out of a pause draws nothing; only a continue over a running chart does.
        if (ChartPaused)
            ChartPaused = false;
        else if (!ChartRunActive)
            startRun();
        else if (Recording)
            ChartLabelType = kContinueLabel;
        if (LogPaused) {
            LogPaused = false;
        } else if (!LogRunActive) {
            startLogRun();
        } else {
            LogLabelType = kContinueLabel;
        }
        break;
    case 2:
        if (Recording)
            ChartLabelType = kPauseLabel;
        LogLabelType = kPauseLabel;
        break;
    case 3:
        if (Recording)
            ChartLabelType = kHoldLabel;
        LogLabelType = kHoldLabel;
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
    if (Recording || WaitForMethod || ChartPaused) {
        if (m_chart0.AddMethodText(chartText(text), m_chart0.GetLastTime()) != 0)
            m_errors.HandelError(kOutOfMemory);
        TimerStopWaitForMethod_Timer();
    }
    if (DataLogging) {
        if (m_chart5.AddMethodText(chartText(text), LogTime) != 0)
            m_errors.HandelError(kOutOfMemory);
    }
}

void SampleIntake::AddChartSample()
{
    if (Recording && !ChartPaused) {
        if (m_chart0.AddSample(UvValue, CondValue) > 0)
            m_errors.HandelError(kOutOfMemory);
        switch (ChartLabelType) {
        case kStartLabel:
            m_commands.mnuStart_Click();
            ChartRunActive = true;
            ChartPaused = false;
            break;
        case kEndLabel:
            ChartPausePending = false;
            ChartEndPending = false;
            WaitForMethod = true;
            TimerStopWaitForMethod.start();
            m_commands.mnuStop_Click();
            ChartRunActive = false;
            ChartPaused = false;
            ChartEventNumber = 0;
            break;
        case kNumberLabel:
            ++ChartEventNumber;
            break;
        case kPauseLabel:
            ChartPausePending = false;
            if (ChartRunActive)
                ChartPaused = true;
            else
                ChartLabelType = kNoLabel;
            break;
        }
        AddLabel(ChartLabelType, false);
        if (ChartEndPending) {
            ChartPausePending = false;
            ChartEndPending = false;
            ChartLabelType = kEndLabel;
        }
        if (ChartPausePending) {
            ChartPausePending = false;
            ChartLabelType = kPauseLabel;
        }
        return;
    }
    // No sample: the label waits, but a run's start and end still count, and a paused run
    // still shows its end and its numbers. Ending here does not stop the session.
    if (ChartLabelType == kStartLabel) {
        ChartRunActive = true;
    } else if (ChartLabelType == kEndLabel) {
        ChartRunActive = false;
        if (ChartPaused) {
            AddLabel(ChartLabelType, false);
            ChartPaused = false;
        }
    } else if (ChartLabelType == kNumberLabel && ChartPaused) {
        ++ChartEventNumber;
        AddLabel(ChartLabelType, false);
    }
}

void SampleIntake::AddLogSample()
{
    if (!DataLogging) {
        if (LogLabelType == kStartLabel)
            LogRunActive = true;
        else if (LogLabelType == kEndLabel)
            LogRunActive = false;
        return;
    }
    if (LogPaused)
        return;
    if (m_chart5.AddSample(UvValue, CondValue) > 0)
        m_errors.HandelError(kOutOfMemory);
    switch (LogLabelType) {
    case kStartLabel:
        LogRunActive = true;
        LogPaused = false;
        break;
    case kEndLabel:
        LogPausePending = false;
        LogEndPending = false;
        LogRunActive = false;
        LogPaused = false;
        LogEventNumber = 0;
        break;
    case kNumberLabel:
        ++LogEventNumber;
        break;
    case kPauseLabel:
        LogPausePending = false;
        if (LogRunActive)
            LogPaused = true;
        else
            LogLabelType = kNoLabel;
        break;
    }
    // Drawn at the time of the sample before: log labels stand one sample behind.
    AddLabel(LogLabelType, true);
    if (LogEndPending) {
        LogPausePending = false;
        LogEndPending = false;
        LogLabelType = kEndLabel;
    }
    if (LogPausePending) {
        LogPausePending = false;
        LogLabelType = kPauseLabel;
    }
    LogTime = float(double(LogSampleCount) * kMinutesPerSample);
    ++LogSampleCount;
}

void SampleIntake::AddLabel(Int16 &LabelType, bool Log)
{
    if (LabelType == kNoLabel)
        return;
    const LabelStyle &style = kLabelStyles[LabelType - 1];
    const QString text = style.text
                             ? QString::fromUtf16(style.text)
                             : QString::number((Log ? LogEventNumber : ChartEventNumber).value());
    const qint16 result =
        Log ? m_chart5.AddEventMark(text, style.color, style.height, LogTime)
            : m_chart0.AddEventMark(text, style.color, style.height, m_chart0.GetLastTime());
    if (result > 0)
        m_errors.HandelError(kOutOfMemory);
    LabelType = kNoLabel;
}

void SampleIntake::TrackLogRunFromUv(quint8 type)
{
    if (m_link.StatusBlocksSeen)
        return;
    if (type == kUvIdle && LogRunActive) {
        if (!LogPaused)
            LogPausePending = true;
    } else if (type == kUvRun && LogPaused) {
        LogPaused = false;
    }
}

void SampleIntake::TimerStopWaitForMethod_Timer()
{
    TimerStopWaitForMethod.stop();
    WaitForMethod = false;
}

void SampleIntake::startRun()
{
    Recording = true;
    ChartEventNumber = 0;
    ChartLabelType = kStartLabel;
}

void SampleIntake::startLogRun()
{
    LogEventNumber = 0;
    LogLabelType = kStartLabel;
}

#include "RunOracle.h"

#include <algorithm>

namespace {

struct LabelStyle
{
    const char *text;
    qint32 color;
    qint16 height;
};

constexpr qint32 kYellowish = 0xFFFF00;
constexpr qint32 kGreen = 0x00FF00;
/// Indexed by label type; the numbered event's text is its number.
constexpr LabelStyle kLabels[] = {
    {"", 0, 0},
    {"S", kYellowish, 50},
    {"E", kYellowish, 40},
    {"", kGreen, 10},
    {"P", kYellowish, 30},
    {"H", kYellowish, 20},
    {"C", kYellowish, 20},
    {"M", kYellowish, 60},
};
constexpr int kNumbered = 3;
/// Seconds the recorder waits for a run's method text after the run's end.
constexpr double kMethodWait = 15.0;

qint64 lastIndex(const ExpectedChart &chart)
{
    return std::max<qint64>(chart.pairs.size() - 1, 0);
}

} // namespace

RunOracle::RunOracle(const QList<ManifestBlock> &blocks, qint64 byteLimit)
{
    for (const ManifestBlock &block : blocks) {
        if (block.length > 0 && block.end() <= byteLimit)
            play(block);
    }
}

void RunOracle::play(const ManifestBlock &block)
{
    const char type = block.type.toLatin1();
    const int value = int(block.value);
    switch (type) {
    case 'U':
    case 'V':
        uvNews(block.type, float(block.value));
        break;
    case 'C':
    case 'D':
        m_conductivity = float(block.value);
        addChartSample(block);
        addLogSample(block);
        break;
    case 'E':
        eventNews(value);
        break;
    case 'H':
        if (value == 1 || value == 2) {
            if (m_recording)
                m_chartLabel = value == 1 ? 5 : 6;
            m_logLabel = value == 1 ? 5 : 6;
        }
        break;
    case 'R':
        m_statusBlocksSeen = true;
        runStatusNews(value);
        break;
    case 'P':
        m_statusBlocksSeen = true;
        if (value == 1)
            record();
        else if (value == 0)
            stop();
        break;
    case 'F':
        m_statusBlocksSeen = true;
        break;
    case 'M':
        if (m_methodDeadline >= 0.0 && block.t >= m_methodDeadline)
            m_methodDeadline = -1.0;
        if (m_recording || m_methodDeadline >= 0.0 || m_chartPaused) {
            m_recorder.methodTexts.append({block.text, lastIndex(m_recorder)});
            m_methodDeadline = -1.0;
        }
        m_log.methodTexts.append({block.text, lastIndex(m_log)});
        break;
    default:
        break;
    }
}

void RunOracle::eventNews(int value)
{
    switch (value) {
    case 8:
        if (m_recording)
            m_chartLabel = 7;
        m_logLabel = 7;
        break;
    case 4:
        if (!m_runStartArmed) {
            m_runStartArmed = true;
            break;
        }
        m_runStartArmed = false;
        m_recording = true;
        m_chartEventNumber = 0;
        m_chartLabel = 1;
        m_logEventNumber = 0;
        m_logLabel = 1;
        break;
    case 3:
        m_chartRunActive = false;
        if (m_recording)
            m_chartEndPending = true;
        m_chartPausePending = false;
        m_chartPaused = false;
        m_logEndPending = true;
        m_logPausePending = false;
        break;
    case 2:
        if (m_recording || m_chartPaused) {
            // The number would overwrite a waiting end, which therefore comes after it.
            if (m_chartLabel == 2)
                m_chartEndPending = true;
            m_chartLabel = kNumbered;
        }
        if (m_logLabel == 2)
            m_logEndPending = true;
        m_logLabel = kNumbered;
        break;
    default:
        break;
    }
}

void RunOracle::runStatusNews(int value)
{
    switch (value) {
    case 0:
        if (m_recording || m_chartPaused)
            m_chartLabel = 2;
        m_chartRunActive = false;
        m_logLabel = 2;
        break;
    case 1:
        if (m_chartPaused) {
            m_chartPaused = false;
        } else if (!m_chartRunActive) {
            m_recording = true;
            m_chartEventNumber = 0;
            m_chartLabel = 1;
        } else if (m_recording) {
            m_chartLabel = 6;
        }
        if (m_logPaused) {
            m_logPaused = false;
        } else if (!m_logRunActive) {
            m_logEventNumber = 0;
            m_logLabel = 1;
        } else {
            m_logLabel = 6;
        }
        break;
    case 2:
    case 3:
        if (m_recording)
            m_chartLabel = value == 2 ? 4 : 5;
        m_logLabel = value == 2 ? 4 : 5;
        break;
    default:
        break;
    }
}

void RunOracle::uvNews(QChar letter, float value)
{
    const bool running = letter == QLatin1Char('V');
    if (m_runStartArmed) {
        m_runStartArmed = false;
        if (running) {
            m_recording = true;
            m_chartEventNumber = 0;
            m_logEventNumber = 0;
            m_chartLabel = 1;
            m_logLabel = 1;
        }
    }
    if (!m_statusBlocksSeen) {
        if (!running && m_chartRunActive && !m_chartPaused && m_recording)
            m_chartPausePending = true;
        if (running && m_chartPaused)
            m_chartPaused = false;
        if (!running && m_logRunActive && !m_logPaused)
            m_logPausePending = true;
        if (running && m_logPaused)
            m_logPaused = false;
    }
    m_uv = value;
}

void RunOracle::addChartSample(const ManifestBlock &block)
{
    if (!m_recording || m_chartPaused) {
        if (m_chartLabel == 1) {
            m_chartRunActive = true;
        } else if (m_chartLabel == 2) {
            m_chartRunActive = false;
            if (m_chartPaused) {
                drawLabel(m_chartLabel, false);
                m_chartPaused = false;
            }
        } else if (m_chartLabel == kNumbered && m_chartPaused) {
            ++m_chartEventNumber;
            drawLabel(m_chartLabel, false);
        }
        return;
    }
    m_recorder.pairs.append(block.pair);
    m_recorder.uv.append(m_uv);
    m_recorder.conductivity.append(m_conductivity);
    switch (m_chartLabel) {
    case 1:
        record();
        m_chartRunActive = true;
        m_chartPaused = false;
        break;
    case 2:
        m_chartPausePending = false;
        m_chartEndPending = false;
        m_methodDeadline = block.t + kMethodWait;
        stop();
        m_chartRunActive = false;
        m_chartPaused = false;
        m_chartEventNumber = 0;
        break;
    case kNumbered:
        ++m_chartEventNumber;
        break;
    case 4:
        m_chartPausePending = false;
        if (m_chartRunActive)
            m_chartPaused = true;
        else
            m_chartLabel = 0;
        break;
    default:
        break;
    }
    drawLabel(m_chartLabel, false);
    if (m_chartEndPending) {
        m_chartPausePending = false;
        m_chartEndPending = false;
        m_chartLabel = 2;
    }
    if (m_chartPausePending) {
        m_chartPausePending = false;
        m_chartLabel = 4;
    }
}

void RunOracle::addLogSample(const ManifestBlock &block)
{
    if (m_logPaused)
        return;
    m_log.pairs.append(block.pair);
    m_log.uv.append(m_uv);
    m_log.conductivity.append(m_conductivity);
    switch (m_logLabel) {
    case 1:
        m_logRunActive = true;
        m_logPaused = false;
        break;
    case 2:
        m_logPausePending = false;
        m_logEndPending = false;
        m_logRunActive = false;
        m_logPaused = false;
        m_logEventNumber = 0;
        break;
    case kNumbered:
        ++m_logEventNumber;
        break;
    case 4:
        m_logPausePending = false;
        if (m_logRunActive)
            m_logPaused = true;
        else
            m_logLabel = 0;
        break;
    default:
        break;
    }
    drawLabel(m_logLabel, true);
    if (m_logEndPending) {
        m_logPausePending = false;
        m_logEndPending = false;
        m_logLabel = 2;
    }
    if (m_logPausePending) {
        m_logPausePending = false;
        m_logLabel = 4;
    }
}

void RunOracle::drawLabel(int &labelType, bool log)
{
    if (labelType == 0)
        return;
    const LabelStyle &style = kLabels[labelType];
    const int number = log ? m_logEventNumber : m_chartEventNumber;
    const QString text =
        labelType == kNumbered ? QString::number(number) : QString::fromLatin1(style.text);
    if (log) {
        // The log's clock is still at the sample before the one just added.
        m_log.marks.append(
            {text, style.color, style.height, std::max<qint64>(m_log.pairs.size() - 2, 0)});
    } else {
        m_recorder.marks.append({text, style.color, style.height, lastIndex(m_recorder)});
    }
    labelType = 0;
}

void RunOracle::record()
{
    m_recording = true;
    m_chartEventNumber = 0;
    m_chartPausePending = false;
}

void RunOracle::stop()
{
    m_recording = false;
}

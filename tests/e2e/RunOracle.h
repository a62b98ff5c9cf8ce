#pragma once

#include "SimManifest.h"

#include <QList>
#include <QString>

struct ExpectedMark
{
    QString text;
    qint32 color;
    qint16 height;
    /// Index of the sample whose time the mark carries.
    qint64 position;
};

struct ExpectedMethodText
{
    QString text;
    qint64 position;
};

/// What one chart should hold: its samples, each with the simulator's pair number, its marks
/// and its method texts.
struct ExpectedChart
{
    QList<qint64> pairs;
    QList<float> uv;
    QList<float> conductivity;
    QList<ExpectedMark> marks;
    QList<ExpectedMethodText> methodTexts;
};

/// @brief The recorder's run state machine written a second time, apart from the intake, and
/// played over a simulator manifest: the samples, marks and method texts the recorder chart and
/// the log chart should end up with. Logging is on throughout; the stream is synchronised from
/// its first block.
class RunOracle
{
public:
    /// Plays the blocks that lie wholly within the first `byteLimit` bytes of the stream.
    RunOracle(const QList<ManifestBlock> &blocks, qint64 byteLimit);

    [[nodiscard]] const ExpectedChart &recorder() const { return m_recorder; }
    [[nodiscard]] const ExpectedChart &log() const { return m_log; }

private:
    void play(const ManifestBlock &block);
    void eventNews(int value);
    void runStatusNews(int value);
    void uvNews(QChar letter, float value);
    void addChartSample(const ManifestBlock &block);
    void addLogSample(const ManifestBlock &block);
    void drawLabel(int &labelType, bool log);
    void record();
    void stop();

    ExpectedChart m_recorder;
    ExpectedChart m_log;

    bool m_statusBlocksSeen = false;
    bool m_recording = false;
    bool m_chartRunActive = false;
    bool m_chartPaused = false;
    bool m_logRunActive = false;
    bool m_logPaused = false;
    int m_chartEventNumber = 0;
    int m_logEventNumber = 0;
    int m_chartLabel = 0;
    int m_logLabel = 0;
    bool m_chartEndPending = false;
    bool m_chartPausePending = false;
    bool m_logEndPending = false;
    bool m_logPausePending = false;
    bool m_runStartArmed = false;
    /// Stream time until which a method text still reaches the recorder chart; negative when
    /// none is awaited.
    double m_methodDeadline = -1.0;
    float m_uv = 0.0f;
    float m_conductivity = 0.0f;
};

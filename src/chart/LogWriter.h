#pragma once

#include <QString>
#include <QtGlobal>

#include <memory>

class ChartAnnotations;
class LogIo;
class SampleStore;

/// @brief Keeps the running log of a chart on disk, one framed record per call.
///
/// Each `write` appends everything that came since the last acknowledged write (samples, marks,
/// method texts) as one record, written in one go at the end of the acknowledged data, syncs
/// it, syncs the directory when it created the file, and only then acknowledges. A failed
/// write or sync acknowledges nothing, so the next call writes the same data again, at the same
/// place. The writer keeps its place in memory: a write costs the same after a week as after a
/// minute. A new data file starts every `hoursPerFile` hours of log time.
class LogWriter
{
public:
    /// Writes to the file system.
    LogWriter();
    /// Writes through `io`.
    explicit LogWriter(std::unique_ptr<LogIo> io);
    ~LogWriter();
    LogWriter(const LogWriter &) = delete;
    LogWriter &operator=(const LogWriter &) = delete;

    /// 0, or the run-time error number of what failed (61 disk full, 70 permission, 76 path
    /// not found, 57 any other I/O error, 75 when `directory` holds a log this writer did not
    /// start, which it leaves alone).
    [[nodiscard]] int write(const QString &directory, const SampleStore &store,
                            const ChartAnnotations &annotations, double hoursPerFile);
    /// Closes the open file and deletes the log's files; the next write starts a new log.
    void close(const QString &directory);

    [[nodiscard]] static int errorNumberOf(int errnoValue);

private:
    void restart(const QString &directory);
    void closeFile();

    std::unique_ptr<LogIo> m_io;
    QString m_directory;
    int m_file = -1;
    quint32 m_fileIndex = 0;
    // The open file's creation has reached the disk, directory entry included.
    bool m_fileDurable = false;
    qint64 m_offset = 0;
    qint64 m_fileFirstSample = 0;
    quint32 m_nextSequence = 1;
    qint64 m_ackSamples = 0;
    qint64 m_ackMarks = 0;
    qint64 m_ackMethodTexts = 0;
};

#include "chart/LogWriter.h"

#include "chart/ByteWriter.h"
#include "chart/ChartAnnotations.h"
#include "chart/LogFormat.h"
#include "chart/PosixLogIo.h"
#include "chart/RunFileCodec.h"
#include "chart/SampleStore.h"
#include "runtime/RuntimeError.h"

#include <QDir>

#include <cerrno>
#include <cmath>
#include <span>

namespace {

constexpr double kDefaultHoursPerFile = 24.0;

qint64 samplesPerFile(double hours)
{
    if (!(hours > 0.0) || !std::isfinite(hours))
        hours = kDefaultHoursPerFile;
    const double samples = hours * 60.0 * SampleStore::kSamplesPerMinute;
    return samples >= 1e15 ? qint64(1e15) : std::max<qint64>(1, std::llround(samples));
}

} // namespace

LogWriter::LogWriter() : m_io(std::make_unique<PosixLogIo>())
{}

LogWriter::LogWriter(std::unique_ptr<LogIo> io) : m_io(std::move(io))
{}

LogWriter::~LogWriter()
{
    closeFile();
}

int LogWriter::errorNumberOf(int errnoValue)
{
    switch (errnoValue) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ErrorNumber::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return ErrorNumber::PermissionDenied;
    case ENOENT:
    case ENOTDIR:
        return ErrorNumber::PathNotFound;
    default:
        return ErrorNumber::DeviceIo;
    }
}

void LogWriter::closeFile()
{
    if (m_file >= 0)
        m_io->close(m_file);
    m_file = -1;
}

namespace {

QStringList logFilesIn(const QDir &dir)
{
    QStringList files;
    for (const QString &name : dir.entryList({LogFormat::namePattern()}, QDir::Files))
        if (LogFormat::indexOfFileName(name))
            files.append(dir.filePath(name));
    return files;
}

} // namespace

// A new log in `directory`: whatever this writer's earlier log left there would only confuse a
// reader.
void LogWriter::restart(const QString &directory)
{
    closeFile();
    for (const QString &file : logFilesIn(QDir(directory)))
        QFile::remove(file);
    m_directory = directory;
    m_fileIndex = 0;
    m_fileDurable = false;
    m_offset = 0;
    m_fileFirstSample = 0;
    m_nextSequence = 1;
    m_ackSamples = m_ackMarks = m_ackMethodTexts = 0;
}

int LogWriter::write(const QString &directory, const SampleStore &store,
                     const ChartAnnotations &annotations, double hoursPerFile)
{
    const QString dir = LogFormat::cleanDirectory(directory);
    if (dir.isEmpty())
        return ErrorNumber::PathNotFound;
    const auto &marks = annotations.eventMarks();
    const auto &methodTexts = annotations.methodTexts();
    if (dir != m_directory) {
        // Another log's files, such as a crashed instance's waiting to be recovered while the
        // caller's directory points at them, are never this writer's to replace.
        if (!logFilesIn(QDir(dir)).isEmpty())
            return ErrorNumber::PathFileAccess;
        restart(dir);
    } else if (store.count() < m_ackSamples || qint64(marks.size()) < m_ackMarks ||
               qint64(methodTexts.size()) < m_ackMethodTexts) {
        restart(dir);
    }
    const bool nothingNew = store.count() == m_ackSamples && qint64(marks.size()) == m_ackMarks &&
                            qint64(methodTexts.size()) == m_ackMethodTexts;
    if (nothingNew && m_file >= 0 && m_fileDurable)
        return 0;

    QByteArray payload;
    ByteWriter out(payload);
    out.u64(quint64(m_ackSamples));
    RunFileCodec::writeSamples(out, store, m_ackSamples, store.count());
    out.u64(quint64(m_ackMarks));
    RunFileCodec::writeMarks(out, std::span(marks).subspan(std::size_t(m_ackMarks)));
    out.u64(quint64(m_ackMethodTexts));
    RunFileCodec::writeMethodTexts(out,
                                   std::span(methodTexts).subspan(std::size_t(m_ackMethodTexts)));
    const QByteArray record = LogFormat::record(m_nextSequence, payload);

    if (m_file >= 0 && m_fileDurable &&
        m_ackSamples - m_fileFirstSample >= samplesPerFile(hoursPerFile))
        closeFile();
    if (m_file < 0) {
        int handle = -1;
        if (const int error = m_io->create(
                m_directory + QLatin1Char('/') + LogFormat::fileName(m_fileIndex + 1), handle))
            return errorNumberOf(error);
        m_file = handle;
        ++m_fileIndex;
        m_fileDurable = false;
        m_fileFirstSample = m_ackSamples;
    }
    // A new file gets its header and first record in one write, so it holds a record or is torn.
    const QByteArray bytes = m_fileDurable ? record : LogFormat::header(m_fileIndex) + record;
    const qint64 offset = m_fileDurable ? m_offset : 0;
    // Whatever a failed attempt left behind goes first; the record written over it is never
    // shorter, yet a stray tail must not survive a later crash.
    if (const int error = m_io->truncate(m_file, offset))
        return errorNumberOf(error);
    if (const int error = m_io->writeAt(m_file, offset, bytes))
        return errorNumberOf(error);
    if (const int error = m_io->sync(m_file))
        return errorNumberOf(error);
    if (!m_fileDurable) {
        if (const int error = m_io->syncDirectory(m_directory))
            return errorNumberOf(error);
        m_fileDurable = true;
    }
    m_offset = offset + bytes.size();
    ++m_nextSequence;
    m_ackSamples = store.count();
    m_ackMarks = qint64(marks.size());
    m_ackMethodTexts = qint64(methodTexts.size());
    return 0;
}

void LogWriter::close(const QString &directory)
{
    restart(LogFormat::cleanDirectory(directory));
    m_directory.clear();
}

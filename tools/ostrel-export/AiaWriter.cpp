#include "AiaWriter.h"

#include "chart/DurableFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <netcdf.h>
#include <netcdf_mem.h>
#include <optional>
#include <vector>

namespace {

// The template's character dimensions; a reader may look for any of them.
constexpr std::pair<const char *, std::size_t> kStringDimensions[] = {
    {"_2_byte_string", 2},     {"_4_byte_string", 4},    {"_8_byte_string", 8},
    {"_16_byte_string", 16},   {"_32_byte_string", 32},  {"_64_byte_string", 64},
    {"_128_byte_string", 128}, {"_255_byte_string", 255}};
constexpr std::size_t kPeakNameBytes = 32;
constexpr float kSamplingInterval = 0.2f;

struct Trace
{
    const char *table;
    const char *detector;
    const char *method;
    const char *unit;
    float SamplePair::*value;
};

const Trace kTraces[] = {
    {"uv", "Velquin UV monitor", "UV absorbance", "AU", &SamplePair::uv},
    {"conductivity", "Velquin conductivity monitor", "Conductivity", "mS/cm",
     &SamplePair::conductivity},
};

/// @brief A netCDF classic file built in memory. The first failing call is kept and every
/// call after it does nothing, so that a file is described in one straight sequence and
/// checked once at the end.
class MemoryNetcdf
{
public:
    explicit MemoryNetcdf(const QString &name, std::size_t size)
    {
        check(nc_create_mem(QFile::encodeName(name).constData(), NC_CLOBBER, size, &m_id));
        m_open = m_status == NC_NOERR;
        int previous = 0;
        // Every value is written, so the library need not fill first.
        check(nc_set_fill(m_id, NC_NOFILL, &previous));
    }
    ~MemoryNetcdf()
    {
        if (m_open)
            nc_abort(m_id);
    }
    MemoryNetcdf(const MemoryNetcdf &) = delete;
    MemoryNetcdf &operator=(const MemoryNetcdf &) = delete;

    int dimension(const char *name, std::size_t length)
    {
        int id = -1;
        check(nc_def_dim(m_id, name, length, &id));
        return id;
    }
    int variable(const char *name, nc_type type, std::initializer_list<int> dimensions)
    {
        const std::vector<int> ids(dimensions);
        int id = -1;
        check(nc_def_var(m_id, name, type, int(ids.size()), ids.data(), &id));
        return id;
    }
    void text(int variable, const char *name, const QString &value)
    {
        const QByteArray bytes = value.toUtf8();
        check(nc_put_att_text(m_id, variable, name, std::size_t(bytes.size()), bytes.constData()));
    }
    void global(const char *name, const QString &value) { text(NC_GLOBAL, name, value); }
    void endDefinitions() { check(nc_enddef(m_id)); }
    void put(int variable, float value) { check(nc_put_var_float(m_id, variable, &value)); }
    void put(int variable, const std::vector<float> &values)
    {
        const std::size_t start = 0;
        const std::size_t count = values.size();
        check(nc_put_vara_float(m_id, variable, &start, &count, values.data()));
    }
    void put(int variable, std::size_t rows, std::size_t width, const QByteArray &chars)
    {
        const std::size_t start[2] = {0, 0};
        const std::size_t count[2] = {rows, width};
        check(nc_put_vara_text(m_id, variable, start, count, chars.constData()));
    }
    /// The file's bytes, or nothing with the reason in `error`.
    std::optional<QByteArray> close(QString &error)
    {
        NC_memio memory{};
        if (m_open) {
            m_open = false;
            check(nc_close_memio(m_id, &memory));
        }
        std::optional<QByteArray> bytes;
        if (m_status == NC_NOERR)
            bytes = QByteArray(static_cast<const char *>(memory.memory), qsizetype(memory.size));
        else
            error = QString::fromUtf8(nc_strerror(m_status));
        std::free(memory.memory);
        return bytes;
    }

private:
    void check(int status)
    {
        if (m_status == NC_NOERR)
            m_status = status;
    }

    int m_id = -1;
    int m_status = NC_NOERR;
    bool m_open = false;
};

/// The library's version number, without the build notes that follow it.
QString netcdfRevision()
{
    return QString::fromLatin1(nc_inq_libvers()).section(QLatin1Char(' '), 0, 0);
}

/// A label cut to the peak name's width on a character boundary, padded with zero bytes.
QByteArray peakName(const QString &label)
{
    QByteArray name = label.toUtf8();
    qsizetype size = std::min<qsizetype>(name.size(), kPeakNameBytes);
    while (size > 0 && size < name.size() && (quint8(name[size]) & 0xc0) == 0x80)
        --size;
    name.truncate(size);
    name.append(QByteArray(qsizetype(kPeakNameBytes) - size, '\0'));
    return name;
}

QString firstLine(const QString &text)
{
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (!line.trimmed().isEmpty())
            return line.trimmed();
    }
    return QString();
}

QString methodText(const RunData &run)
{
    QStringList texts;
    for (const MethodText &text : run.annotations.methodTexts())
        texts.append(text.text);
    return texts.join(QStringLiteral("\r\n"));
}

void writeGlobals(MemoryNetcdf &file, const RunData &run, const AiaWriter::Header &header,
                  const Trace &trace)
{
    const QString method = methodText(run);
    const std::pair<const char *, QString> globals[] = {
        {"dataset_completeness", QStringLiteral("C1+C2")},
        {"aia_template_revision", QStringLiteral("1.0")},
        {"netcdf_revision", netcdfRevision()},
        {"languages", QStringLiteral("English only")},
        {"administrative_comments", run.annotations.notes()},
        {"dataset_origin", QStringLiteral("Ostrel MS ostrel-export %1")
                               .arg(QCoreApplication::applicationVersion())
                               .trimmed()},
        {"dataset_owner", QString()},
        {"dataset_date_time_stamp", AiaWriter::stamp(header.written)},
        {"injection_date_time_stamp", AiaWriter::stamp(header.injection)},
        {"experiment_title", run.title},
        {"operator_name", QString()},
        {"separation_experiment_type", QStringLiteral("liquid chromatography")},
        {"company_method_name", firstLine(method)},
        {"company_method_id", QString()},
        {"pre_experiment_program_name", QString()},
        {"post_experiment_program_name", QString()},
        {"source_file_reference", QFileInfo(header.sourceFile).absoluteFilePath()},
        {"sample_id_comments", QString()},
        {"sample_id", QString()},
        {"sample_name", run.title},
        {"sample_type", QString()},
        {"detection_method_table_name", QString()},
        {"detection_method_comments", method},
        {"detection_method_name", QString::fromLatin1(trace.method)},
        {"detector_name", QString::fromLatin1(trace.detector)},
        {"detector_unit", QString::fromLatin1(trace.unit)},
        {"raw_data_table_name", QString::fromLatin1(trace.table)},
        {"retention_unit", QStringLiteral("seconds")},
        {"peak_processing_results_table_name", QStringLiteral("event marks")},
        {"peak_processing_results_comments",
         QStringLiteral("The run's event marks: retention time and label only")},
        {"peak_processing_method_name", QString()},
        {"peak_processing_date_time_stamp", QString()},
    };
    for (const auto &[name, value] : globals)
        file.global(name, value);
}

std::optional<QByteArray> encode(const RunData &run, const AiaWriter::Header &header,
                                 const Trace &trace, const QString &name, QString &error)
{
    const auto points = std::size_t(run.store.count());
    std::vector<float> ordinates(points);
    Extent extent;
    for (std::size_t i = 0; i < points; ++i) {
        ordinates[i] = run.store.at(qint64(i)).*trace.value;
        if (std::isfinite(ordinates[i]))
            extent.include(ordinates[i]);
    }
    const auto &marks = run.annotations.eventMarks();
    std::vector<float> retention;
    QByteArray names;
    for (const EventMark &mark : marks) {
        retention.push_back(mark.time * 60.0f);
        names.append(peakName(mark.label));
    }

    MemoryNetcdf file(name, points * sizeof(float) + 16384);
    writeGlobals(file, run, header, trace);
    int string32 = -1;
    int string64 = -1;
    for (const auto &[dimension, length] : kStringDimensions) {
        const int id = file.dimension(dimension, length);
        string32 = length == 32 ? id : string32;
        string64 = length == 64 ? id : string64;
    }
    const int pointNumber = file.dimension("point_number", points);
    const int errorNumber = file.dimension("error_number", 1);
    // The one unlimited dimension of a classic file, so that a run without marks has an
    // empty peak table rather than none.
    const int peakNumber = file.dimension("peak_number", NC_UNLIMITED);

    const int errorLog = file.variable("error_log", NC_CHAR, {errorNumber, string64});
    const int maximum = file.variable("detector_maximum_value", NC_FLOAT, {});
    const int minimum = file.variable("detector_minimum_value", NC_FLOAT, {});
    const int runTime = file.variable("actual_run_time_length", NC_FLOAT, {});
    const int interval = file.variable("actual_sampling_interval", NC_FLOAT, {});
    const int delay = file.variable("actual_delay_time", NC_FLOAT, {});
    const int ordinateValues = file.variable("ordinate_values", NC_FLOAT, {pointNumber});
    file.text(ordinateValues, "uniform_sampling_flag", QStringLiteral("Y"));
    file.text(ordinateValues, "autosampler_position", QString());
    const int retentionTime = file.variable("peak_retention_time", NC_FLOAT, {peakNumber});
    const int peakNames = file.variable("peak_name", NC_CHAR, {peakNumber, string32});
    file.endDefinitions();

    file.put(errorLog, 1, 64, QByteArray(64, '\0'));
    file.put(maximum, extent.isEmpty() ? 0.0f : extent.max);
    file.put(minimum, extent.isEmpty() ? 0.0f : extent.min);
    file.put(runTime, float(points) * kSamplingInterval);
    file.put(interval, kSamplingInterval);
    file.put(delay, 0.0f);
    file.put(ordinateValues, ordinates);
    if (!marks.empty()) {
        file.put(retentionTime, retention);
        file.put(peakNames, marks.size(), kPeakNameBytes, names);
    }
    return file.close(error);
}

} // namespace

QString AiaWriter::missing()
{
    return QString();
}

bool AiaWriter::write(const RunData &run, const Header &header, const QString &prefix,
                      QString &error)
{
    const QStringList names = fileNames(prefix);
    for (std::size_t i = 0; i < std::size(kTraces); ++i) {
        const QString &name = names[qsizetype(i)];
        QString why;
        const auto bytes = encode(run, header, kTraces[i], name, why);
        if (!bytes) {
            error = QStringLiteral("cannot make %1: %2").arg(name, why);
            return false;
        }
        if (!DurableFile::write(name, *bytes)) {
            error = QStringLiteral("cannot write %1").arg(name);
            return false;
        }
    }
    return true;
}

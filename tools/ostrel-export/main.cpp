// ostrel-export: a run file or a log directory as text, JSON or AIA files, for a lab's data
// system and for checks without a screen.
#include "AiaWriter.h"
#include "ExportInput.h"
#include "RunJson.h"
#include "chart/DurableFile.h"
#include "chart/SampleStore.h"
#include "chart/TextExport.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>

#include <cmath>
#include <cstdio>
#include <optional>

namespace {

const char *const kExamples = R"(
Input is a data file (.chd), a log file (.chl) or a log directory, which is read as crash
recovery reads it; the kind of a file is in its bytes, whatever its name. Output goes to
OUTPUT, or to standard output when it is missing or "-"; it may not be INPUT itself. The range
lies within the run.

Text export: a header, then tab-separated columns of time (min), UV (AU) and conductivity
(mS/cm) with event marks on their rows, notes and method text before the data, after it or in
columns of their own. %1

AIA export (--aia): OUTPUT is a prefix, and PREFIX-uv.cdf and PREFIX-conductivity.cdf are
written: AIA/ANDI chromatography files (netCDF) that chromatography data systems import, each
with every sample of the whole run at 0.2 s and the event marks as its peak table. A run file
records no date, so the injection time in them is the input's modification time in local
time, unless --injection-date gives it as "YYYY-MM-DD hh:mm:ss" (local time) or in ISO 8601
form, with "T" and perhaps an offset ("2024-03-01T09:30:00+01:00").

Examples:
  ostrel-export run.chd run.txt                  all data at 1 point a second
  ostrel-export --rate 5 --from 10 --to 25 run.chd    full rate, minutes 10 to 25
  ostrel-export --no-cond --method-position column run.chl -
  ostrel-export --json run.chd run.json          complete dump of everything in the file
  ostrel-export --json ~/.local/share/Ostrel\ MS/Log/4711 recovered.json
  ostrel-export --aia --injection-date "2024-03-01 09:30:00" run.chd results/run7

Exit status: 0 done, 1 input unreadable, damaged or without samples (AIA), or OUTPUT the same
file as INPUT, 2 bad options, a range outside the run or no AIA support in this build, 3 output
not written.
)";

int fail(int status, const QString &message)
{
    std::fprintf(stderr, "ostrel-export: %s\n", qPrintable(message));
    return status;
}

/// The option's value when it is a finite number.
std::optional<double> numberOf(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    bool ok = false;
    const double value = parser.value(option).toDouble(&ok);
    return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

int refuse(const QCommandLineParser &parser, const QCommandLineOption &option, const QString &why)
{
    return fail(
        2,
        QStringLiteral("--%1 %2: %3").arg(option.names().constFirst(), parser.value(option), why));
}

/// The time --injection-date gives, in local time unless the text names an offset.
std::optional<QDateTime> injectionDateOf(const QString &text)
{
    QDateTime time = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    if (!time.isValid())
        time = QDateTime::fromString(text, Qt::ISODate);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

int exportAia(const QString &input, const QString &prefix, const QString &injectionDate)
{
    if (const QString why = AiaWriter::missing(); !why.isEmpty())
        return fail(2, why);
    if (prefix.isEmpty() || prefix == QLatin1String("-"))
        return fail(2, QStringLiteral("--aia writes two files: give their PREFIX as OUTPUT"));
    for (const QString &name : AiaWriter::fileNames(prefix)) {
        if (ExportInput::isWrittenOver(input, name))
            return fail(1, QStringLiteral("%1 would write over INPUT %2").arg(name, input));
    }
    AiaWriter::Header header;
    header.sourceFile = input;
    header.written = QDateTime::currentDateTime();
    header.injection = QFileInfo(input).lastModified();
    if (!injectionDate.isEmpty()) {
        const auto time = injectionDateOf(injectionDate);
        if (!time)
            return fail(2, QStringLiteral("--injection-date %1: give \"YYYY-MM-DD hh:mm:ss\" or "
                                          "ISO 8601")
                               .arg(injectionDate));
        header.injection = *time;
    }
    QString error;
    const std::optional<RunData> run = ExportInput::read(input, error);
    if (!run)
        return fail(1, error);
    if (run->store.count() == 0)
        return fail(1, QStringLiteral("%1 holds no samples to export").arg(input));
    return AiaWriter::write(*run, header, prefix, error) ? 0 : fail(3, error);
}

bool writeOutput(const QString &output, const QByteArray &bytes)
{
    if (output.isEmpty() || output == QLatin1String("-"))
        return std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) ==
                   size_t(bytes.size()) &&
               std::fflush(stdout) == 0;
    return DurableFile::write(output, bytes);
}

} // namespace

int main(int argc, char **argv)
{
    // The log route goes through the chart widget, which needs a screen of some kind.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ostrel-export"));
    QApplication::setApplicationVersion(QStringLiteral(OSTREL_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Converts an Ostrel MS run to text, JSON or AIA chromatography files.") +
        QString::fromLatin1(kExamples).arg(TextExport::thinningNote()));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("INPUT"),
                                 QStringLiteral(".chd, .chl or log directory"));
    parser.addPositionalArgument(QStringLiteral("OUTPUT"),
                                 QStringLiteral("file to write, - for standard output"),
                                 QStringLiteral("[OUTPUT]"));
    const QCommandLineOption json(QStringLiteral("json"),
                                  QStringLiteral("Write a complete JSON dump instead of text."));
    const QCommandLineOption from(QStringLiteral("from"),
                                  QStringLiteral("Start of the range in minutes (default 0)."),
                                  QStringLiteral("minutes"), QStringLiteral("0"));
    const QCommandLineOption to(
        QStringLiteral("to"),
        QStringLiteral("End of the range in minutes (default the last sample)."),
        QStringLiteral("minutes"));
    const QCommandLineOption rate(QStringLiteral("rate"),
                                  QStringLiteral("Points a second, up to 5 (default 1)."),
                                  QStringLiteral("points"), QStringLiteral("1"));
    const QCommandLineOption position(QStringLiteral("method-position"),
                                      QStringLiteral("before, after or column (default before)."),
                                      QStringLiteral("where"), QStringLiteral("before"));
    const QCommandLineOption noUv(QStringLiteral("no-uv"),
                                  QStringLiteral("Leave out the UV column."));
    const QCommandLineOption noCond(QStringLiteral("no-cond"),
                                    QStringLiteral("Leave out the conductivity column."));
    const QCommandLineOption noEvents(QStringLiteral("no-events"),
                                      QStringLiteral("Leave out the event marks."));
    const QCommandLineOption noNotes(QStringLiteral("no-notes"),
                                     QStringLiteral("Leave out the notes."));
    const QCommandLineOption noMethod(QStringLiteral("no-method"),
                                      QStringLiteral("Leave out the method text."));
    const QCommandLineOption aia(
        QStringLiteral("aia"),
        QStringLiteral("Write AIA files PREFIX-uv.cdf and PREFIX-conductivity.cdf, OUTPUT "
                       "being PREFIX, instead of text."));
    const QCommandLineOption injectionDate(
        QStringLiteral("injection-date"),
        QStringLiteral("Injection time of the AIA files (default the input's modification "
                       "time)."),
        QStringLiteral("time"));
    parser.addOptions({json, from, to, rate, position, noUv, noCond, noEvents, noNotes, noMethod,
                       aia, injectionDate});
    parser.process(app);

    const QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty() || arguments.size() > 2)
        return fail(2, QStringLiteral("give one input and at most one output; see --help"));
    const QString input = arguments[0];
    const QString output = arguments.value(1);
    if (parser.isSet(aia) && parser.isSet(json))
        return fail(2, QStringLiteral("give --aia or --json, not both"));
    if (parser.isSet(injectionDate) && !parser.isSet(aia))
        return fail(2, QStringLiteral("--injection-date goes with --aia"));
    if (parser.isSet(aia))
        return exportAia(input, output, parser.value(injectionDate));
    if (ExportInput::isWrittenOver(input, output))
        return fail(1, QStringLiteral("OUTPUT %1 would write over INPUT %2")
                           .arg(output.isEmpty() ? QStringLiteral("-") : output, input));

    const auto timeFrom = numberOf(parser, from);
    if (!timeFrom || *timeFrom < 0.0)
        return refuse(parser, from, QStringLiteral("give minutes, 0 or more"));
    std::optional<double> timeTo;
    if (parser.isSet(to)) {
        timeTo = numberOf(parser, to);
        if (!timeTo || *timeTo < *timeFrom)
            return refuse(parser, to, QStringLiteral("give minutes, not before --from"));
    }
    const auto sampleRate = numberOf(parser, rate);
    if (!sampleRate || !(*sampleRate > 0.0) || *sampleRate > 5.0)
        return refuse(parser, rate, QStringLiteral("give points a second, above 0 and up to 5"));
    TextExport::Options options;
    const QString where = parser.value(position);
    if (where == QLatin1String("before"))
        options.methodPosition = TextExport::MethodPosition::Before;
    else if (where == QLatin1String("after"))
        options.methodPosition = TextExport::MethodPosition::After;
    else if (where == QLatin1String("column"))
        options.methodPosition = TextExport::MethodPosition::Column;
    else
        return fail(2, QStringLiteral("--method-position is before, after or column"));

    QString error;
    const std::optional<RunData> run = ExportInput::read(input, error);
    if (!run)
        return fail(1, error);
    if (parser.isSet(json))
        return writeOutput(output, RunJson::dump(*run))
                   ? 0
                   : fail(3, QStringLiteral("cannot write %1").arg(output));

    // Rows stand only where the run has samples. A range end typed a little past the last
    // sample, within half a sample, means the last sample.
    const double lastTime =
        run->store.count() > 0 ? SampleStore::timeOf(run->store.count() - 1) : 0.0;
    const double slack = 0.5 / SampleStore::kSamplesPerMinute;
    const QString pastTheEnd =
        QStringLiteral("past the end of the run at %1 minutes").arg(lastTime, 0, 'f', 4);
    if (*timeFrom > lastTime + slack)
        return refuse(parser, from, pastTheEnd);
    if (timeTo && *timeTo > lastTime + slack)
        return refuse(parser, to, pastTheEnd);
    options.timeFrom = *timeFrom;
    options.timeTo = std::min(timeTo.value_or(lastTime), lastTime);
    options.sampleRate = *sampleRate;
    options.uv = !parser.isSet(noUv);
    options.conductivity = !parser.isSet(noCond);
    options.events = !parser.isSet(noEvents);
    options.notes = !parser.isSet(noNotes);
    options.method = !parser.isSet(noMethod);
    // The same count the export dialog promises: half up, a tie going to the even number.
    options.pointCount =
        lastTime > options.timeFrom
            ? qint64(std::nearbyint(
                  (options.timeTo - options.timeFrom) * options.sampleRate * 60.0 + 0.5))
            : 0;
    const QByteArray text = TextExport(run->store, run->annotations, run->title).text(options);
    return writeOutput(output, text) ? 0 : fail(3, QStringLiteral("cannot write %1").arg(output));
}

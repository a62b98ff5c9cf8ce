// ostrel-export: a run file or a log directory as text or JSON, for a lab's data system and for
// checks without a screen.
#include "RunJson.h"
#include "chart/DurableFile.h"
#include "chart/Quillchart.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"
#include "chart/TextExport.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>
#include <optional>

namespace {

const char *const kExamples = R"(
Input is a data file (.chd), a log file (.chl) or a log directory, which is read as crash
recovery reads it. Output goes to OUTPUT, or to standard output when it is missing or "-".

Text export: a header, then tab-separated columns of time (min), UV (AU) and conductivity
(mS/cm) with event marks on their rows, notes and method text before the data, after it or in
columns of their own. %1

Examples:
  ostrel-export run.chd run.txt                  all data at 1 point a second
  ostrel-export --rate 5 --from 10 --to 25 run.chd    full rate, minutes 10 to 25
  ostrel-export --no-cond --method-position column run.chl -
  ostrel-export --json run.chd run.json          complete dump of everything in the file
  ostrel-export --json ~/.local/share/Ostrel\ MS/Log/4711 recovered.json

Exit status: 0 done, 1 input unreadable or damaged, 2 bad options, 3 output not written.
)";

int fail(int status, const QString &message)
{
    std::fprintf(stderr, "ostrel-export: %s\n", qPrintable(message));
    return status;
}

/// The run in `input`, read as the recorder reads it; an error message in `error` otherwise.
std::optional<RunData> readRun(const QString &input, QString &error)
{
    QString fileName = input;
    QTemporaryDir scratch;
    if (QFileInfo(input).isDir()) {
        Quillchart chart;
        if (!chart.CheckLogFile(input)) {
            error = QStringLiteral("%1 holds no usable log").arg(input);
            return std::nullopt;
        }
        fileName = scratch.filePath(QStringLiteral("recovered.chl"));
        if (chart.SaveLogAs(input, 0, fileName) != 0) {
            error = QStringLiteral("the log in %1 is damaged").arg(input);
            return std::nullopt;
        }
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("cannot open %1: %2").arg(input, file.errorString());
        return std::nullopt;
    }
    auto run = RunFileCodec::decode(file.readAll(), RunFileCodec::kindOfName(fileName));
    if (!run)
        error = QStringLiteral("%1 is not a readable %2 file")
                    .arg(input, RunFileCodec::kindOfName(fileName) == RunFileCodec::Kind::Log
                                    ? QStringLiteral(".chl")
                                    : QStringLiteral(".chd"));
    return run;
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

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Converts an Ostrel MS run to text or JSON.") +
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
    parser.addOptions({json, from, to, rate, position, noUv, noCond, noEvents, noNotes, noMethod});
    parser.process(app);

    const QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty() || arguments.size() > 2)
        return fail(2, QStringLiteral("give one input and at most one output; see --help"));
    const QString output = arguments.value(1);

    QString error;
    const std::optional<RunData> run = readRun(arguments[0], error);
    if (!run)
        return fail(1, error);
    if (parser.isSet(json))
        return writeOutput(output, RunJson::dump(*run))
                   ? 0
                   : fail(3, QStringLiteral("cannot write %1").arg(output));

    TextExport::Options options;
    const double lastTime =
        run->store.count() > 0 ? SampleStore::timeOf(run->store.count() - 1) : 0.0;
    bool fromOk = true, toOk = true, rateOk = true;
    options.timeFrom = parser.value(from).toDouble(&fromOk);
    options.timeTo = parser.isSet(to) ? parser.value(to).toDouble(&toOk) : lastTime;
    options.sampleRate = parser.value(rate).toDouble(&rateOk);
    if (!fromOk || !toOk || !rateOk || !(options.sampleRate > 0.0) || options.sampleRate > 5.0 ||
        options.timeTo < options.timeFrom)
        return fail(2, QStringLiteral("range or rate out of bounds; see --help"));
    const QString where = parser.value(position);
    if (where == QLatin1String("before"))
        options.methodPosition = TextExport::MethodPosition::Before;
    else if (where == QLatin1String("after"))
        options.methodPosition = TextExport::MethodPosition::After;
    else if (where == QLatin1String("column"))
        options.methodPosition = TextExport::MethodPosition::Column;
    else
        return fail(2, QStringLiteral("--method-position is before, after or column"));
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

#include "Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace VelquinSim {

namespace {

const char *const kDescription = R"(A simulated Velquin low-pressure chromatography instrument.

It sends what the instrument sends over its one-way 9600-baud line: a UV and a conductivity
block five times a second, run start and end, events, pauses, holds, pen on and off, and the
method text after each run; and on demand the faults of a bad line. The same seed gives the
same bytes.

Examples:
  velquin-sim --pty
      one realistic run after another, in real time, on a new pseudo-terminal
  velquin-sim --pty --kind letters --runs 2 --run-minutes 3 --idle-seconds 10
  velquin-sim --out run.bin --manifest run.json --speed 0 --runs 1 --seed 7
  velquin-sim --pty --fault garbage@30:8 --fault silence@60:15 --fault param@90:R:9
  velquin-sim --device /dev/ttyUSB0 --scenario tools/velquin-sim/scenarios/line-faults.json

Faults (--fault, may be given several times; TIME in seconds from the start):
  midblock[:N]        the stream starts N bytes (1-5, default 3) into its first block
  garbage@TIME[:N]    N junk bytes (default 8, never the sync byte 0x96) between blocks
  unknown@TIME[:BYTE] a block with a type byte the recorder does not know (default 0x47)
  param@TIME[:L[:V]]  an "E", "H", "P" or "R" block with a value outside its table
                      (default E 5; H 3, P 2, R 4)
  chance96@TIME       a UV sample whose bytes hold 0x96 and "V", as if a block started there
  silence@TIME[:SEC]  nothing is sent for SEC seconds (default 12): the link is lost; the
                      instrument runs on and the stream resumes after
  burst@TIME[:N]      N extra sample pairs (default 100) back to back, faster than the line

Scenario file (--scenario): a JSON object whose keys are the long option names, e.g.
  {"kind": "letters", "runs": 2, "run-minutes": 4, "faults": ["garbage@30:8"]}
Options on the command line win over the file. A manifest's "scenario" entry is such a file.)";

struct Value
{
    const char *name;
    const char *description;
    const char *valueName;
    const char *defaultValue;
};

const Value kValues[] = {
    {"kind",
     "Kind of instrument: \"status\" reports its state in R, P and F blocks, \"letters\" "
     "only in the letter of its UV blocks (U idle or paused, V running). "
     "Example: --kind letters",
     "kind", "status"},
    {"runs", "Runs to play, then stop; 0 repeats without end. Example: --runs 3", "n", "0"},
    {"run-minutes",
     "Length of a run on its own clock, pauses and holds not counted. "
     "Example: --run-minutes 2.5",
     "minutes", "10"},
    {"idle-seconds",
     "Idle time before each run and after the last one. "
     "Example: --idle-seconds 5",
     "seconds", "20"},
    {"events", "Numbered events (\"E\" 2) in each run. Example: --events 5", "n", "3"},
    {"labels", "Labels \"M\" (event \"E\" 8) in each run. Example: --labels 2", "n", "1"},
    {"pauses",
     "Pauses in each run (\"R\" 2 ... \"R\" 1, or \"U\" letters). "
     "Example: --pauses 2",
     "n", "1"},
    {"pause-seconds", "Length of each pause. Example: --pause-seconds 30", "seconds", "20"},
    {"holds", "Holds in each run (\"H\" 1 ... \"H\" 2). Example: --holds 0", "n", "1"},
    {"hold-seconds", "Length of each hold. Example: --hold-seconds 10", "seconds", "15"},
    {"cond-letter", "Letter of the conductivity block, C or D. Example: --cond-letter D", "letter",
     "C"},
    {"speed",
     "1 is real time, larger is faster, 0 as fast as the receiver takes it. Above 1 "
     "the bytes of each real second go out together, so that the line still pauses "
     "between them as a receiver expects. Example: --speed 10",
     "factor", "1"},
    {"seed", "Seed of the traces, the run layout and the junk bytes. Example: --seed 42", "n", "1"},
    {"fault",
     "Injects a fault (see Faults above); may be repeated. "
     "Example: --fault unknown@12:0x47",
     "fault", nullptr},
    {"scenario",
     "Reads the scenario from a JSON file (see above). "
     "Example: --scenario tools/velquin-sim/scenarios/line-faults.json",
     "file", nullptr},
    {"out",
     "Writes the raw bytes to a file instead of a pseudo-terminal. "
     "Example: --out run.bin --speed 0",
     "file", nullptr},
    {"device",
     "Writes to a serial port at 9600 baud 8N1, e.g. to a null-modem cable. "
     "Example: --device /dev/ttyUSB0",
     "path", nullptr},
    {"manifest",
     "Writes a JSON record of every block sent, with its time, byte offset and "
     "sample pair. Example: --manifest run.json",
     "file", nullptr},
};

QCommandLineOption optionFor(const Value &value)
{
    QCommandLineOption option(QString::fromLatin1(value.name), QString::fromUtf8(value.description),
                              QString::fromLatin1(value.valueName));
    if (value.defaultValue)
        option.setDefaultValue(QString::fromLatin1(value.defaultValue));
    return option;
}

bool number(const QCommandLineParser &parser, const char *name, double &target, QString *error)
{
    const QString key = QString::fromLatin1(name);
    if (!parser.isSet(key))
        return true;
    bool ok = false;
    target = parser.value(key).toDouble(&ok);
    if (!ok)
        *error = QStringLiteral("--%1 wants a number").arg(key);
    return ok;
}

bool whole(const QCommandLineParser &parser, const char *name, int &target, QString *error)
{
    double value = target;
    if (!number(parser, name, value, error))
        return false;
    target = int(value);
    if (value == target)
        return true;
    *error = QStringLiteral("--%1 wants a whole number").arg(QString::fromLatin1(name));
    return false;
}

} // namespace

bool Options::parse(const QStringList &arguments, QString *error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(kDescription));
    parser.addHelpOption();
    for (const Value &value : kValues)
        parser.addOption(optionFor(value));
    parser.addOption({QStringLiteral("no-pen"),
                      QStringLiteral("The status kind sends no \"P\" blocks (by default pen on "
                                     "before each run, pen off after it). Example: --no-pen")});
    parser.addOption({QStringLiteral("pty"),
                      QStringLiteral("Creates a pseudo-terminal in raw mode and prints its path "
                                     "as the first line of output; the default transport. "
                                     "Example: --pty")});
    parser.process(arguments);

    if (parser.isSet(QStringLiteral("scenario")) &&
        !scenario.readFile(parser.value(QStringLiteral("scenario")), error))
        return false;
    if (parser.isSet(QStringLiteral("kind"))) {
        const QString kind = parser.value(QStringLiteral("kind"));
        if (kind != QLatin1String("status") && kind != QLatin1String("letters")) {
            *error = QStringLiteral("--kind is status or letters");
            return false;
        }
        scenario.kind =
            kind == QLatin1String("letters") ? InstrumentKind::Letters : InstrumentKind::Status;
    }
    if (!whole(parser, "runs", scenario.runs, error) ||
        !number(parser, "run-minutes", scenario.runMinutes, error) ||
        !number(parser, "idle-seconds", scenario.idleSeconds, error) ||
        !whole(parser, "events", scenario.events, error) ||
        !whole(parser, "labels", scenario.labels, error) ||
        !whole(parser, "pauses", scenario.pauses, error) ||
        !number(parser, "pause-seconds", scenario.pauseSeconds, error) ||
        !whole(parser, "holds", scenario.holds, error) ||
        !number(parser, "hold-seconds", scenario.holdSeconds, error) ||
        !number(parser, "speed", scenario.speed, error))
        return false;
    if (parser.isSet(QStringLiteral("seed"))) {
        bool ok = false;
        scenario.seed = parser.value(QStringLiteral("seed")).toULongLong(&ok);
        if (!ok) {
            *error = QStringLiteral("--seed wants a whole number of 0 or more");
            return false;
        }
    }
    if (parser.isSet(QStringLiteral("no-pen")))
        scenario.pen = false;
    if (parser.isSet(QStringLiteral("cond-letter"))) {
        const QString letter = parser.value(QStringLiteral("cond-letter"));
        scenario.condLetter = letter.size() == 1 ? letter.at(0).toLatin1() : '?';
    }
    for (const QString &text : parser.values(QStringLiteral("fault"))) {
        const std::optional<Fault> fault = Fault::parse(text, error);
        if (!fault)
            return false;
        scenario.faults.append(*fault);
    }
    if (!scenario.validate(error))
        return false;

    const int transports = int(parser.isSet(QStringLiteral("pty"))) +
                           int(parser.isSet(QStringLiteral("out"))) +
                           int(parser.isSet(QStringLiteral("device")));
    if (transports > 1) {
        *error = QStringLiteral("choose one of --pty, --out and --device");
        return false;
    }
    if (parser.isSet(QStringLiteral("out"))) {
        transport = Transport::File;
        target = parser.value(QStringLiteral("out"));
    } else if (parser.isSet(QStringLiteral("device"))) {
        transport = Transport::Device;
        target = parser.value(QStringLiteral("device"));
    }
    manifest = parser.value(QStringLiteral("manifest"));
    return true;
}

} // namespace VelquinSim

#include "Scenario.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace VelquinSim {

namespace {

struct FaultName
{
    FaultKind kind;
    const char *name;
};

constexpr FaultName kFaultNames[] = {
    {FaultKind::MidBlock, "midblock"},   {FaultKind::Garbage, "garbage"},
    {FaultKind::UnknownType, "unknown"}, {FaultKind::WrongParameter, "param"},
    {FaultKind::Chance96, "chance96"},   {FaultKind::Silence, "silence"},
    {FaultKind::Burst, "burst"},
};

/// The type bytes a receiver knows; an injected unknown type must be none of them.
bool isKnownType(uint type)
{
    return QByteArrayLiteral("CDEFHMPRUV").contains(char(type));
}

/// A value outside each parameter block's table.
quint8 defaultWrongValue(quint8 letter)
{
    switch (letter) {
    case 'H':
        return 3;
    case 'P':
        return 2;
    case 'R':
        return 4;
    default:
        return 5;
    }
}

bool isWrongValue(quint8 letter, uint value)
{
    switch (letter) {
    case 'E':
        return value != 2 && value != 3 && value != 4 && value != 8;
    case 'H':
        return value != 1 && value != 2;
    case 'P':
        return value > 1;
    default:
        return value > 3;
    }
}

std::optional<Fault> fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return std::nullopt;
}

} // namespace

QString Fault::spec() const
{
    QString name;
    for (const FaultName &entry : kFaultNames) {
        if (entry.kind == kind)
            name = QString::fromLatin1(entry.name);
    }
    const QString time = QStringLiteral("@") + QString::number(at);
    switch (kind) {
    case FaultKind::MidBlock:
        return name + QStringLiteral(":%1").arg(count);
    case FaultKind::Garbage:
    case FaultKind::Burst:
        return name + time + QStringLiteral(":%1").arg(count);
    case FaultKind::UnknownType:
        return name + time + QStringLiteral(":0x%1").arg(type, 2, 16, QLatin1Char('0'));
    case FaultKind::WrongParameter:
        return name + time + QStringLiteral(":%1:%2").arg(QChar(type)).arg(value);
    case FaultKind::Chance96:
        return name + time;
    case FaultKind::Silence:
        return name + time + QStringLiteral(":%1").arg(seconds);
    }
    return name;
}

std::optional<Fault> Fault::parse(const QString &spec, QString *error)
{
    QStringList args = spec.split(QLatin1Char(':'));
    QString head = args.takeFirst();
    Fault fault;
    const qsizetype atSign = head.indexOf(QLatin1Char('@'));
    if (atSign >= 0) {
        bool ok = false;
        fault.at = head.mid(atSign + 1).toDouble(&ok);
        if (!ok || fault.at < 0)
            return fail(error, QStringLiteral("fault \"%1\": bad time").arg(spec));
        head.truncate(atSign);
    }
    bool known = false;
    for (const FaultName &entry : kFaultNames) {
        if (head == QLatin1String(entry.name)) {
            fault.kind = entry.kind;
            known = true;
        }
    }
    if (!known)
        return fail(error, QStringLiteral("fault \"%1\": unknown kind \"%2\"").arg(spec, head));

    bool ok = true;
    auto number = [&](int index, uint fallback) {
        if (index >= args.size())
            return fallback;
        bool good = false;
        const uint value = args.at(index).toUInt(&good, 0);
        ok = ok && good;
        return value;
    };
    switch (fault.kind) {
    case FaultKind::MidBlock:
        fault.at = 0;
        fault.count = int(number(0, 3));
        ok = ok && fault.count >= 1 && fault.count <= 5;
        break;
    case FaultKind::Garbage:
        fault.count = int(number(0, 8));
        ok = ok && fault.count >= 1 && fault.count <= 4096;
        break;
    case FaultKind::UnknownType:
        fault.type = quint8(number(0, 'G'));
        ok = ok && !isKnownType(fault.type) && fault.type != 0x96;
        break;
    case FaultKind::WrongParameter: {
        const QString letter = args.value(0, QStringLiteral("E"));
        ok = letter.size() == 1 && QStringLiteral("EHPR").contains(letter);
        fault.type = ok ? quint8(letter.at(0).toLatin1()) : 'E';
        const uint value = number(1, defaultWrongValue(fault.type));
        ok = ok && value < 256 && value != 0x96 && isWrongValue(fault.type, value);
        fault.value = quint8(value);
        break;
    }
    case FaultKind::Chance96:
        break;
    case FaultKind::Silence:
        fault.seconds = args.isEmpty() ? 12.0 : args.at(0).toDouble(&ok);
        ok = ok && fault.seconds > 0;
        break;
    case FaultKind::Burst:
        fault.count = int(number(0, 100));
        ok = ok && fault.count >= 1 && fault.count <= 100000;
        break;
    }
    if (!ok)
        return fail(error, QStringLiteral("fault \"%1\": bad argument").arg(spec));
    return fault;
}

bool Scenario::readFile(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (!document.isObject()) {
        *error = QStringLiteral("%1: %2").arg(path, parseError.errorString());
        return false;
    }
    const QJsonObject object = document.object();
    static const QStringList kKeys = {
        QStringLiteral("kind"),        QStringLiteral("runs"),
        QStringLiteral("run-minutes"), QStringLiteral("idle-seconds"),
        QStringLiteral("events"),      QStringLiteral("labels"),
        QStringLiteral("pauses"),      QStringLiteral("pause-seconds"),
        QStringLiteral("holds"),       QStringLiteral("hold-seconds"),
        QStringLiteral("pen"),         QStringLiteral("cond-letter"),
        QStringLiteral("speed"),       QStringLiteral("seed"),
        QStringLiteral("faults"),
    };
    for (const QString &key : object.keys()) {
        if (!kKeys.contains(key)) {
            *error = QStringLiteral("%1: unknown key \"%2\"").arg(path, key);
            return false;
        }
    }
    if (object.contains(QStringLiteral("kind"))) {
        const QString name = object.value(QStringLiteral("kind")).toString();
        if (name != QLatin1String("status") && name != QLatin1String("letters")) {
            *error = QStringLiteral("%1: kind is \"status\" or \"letters\"").arg(path);
            return false;
        }
        kind = name == QLatin1String("letters") ? InstrumentKind::Letters : InstrumentKind::Status;
    }
    runs = object.value(QStringLiteral("runs")).toInt(runs);
    runMinutes = object.value(QStringLiteral("run-minutes")).toDouble(runMinutes);
    idleSeconds = object.value(QStringLiteral("idle-seconds")).toDouble(idleSeconds);
    events = object.value(QStringLiteral("events")).toInt(events);
    labels = object.value(QStringLiteral("labels")).toInt(labels);
    pauses = object.value(QStringLiteral("pauses")).toInt(pauses);
    pauseSeconds = object.value(QStringLiteral("pause-seconds")).toDouble(pauseSeconds);
    holds = object.value(QStringLiteral("holds")).toInt(holds);
    holdSeconds = object.value(QStringLiteral("hold-seconds")).toDouble(holdSeconds);
    pen = object.value(QStringLiteral("pen")).toBool(pen);
    const QString letter = object.value(QStringLiteral("cond-letter")).toString(QChar(condLetter));
    condLetter = letter.size() == 1 ? letter.at(0).toLatin1() : '?';
    speed = object.value(QStringLiteral("speed")).toDouble(speed);
    seed = quint64(object.value(QStringLiteral("seed")).toInteger(qint64(seed)));
    for (const QJsonValue &value : object.value(QStringLiteral("faults")).toArray()) {
        const std::optional<Fault> fault = Fault::parse(value.toString(), error);
        if (!fault)
            return false;
        faults.append(*fault);
    }
    return validate(error);
}

bool Scenario::validate(QString *error) const
{
    QString problem;
    if (runs < 0)
        problem = QStringLiteral("runs must be 0 or more");
    else if (runMinutes < 0.1 || runMinutes > 24 * 60)
        problem = QStringLiteral("run-minutes must lie between 0.1 and 1440");
    else if (idleSeconds < 1)
        problem = QStringLiteral("idle-seconds must be at least 1");
    else if (events < 0 || labels < 0 || pauses < 0 || holds < 0)
        problem = QStringLiteral("events, labels, pauses and holds cannot be negative");
    else if (pauseSeconds < 0.2 || holdSeconds < 0.2)
        problem = QStringLiteral("pause-seconds and hold-seconds must be at least 0.2");
    else if (condLetter != 'C' && condLetter != 'D')
        problem = QStringLiteral("cond-letter is C or D");
    else if (speed < 0)
        problem = QStringLiteral("speed cannot be negative");
    if (problem.isEmpty())
        return true;
    if (error)
        *error = problem;
    return false;
}

QString Scenario::kindName() const
{
    return kind == InstrumentKind::Letters ? QStringLiteral("letters") : QStringLiteral("status");
}

} // namespace VelquinSim

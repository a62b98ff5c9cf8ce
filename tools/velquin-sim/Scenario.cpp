#include "Scenario.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace VelquinSim {

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

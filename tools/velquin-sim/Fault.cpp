#include "Fault.h"

#include <QByteArray>
#include <QStringList>

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

QString Fault::optionText() const
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

std::optional<Fault> Fault::parse(const QString &text, QString *error)
{
    QStringList args = text.split(QLatin1Char(':'));
    QString head = args.takeFirst();
    Fault fault;
    const qsizetype atSign = head.indexOf(QLatin1Char('@'));
    if (atSign >= 0) {
        bool ok = false;
        fault.at = head.mid(atSign + 1).toDouble(&ok);
        if (!ok || fault.at < 0)
            return fail(error, QStringLiteral("fault \"%1\": bad time").arg(text));
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
        return fail(error, QStringLiteral("fault \"%1\": unknown kind \"%2\"").arg(text, head));

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
        return fail(error, QStringLiteral("fault \"%1\": bad argument").arg(text));
    return fault;
}

} // namespace VelquinSim

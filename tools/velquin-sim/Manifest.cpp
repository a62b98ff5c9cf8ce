#include "Manifest.h"

#include "Scenario.h"
#include "SimBlock.h"

#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>

namespace VelquinSim {

Manifest::Manifest(QIODevice &device) : m_device(device)
{}

void Manifest::begin(const Scenario &scenario)
{
    m_device.write("{\"scenario\": ");
    m_device.write(QJsonDocument(toJson(scenario)).toJson(QJsonDocument::Compact));
    m_device.write(",\n\"blocks\": [\n");
}

void Manifest::add(const SimBlock &block)
{
    QJsonObject object = toJson(block);
    object.insert(QStringLiteral("i"), m_count);
    if (m_count++ > 0)
        m_device.write(",\n");
    m_device.write(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void Manifest::finish()
{
    m_device.write("\n]}\n");
}

QJsonObject Manifest::toJson(const SimBlock &block)
{
    QJsonObject object;
    object.insert(QStringLiteral("t"), block.time);
    object.insert(QStringLiteral("offset"), block.offset);
    object.insert(QStringLiteral("length"), block.bytes.size());
    object.insert(QStringLiteral("pair"), block.pair);
    if (block.type != 0) {
        const bool letter = block.type >= 0x20 && block.type < 0x7f;
        object.insert(QStringLiteral("type"),
                      letter ? QString(QChar(block.type))
                             : QStringLiteral("0x%1").arg(block.type, 2, 16, QLatin1Char('0')));
    }
    if (block.type == 'M')
        object.insert(QStringLiteral("text"), QString::fromLatin1(block.text));
    else if (block.type != 0 || block.bytes.isEmpty())
        object.insert(QStringLiteral("value"), block.value);
    if (!block.fault.isEmpty())
        object.insert(QStringLiteral("fault"), block.fault);
    if (block.burst)
        object.insert(QStringLiteral("burst"), true);
    object.insert(QStringLiteral("hex"), QString::fromLatin1(block.bytes.toHex()));
    return object;
}

QJsonObject Manifest::toJson(const Scenario &scenario)
{
    QJsonArray faults;
    for (const Fault &fault : scenario.faults)
        faults.append(fault.optionText());
    return {
        {QStringLiteral("kind"), scenario.kindName()},
        {QStringLiteral("runs"), scenario.runs},
        {QStringLiteral("run-minutes"), scenario.runMinutes},
        {QStringLiteral("idle-seconds"), scenario.idleSeconds},
        {QStringLiteral("events"), scenario.events},
        {QStringLiteral("labels"), scenario.labels},
        {QStringLiteral("pauses"), scenario.pauses},
        {QStringLiteral("pause-seconds"), scenario.pauseSeconds},
        {QStringLiteral("holds"), scenario.holds},
        {QStringLiteral("hold-seconds"), scenario.holdSeconds},
        {QStringLiteral("pen"), scenario.pen},
        {QStringLiteral("cond-letter"), QString(QChar(scenario.condLetter))},
        {QStringLiteral("speed"), scenario.speed},
        {QStringLiteral("seed"), qint64(scenario.seed)},
        {QStringLiteral("faults"), faults},
    };
}

} // namespace VelquinSim

#include "RunJson.h"

#include "chart/RunData.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>

#include <charconv>
#include <cmath>
#include <utility>

namespace {

void appendNumber(QByteArray &out, float value)
{
    if (std::isnan(value)) {
        out += "\"NaN\"";
    } else if (std::isinf(value)) {
        out += value > 0 ? "\"Infinity\"" : "\"-Infinity\"";
    } else if (value == 0.0f && std::signbit(value)) {
        // "-0" reads back as the integer 0 in common parsers; "-0.0" keeps the sign.
        out += "-0.0";
    } else {
        char buffer[32];
        const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
        out.append(buffer, result.ptr - buffer);
    }
}

void appendNumber(QByteArray &out, double value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr - buffer);
}

void appendString(QByteArray &out, const QString &text)
{
    // QJsonDocument escapes a string correctly only inside an array.
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    out += array.mid(1, array.size() - 2);
}

} // namespace

QByteArray RunJson::dump(const RunData &run)
{
    QByteArray out;
    out.reserve(qsizetype(run.store.count()) * 48 + 4096);
    out += "{\n  \"title\": ";
    appendString(out, run.title);
    out += ",\n  \"notes\": ";
    appendString(out, run.annotations.notes());
    out += ",\n  \"axes\": {";
    const std::pair<const char *, float> axes[] = {
        {"uvMin", run.axes.uvMin},     {"uvMax", run.axes.uvMax},
        {"condMin", run.axes.condMin}, {"condMax", run.axes.condMax},
        {"timeMin", run.axes.timeMin}, {"timeMax", run.axes.timeMax}};
    for (const auto &[name, value] : axes) {
        out += name == axes[0].first ? "\"" : ", \"";
        out += name;
        out += "\": ";
        appendNumber(out, value);
    }
    out += "},\n  \"samples\": [";
    for (qint64 i = 0; i < run.store.count(); ++i) {
        out += i == 0 ? "\n    {\"time\": " : ",\n    {\"time\": ";
        appendNumber(out, SampleStore::timeOf(i));
        out += ", \"uv\": ";
        appendNumber(out, run.store.at(i).uv);
        out += ", \"conductivity\": ";
        appendNumber(out, run.store.at(i).conductivity);
        out += '}';
    }
    out += "\n  ],\n  \"marks\": [";
    bool first = true;
    for (const EventMark &mark : run.annotations.eventMarks()) {
        out += std::exchange(first, false) ? "\n    {\"time\": " : ",\n    {\"time\": ";
        appendNumber(out, mark.time);
        out += ", \"label\": ";
        appendString(out, mark.label);
        out += ", \"color\": " + QByteArray::number(mark.color);
        out += ", \"height\": " + QByteArray::number(mark.height) + '}';
    }
    out += "\n  ],\n  \"methodTexts\": [";
    first = true;
    for (const MethodText &text : run.annotations.methodTexts()) {
        out += std::exchange(first, false) ? "\n    {\"time\": " : ",\n    {\"time\": ";
        appendNumber(out, text.time);
        out += ", \"text\": ";
        appendString(out, text.text);
        out += '}';
    }
    out += "\n  ]\n}\n";
    return out;
}

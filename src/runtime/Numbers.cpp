#include "runtime/Numbers.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace {

double roundHalfEven(double value)
{
    if (!std::isfinite(value))
        Raise(ErrorNumber::Overflow);
    // nearbyint honours the current rounding mode, which is round-to-nearest-even by default.
    return std::nearbyint(value);
}

QString localise(QString text)
{
    const QLocale locale;
    text.replace(QLatin1Char('.'), locale.decimalPoint());
    if (text.startsWith(QLatin1Char('-')))
        text.replace(0, 1, locale.negativeSign());
    return text;
}

QString general(double value, int digits)
{
    if (value == 0.0)
        return QStringLiteral("0");
    QString text = QString::number(value, 'g', digits).toUpper();
    // The original wrote exponents without padding: "1E+16", "1E-05" -> "1E-5".
    text.replace(QStringLiteral("E+0"), QStringLiteral("E+"));
    text.replace(QStringLiteral("E-0"), QStringLiteral("E-"));
    return localise(text);
}

} // namespace

Int16 CInt(double value)
{
    const double rounded = roundHalfEven(value);
    if (rounded < -32768.0 || rounded > 32767.0)
        Raise(ErrorNumber::Overflow);
    return Int16(static_cast<long long>(rounded));
}

std::int32_t CLng(double value)
{
    const double rounded = roundHalfEven(value);
    if (rounded < std::numeric_limits<std::int32_t>::min() ||
        rounded > std::numeric_limits<std::int32_t>::max())
        Raise(ErrorNumber::Overflow);
    return static_cast<std::int32_t>(rounded);
}

QString Format(double value, const QString &pattern)
{
    int decimals = -1;
    if (pattern == QLatin1String("0"))
        decimals = 0;
    else if (pattern.startsWith(QLatin1String("0.")) &&
             pattern.count(QLatin1Char('0')) == pattern.size() - 1)
        decimals = int(pattern.size()) - 2;
    if (decimals < 0 || !std::isfinite(value))
        return CStr(value);
    QString text = QString::number(value, 'f', decimals);
    // A value that rounds to zero shows without a sign, as the original's Format did.
    if (text.startsWith(QLatin1Char('-')) && QString(text)
                                                 .remove(QLatin1Char('-'))
                                                 .remove(QLatin1Char('0'))
                                                 .remove(QLatin1Char('.'))
                                                 .isEmpty())
        text.remove(0, 1);
    return localise(text);
}

QString CStr(double value)
{
    return general(value, 15);
}

QString CStr(float value)
{
    return general(double(value), 7);
}

QString CStr(long long value)
{
    return localise(QString::number(value));
}

QString Str(long long value)
{
    return value < 0 ? QString::number(value) : QLatin1Char(' ') + QString::number(value);
}

double CDbl(const QString &text)
{
    bool ok = false;
    const double value = QLocale().toDouble(text.trimmed(), &ok);
    if (!ok)
        Raise(ErrorNumber::TypeMismatch);
    return value;
}

QChar DecimalPoint()
{
    const QString point = QLocale().decimalPoint();
    return point.isEmpty() ? QLatin1Char('.') : point.front();
}

QString GeneralDate(const QDateTime &when)
{
    const QLocale locale;
    QString timeFormat = locale.timeFormat(QLocale::LongFormat);
    timeFormat.remove(QLatin1Char('t'));
    return locale.toString(when.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
           locale.toString(when.time(), timeFormat.trimmed());
}

QString Now()
{
    return GeneralDate(QDateTime::currentDateTime());
}

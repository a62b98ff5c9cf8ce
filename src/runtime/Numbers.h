#pragma once

#include "runtime/Int16.h"

#include <QDateTime>
#include <QString>

#include <cstdint>

/// Real to whole, nearest, a half going to the even neighbour (2.5 -> 2, 3.5 -> 4); raises
/// Overflow past the range.
[[nodiscard]] Int16 CInt(double value);
[[nodiscard]] std::int32_t CLng(double value);

/// Fixed formats "0", "0.0", "0.00", "0.000" with the locale's decimal separator. Any other
/// pattern falls back to the general number format.
[[nodiscard]] QString Format(double value, const QString &pattern);

/// The general number format: 10 -> "10", 12.5 -> "12.5"; 15 significant digits for a double,
/// 7 for a single, and the locale's decimal separator.
[[nodiscard]] QString CStr(double value);
[[nodiscard]] QString CStr(float value);
[[nodiscard]] QString CStr(long long value);

/// A whole number with a leading blank when it is not negative (" 150", "-3").
[[nodiscard]] QString Str(long long value);

/// Text to number in the locale's format; raises Type mismatch (13) when it does not convert.
[[nodiscard]] double CDbl(const QString &text);

/// The locale's decimal separator, as the numeric entries accept it.
[[nodiscard]] QChar DecimalPoint();

/// The general date format: the locale's short date and long time, no time zone.
[[nodiscard]] QString GeneralDate(const QDateTime &when);
[[nodiscard]] QString Now();

#include "runtime/Numbers.h"

#include "runtime/Int16.h"
#include "runtime/RuntimeError.h"

#include <QLocale>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <tuple>

namespace {

struct LocaleScope
{
    explicit LocaleScope(QLocale::Language language) { QLocale::setDefault(QLocale(language)); }
    ~LocaleScope() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
};

} // namespace

TEST(Int16, ArithmeticPastTheRangeRaisesOverflow)
{
    Int16 top = 32767;
    Int16 bottom = -32768;
    EXPECT_EQ(trapError([&] { ++top; }), ErrorNumber::Overflow);
    EXPECT_EQ(trapError([&] { bottom -= 1; }), ErrorNumber::Overflow);
    EXPECT_EQ(trapError([] { (void)Int16(40000); }), ErrorNumber::Overflow);
    EXPECT_EQ(int(top), 32767) << "a failed step leaves the value as it was";
}

TEST(Rounding, HalvesGoToTheEvenNeighbour)
{
    const std::pair<double, int> rows[] = {
        {0.5, 0},   {1.5, 2},    {2.5, 2},    {3.5, 4},         {-0.5, 0},         {-1.5, -2},
        {-2.5, -2}, {2.4999, 2}, {2.5001, 3}, {32767.4, 32767}, {-32768.5, -32768}};
    for (const auto &[value, expected] : rows) {
        EXPECT_EQ(int(CInt(value)), expected) << value;
        EXPECT_EQ(CLng(value), expected) << value;
    }
    EXPECT_EQ(CLng(2147483647.4), 2147483647);
    EXPECT_EQ(CLng(1e6 + 0.5), 1000000);
}

TEST(Rounding, OutOfRangeOrNonFiniteRaisesOverflow)
{
    EXPECT_EQ(trapError([] { (void)CInt(32767.5); }), ErrorNumber::Overflow);
    EXPECT_EQ(trapError([] { (void)CInt(-32769); }), ErrorNumber::Overflow);
    EXPECT_EQ(trapError([] { (void)CLng(3e9); }), ErrorNumber::Overflow);
    EXPECT_EQ(trapError([] { (void)CInt(std::nan("")); }), ErrorNumber::Overflow);
    EXPECT_EQ(trapError([] { (void)CLng(std::numeric_limits<double>::infinity()); }),
              ErrorNumber::Overflow);
}

TEST(Format, FixedPatternsUseTheLocaleSeparator)
{
    // Value, pattern, text with a decimal point, text with a decimal comma.
    const std::tuple<double, const char *, const char *, const char *> rows[] = {
        {2.0, "0.000", "2.000", "2,000"},
        {-0.2, "0.000", "-0.200", "-0,200"},
        {500.0, "0.0", "500.0", "500,0"},
        {0.04, "0.0", "0.0", "0,0"},
        {-0.0004, "0.000", "0.000", "0,000"},
        {10.0 / 3.0, "0.00", "3.33", "3,33"},
        {1234.5678, "0.000", "1234.568", "1234,568"},
        {7.5, "0", "8", "8"},
    };
    for (const auto &[value, pattern, point, comma] : rows)
        EXPECT_EQ(Format(value, QLatin1String(pattern)), QLatin1String(point)) << pattern;
    LocaleScope german(QLocale::German);
    for (const auto &[value, pattern, point, comma] : rows)
        EXPECT_EQ(Format(value, QLatin1String(pattern)), QLatin1String(comma)) << pattern;
    EXPECT_EQ(DecimalPoint(), QLatin1Char(','));
}

TEST(Format, GeneralNumberIsShortAndStrLeavesRoomForTheSign)
{
    EXPECT_EQ(CStr(10.0), "10");
    EXPECT_EQ(CStr(12.5), "12.5");
    EXPECT_EQ(CStr(-3.25), "-3.25");
    EXPECT_EQ(CStr(0.1f), "0.1") << "a single shows its own 7 digits, not the double's noise";
    EXPECT_EQ(CStr(1e16), "1E+16");
    EXPECT_EQ(CStr(21.0 - 0.6), "20.4");
    EXPECT_EQ(Str(150), " 150");
    EXPECT_EQ(Str(-3), "-3");
    LocaleScope german(QLocale::German);
    EXPECT_EQ(CStr(12.5), "12,5");
}

TEST(Conversion, TextFollowsTheLocaleAndRaisesTypeMismatch)
{
    EXPECT_DOUBLE_EQ(CDbl(" 2.5 "), 2.5);
    EXPECT_EQ(trapError([] { (void)CDbl("abc"); }), ErrorNumber::TypeMismatch);
    LocaleScope german(QLocale::German);
    EXPECT_DOUBLE_EQ(CDbl("2,5"), 2.5);
}

TEST(Format, GeneralDateHasDateAndSecondsButNoZone)
{
    const QDateTime when(QDate(2026, 3, 9), QTime(14, 5, 7));
    const QString text = GeneralDate(when);
    EXPECT_TRUE(text.contains("3/9/26") || text.contains("3/9/2026")) << text.toStdString();
    EXPECT_TRUE(text.contains("2:05:07")) << text.toStdString();
    EXPECT_FALSE(text.contains("UTC")) << text.toStdString();
}

#pragma once

#include "runtime/RuntimeError.h"

#include <cstdint>

/// A signed 16-bit whole number whose arithmetic raises Overflow (6) past its range, as the
/// counters and ring positions of the program have always done.
class Int16
{
public:
    constexpr Int16() = default;
    constexpr Int16(long long value) : m_value(checked(value)) {} // NOLINT: reads like the original

    [[nodiscard]] constexpr int value() const { return m_value; }
    constexpr operator int() const { return m_value; } // NOLINT

    constexpr Int16 &operator+=(int rhs) { return *this = Int16(m_value + rhs); }
    constexpr Int16 &operator-=(int rhs) { return *this = Int16(m_value - rhs); }
    constexpr Int16 &operator++() { return *this += 1; }
    constexpr Int16 &operator--() { return *this -= 1; }

private:
    static constexpr std::int16_t checked(long long value)
    {
        if (value < -32768 || value > 32767)
            Raise(ErrorNumber::Overflow);
        return static_cast<std::int16_t>(value);
    }

    std::int16_t m_value = 0;
};

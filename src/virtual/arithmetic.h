// The little arithmetic that the chip needs beyond the four operations, without a library.
#pragma once

#include <cstdint>

namespace trevik::virtual_card
{

inline constexpr double never = __builtin_huge_val();

inline double SquareRoot(double x)
{
    return __builtin_sqrt(x > 0 ? x : 0);
}

constexpr double Smaller(double a, double b)
{
    return a < b ? a : b;
}
constexpr std::int64_t Smaller(std::int64_t a, std::int64_t b)
{
    return a < b ? a : b;
}
constexpr double Larger(double a, double b)
{
    return a > b ? a : b;
}
constexpr std::int64_t Size(std::int64_t distance)
{
    return distance < 0 ? -distance : distance;
}
constexpr double Absolute(double x)
{
    return x < 0 ? -x : x;
}

// The argument in [low, high] at which a rising function reaches `value`, to the last bit that halving gives.
template <class Function>
double Solve(double low, double high, double value, Function function)
{
    constexpr int halvings = 60;
    for (int i = 0; i < halvings; ++i) {
        const double middle = low + (high - low) / 2;
        (function(middle) < value ? low : high) = middle;
    }
    return high;
}

// Number of the lowest bit of a word that is not 0.
inline unsigned LowestBit(std::uint32_t word)
{
    return static_cast<unsigned>(__builtin_ctz(word));
}

// The nearest whole number; for numbers of 0 or more.
constexpr std::int64_t Nearest(double x)
{
    return static_cast<std::int64_t>(x + 0.5); // NOLINT(bugprone-incorrect-roundings): without a library
}

// The first whole number above `low`, at most `high`, at which a condition that then stays true is true.
template <class Condition>
std::int64_t FirstTrue(std::int64_t low, std::int64_t high, Condition condition)
{
    while (high - low > 1) {
        const std::int64_t middle = low + (high - low) / 2;
        (condition(middle) ? high : low) = middle;
    }
    return high;
}

} // namespace trevik::virtual_card

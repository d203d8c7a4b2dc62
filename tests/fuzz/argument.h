// Arguments of exported functions, made of a fuzzer's bytes: by type, with values worth trying by parameter name.
#pragma once

#include "fuzz/bytes.h"

#include <trevik/TrevikHost.h>

#include <atomic>
#include <limits>
#include <memory>
#include <string_view>
#include <type_traits>

namespace trevik::fuzz
{

using Name = std::string_view;

inline constexpr const char *card_lists[] = {"0:A", "0:AC",    "0:A,1:AC", "0:AC,1:A,2:A,15:AC",
                                             "",    "0:A,0:A", nullptr};
inline constexpr unsigned good_card_lists = 5;

// What a function gave out last: an event, now and then.
inline std::uint32_t last_out = 0;

inline bool Has(Name name, Name part)
{
    return name.find(part) != Name::npos;
}

template <class T>
T Take(Name name, Bytes &bytes) = delete;

template <>
inline std::uint8_t Take(Name name, Bytes &bytes)
{
    constexpr std::uint8_t numbers[] = {0, 0, 0, 0, 0, 1, 1, 2, 15, 16};
    constexpr std::uint8_t axes[] = {0, 0, 1, 1, 2, 2, 3, 3, 4};
    constexpr std::uint8_t choices[] = {0, 1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 12, 15, 17, 24, 255};
    return name == "card" ? bytes.mostly(numbers) : name == "axis" ? bytes.mostly(axes) : bytes.mostly(choices);
}

template <>
inline std::uint16_t Take(Name, Bytes &bytes)
{
    constexpr std::uint16_t words[] = {0, 1, 2, 7, 10, 100, 1000, 1001, 4095, 4096, 65535};
    return bytes.mostly(words);
}

template <>
inline std::int32_t Take(Name, Bytes &bytes)
{
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t pulses[] = {0,       1,       -1,       3,          -7,    10,       100,    -100,
                                       707,     1000,    -1000,    3000,       -4000, 10000,    -10000, 100000,
                                       -250000, 1000000, 16777216, -(1 << 28), most,  -most - 1};
    return bytes.mostly(pulses);
}

template <>
inline std::uint32_t Take(Name name, Bytes &bytes)
{
    constexpr std::uint32_t speeds[] = {0,      1,       100,     500,     1000,    5000,     20000,
                                        100000, 1000000, 6553500, 6553501, 7281397, 0u - 500, 0u - 20000};
    constexpr std::uint32_t times[] = {0, 0, 1, 10, 20, 50, 100, 200, 1000, 60000, 0x80000000, 0xFFFFFFFF};
    constexpr std::uint32_t counts[] = {0, 1, 1, 2, 3, 5, 8, 13, 21, 100};
    constexpr std::uint32_t errors[] = {31, 5, 21, 1167};
    if (Has(name, "peed"))
        return bytes.mostly(speeds);
    if (Has(name, "ime") || Has(name, "_ms") || Has(name, "ccel") || Has(name, "ecel"))
        return bytes.mostly(times);
    if (name == "skip" || name == "count")
        return bytes.mostly(counts);
    if (name == "error")
        return bytes.one_of(errors);
    if (name == "event")
        return last_out;
    return static_cast<std::uint32_t>(Take<std::int32_t>(name, bytes));
}

template <>
inline double Take(Name, Bytes &bytes)
{
    constexpr double seconds[] = {0, 0.001, 0.01, 0.05, 0.1, 0.2, 0.5, 1, 10, 1e-9, 1e6, -1, 1e300};
    return bytes.mostly(seconds);
}

template <>
inline const char *Take(Name name, Bytes &bytes)
{
    const char *const scratch = scratch_file.c_str();
    const char *const files[] = {scratch, scratch, scratch, "/dev/full", "/", nullptr};
    return name == "cards" ? bytes.one_of(card_lists) : bytes.one_of(files);
}

inline std::atomic<unsigned> callbacks;

inline void TREVIK_CALL OnInterrupt(std::uint32_t)
{
    ++callbacks;
}

template <>
inline TrevikA_callback Take(Name, Bytes &bytes)
{
    return bytes.take<std::uint8_t>() % 16 != 0 ? OnInterrupt : nullptr;
}

inline void PrintValue(Name name, double value)
{
    Print(" %.*s=%.10g", static_cast<int>(name.size()), name.data(), value);
}

// A value, a text, a function; null for any other pointer.
template <class T>
class Argument
{
  public:
    Argument(Name name, Bytes &bytes)
    {
        if constexpr (requires { Take<T>(name, bytes); })
            value_ = Take<T>(name, bytes);
        if constexpr (std::is_arithmetic_v<T>)
            PrintValue(name, value_);
    }
    T get() { return value_; }

  private:
    T value_{};
};

// A place to write to; alone, so that the sanitizer sees what is written beside it. Null now and then.
template <class T>
requires std::is_arithmetic_v<T> &&(!std::is_const_v<T>)class Argument<T *>
{
  public:
    Argument(Name, Bytes &bytes) : place_(bytes.take<std::uint8_t>() % 32 != 31 ? new T(77) : nullptr) {}
    Argument(Argument &&) = default;
    ~Argument()
    {
        if constexpr (std::is_same_v<T, std::uint32_t>)
            last_out = place_ != nullptr ? *place_ : last_out;
    }
    T *get() { return place_.get(); }

  private:
    std::unique_ptr<T> place_;
};

// Four flags; one byte says them all.
template <>
class Argument<const std::uint8_t *>
{
  public:
    Argument(Name name, Bytes &bytes)
    {
        const auto flags = bytes.take<std::uint8_t>();
        PrintValue(name, flags);
        if (flags == 255)
            return;
        flags_.reset(new std::uint8_t[4]);
        for (unsigned n = 0; n < 4; ++n)
            flags_[n] = static_cast<std::uint8_t>((flags >> n & 1) + (flags >> n >> 4 & 1));
    }
    const std::uint8_t *get() { return flags_.get(); }

  private:
    std::unique_ptr<std::uint8_t[]> flags_;
};

} // namespace trevik::fuzz

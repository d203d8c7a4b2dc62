// Exported functions behind one signature: arguments are numbers, out-values are cells.
#pragma once

#include "support/system.h"

#include "api/card_manager.h"

#include <trevik/Trevik.h>
#include <trevik/TrevikAC.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace trevik::test
{

// What a call may write through its pointers, in their order: each holds 77 of its own type at first. One of them
// may be null.
class Outs
{
  public:
    explicit Outs(std::size_t null = 99) : null_(null) {}
    template <class T>
    T *next()
    {
        T *const place = std::construct_at(reinterpret_cast<T *>(&cells_[used_++]), T{77});
        at_first_[used_ - 1] = cells_[used_ - 1];
        return null_ + 1 == used_ ? nullptr : place;
    }
    bool untouched() const { return std::memcmp(&cells_, &at_first_, sizeof cells_) == 0; }
    std::int64_t cell(std::size_t number) const
    {
        std::int64_t value = 0;
        std::memcpy(&value, &cells_[number], sizeof value);
        return value;
    }

  private:
    struct alignas(8) Cell {
        std::array<std::byte, 8> bytes{};
    };
    std::array<Cell, 5> cells_{};
    std::array<Cell, 5> at_first_{};
    std::size_t used_ = 0;
    std::size_t null_; // number
};

// For the arguments that are no numbers: the configuration file of a number, and a callback.
const char *FileOf(double number);
void TREVIK_CALL NoCallback(std::uint32_t card);

// The flags of a set of axes, a byte each.
inline const std::uint8_t *FlagsOf(double set)
{
    static std::array<std::uint8_t, 4> flags;
    for (std::size_t axis = 0; axis < 4; ++axis)
        flags[axis] = static_cast<unsigned>(set) >> axis & 1;
    return flags.data();
}

// The next argument, of type T. Times are milliseconds.
template <class T>
T Take(const double *&next, Outs &outs)
{
    const double argument = *next++;
    if constexpr (std::is_same_v<T, const std::uint8_t *>)
        return FlagsOf(argument);
    else if constexpr (std::is_same_v<T, const char *>)
        return FileOf(argument);
    else if constexpr (std::is_same_v<T, TrevikA_callback>)
        return NoCallback;
    else if constexpr (std::is_pointer_v<T>)
        return outs.next<std::remove_pointer_t<T>>();
    else if constexpr (std::is_same_v<T, double>)
        return argument / 1000;
    else
        return static_cast<T>(static_cast<std::int64_t>(argument));
}

inline constexpr std::size_t most_parameters = 16;
using Arguments = std::array<double, most_parameters>;

template <auto Called, class Parameters = typename Signature<decltype(Called)>::Parameters>
struct Calling;
template <auto Called, class... P>
struct Calling<Called, std::tuple<P...>> {
    template <class T>
    static constexpr bool is_out = std::is_arithmetic_v<std::remove_pointer_t<T>> &&std::is_pointer_v<T> &&
                                   !std::is_const_v<std::remove_pointer_t<T>>;
    static constexpr std::size_t out_count = (0 + ... + (is_out<P> ? 1 : 0));

    static std::uint32_t call(const Arguments &arguments, [[maybe_unused]] Outs &outs)
    {
        [[maybe_unused]] const double *next = arguments.data();
        const std::tuple<P...> taken{Take<P>(next, outs)...}; // braces: from left to right
        return std::apply(Called, taken);
    }
};

struct Exported {
    std::string_view name;
    std::string_view counterpart; // that it must be the same as
    std::array<std::string_view, most_parameters> parameters;
    std::uint32_t (*call)(const Arguments &arguments, Outs &outs);
    std::size_t outs; // pointers through which it hands out

    bool has(std::string_view parameter) const
    {
        return std::find(parameters.begin(), parameters.end(), parameter) != parameters.end();
    }
};

// Functions of the AC model alone.
inline bool IsForAC(std::string_view name)
{
    return name.starts_with("TrevikAC_") || name.find("debounce") != name.npos;
}

inline constexpr std::uint32_t no_result = 1; // stands for that of the handwheel's tick

inline std::uint32_t Tick(const Arguments &, Outs &)
{
    manager.PulserFollowTick();
    return no_result;
}

inline constexpr Exported exported[] = {
#define FUNCTION(function, counterpart, ...)                                                                       \
    {#function, #counterpart, {__VA_ARGS__}, Calling<&function>::call, Calling<&function>::out_count},
#include "functions.inc"
#undef FUNCTION
    {"the handwheel's tick", "the handwheel's tick", {}, Tick, 0},
};

} // namespace trevik::test

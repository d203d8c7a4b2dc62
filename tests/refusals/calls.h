// Exported functions behind one signature: arguments are numbers, out-values are cells.
#pragma once

#include "support/system.h"

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

// What a call may write through its pointers, in their order: each holds 77 of its own type at first.
class Outs
{
  public:
    template <class T>
    T *next()
    {
        return std::construct_at(reinterpret_cast<T *>(&cells_[used_++]), T{77});
    }
    std::uint64_t cell(std::size_t number) const
    {
        std::uint64_t value = 0;
        std::memcpy(&value, &cells_[number], sizeof value);
        return value;
    }

  private:
    struct alignas(8) Cell {
        std::array<std::byte, 8> bytes{};
    };
    std::array<Cell, 5> cells_{};
    std::size_t used_ = 0;
};

// For the arguments that are no numbers: the configuration file of a number, and a callback.
const char *FileOf(double number);
void TREVIK_CALL NoCallback(std::uint32_t card);

// The flags of a set of axes, a byte each.
inline const std::uint8_t *FlagsOf(double set)
{
    static std::array<std::array<std::uint8_t, 4>, 16> flags = [] {
        std::array<std::array<std::uint8_t, 4>, 16> all{};
        for (std::size_t bits = 0; bits < 16; ++bits)
            for (std::size_t axis = 0; axis < 4; ++axis)
                all[bits][axis] = bits >> axis & 1;
        return all;
    }();
    return flags[static_cast<std::size_t>(set)].data();
}

// The next argument of type T.
template <class T>
T Take(const double *&arguments, Outs &outs)
{
    if constexpr (std::is_same_v<T, const std::uint8_t *>)
        return FlagsOf(*arguments++);
    else if constexpr (std::is_same_v<T, const char *>)
        return FileOf(*arguments++);
    else if constexpr (std::is_same_v<T, TrevikA_callback>)
        return NoCallback;
    else if constexpr (std::is_pointer_v<T>)
        return outs.next<std::remove_pointer_t<T>>();
    else if constexpr (std::is_same_v<T, double>)
        return *arguments++;
    else
        return static_cast<T>(static_cast<std::int64_t>(*arguments++));
}

template <class T>
inline constexpr bool IsArgument =
    !std::is_pointer_v<T> || std::is_same_v<T, const std::uint8_t *> || std::is_same_v<T, const char *>;

using Caller = std::uint32_t (*)(const double *arguments, Outs &outs);

template <auto Exported, class Parameters = typename Signature<decltype(Exported)>::Parameters>
struct Calling;
template <auto Exported, class... P>
struct Calling<Exported, std::tuple<P...>> {
    static constexpr std::size_t takes = (0 + ... + (IsArgument<P> ? 1 : 0));

    static std::uint32_t call([[maybe_unused]] const double *arguments, [[maybe_unused]] Outs &outs)
    {
        const std::tuple<P...> taken{Take<P>(arguments, outs)...}; // braces: from left to right
        return std::apply(Exported, taken);
    }
};

struct Export {
    const char *name = nullptr;
    Caller call = nullptr;
    std::size_t takes = 1; // arguments
};

// A call and what the refusal of its requests does: one letter for each of its first requests, '.' for the rest.
//
//   .  the value counts as 0; the call's result is the error if this is the last request and one that reports
//   a  may the axis move? as '.'; it may not, the result is 303 and nothing follows
//   m  as 'a' in the handwheel's tick, which has tried something else before
//   v  does the axis run at a speed? it does not, 305 and nothing follows
//   c  the position is not known: the bookkeeping of targets stays as it is
//   C  likewise, but the call returns the error once it has asked for the other axis
//   x  as 'c', and never reported
//   t  the target stays as it is
//   h  u  g  handwheel: count and position not known, the axis does not follow yet; a tick without a count
//   d  a tick whose change is refused tries a move, which an axis in motion is not allowed
//   f  the axes that follow the counter keep their base
//   p  the value of the register before it counts
//   r  reported though it is not the last
//   s  the snapshot counts as all zero, the result is 100
//   0 to 4   fills this out-value whole: it is not written
//
// A '*' repeats the letter before it for all the rest. States: see Sweep::reset.
struct Row {
    Export functions[2]; // names of the same
    std::string_view letters;
    double arguments[13];
    std::string_view state = "";
    std::uint32_t result = 0; // when nothing is refused; not 0: also whatever is refused
};

template <auto Exported>
constexpr Export Named(const char *name)
{
    return {name, Calling<Exported>::call, Calling<Exported>::takes};
}
#define F(name) Named<&name>(#name)

} // namespace trevik::test

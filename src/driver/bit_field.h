// One field of a 32-bit word.
#pragma once

#include <cstdint>

namespace trevik
{

struct BitField {
    unsigned offset;
    unsigned width;

    constexpr std::uint32_t mask() const { return ((1u << width) - 1u) << offset; }
    constexpr std::uint32_t get(std::uint32_t word) const { return (word & mask()) >> offset; }
    constexpr std::uint32_t put(std::uint32_t word, std::uint32_t value) const
    {
        return (word & ~mask()) | ((value << offset) & mask());
    }
};

} // namespace trevik

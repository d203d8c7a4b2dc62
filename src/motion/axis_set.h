// The axes of a card that move as one, and the selectors that name them.
#pragma once

#include "driver/card.h"

#include <array>
#include <cstdint>

namespace trevik
{

// The axes of a move, first axis first.
struct AxisSet {
    std::array<std::uint8_t, 4> axes{};
    std::uint8_t size = 0; // 0: no such set
};

constexpr AxisSet AxisPair(std::uint8_t selector) // 0 to 5
{
    constexpr std::array<AxisSet, 6> pairs{
        {{{0, 1}, 2}, {{0, 2}, 2}, {{0, 3}, 2}, {{1, 2}, 2}, {{1, 3}, 2}, {{2, 3}, 2}}};
    return selector < pairs.size() ? pairs[selector] : AxisSet{};
}

constexpr AxisSet AxisTriple(std::uint8_t selector) // 0 to 3
{
    constexpr std::array<AxisSet, 4> triples{{{{0, 1, 2}, 3}, {{0, 1, 3}, 3}, {{0, 2, 3}, 3}, {{1, 2, 3}, 3}}};
    return selector < triples.size() ? triples[selector] : AxisSet{};
}

inline constexpr AxisSet all_four_axes{{0, 1, 2, 3}, 4};

// The axes of a set on a card.
class CheckedAxes
{
  public:
    CheckedAxes(const Card &card, const AxisSet &set) : size_(set.size)
    {
        for (unsigned i = 0; i < size_; ++i)
            axes_[i] = card.axis(set.axes[i]);
    }

    const Axis *begin() const { return axes_.data(); }
    const Axis *end() const { return axes_.data() + size_; }
    const Axis &first() const { return axes_[0]; }
    const Axis &operator[](std::size_t i) const { return axes_[i]; }
    std::size_t size() const { return size_; }

    std::uint8_t bits() const
    {
        unsigned bits = 0;
        for (const Axis &axis : *this)
            bits |= axis.bit();
        return static_cast<std::uint8_t>(bits);
    }

  private:
    std::array<Axis, 4> axes_;
    std::size_t size_;
};

} // namespace trevik

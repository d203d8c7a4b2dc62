#include "virtual/surroundings.h"

#include "virtual/arithmetic.h"

#include <limits>

namespace trevik::virtual_card
{
namespace
{

// Farther than any axis gets.
constexpr std::int64_t open_end = std::int64_t{1} << 60;

// Remainder of 0 or more.
std::int64_t Modulo(std::int64_t value, std::int64_t period)
{
    const std::int64_t rest = value % period;
    return rest < 0 ? rest + period : rest;
}

// Steps from a position to the nearer of two that lie ahead of it.
std::int64_t StepsAhead(std::int64_t position, std::int64_t near, std::int64_t far)
{
    if (near > position)
        return near - position;
    return far > position ? far - position : Surroundings::no_edge;
}

} // namespace

void Surroundings::place_switch(Input input, std::int32_t first, std::int32_t last)
{
    using Limits = std::numeric_limits<std::int32_t>;
    placed_ |= Bit(input);
    const Stretch stretch = {first == Limits::min() ? -open_end : first, last == Limits::max() ? open_end : last};
    switches_[static_cast<unsigned>(input)] = mirrored_ ? stretch.opposite() : stretch;
}

void Surroundings::place_index(std::int32_t first, std::uint32_t period)
{
    index_first_ = mirrored_ ? -std::int64_t{first} : first;
    index_period_ = period;
}

void Surroundings::mirror()
{
    mirrored_ = !mirrored_;
    for (Stretch &stretch : switches_)
        stretch = stretch.opposite();
    index_first_ = -index_first_;
}

std::uint32_t Surroundings::active(std::int64_t position) const
{
    std::uint32_t bits = 0;
    for (std::uint32_t left = placed_; left != 0; left &= left - 1) {
        const Stretch &s = switches_[LowestBit(left)];
        if (position >= s.first && position <= s.last)
            bits |= left & (0 - left);
    }
    return bits;
}

bool Surroundings::index_at(std::int64_t position) const
{
    return index_period_ != 0 && Modulo(position - index_first_, index_period_) == 0;
}

std::int64_t Surroundings::steps_to_index(std::int64_t position, bool plus) const
{
    const std::int64_t beyond = Modulo(plus ? position - index_first_ : index_first_ - position, index_period_);
    return index_period_ - beyond;
}

std::int64_t Surroundings::steps_to_edge(std::int64_t position, bool plus, bool index) const
{
    std::int64_t nearest = index && index_period_ != 0 ? steps_to_index(position, plus) : no_edge;
    for (std::uint32_t left = placed_; left != 0; left &= left - 1) {
        const Stretch &s = switches_[LowestBit(left)];
        const std::int64_t steps =
            plus ? StepsAhead(position, s.first, s.last + 1) : StepsAhead(-position, -s.last, 1 - s.first);
        nearest = steps < nearest ? steps : nearest;
    }
    return nearest;
}

void Encoder::scale(std::int64_t counts, std::int64_t position)
{
    const std::uint32_t now = count(position);
    counts_ = counts;
    base_ += now - count(position);
}

} // namespace trevik::virtual_card

// The machine around one axis: switches along its way, the index pulse of its encoder, the handwheel.
#pragma once

#include "virtual/input.h"
#include "virtual/moment.h"

#include <array>
#include <cstdint>

namespace trevik::virtual_card
{

class Surroundings
{
  public:
    // The input is active from `first` to `last` inclusive; the ends of the number range stand for no end.
    void place_switch(Input input, std::int32_t first, std::int32_t last);
    void remove_switch(Input input) { placed_ &= ~Bit(input); }
    // One index pulse every `period` pulses, one of them at `first`; period 0: none.
    void place_index(std::int32_t first, std::uint32_t period);
    // Turned round: what stood at a position stands at the opposite one, also what is placed from now on.
    void mirror();

    // Anything that depends on the position.
    bool fitted() const { return placed_ != 0 || index_period_ != 0; }

    // Bits of the inputs whose switch is active at a position, and whether an index pulse is there.
    std::uint32_t active(std::int64_t position) const;
    bool index_at(std::int64_t position) const;

    // Pulses from a position to the next one at which a switch turns on or off, or with `index` an index pulse
    // comes; 1 or more.
    std::int64_t steps_to_edge(std::int64_t position, bool plus, bool index) const;

    static constexpr std::int64_t no_edge = std::int64_t{1} << 61;

  private:
    struct Stretch {
        std::int64_t first, last;

        Stretch opposite() const { return {-last, -first}; }
    };

    std::int64_t steps_to_index(std::int64_t position, bool plus) const;

    std::uint32_t placed_ = 0;
    std::uint32_t index_period_ = 0;
    std::int64_t index_first_ = 0;
    std::array<Stretch, input_count> switches_{};
    bool mirrored_ = false;
};

// The encoder of the axis, which counts the machine's way. Counts wrap.
class Encoder
{
  public:
    // `counts` for every pulse from a position on, where the count stays what it was.
    void scale(std::int64_t counts, std::int64_t position);

    // Turned round with its machine, whose opposite position has the same count.
    void mirror() { counts_ = -counts_; }

    std::uint32_t count(std::int64_t position) const { return static_cast<std::uint32_t>(steps(position)) + base_; }
    // Counts between two positions, less than 2^32 of them apart.
    std::int64_t between(std::int64_t from, std::int64_t to) const
    {
        return static_cast<std::int64_t>(steps(to) - steps(from));
    }

  private:
    // From position 0.
    std::uint64_t steps(std::int64_t position) const
    {
        return static_cast<std::uint64_t>(position) * static_cast<std::uint64_t>(counts_);
    }

    std::int64_t counts_ = 1;
    std::uint32_t base_ = 0;
};

// A turn of the handwheel, spread evenly over its time.
struct HandwheelTurn {
    std::int64_t begin_ns = 0;
    double seconds = 0;
    std::int32_t counts = 0;

    std::uint32_t counted(std::int64_t now_ns) const
    {
        const double elapsed_s = static_cast<double>(now_ns - begin_ns) * 1e-9;
        const double part = elapsed_s < seconds ? counts * (elapsed_s / seconds) : counts;
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(part));
    }

    // From here on it stands still.
    std::int64_t end_ns() const
    {
        const double span_ns = seconds * 1e9 + 1;
        return span_ns < static_cast<double>(never_ns - begin_ns)
                   ? begin_ns + static_cast<std::int64_t>(span_ns) + 1
                   : never_ns;
    }
};

} // namespace trevik::virtual_card

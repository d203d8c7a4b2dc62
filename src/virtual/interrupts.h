// The interrupts of a card as its driver handles them: what has happened since the program last looked, and the
// event that the program waits for.
#pragma once

#include "virtual/chip.h"

#include <array>
#include <cstdint>

namespace trevik::virtual_card
{

// Bit numbers of causes that are not the chip's: of the card, timer 1 follows; and of an axis, among its errors.
inline constexpr unsigned timer0_cause = 0;
inline constexpr unsigned detector_error = 3;

class Interrupts
{
  public:
    // Something has happened that may interrupt; it is signalled if a program waits now.
    void raise_axis(unsigned axis, const Chip::Raised &raised);
    void raise_card(unsigned causes);

    // Sources that have something in the snapshot: bits 0 to 3 the axes, bit 4 the card.
    unsigned pending() const;

    // Writes the snapshot, which is then empty, into a reply of zeros.
    void take_snapshot(void *reply);

    // The event that is signalled, and whether it is. What a process asked for ends when it releases the card.
    void link(std::uint32_t process, std::uint32_t event);
    void enable(std::uint32_t process, bool on);
    void release(std::uint32_t process);
    void disconnect();
    bool delivers() const { return enabled_ && event_ != 0; }

    // The event to signal for what was raised since this was last asked; 0: none.
    std::uint32_t take_signal();

  private:
    std::array<Chip::Raised, chip_axes> axes_{};
    unsigned card_ = 0;

    std::uint32_t process_ = 0;
    std::uint32_t event_ = 0;
    bool enabled_ = false;
    bool signal_due_ = false;
};

} // namespace trevik::virtual_card

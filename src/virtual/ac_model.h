// What the AC model adds to each axis: how the encoder counts, pulse swap, the analogue output and a position loop,
// all in index registers of 16 bits.
#pragma once

#include "driver/registers.h"
#include "virtual/arithmetic.h"
#include "virtual/chip.h"

#include <array>
#include <cstdint>

namespace trevik::virtual_card
{

class AcModel
{
  public:
    // The program's side; indexes 0 to 255. What the chip is to do by these registers it is told.
    std::uint16_t read(unsigned axis, unsigned index, Chip &chip, std::int64_t now_ns);
    void write(unsigned axis, unsigned index, std::uint16_t value, Chip &chip, std::int64_t now_ns);

    // The machine's side.
    std::int32_t output(unsigned axis, Chip &chip, std::int64_t now_ns) const;
    void set_encoder_status(unsigned axis, std::uint16_t status) { reg(axis, Index::EncoderStatus) = status; }

    // The error detectors: whether any is at work, the axes on which one trips while time passes, and when the next
    // one does if nothing happens on the chip before.
    bool detecting() const { return detecting_ != 0; }
    unsigned pass(Chip &chip, std::int64_t now_ns);
    std::int64_t next_trip(Chip &chip) const;

  private:
    std::uint16_t reg(unsigned axis, Index index) const { return registers_[axis][static_cast<unsigned>(index)]; }
    std::uint16_t &reg(unsigned axis, Index index) { return registers_[axis][static_cast<unsigned>(index)]; }
    double time_constant_s(unsigned axis) const;
    std::int32_t error(unsigned axis, Chip &chip, std::int64_t now_ns) const;
    void scale_encoder(unsigned axis, Chip &chip, std::int64_t now_ns);
    void adjust_loop(unsigned axis, Chip &chip, std::int64_t now_ns);
    std::int64_t trip_time(unsigned axis, Chip &chip) const;
    unsigned trip(Chip &chip);

    std::array<std::array<std::uint16_t, 256>, chip_axes> registers_{};
    unsigned detecting_ = 0;
    std::int64_t passed_ns_ = 0; // up to here they have looked
};

} // namespace trevik::virtual_card

// A virtual card as its driver shows it: requests in, replies out. One card is used by one thread at a time; the
// guard sees to it.
#pragma once

#include "driver/request_buffer.h"
#include "virtual/ac_model.h"
#include "virtual/card_timers.h"
#include "virtual/chip.h"
#include "virtual/interrupts.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace trevik::virtual_card
{

enum class Model : std::uint8_t { A, AC };

// Windows error numbers that a virtual card answers with.
inline constexpr std::uint32_t error_invalid_function = 1;
inline constexpr std::uint32_t error_invalid_parameter = 87;

// A request as the driver receives it.
struct ControlRequest {
    std::uint32_t code;
    const void *in;
    std::uint32_t in_size;
    void *out;
    std::uint32_t out_size;
};

class Card
{
  public:
    // Power-up.
    void reset(std::uint8_t number, Model model);

    // Answers a request: 0 and the size of the reply, or a Windows error number.
    std::uint32_t control(const ControlRequest &request, std::int64_t now_ns, std::uint32_t &returned);

    // After `skip` more requests, refuses `count` with `error`.
    void refuse(std::uint32_t skip, std::uint32_t count, std::uint32_t error) { refusal_ = {skip, count, error}; }

    Chip &chip() { return chip_; }
    AcModel *ac_model() { return model_ == Model::AC ? &ac_ : nullptr; } // null: an A card

    // Time passes for what is beside the chip, before something else is asked of the card than a request.
    void pass(std::int64_t now_ns)
    {
        if (ac_.detecting())
            pass_detectors(now_ns);
    }

    // Interrupts: whether a program waits for them, the event to signal for what has happened up to now (0: none),
    // and when something may happen next that interrupts.
    bool delivers() const { return interrupts_.delivers(); }
    std::uint32_t take_signal(std::int64_t now_ns);
    std::int64_t next_interrupt(std::int64_t now_ns);
    void disconnect() { interrupts_.disconnect(); }

    // Time at which the next thing happens by itself, after `now_ns`; never_ns: nothing will.
    std::int64_t next_event(std::int64_t now_ns);

    // Counters 1 to 4.
    std::int32_t counter(unsigned axis, unsigned counter, std::int64_t now_ns);
    void set_counter(unsigned axis, unsigned counter, std::int32_t value, std::int64_t now_ns);

  private:
    struct Refusal {
        std::uint32_t skip = 0;
        std::uint32_t count = 0;
        std::uint32_t error = 0;
    };

    bool refused(std::uint32_t &error);
    std::uint32_t answer(const ControlRequest &request, std::int64_t now_ns);
    std::uint32_t register_read(const void *in, void *out, std::int64_t now_ns);
    std::uint32_t register_write(const void *in, std::int64_t now_ns);
    std::uint32_t interrupt_request(ControlCode code, const void *in, void *out, std::int64_t now_ns);
    std::uint32_t index_request(ControlCode code, const void *in, void *out, std::int64_t now_ns);
    std::uint16_t index_register(unsigned axis, unsigned index, std::int64_t now_ns);
    std::uint16_t read_port(std::uint32_t offset, std::int64_t now_ns);
    void write_port(std::uint32_t offset, std::uint16_t value, std::int64_t now_ns);
    unsigned unmasked(unsigned among) const;
    void collect(std::int64_t now_ns);
    void pass_detectors(std::int64_t now_ns);
    std::int64_t next_of_axes(std::int64_t now_ns);

    Chip chip_;
    CardTimers timers_;
    Interrupts interrupts_;
    AcModel ac_;
    Model model_ = Model::A;
    Refusal refusal_;
    std::uint8_t number_ = 0;
    std::array<std::uint16_t, 64> ports_{}; // by offset / 2, those that are plain memory
};

} // namespace trevik::virtual_card

// A call of TrevikVirtual.h on its way to the driver: the one request of the device \\.\trevikv.
#pragma once

#include <cstdint>

namespace trevik::kernel
{

// Device type 0x22, function 0x8F0, buffered, any access.
inline constexpr std::uint32_t machine_request = 0x2223C0;

enum class MachineFunction : std::uint32_t {
    cards_set,
    counter_read,
    counter_set,
    position_read,
    position_set,
    speed_read,
    input_read,
    input_set,
    output_read,
    switch_set,
    switch_clear,
    index_set,
    handwheel_turn,
    analog_output_read,
    encoder_status_set,
    next_event_read,
    refuse,
    count
};

// The arguments and, in the reply, the result and what was read.
struct MachineCall {
    double real; // speed, seconds
    MachineFunction function;
    std::uint32_t result;
    std::int32_t whole;  // counter, position, level, first, counts, skip
    std::int32_t whole2; // last, period, count
    std::uint32_t error;
    std::uint8_t card;
    std::uint8_t axis;
    std::uint8_t which; // counter, input, output
    std::uint8_t null;  // 1: the caller's pointer is null
    char text[256];     // of cards, with its end
};

static_assert(sizeof(MachineCall) == 288);

} // namespace trevik::kernel

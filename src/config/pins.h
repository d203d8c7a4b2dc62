// The signal pins of an axis: how each is switched on, and what it reads now. Switches are 0 or not 0 unless a
// range is given; outside a range: Param, and nothing is changed. Reads give 0 or 1 for a switch; what a refused
// read would have given is 0.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Slow-down, position-change and in-position inputs. Their enables live in the mode word and reach the chip with
// the next move.
Result SDPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t option_a, std::uint8_t option_b,
                std::uint8_t option_c);
Result SDPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *option_a, std::uint8_t *option_b,
                 std::uint8_t *option_c, std::uint8_t *input);
Result PCSPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t logic);
Result PCSPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *logic, std::uint8_t *input);
Result INPPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t logic);
Result INPPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *logic, std::uint8_t *input);

// Deviation-counter clear output: width 0 to 7, which becomes 7 when it is switched off; off-time 0 to 3.
Result ERCPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t logic, std::uint8_t width,
                 std::uint8_t off_time);
Result ERCPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *logic, std::uint8_t *width,
                  std::uint8_t *off_time, std::uint8_t *output);

// Servo alarm and latch inputs.
Result ALMPinSet(const Axis &axis, std::uint8_t option_a, std::uint8_t option_b);
Result ALMPinRead(const Axis &axis, std::uint8_t *option_a, std::uint8_t *option_b, std::uint8_t *input);
Result LTCPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t logic);
Result LTCPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *logic, std::uint8_t *input);

// Comparator output: code 0 to 2. A chip that holds no code reads as 255.
Result CMPPinSet(const Axis &axis, std::uint8_t code);
Result CMPPinRead(const Axis &axis, std::uint8_t *code, std::uint8_t *output);

// End limits: mode 0 or 1. Home and encoder index inputs: logic.
Result ELModeSet(const Axis &axis, std::uint8_t mode);
Result ELModeRead(const Axis &axis, std::uint8_t *mode);
Result HomePinLogicSet(const Axis &axis, std::uint8_t logic);
Result HomePinLogicRead(const Axis &axis, std::uint8_t *logic);
Result EZPinLogicSet(const Axis &axis, std::uint8_t logic);
Result EZPinLogicRead(const Axis &axis, std::uint8_t *logic);

} // namespace trevik

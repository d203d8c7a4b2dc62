// The operations that concern the library as a whole, and what is known of a card.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Stores the mode; once on, simulation stays on. Result: 0.
std::uint32_t SimulationSwitch(std::uint8_t mode);

// Writes the trace line, also in simulation mode, and finds the cards.
std::uint32_t LibraryInitial(const char *trace_line);

std::uint32_t LibraryClose();

Result CardResourceWord(const Card &card, std::uint16_t *resource_word);
Result CardInfo(const Card &card, std::uint8_t *model, std::uint16_t *resource_word);

} // namespace trevik

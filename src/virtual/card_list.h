// Which cards stand in the machine.
#pragma once

#include "virtual/card.h"

#include <array>
#include <optional>

namespace trevik::virtual_card
{

inline constexpr unsigned bus_slots = 16;

// The models by card number.
using CardList = std::array<std::optional<Model>, bus_slots>;

// Reads a list such as "0:A,5:AC". Nothing: the text cannot be read, a number is above 15 or stands twice.
std::optional<CardList> ParseCards(const char *text);

} // namespace trevik::virtual_card

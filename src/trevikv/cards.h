// The virtual cards of the driver, as its dispatch routines see them: one place for each installed device. All of
// these may use floating-point registers: they are called below dispatch level, with a FloatingPoint in place.
#pragma once

#include <cstdint>

namespace trevik::kernel
{

inline constexpr unsigned places = 16;

// Once, before anything else.
void SetUpCards();

// A card for a device that appears, as a list of one such as "5:AC". False: the text cannot be read or names another
// number of cards, the number is taken, or memory is short.
bool Occupy(const char *list, unsigned &place);
void Vacate(unsigned place);

// Whether the list of TrevikVirtual_cards_set has a card for the device.
bool HasCard(unsigned place);
unsigned PlacesOccupied();

// Wine lets a program go on with a file whose opening was refused: its requests meet the same refusal.
inline constexpr std::uint32_t no_opening = 0;

// The opening of a card, which is exclusive: 0, or a Windows error number.
std::uint32_t OpenCard(unsigned place, std::uint32_t &opening);
void CloseCard(unsigned place, std::uint32_t opening);

struct CardRequest {
    std::uint32_t code;
    const void *in;
    std::uint32_t in_size;
    void *out;
    std::uint32_t out_size;
    // The event that the request names, referenced (a KEVENT; null: none). Afterwards one that is in use no more.
    void *event;
};

// 0 and the size of the reply, or a Windows error number.
std::uint32_t ControlCard(unsigned place, std::uint32_t opening, CardRequest &request, std::uint32_t &returned);

} // namespace trevik::kernel

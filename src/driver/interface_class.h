// The device-interface class that the cards' kernel driver registers: the library finds the cards by it.
#pragma once

#include "platform/os.h"

namespace trevik
{

inline constexpr os::GUID card_interface_class = {
    0x6f7a2c1e, 0x4b0d, 0x4d35, {0x9a, 0x61, 0x2e, 0x7d, 0x1c, 0x58, 0x90, 0xb4}};

} // namespace trevik

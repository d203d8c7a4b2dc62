// The configuration of a card's four axes in a file: 212 bytes of register values and the backlash settings, stored
// as a Windows text stream whatever the platform (0x0A as 0x0D 0x0A; 0x1A ends it).
#pragma once

#include "driver/card.h"

namespace trevik
{

// Neither looks at the card's handle; the requests do. Results: File when the file cannot be opened, written or
// read, or ends before its 212 bytes (nothing is loaded then); otherwise that of the last register request.
Result ConfigFileSave(const Card &card, const char *name);
Result ConfigFileLoad(const Card &card, const char *name);

} // namespace trevik

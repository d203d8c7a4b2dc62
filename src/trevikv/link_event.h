// The event that a program hands over for its interrupts.
#pragma once

#include "trevikv/kernel.h"

#include <cstdint>

namespace trevik::kernel
{

// References an event by its handle in a process, for the caller to let go. Handle 0: no event.
NTSTATUS ReferenceEvent(std::uint32_t process, std::uint32_t handle, KEVENT *&event);

} // namespace trevik::kernel

// Simulation mode: one value for the process. 1 makes every call answer 0 and keeps every request from the driver.
#pragma once

#include "driver/relaxed.h"

#include <cstdint>

namespace trevik
{

inline constinit Relaxed<std::uint8_t> SimulationMode{};

inline bool SimulationOn()
{
    return SimulationMode == 1;
}

} // namespace trevik

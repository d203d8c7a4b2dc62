// Waiting for another thread while the library is unloaded.
#pragma once

#include <chrono>
#include <thread>

namespace trevik
{

// Gives it a second, by the machine's own clock: timeouts of the system may stand still with a manual one.
template <typename Condition>
bool HappensSoon(Condition happened)
{
    constexpr int patience_ms = 1000;
    for (int waited_ms = 0; waited_ms < patience_ms && !happened(); ++waited_ms)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return happened();
}

} // namespace trevik

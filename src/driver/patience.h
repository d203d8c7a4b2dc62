// Waiting for another thread while the library is unloaded.
#pragma once

#include "platform/os.h"

namespace trevik
{

// Gives it a second.
template <typename Condition>
bool HappensSoon(Condition happened)
{
    constexpr int patience_ms = 1000;
    for (int waited_ms = 0; waited_ms < patience_ms && !happened(); ++waited_ms)
        os::Sleep(1);
    return happened();
}

} // namespace trevik

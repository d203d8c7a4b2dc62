// Is an axis idle, and is its next-move register set free?
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// kind 0: 1 = idle; kind 1: 1 = a queued operation waits; other kinds: Ok, `flag` not written.
Result MotionStatusQuery(const Axis &axis, std::uint8_t kind, std::uint8_t *flag);

// One read of the main status each. A refused read counts as a status of 0: not idle, nothing queued.
MainStatus ReadStatus(const Axis &axis);
inline bool Idle(const Axis &axis)
{
    return ReadStatus(axis).idle();
}
inline bool PresetFull(const Axis &axis)
{
    return ReadStatus(axis).preset_full();
}

} // namespace trevik

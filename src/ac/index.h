// Raw access to a card's 16-bit index registers.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

inline Result IndexRegisterRead(const Axis &axis, std::uint8_t index, std::uint16_t *value)
{
    if (value == nullptr)
        return Result::Param;
    return IndexRead(axis.card().state().DriverHandle.get(), axis.number(), index, *value);
}

inline Result IndexRegisterWrite(const Axis &axis, std::uint8_t index, std::uint16_t value)
{
    return IndexWrite(axis.card().state().DriverHandle.get(), axis.number(), index, value);
}

} // namespace trevik

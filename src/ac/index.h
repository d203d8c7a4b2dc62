// The 16-bit index registers of a card: raw access, and access by name for the operations of the AC model.
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

// The axis may be any number here: above 3 the request is not sent, Axis. No open handle: Handle. A refused read
// leaves `value` as it was.
inline Result WriteIndex(const Card &card, std::uint8_t axis, Index index, std::uint16_t value)
{
    return IndexWrite(card.state().DriverHandle.get(), axis, static_cast<std::uint8_t>(index), value);
}

inline Result ReadIndex(const Card &card, std::uint8_t axis, Index index, std::uint16_t &value)
{
    return IndexRead(card.state().DriverHandle.get(), axis, static_cast<std::uint8_t>(index), value);
}

// The low byte of an index register; 0 when the read is refused. Null pointer: Param.
inline Result ReadIndexByte(const Card &card, std::uint8_t axis, Index index, std::uint8_t *value)
{
    if (value == nullptr)
        return Result::Param;
    std::uint16_t word = 0;
    const Result result = ReadIndex(card, axis, index, word);
    *value = static_cast<std::uint8_t>(word);
    return result;
}

} // namespace trevik

// Result codes inside the library. A refused driver request travels as the Windows error number it was refused
// with, so a Result may hold numbers that have no name here.
#pragma once

#include <trevik/TrevikA.h>

#include <cstdint>

namespace trevik
{

enum class Result : std::uint32_t {
    Ok = TREVIK_OK,
    Model = TREVIK_ERR_MODEL,
    Handle = TREVIK_ERR_HANDLE,
    Open = TREVIK_ERR_OPEN,
    Card = TREVIK_ERR_CARD,
    Axis = TREVIK_ERR_AXIS,
    Param = TREVIK_ERR_PARAM,
    NoResources = 1450, // Windows' number for it
    Busy = TREVIK_ERR_BUSY,
    QueueFull = TREVIK_ERR_QUEUE_FULL,
    NotMoving = TREVIK_ERR_NOT_MOVING,
    ContinuousMix = TREVIK_ERR_CONTINUOUS_MIX,
    File = TREVIK_ERR_FILE,
    ArcAsLine = TREVIK_ERR_ARC_AS_LINE,
    CircleAsDiameter = TREVIK_ERR_CIRCLE_AS_DIAMETER,
};

// The number that leaves an exported function.
constexpr std::uint32_t ToCode(Result result)
{
    return static_cast<std::uint32_t>(result);
}

} // namespace trevik

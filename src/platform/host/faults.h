// Failures on purpose: a test makes the next call of a system function fail.
#pragma once

#include "platform/os.h"

namespace trevik::host
{

enum class Function : std::uint8_t {
    SetupDiGetClassDevsA,
    SetupDiEnumDeviceInterfaces,
    SetupDiGetDeviceInterfaceDetailA,
    CreateFileA,
    CreateEventA,
    OpenEventA,
    CreateThread,
    timeSetEvent,
    Count
};

// Lets `calls_before` calls of `function` through, then makes one fail with `error`. Error 0 disarms.
void FailNext(Function function, os::DWORD error, std::uint32_t calls_before = 0);

// For the functions themselves: true when this call is to fail; the last error is then set.
bool TakeFault(Function function);

} // namespace trevik::host

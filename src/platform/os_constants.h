// Windows' numbers for flags, errors and wait results. Windows spells them as macros; these names mean the same in
// every build.
#pragma once

#include <cstdint>

namespace trevik::os
{

// Error numbers (GetLastError).
inline constexpr std::uint32_t ErrorSuccess = 0;
inline constexpr std::uint32_t ErrorFileNotFound = 2;
inline constexpr std::uint32_t ErrorTooManyOpenFiles = 4;
inline constexpr std::uint32_t ErrorAccessDenied = 5;
inline constexpr std::uint32_t ErrorInvalidHandle = 6;
inline constexpr std::uint32_t ErrorNotEnoughMemory = 8;
inline constexpr std::uint32_t ErrorInvalidData = 13;
inline constexpr std::uint32_t ErrorInvalidParameter = 87;
inline constexpr std::uint32_t ErrorInsufficientBuffer = 122;
inline constexpr std::uint32_t ErrorAlreadyExists = 183;
inline constexpr std::uint32_t ErrorNoMoreItems = 259;
inline constexpr std::uint32_t ErrorInvalidUserBuffer = 1784;

// SetupDiGetClassDevsA: DIGCF_PRESENT | DIGCF_DEVICEINTERFACE.
inline constexpr std::uint32_t PresentDeviceInterfaces = 0x12;

// CreateFileA.
inline constexpr std::uint32_t GenericReadWrite = 0xC0000000;
inline constexpr std::uint32_t OpenExisting = 3;
inline constexpr std::uint32_t FileAttributeNormal = 0x80;

// Events, threads and waits.
inline constexpr std::uint32_t EventModifyState = 0x0002;
inline constexpr std::uint32_t EventAllAccess = 0x1F0003;
inline constexpr std::uint32_t CreateSuspended = 4;
inline constexpr int ThreadPriorityIdle = -15;
inline constexpr int ThreadPriorityNormal = 0;
inline constexpr std::uint32_t Infinite = 0xFFFFFFFF; // timeout, ms
inline constexpr std::uint32_t WaitObject0 = 0;
inline constexpr std::uint32_t WaitTimeout = 258;
inline constexpr std::uint32_t WaitFailed = 0xFFFFFFFF;

// Multimedia timers.
inline constexpr std::uint32_t TimeOneShot = 0;
inline constexpr std::uint32_t TimePeriodic = 1;
inline constexpr std::uint32_t TimerNoError = 0;
inline constexpr std::uint32_t TimerNoCanDo = 97; // no such timer

} // namespace trevik::os

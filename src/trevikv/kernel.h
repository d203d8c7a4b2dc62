// The system's kernel interface.
#pragma once

#include <ntifs.h>

namespace trevik::kernel
{

inline constexpr ULONG pool_tag = 0x6B657254; // "Trek" in a dump

// Wine runs drivers as a program of their own.
inline bool InKernel()
{
    unsigned short segment;
    asm("mov %%cs, %0" : "=r"(segment));
    return (segment & 3u) == 0;
}

} // namespace trevik::kernel

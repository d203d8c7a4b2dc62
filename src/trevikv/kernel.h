// The system's kernel interface.
#pragma once

#include <ntifs.h>

namespace trevik::kernel
{

inline constexpr ULONG pool_tag = 0x6B657254; // "Trek" in a dump

} // namespace trevik::kernel

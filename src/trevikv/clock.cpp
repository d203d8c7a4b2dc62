#include "trevikv/clock.h"

#include "trevikv/kernel.h"

namespace trevik::kernel
{

std::int64_t NowNanoseconds()
{
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    LARGE_INTEGER frequency;
    const std::int64_t ticks = KeQueryPerformanceCounter(&frequency).QuadPart;
    const std::int64_t per_second = frequency.QuadPart;
    return ticks / per_second * nanoseconds + ticks % per_second * nanoseconds / per_second;
}

} // namespace trevik::kernel

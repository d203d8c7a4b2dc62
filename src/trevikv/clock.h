// Time of the machine, from its start on.
#pragma once

#include <cstdint>

namespace trevik::kernel
{

std::int64_t NowNanoseconds();

} // namespace trevik::kernel

// The calling thread's last error. Written on failure only.
#pragma once

#include "platform/os.h"

namespace trevik::host
{

void SetLastError(os::DWORD error);

// Notes the error and gives FALSE, so that a failing call reads `return Fail(error)`.
os::BOOL Fail(os::DWORD error);

} // namespace trevik::host

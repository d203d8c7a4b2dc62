#include "platform/host/last_error.h"

namespace trevik::host
{
namespace
{

thread_local os::DWORD last_error = os::ErrorSuccess;

} // namespace

void SetLastError(os::DWORD error)
{
    last_error = error;
}

os::BOOL Fail(os::DWORD error)
{
    SetLastError(error);
    return 0;
}

} // namespace trevik::host

namespace trevik::os
{

DWORD GetLastError()
{
    return host::last_error;
}

} // namespace trevik::os

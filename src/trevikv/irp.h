// Requests of the I/O system on their way through the driver.
#pragma once

#include "trevikv/kernel.h"

#include <cstdint>

namespace trevik::kernel
{

// Ends a request.
NTSTATUS Complete(IRP *irp, NTSTATUS status, ULONG_PTR information = 0);

// Passes a request on to the device below.
NTSTATUS PassOn(DEVICE_OBJECT *below, IRP *irp);
// And comes back when it is done there; the caller ends it.
NTSTATUS PassOnAndWait(DEVICE_OBJECT *below, IRP *irp);

// The status that a program sees as this Windows error number.
NTSTATUS StatusOf(std::uint32_t error);

} // namespace trevik::kernel

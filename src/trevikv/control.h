// The device \\.\trevikv, for the calls of TrevikVirtual.h. It is there as long as a card's device is.
#pragma once

#include "trevikv/kernel.h"

namespace trevik::kernel
{

// Adds it with the first card's device; removes it after the last one's. A program that holds it open then is still
// answered.
void AddControlDevice(DRIVER_OBJECT *driver);
void RemoveControlDevice();

NTSTATUS ControlDeviceRequest(IRP *irp);

} // namespace trevik::kernel

// The device \\.\trevikv, for the calls of TrevikVirtual.h. It is there as long as a card's device is.
#pragma once

#include "trevikv/kernel.h"

namespace trevik::kernel
{

// Adds it with the first card's device; removes it with the last one's.
void AddControlDevice(DRIVER_OBJECT *driver);
void RemoveControlDevice();

bool IsControlDevice(const DEVICE_OBJECT *device);

NTSTATUS ControlDeviceRequest(IRP *irp);

} // namespace trevik::kernel

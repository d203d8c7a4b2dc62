// The devices of the cards: how they come and go, and what programs ask of them.
#pragma once

#include "trevikv/kernel.h"

namespace trevik::kernel
{

// What the extension of every device begins with. Requests to a device that was deleted while a program held it open
// find it there, too.
enum class DeviceKind : ULONG { Card, Control };

// Once, before anything else.
void SetUpDevices();

NTSTATUS NTAPI AddDevice(DRIVER_OBJECT *driver, DEVICE_OBJECT *physical);

// Requests to a card's device.
NTSTATUS DeviceCreate(DEVICE_OBJECT *device, IRP *irp);
NTSTATUS DeviceCleanup(DEVICE_OBJECT *device, IRP *irp);
NTSTATUS DeviceControl(DEVICE_OBJECT *device, IRP *irp);
NTSTATUS DevicePnp(DEVICE_OBJECT *device, IRP *irp);
NTSTATUS DevicePower(DEVICE_OBJECT *device, IRP *irp);
NTSTATUS DeviceSystemControl(DEVICE_OBJECT *device, IRP *irp);

// After the cards were changed: programs find the devices that have one.
void ShowCards();

} // namespace trevik::kernel

// trevikv.sys: virtual cards behind the driver interface of the real ones.
//
// One device for each installed card, made by AddDevice; requests of programs go to its card, which is the same source
// as the virtual cards of the library. Everything runs at passive level. Files that use cards may use floating-point
// registers; the others are compiled without them and save them before they call those.
#include "trevikv/cards.h"
#include "trevikv/control.h"
#include "trevikv/device.h"
#include "trevikv/floating_point.h"
#include "trevikv/irp.h"

namespace trevik::kernel
{
namespace
{

NTSTATUS CardRequestOf(DEVICE_OBJECT *device, IRP *irp)
{
    switch (IoGetCurrentIrpStackLocation(irp)->MajorFunction) {
    case IRP_MJ_CREATE:
        return DeviceCreate(device, irp);
    case IRP_MJ_CLEANUP:
    case IRP_MJ_CLOSE:
        return DeviceCleanup(device, irp);
    case IRP_MJ_DEVICE_CONTROL:
        return DeviceControl(device, irp);
    case IRP_MJ_PNP:
        return DevicePnp(device, irp);
    case IRP_MJ_POWER:
        return DevicePower(device, irp);
    case IRP_MJ_SYSTEM_CONTROL:
        return DeviceSystemControl(device, irp);
    default:
        return Complete(irp, STATUS_INVALID_DEVICE_REQUEST);
    }
}

NTSTATUS NTAPI Dispatch(DEVICE_OBJECT *device, IRP *irp)
{
    const auto kind = *static_cast<const DeviceKind *>(device->DeviceExtension);
    return kind == DeviceKind::Control ? ControlDeviceRequest(irp) : CardRequestOf(device, irp);
}

void NTAPI Unload(DRIVER_OBJECT *)
{
    RemoveControlDevice();
}

} // namespace
} // namespace trevik::kernel

extern "C" NTSTATUS NTAPI DriverEntry(DRIVER_OBJECT *driver, UNICODE_STRING *)
{
    using namespace trevik::kernel;
    {
        const FloatingPoint floating_point;
        if (!NT_SUCCESS(floating_point.status()))
            return floating_point.status();
        SetUpCards();
    }
    SetUpDevices();
    for (auto &routine : driver->MajorFunction)
        routine = Dispatch;
    driver->DriverExtension->AddDevice = AddDevice;
    driver->DriverUnload = Unload;
    return STATUS_SUCCESS;
}

#include "trevikv/control.h"

#include "trevikv/device.h"
#include "trevikv/floating_point.h"
#include "trevikv/irp.h"
#include "trevikv/machine.h"
#include "trevikv/machine_call.h"

namespace trevik::kernel
{
namespace
{

struct Extension {
    DeviceKind kind; // first, as in every device of the driver
};

DEVICE_OBJECT *control_device = nullptr; // null also while a program still holds one that has been removed

UNICODE_STRING Name(const WCHAR *text)
{
    UNICODE_STRING name;
    RtlInitUnicodeString(&name, text);
    return name;
}

constexpr const WCHAR *device_name = L"\\Device\\trevikv";
constexpr const WCHAR *program_name = L"\\DosDevices\\trevikv"; // by which programs open it

// Reply and request are the same record.
NTSTATUS Answer(IRP *irp, ULONG_PTR &returned)
{
    const auto &parameters = IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl;
    if (parameters.IoControlCode != machine_request)
        return STATUS_INVALID_DEVICE_REQUEST;
    if (parameters.InputBufferLength != sizeof(MachineCall) || parameters.OutputBufferLength != sizeof(MachineCall))
        return STATUS_INVALID_PARAMETER;
    auto &call = *static_cast<MachineCall *>(irp->AssociatedIrp.SystemBuffer);
    {
        const FloatingPoint floating_point;
        if (!NT_SUCCESS(floating_point.status()))
            return floating_point.status();
        if (!MakeCall(call))
            return STATUS_INVALID_PARAMETER;
    }
    if (call.function == MachineFunction::cards_set && call.result == 0)
        ShowCards();
    returned = sizeof(MachineCall);
    return STATUS_SUCCESS;
}

} // namespace

void AddControlDevice(DRIVER_OBJECT *driver)
{
    if (control_device != nullptr)
        return;
    UNICODE_STRING device = Name(device_name);
    UNICODE_STRING program = Name(program_name);
    // Without it the cards work all the same; nobody can change what stands around them.
    if (!NT_SUCCESS(IoCreateDevice(driver, sizeof(Extension), &device, FILE_DEVICE_UNKNOWN, FILE_DEVICE_SECURE_OPEN,
                                   FALSE, &control_device)))
        return;
    static_cast<Extension *>(control_device->DeviceExtension)->kind = DeviceKind::Control;
    if (NT_SUCCESS(IoCreateSymbolicLink(&program, &device))) {
        control_device->Flags &= ~static_cast<ULONG>(DO_DEVICE_INITIALIZING);
        return;
    }
    IoDeleteDevice(control_device);
    control_device = nullptr;
}

void RemoveControlDevice()
{
    if (control_device == nullptr)
        return;
    UNICODE_STRING program = Name(program_name);
    IoDeleteSymbolicLink(&program);
    IoDeleteDevice(control_device);
    control_device = nullptr;
}

NTSTATUS ControlDeviceRequest(IRP *irp)
{
    switch (IoGetCurrentIrpStackLocation(irp)->MajorFunction) {
    case IRP_MJ_CREATE:
    case IRP_MJ_CLEANUP:
    case IRP_MJ_CLOSE:
        return Complete(irp, STATUS_SUCCESS);
    case IRP_MJ_DEVICE_CONTROL: {
        ULONG_PTR returned = 0;
        const NTSTATUS status = Answer(irp, returned);
        return Complete(irp, status, returned);
    }
    default:
        return Complete(irp, STATUS_INVALID_DEVICE_REQUEST);
    }
}

} // namespace trevik::kernel

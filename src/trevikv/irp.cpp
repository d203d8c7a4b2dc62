#include "trevikv/irp.h"

namespace trevik::kernel
{

NTSTATUS Complete(IRP *irp, NTSTATUS status, ULONG_PTR information)
{
    irp->IoStatus.Status = status;
    irp->IoStatus.Information = information;
    IoCompleteRequest(irp, IO_NO_INCREMENT);
    return status;
}

NTSTATUS PassOn(DEVICE_OBJECT *below, IRP *irp)
{
    IoSkipCurrentIrpStackLocation(irp);
    return IoCallDriver(below, irp);
}

namespace
{

NTSTATUS NTAPI Returned(DEVICE_OBJECT *, IRP *irp, void *done)
{
    if (irp->PendingReturned)
        KeSetEvent(static_cast<KEVENT *>(done), IO_NO_INCREMENT, FALSE);
    return STATUS_MORE_PROCESSING_REQUIRED;
}

} // namespace

NTSTATUS PassOnAndWait(DEVICE_OBJECT *below, IRP *irp)
{
    KEVENT done;
    KeInitializeEvent(&done, NotificationEvent, FALSE);
    IoCopyCurrentIrpStackLocationToNext(irp);
    IoSetCompletionRoutine(irp, Returned, &done, TRUE, TRUE, TRUE);
    const NTSTATUS status = IoCallDriver(below, irp);
    if (status != STATUS_PENDING)
        return status;
    KeWaitForSingleObject(&done, Executive, KernelMode, FALSE, nullptr);
    return irp->IoStatus.Status;
}

NTSTATUS StatusOf(std::uint32_t error)
{
    constexpr ULONG windows_error = 0xC0010000; // a status of this kind has the error in its low half
    switch (error) {
    case 0:
        return STATUS_SUCCESS;
    case 1:
        return STATUS_INVALID_DEVICE_REQUEST;
    case 32:
        return STATUS_SHARING_VIOLATION;
    case 87:
        return STATUS_INVALID_PARAMETER;
    case 1167:
        return STATUS_DEVICE_NOT_CONNECTED;
    default:
        return static_cast<NTSTATUS>(windows_error | (error & 0xFFFF));
    }
}

} // namespace trevik::kernel

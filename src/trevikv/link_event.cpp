#include "trevikv/link_event.h"

namespace trevik::kernel
{
namespace
{

// A handle of the process that is current, with its rights or the driver's. What is not an event is refused.
NTSTATUS Reference(HANDLE handle, KPROCESSOR_MODE mode, KEVENT *&event)
{
    // The type's own address: this compiler's import leads to the system's variable, one step further than others'.
    auto *type = reinterpret_cast<POBJECT_TYPE>(ExEventObjectType);
    void *object = nullptr;
    const NTSTATUS status = ObReferenceObjectByHandle(handle, EVENT_MODIFY_STATE, type, mode, &object, nullptr);
    event = NT_SUCCESS(status) ? static_cast<KEVENT *>(object) : nullptr;
    return status;
}

// With the caller's rights, not the driver's.
NTSTATUS OpenProcess(std::uint32_t id, HANDLE &process)
{
    OBJECT_ATTRIBUTES attributes;
    InitializeObjectAttributes(&attributes, nullptr, OBJ_KERNEL_HANDLE | OBJ_FORCE_ACCESS_CHECK, nullptr, nullptr);
    CLIENT_ID client{};
    client.UniqueProcess = ULongToHandle(id);
    return ZwOpenProcess(&process, PROCESS_DUP_HANDLE, &attributes, &client);
}

// Outside of a kernel the driver does not run in the program's own process: a handle of the driver's is made first.
NTSTATUS ReferenceElsewhere(std::uint32_t id, HANDLE handle, KEVENT *&event)
{
    HANDLE process = nullptr;
    NTSTATUS status = OpenProcess(id, process);
    if (!NT_SUCCESS(status))
        return status;
    HANDLE own = nullptr;
    status = ZwDuplicateObject(process, handle, NtCurrentProcess(), &own, EVENT_MODIFY_STATE, 0, 0);
    ZwClose(process);
    if (!NT_SUCCESS(status))
        return status;
    status = Reference(own, KernelMode, event);
    ZwClose(own);
    return status;
}

} // namespace

NTSTATUS ReferenceEvent(std::uint32_t process, std::uint32_t handle, KEVENT *&event)
{
    event = nullptr;
    if (handle == 0)
        return STATUS_SUCCESS;
    if (!InKernel())
        return ReferenceElsewhere(process, ULongToHandle(handle), event);
    if (HandleToULong(PsGetCurrentProcessId()) != process)
        return STATUS_INVALID_HANDLE;
    return Reference(ULongToHandle(handle), UserMode, event);
}

} // namespace trevik::kernel

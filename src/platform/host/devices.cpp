#include "platform/host/devices.h"

#include "platform/host/driver_seam.h"
#include "platform/host/faults.h"
#include "platform/host/handles.h"
#include "platform/host/immortal.h"
#include "platform/host/last_error.h"

#include <mutex>

namespace trevik::host
{
namespace
{

// A caller's driver. Never freed: a request on another thread may still be inside it.
struct DriverCopy {
    TrevikHostDriver driver;
    DriverCopy *next;
};

struct DriverCopies {
    std::mutex mutex;
    DriverCopy *first = nullptr;
};

std::atomic<const TrevikHostDriver *> driver_in_place{nullptr}; // null: the built-in one

bool Same(const TrevikHostDriver &a, const TrevikHostDriver &b)
{
    return a.context == b.context && a.device_count == b.device_count && a.device_path == b.device_path &&
           a.open == b.open && a.control == b.control && a.close == b.close;
}

// A driver that is set again gets its earlier copy.
const TrevikHostDriver *CopyOf(const TrevikHostDriver &driver)
{
    static Immortal<DriverCopies> instance;
    DriverCopies &copies = instance.get();
    const std::lock_guard lock(copies.mutex);
    for (const DriverCopy *copy = copies.first; copy != nullptr; copy = copy->next) {
        if (Same(copy->driver, driver))
            return &copy->driver;
    }
    copies.first = new DriverCopy{driver, copies.first};
    return &copies.first->driver;
}

const TrevikHostDriver *BuiltInDriverInPlace()
{
    static const TrevikHostDriver *const driver = WithRequestLog(BuiltInDriver());
    return driver;
}

} // namespace

const TrevikHostDriver *CurrentDriver()
{
    const TrevikHostDriver *driver = driver_in_place;
    return driver != nullptr ? driver : BuiltInDriverInPlace();
}

} // namespace trevik::host

namespace trevik::os
{

HANDLE CreateFileA(LPCSTR path, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD disposition, DWORD, HANDLE)
{
    if (host::TakeFault(host::Function::CreateFileA))
        return InvalidHandle();
    const TrevikHostDriver *driver = host::CurrentDriver();
    std::uint32_t device = 0;
    const bool valid = path != nullptr && disposition == OpenExisting;
    const DWORD error = valid ? driver->open(driver->context, path, &device) : ErrorInvalidParameter;
    if (error != ErrorSuccess) {
        host::SetLastError(error);
        return InvalidHandle();
    }
    HANDLE handle = host::OpenHandle(driver, device);
    if (handle != nullptr)
        return handle;
    driver->close(driver->context, device);
    return InvalidHandle();
}

// Every register access passes here: no lock, no allocation, no thread-local variable unless the request fails.
BOOL DeviceIoControl(HANDLE handle, DWORD code, LPVOID in, DWORD in_size, LPVOID out, DWORD out_size,
                     LPDWORD returned, LPOVERLAPPED overlapped)
{
    const std::uint32_t key = host::HandleKey(handle);
    const host::DeviceSlot &slot = host::device_slots[host::SlotNumber(key)];
    const std::uint32_t device = slot.device.load(std::memory_order_acquire);
    const TrevikHostDriver *driver = slot.driver.load(std::memory_order_acquire);
    // Last, so that device and driver are this handle's and not those of a later user of the slot.
    if (slot.handle.load(std::memory_order_acquire) != key || driver == nullptr)
        return host::Fail(ErrorInvalidHandle);
    if (overlapped != nullptr || returned == nullptr)
        return host::Fail(ErrorInvalidParameter);
    *returned = 0;
    const DWORD error = driver->control(driver->context, device, code, in, in_size, out, out_size, returned);
    if (error == ErrorSuccess)
        return 1;
    *returned = 0;
    return host::Fail(error);
}

} // namespace trevik::os

void TrevikHost_driver_set(const TrevikHostDriver *driver)
{
    using namespace trevik::host;
    CloseAllDevices();
    driver_in_place = driver != nullptr ? WithRequestLog(CopyOf(*driver)) : nullptr;
}

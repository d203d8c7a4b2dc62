// Card search: sets of device interfaces, as the driver in place reports them.
#include "platform/host/devices.h"
#include "platform/host/faults.h"
#include "platform/host/handles.h"
#include "platform/host/last_error.h"

#include <cstring>

namespace trevik::host
{
namespace
{

// The interfaces that were present when the set was made.
struct DeviceSet : Object {
    static constexpr ObjectKind kind_of = ObjectKind::DeviceSet;

    explicit DeviceSet(const TrevikHostDriver *of)
        : Object(kind_of), driver(of), count(of->device_count(of->context))
    {
    }

    const TrevikHostDriver *const driver;
    const std::uint32_t count;
};

constexpr os::DWORD detail_header_size = offsetof(os::SP_DEVICE_INTERFACE_DETAIL_DATA_A, DevicePath);

// What is wrong with the arguments of a detail request, or ErrorSuccess.
os::DWORD DetailArguments(const DeviceSet *set, const os::SP_DEVICE_INTERFACE_DATA *interface_data,
                          const os::SP_DEVICE_INTERFACE_DETAIL_DATA_A *detail, os::DWORD detail_size,
                          const os::SP_DEVINFO_DATA *device)
{
    if (set == nullptr)
        return os::ErrorInvalidHandle;
    if (interface_data == nullptr)
        return os::ErrorInvalidParameter;
    if (interface_data->cbSize != sizeof *interface_data)
        return os::ErrorInvalidUserBuffer;
    if (interface_data->Reserved == 0 || interface_data->Reserved > set->count)
        return os::ErrorInvalidParameter;
    if (detail == nullptr && detail_size != 0)
        return os::ErrorInvalidUserBuffer;
    if (detail != nullptr && detail->cbSize != sizeof *detail)
        return os::ErrorInvalidUserBuffer;
    if (device != nullptr && device->cbSize != sizeof *device)
        return os::ErrorInvalidUserBuffer;
    return os::ErrorSuccess;
}

} // namespace
} // namespace trevik::host

namespace trevik::os
{

HDEVINFO SetupDiGetClassDevsA(const GUID *, LPCSTR, HWND, DWORD flags)
{
    if (host::TakeFault(host::Function::SetupDiGetClassDevsA))
        return InvalidHandle();
    if (flags != PresentDeviceInterfaces) {
        host::SetLastError(ErrorInvalidParameter);
        return InvalidHandle();
    }
    HANDLE set = host::OpenHandle(host::NewObject<host::DeviceSet>(host::CurrentDriver()));
    return set != nullptr ? set : InvalidHandle();
}

BOOL SetupDiEnumDeviceInterfaces(HDEVINFO handle, PSP_DEVINFO_DATA, const GUID *interface_class, DWORD index,
                                 PSP_DEVICE_INTERFACE_DATA interface_data)
{
    if (host::TakeFault(host::Function::SetupDiEnumDeviceInterfaces))
        return 0;
    const auto set = host::ObjectOf<host::DeviceSet>(handle);
    if (!set)
        return host::Fail(ErrorInvalidHandle);
    if (interface_class == nullptr || interface_data == nullptr)
        return host::Fail(ErrorInvalidParameter);
    if (interface_data->cbSize != sizeof *interface_data)
        return host::Fail(ErrorInvalidUserBuffer);
    if (index >= set->count)
        return host::Fail(ErrorNoMoreItems);
    constexpr DWORD active = 1;
    *interface_data = {sizeof *interface_data, *interface_class, active, index + 1};
    return 1;
}

BOOL SetupDiGetDeviceInterfaceDetailA(HDEVINFO handle, PSP_DEVICE_INTERFACE_DATA interface_data,
                                      PSP_DEVICE_INTERFACE_DETAIL_DATA_A detail, DWORD detail_size,
                                      LPDWORD required_size, PSP_DEVINFO_DATA device)
{
    if (host::TakeFault(host::Function::SetupDiGetDeviceInterfaceDetailA))
        return 0;
    const auto set = host::ObjectOf<host::DeviceSet>(handle);
    const DWORD error = host::DetailArguments(set.get(), interface_data, detail, detail_size, device);
    if (error != ErrorSuccess)
        return host::Fail(error);
    const DWORD index = interface_data->Reserved - 1;
    const char *path = set->driver->device_path(set->driver->context, index);
    if (path == nullptr)
        return host::Fail(ErrorInvalidData);
    const auto path_size = static_cast<DWORD>(std::strlen(path) + 1);
    if (required_size != nullptr)
        *required_size = host::detail_header_size + path_size;
    if (detail_size < host::detail_header_size + path_size)
        return host::Fail(ErrorInsufficientBuffer);
    std::memcpy(reinterpret_cast<char *>(detail) + host::detail_header_size, path, path_size);
    if (device != nullptr)
        *device = {sizeof *device, interface_data->InterfaceClassGuid, index + 1, 0};
    return 1;
}

BOOL SetupDiDestroyDeviceInfoList(HDEVINFO handle)
{
    const bool known = host::ObjectOf<host::DeviceSet>(handle) && host::ReleaseHandle(handle);
    return known ? 1 : host::Fail(ErrorInvalidHandle);
}

} // namespace trevik::os

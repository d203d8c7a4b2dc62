#include "support/recording_driver.h"

#include "platform/host/handles.h"
#include "platform/os.h"

#include <doctest/doctest.h>

#include <array>

using namespace trevik;
using trevik::test::RecordingDriver;

namespace
{

os::HANDLE Open(const char *path = "device", os::DWORD disposition = os::OpenExisting)
{
    return os::CreateFileA(path, os::GenericReadWrite, 0, nullptr, disposition, os::FileAttributeNormal, nullptr);
}

// The card that answers the resource request, if one does.
constexpr unsigned refused = 999;

unsigned CardOf(os::HANDLE device)
{
    std::array<std::uint8_t, 32> in{};
    std::array<std::uint8_t, 32> out{};
    os::DWORD returned = 99;
    const auto code = static_cast<os::DWORD>(ControlCode::IOCTL_GET_RESOURCE);
    if (os::DeviceIoControl(device, code, in.data(), 32, out.data(), 32, &returned, nullptr) == 0)
        return refused;
    CHECK(returned == 32);
    return out[3];
}

void CheckRefused(os::HANDLE device)
{
    CHECK(CardOf(device) == refused);
    CHECK(os::GetLastError() == os::ErrorInvalidHandle);
    CHECK(os::CloseHandle(device) == 0);
    CHECK(os::GetLastError() == os::ErrorInvalidHandle);
}

} // namespace

TEST_SUITE("host devices")
{
    TEST_CASE("requests reach the device of their handle, which is closed once; errors become the last error")
    {
        RecordingDriver driver({{.path = "first", .card = 1}, {.path = "second", .card = 2}});
        os::HANDLE first = Open("first");
        os::HANDLE second = Open("second");
        CHECK(CardOf(second) == 2);
        driver.refuse(0, 0xE0000001);
        CHECK(CardOf(first) == refused);
        CHECK(CardOf(first) == 1);
        CHECK(os::GetLastError() == 0xE0000001u); // success leaves it alone
        CHECK(os::CloseHandle(first) == 1);
        CheckRefused(first);
        CHECK(driver.closed() == 1);
        CHECK(Open("first", 2) == os::InvalidHandle()); // only what exists is opened
        CHECK(os::GetLastError() == os::ErrorInvalidParameter);
    }

    TEST_CASE("a full table opens no more, and handles that are none are refused")
    {
        RecordingDriver driver;
        os::HANDLE stale = Open();
        os::CloseHandle(stale);
        os::HANDLE closed_event = os::CreateEventA(nullptr, 0, 0, nullptr);
        os::CloseHandle(closed_event);
        os::HANDLE event = os::CreateEventA(nullptr, 0, 0, nullptr);
        while (host::OpenHandleCount() < host::handle_capacity) // every slot is used again
            REQUIRE(Open() != stale);
        CHECK(Open() == os::InvalidHandle()); // no handle for it: it is closed at the driver
        CHECK(os::GetLastError() == os::ErrorTooManyOpenFiles);
        CHECK(driver.closed() == 2);
        const auto high = reinterpret_cast<os::HANDLE>(~(~std::uintptr_t{0} >> 1) | 4u); // NOLINT
        for (os::HANDLE handle : {stale, closed_event, os::HANDLE{}, os::InvalidHandle(), high})
            CheckRefused(handle);
        CHECK(CardOf(event) == refused);
        os::CloseHandle(event);
        CHECK(driver.requests() == 0);
    }

    TEST_CASE("another driver in place closes the devices of the one before")
    {
        RecordingDriver earlier;
        os::HANDLE device = Open();
        os::HANDLE event = os::CreateEventA(nullptr, 0, 0, nullptr);
        RecordingDriver later;
        CHECK(earlier.closed() == 1);
        CheckRefused(device);
        CHECK(os::CloseHandle(event) == 1); // events belong to no driver
        CHECK(CardOf(Open()) == 0);
        CHECK((earlier.requests() == 0 && later.requests() == 1));
    }
}

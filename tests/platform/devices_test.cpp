#include "fake_driver.h"

#include "platform/host/faults.h"
#include "platform/host/handles.h"
#include "platform/os.h"

#include <doctest/doctest.h>

#include <array>
#include <optional>

using namespace trevik;

namespace
{

os::HANDLE Open(const char *path)
{
    return os::CreateFileA(path, os::GenericReadWrite, 0, nullptr, os::OpenExisting, os::FileAttributeNormal,
                           nullptr);
}

struct Reply {
    os::BOOL accepted;
    os::DWORD returned;
    std::string bytes;
};

Reply Control(os::HANDLE device)
{
    std::array<char, 3> in{'a', 'b', 'c'};
    std::array<char, 4> out{'-', '-', '-', '-'};
    Reply reply{0, 99, {}};
    reply.accepted = os::DeviceIoControl(device, 7, in.data(), 3, out.data(), 4, &reply.returned, nullptr);
    reply.bytes.assign(out.data(), out.size());
    return reply;
}

void CheckRefused(os::HANDLE device)
{
    CHECK(Control(device).accepted == 0);
    CHECK(os::GetLastError() == os::ErrorInvalidHandle);
    CHECK(os::CloseHandle(device) == 0);
    CHECK(os::GetLastError() == os::ErrorInvalidHandle);
}

} // namespace

TEST_SUITE("host devices")
{
    TEST_CASE("requests reach the driver as they are, and a device is closed once")
    {
        FakeDriver driver;
        os::HANDLE first = Open("first");
        os::HANDLE second = Open("second");
        const Reply reply = Control(second);
        CHECK(reply.accepted == 1);
        CHECK(reply.returned == 3);
        CHECK(reply.bytes == "cba-");
        CHECK(os::CloseHandle(first) == 1);
        CHECK(os::CloseHandle(first) == 0);
        CHECK(os::CloseHandle(second) == 1);
        CHECK(driver.log == std::vector<std::string>{"open first", "open second", "control 102 7 abc 4",
                                                     "close 101", "close 102"});
    }

    TEST_CASE("the driver's error numbers become the last error")
    {
        FakeDriver driver;
        os::HANDLE device = Open("first");
        for (const uint32_t error : {1u, 5u, 31u, 87u, 0xE0000001u}) {
            CAPTURE(error);
            driver.refusal = error;
            const Reply reply = Control(device);
            CHECK(reply.accepted == 0);
            CHECK(reply.returned == 0);
            CHECK(os::GetLastError() == error);
            CHECK(Open("second") == os::InvalidHandle());
            CHECK(os::GetLastError() == error);
        }
        driver.refusal = 0;
        CHECK(Control(device).accepted == 1);
        CHECK(os::GetLastError() == 0xE0000001u); // success leaves it alone
        os::CloseHandle(device);
    }

    TEST_CASE("handles that are none are refused")
    {
        FakeDriver driver;
        os::HANDLE stale = Open("first");
        os::CloseHandle(stale);
        os::HANDLE event = os::CreateEventA(nullptr, 0, 0, nullptr);
        os::CloseHandle(event);
        for (std::size_t i = 0; i < 2 * host::handle_capacity; ++i) { // every slot is used again
            os::HANDLE device = Open("first");
            REQUIRE(device != stale);
            REQUIRE(os::CloseHandle(device) == 1);
        }
        const std::size_t requests = driver.log.size();
        const auto high = reinterpret_cast<os::HANDLE>(~(~std::uintptr_t{0} >> 1) | 4u); // NOLINT
        for (os::HANDLE handle : {stale, event, os::HANDLE{}, os::InvalidHandle(), high})
            CheckRefused(handle);
        CHECK(driver.log.size() == requests);
    }

    TEST_CASE("a request on an event, and bad arguments")
    {
        FakeDriver driver;
        os::HANDLE event = os::CreateEventA(nullptr, 0, 0, nullptr);
        CHECK(Control(event).accepted == 0);
        CHECK(os::GetLastError() == os::ErrorInvalidHandle);
        os::CloseHandle(event);
        constexpr os::DWORD create_always = 2;
        CHECK(os::CreateFileA("first", 0, 0, nullptr, create_always, 0, nullptr) == os::InvalidHandle());
        CHECK(os::GetLastError() == os::ErrorInvalidParameter);
        host::FailNext(host::Function::CreateFileA, 5, 1);
        os::HANDLE device = Open("first");
        CHECK(device != os::InvalidHandle());
        CHECK(Open("first") == os::InvalidHandle());
        CHECK(os::GetLastError() == 5);
        os::CloseHandle(device);
    }

    TEST_CASE("a full table closes at the driver what it cannot give a handle")
    {
        FakeDriver driver;
        const std::size_t open_before = host::OpenHandleCount();
        std::vector<os::HANDLE> devices;
        while (devices.size() + open_before < host::handle_capacity)
            devices.push_back(Open("first"));
        CHECK(Open("second") == os::InvalidHandle());
        CHECK(os::GetLastError() == os::ErrorTooManyOpenFiles);
        CHECK(driver.log.back().starts_with("close "));
        for (os::HANDLE device : devices)
            REQUIRE(os::CloseHandle(device) == 1);
        CHECK(host::OpenHandleCount() == open_before);
    }

    TEST_CASE("another driver in place closes the devices of the one before")
    {
        std::optional<FakeDriver> earlier(std::in_place);
        os::HANDLE device = Open("first");
        os::HANDLE event = os::CreateEventA(nullptr, 0, 0, nullptr);
        FakeDriver later;
        CHECK(earlier->log == std::vector<std::string>{"open first", "close 101"});
        CheckRefused(device);
        CHECK(os::CloseHandle(event) == 1); // events belong to no driver
        os::HANDLE next = Open("second");
        CHECK(Control(next).accepted == 1);
        CHECK(later.log == std::vector<std::string>{"open second", "control 101 7 abc 4"});
    }
}

#include "support/recording_driver.h"

#include "platform/os.h"

#include <doctest/doctest.h>

#include <string>
#include <tuple>

using namespace trevik;
using trevik::test::RecordingDriver;

namespace
{

constexpr os::GUID card_class{1, 2, 3, {4}};

os::HDEVINFO NewSet()
{
    return os::SetupDiGetClassDevsA(&card_class, nullptr, nullptr, os::PresentDeviceInterfaces);
}

// ErrorSuccess or the last error.
os::DWORD Enumerate(os::HDEVINFO set, os::DWORD index, os::SP_DEVICE_INTERFACE_DATA &data)
{
    return os::SetupDiEnumDeviceInterfaces(set, nullptr, &card_class, index, &data) ? os::ErrorSuccess
                                                                                    : os::GetLastError();
}

// The error of a detail request, the size that is required, and the path.
using Detail = std::tuple<os::DWORD, os::DWORD, std::string>;

Detail Ask(os::HDEVINFO set, os::SP_DEVICE_INTERFACE_DATA data, os::DWORD buffer_size = 64,
           os::DWORD detail_size = 5, os::DWORD device_size = 28)
{
    char buffer[64] = {};
    auto *detail = reinterpret_cast<os::SP_DEVICE_INTERFACE_DETAIL_DATA_A *>(buffer);
    detail->cbSize = detail_size;
    os::SP_DEVINFO_DATA device{device_size, {}, 0, 0};
    os::DWORD required = 0;
    const bool done = os::SetupDiGetDeviceInterfaceDetailA(set, &data, buffer_size != 0 ? detail : nullptr,
                                                           buffer_size, &required, &device);
    return {done ? os::ErrorSuccess : os::GetLastError(), required, buffer + 4};
}

} // namespace

TEST_SUITE("host card search")
{
    TEST_CASE("a set ends after its interfaces, stands for the driver it was made of, and is destroyed once")
    {
        const RecordingDriver driver({{.path = "first"}, {.path = "second"}});
        os::HDEVINFO set = NewSet();
        const RecordingDriver later;
        os::SP_DEVICE_INTERFACE_DATA data{sizeof data, {}, 0, 0};
        CHECK(Enumerate(set, 2, data) == os::ErrorNoMoreItems);
        CHECK(Enumerate(set, 1, data) == os::ErrorSuccess);
        CHECK(data.InterfaceClassGuid.Data4[0] == 4);
        CHECK((Ask(set, data) == Detail{0, 11, "second"}));
        CHECK(os::CloseHandle(set) == 0);
        CHECK(os::SetupDiDestroyDeviceInfoList(set) == 1);
        CHECK(os::SetupDiDestroyDeviceInfoList(set) == 0);
        CHECK(Enumerate(set, 0, data) == os::ErrorInvalidHandle);
    }

    TEST_CASE("error numbers of detail requests")
    {
        RecordingDriver driver({{.path = "first"}, {.path = "second"}});
        os::HDEVINFO set = NewSet();
        os::SP_DEVICE_INTERFACE_DATA data{sizeof data, {}, 0, 0};
        REQUIRE(Enumerate(set, 1, data) == os::ErrorSuccess);
        for (const os::DWORD too_small : {0u, 10u}) // 4 + strlen("second") + 1 is needed
            CHECK((Ask(set, data, too_small) == Detail{os::ErrorInsufficientBuffer, 11, ""}));
        CHECK((Ask(set, data, 11) == Detail{os::ErrorSuccess, 11, "second"}));
        CHECK((Ask(set, data, 64, 8) == Detail{os::ErrorInvalidUserBuffer, 0, ""}));
        CHECK((Ask(set, data, 64, 5, 32) == Detail{os::ErrorInvalidUserBuffer, 0, ""}));
        driver.devices()[1].path.clear();
        CHECK((Ask(set, data) == Detail{os::ErrorInvalidData, 0, ""}));
        data.cbSize = 32;
        CHECK((Ask(set, data) == Detail{os::ErrorInvalidUserBuffer, 0, ""}));
        CHECK(Enumerate(set, 0, data) == os::ErrorInvalidUserBuffer);
        os::SetupDiDestroyDeviceInfoList(set);
    }
}

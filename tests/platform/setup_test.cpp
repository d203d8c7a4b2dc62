#include "support/recording_driver.h"

#include "platform/os.h"

#include <doctest/doctest.h>

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

struct DetailRequest {
    os::DWORD detail_cb_size = 5;
    os::DWORD buffer_size = 64; // 0: no buffer
    os::DWORD interface_cb_size = 28;
    os::DWORD device_cb_size = 28; // 0: no record
};

struct Detail {
    os::DWORD error;
    os::DWORD required_size;
    std::string path;
};

Detail Ask(os::HDEVINFO set, os::SP_DEVICE_INTERFACE_DATA data, const DetailRequest &request = {})
{
    char buffer[64] = {};
    auto *detail = reinterpret_cast<os::SP_DEVICE_INTERFACE_DETAIL_DATA_A *>(buffer);
    detail->cbSize = request.detail_cb_size;
    data.cbSize = request.interface_cb_size;
    os::SP_DEVINFO_DATA device{request.device_cb_size, {}, 0, 0};
    Detail answer{0, 0, {}};
    if (!os::SetupDiGetDeviceInterfaceDetailA(set, &data, request.buffer_size != 0 ? detail : nullptr,
                                              request.buffer_size, &answer.required_size,
                                              request.device_cb_size != 0 ? &device : nullptr))
        answer.error = os::GetLastError();
    answer.path = buffer + 4;
    return answer;
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
        CHECK(Ask(set, data).path == "second");
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
        const struct {
            DetailRequest request;
            os::DWORD error = 0;
            os::DWORD required_size = 0; // 4 + strlen("second") + 1
        } table[] = {{{.buffer_size = 0}, 122, 11},    {{.buffer_size = 10}, 122, 11},
                     {{.buffer_size = 11}, 0, 11},     {{.device_cb_size = 0}, 0, 11},
                     {{.detail_cb_size = 8}, 1784, 0}, {{.interface_cb_size = 32}, 1784, 0},
                     {{.device_cb_size = 32}, 1784, 0}};
        for (const auto &row : table) {
            CAPTURE(&row - table);
            const Detail answer = Ask(set, data, row.request);
            CHECK(answer.error == row.error);
            CHECK(answer.required_size == row.required_size);
            CHECK(answer.path == (row.error == 0 ? "second" : ""));
        }
        data.Reserved = 3;
        CHECK(Ask(set, data).error == os::ErrorInvalidParameter);
        driver.devices()[1].path.clear();
        data.Reserved = 2;
        CHECK(Ask(set, data, {.buffer_size = 0}).error == os::ErrorInvalidData);
        data.cbSize = 32;
        CHECK(Enumerate(set, 0, data) == os::ErrorInvalidUserBuffer);
        os::SetupDiDestroyDeviceInfoList(set);
    }
}

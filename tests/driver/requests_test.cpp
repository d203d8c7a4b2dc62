// The requests, byte for byte.
#include "support/recording_driver.h"

#include "platform/host/system.h"

#include <trevik/TrevikAC.h>

#include <doctest/doctest.h>

#include <cstring>
#include <functional>
#include <vector>

using namespace trevik;
using trevik::test::RecordingDriver;

namespace
{

struct Bytes {
    std::size_t offset;
    std::uint32_t value;
    std::size_t size;
};

std::vector<std::uint8_t> Buffer(const std::vector<Bytes> &parts)
{
    std::vector<std::uint8_t> buffer(32, 0);
    for (const Bytes &part : parts)
        std::memcpy(&buffer[part.offset], &part.value, part.size);
    return buffer;
}

} // namespace

TEST_CASE("requests have their codes, sizes and offsets, and zeros elsewhere")
{
    const auto pid = host::ProcessId();
    std::uint32_t word = 0;
    std::uint16_t half = 0;
    std::uint8_t byte = 0;
    struct Row {
        const char *what;
        std::function<std::uint32_t()> call;
        std::size_t request; // which of its requests
        std::uint32_t code;
        std::vector<std::uint8_t> in;
        std::uint32_t out_size;
    };
    const Row rows[] = {
        {"get resource", [] { return TrevikA_initial(); }, 0, 0x222000, Buffer({{16, pid, 4}}), 32},
        {"model query", [] { return TrevikA_initial(); }, 1, 0x222218, Buffer({{8, 38, 4}}), 32},
        {"register read", [&] { return TrevikA_current_position_read(0, 3, &word); }, 0, 0x22205C,
         Buffer({{0, 3, 4}, {4, 0xE3, 4}}), 16},
        {"register write", [] { return TrevikA_current_position_set(0, 2, 0xFEDCBA98); }, 1, 0x22209C,
         Buffer({{0, 2, 4}, {4, 0xA3, 4}, {8, 0xFEDCBA98, 4}}), 16},
        {"port read", [&] { return TrevikA_motion_status_read(0, 3, 0, &byte); }, 0, 0x222048,
         Buffer({{2, 1, 1}, {8, 24, 4}}), 32},
        {"command", [] { return TrevikA_stop_emg(0); }, 0, 0x222088, Buffer({{2, 1, 1}, {20, 0x0F05, 2}}), 0},
        {"index read", [&] { return TrevikAC_index_read(0, 3, 200, &half); }, 0, 0x222218,
         Buffer({{8, 200, 4}, {12, 3, 4}}), 32},
        {"index write", [] { return TrevikAC_index_write(0, 1, 255, 0xABCD); }, 0, 0x222214,
         Buffer({{8, 255, 4}, {12, 1, 4}, {20, 0xABCD, 2}}), 32},
        {"release", [] { return TrevikA_close(); }, 0, 0x222248, Buffer({{16, pid, 4}}), 0}};
    RecordingDriver driver;
    for (const Row &row : rows) {
        CAPTURE(row.what);
        driver.forget();
        CHECK(row.call() == TREVIK_OK);
        REQUIRE(driver.raw().size() > row.request);
        const auto &request = driver.raw()[row.request];
        CHECK(request.code == row.code);
        CHECK(request.in == row.in);
        CHECK(request.out_size == row.out_size);
    }
}

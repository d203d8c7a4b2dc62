// The operations of the AC model: index registers, their order, and the checks that come before.
#include "support/reading.h"
#include "support/started_library.h"

#include <trevik/TrevikAC.h>

using namespace trevik;
using namespace trevik::test;

namespace
{

struct StartedAC : StartedLibrary {
    StartedAC() : StartedLibrary({{"a", 0, 0, model_word_AC, 0}}) { driver.remember_writes(); }
};

} // namespace

TEST_CASE_FIXTURE(StartedAC, "AC operations, request by request")
{
    const std::uint32_t results[] = {TrevikAC_encoder_mode_set(0, 1, 2, 4, 1),
                                     TrevikAC_encoder_polarity_set(0, 2, 63),
                                     TrevikAC_DA_set(0, 0, 0),
                                     TrevikAC_DA_set(0, 0, 258),
                                     TrevikAC_DA_set(0, 3, -65535),
                                     TrevikAC_pulse_swap_set(0, 3, 1),
                                     TrevikAC_PID_control_mode_set(0, 4),
                                     TrevikAC_PID_set(0, 2, 4095, 3),
                                     TrevikAC_PID_start(0, 1),
                                     TrevikAC_PID_stop(0, 2),
                                     TrevikAC_PID_error_detector_set(0, 3, 1),
                                     TrevikAC_PID_error_detector_clear(0, 0),
                                     TrevikAC_debounce_set(0, 1, 3)};
    for (const std::uint32_t result : results)
        CHECK(result == TREVIK_OK);
    CHECK(driver.log() == R"(write  axis 1  index 0 = 0x0002
write  axis 1  index 2 = 0x0004
write  axis 1  index 4 = 0x0001
write  axis 2  index 6 = 0x003F
write  axis 0  index 18 = 0x0000
write  axis 0  index 20 = 0x0001
write  axis 0  index 18 = 0x0102
write  axis 0  index 20 = 0x0000
write  axis 3  index 18 = 0xFFFF
write  axis 3  index 20 = 0x0001
write  axis 3  index 10 = 0x0001
write  axis 0  index 34 = 0x0004
write  axis 2  index 22 = 0x0FFF
write  axis 2  index 26 = 0x0015
write  axis 2  index 24 = 0x5555
write  axis 1  index 16 = 0x0001
write  axis 2  index 16 = 0x0000
write  axis 3  index 36 = 0x0001
write  axis 0  index 32 = 0x0000
write  axis 1  index 12 = 0x0003
)");
    driver.index(1, 8) = 0x8001;
    driver.index(1, 28) = 0xFFFE;
    driver.index(1, 30) = 0x1234;
    driver.index(3, 32) = 1;
    CHECK(Reading(TrevikAC_encoder_mode_read, 0, 1) == "2 4 1 ");
    CHECK(Reading(TrevikAC_encoder_polarity_read, 0, 2) == "63 ");
    CHECK(Reading(TrevikAC_encoder_status_read, 0, 1) == "32769 ");
    CHECK(Reading(TrevikAC_DA_read, 0, 3) == "-65535 ");
    CHECK(Reading(TrevikAC_DA_read, 0, 0) == "258 ");
    CHECK(Reading(TrevikAC_pulse_swap_read, 0, 3) == "1 ");
    CHECK(Reading(TrevikAC_PID_control_mode_read, 0) == "4 ");
    CHECK(Reading(TrevikAC_PID_read, 0, 2) == "4095 3 ");
    CHECK(Reading(TrevikAC_PID_read, 0, 3) == "0 0 ");
    CHECK(Reading(TrevikAC_PID_error_counter_read, 0, 1) == "305463294 ");
    CHECK(Reading(TrevikAC_debounce_read, 0, 1) == "3 ");
    driver.forget();
    CHECK(Reading(TrevikAC_PID_error_detector_read, 0, 3) == "1 1 ");
    for (std::uint32_t axis = 0; axis < 4; ++axis)
        driver.reg(axis, StatusRegister::LATCH_DATA) = 10 + axis;
    CHECK(Reading(TrevikAC_counter_simultaneous_read, 0) == "10 11 12 13 ");
    CHECK(driver.log() == R"(read   axis 3  index 36 -> 0x0001
read   axis 3  index 32 -> 0x0001
command axes 0xF  CMD_LATCH_COUNTERS
read   axis 0  LATCH_DATA -> 0x0000000A
read   axis 1  LATCH_DATA -> 0x0000000B
read   axis 2  LATCH_DATA -> 0x0000000C
read   axis 3  LATCH_DATA -> 0x0000000D
)");
    // 4095 and 4094 are kept as 1024, which reads back as 4096.
    TrevikAC_PID_set(0, 0, 1, 4094);
    CHECK(Reading(TrevikAC_PID_read, 0, 0) == "1 4096 ");
}

TEST_CASE_FIXTURE(StartedAC, "ranges are checked before anything is sent, and before the handle")
{
    const std::uint32_t refused[] = {TrevikAC_encoder_mode_set(0, 0, 3, 0, 0),
                                     TrevikAC_encoder_mode_set(0, 0, 0, 5, 0),
                                     TrevikAC_encoder_mode_set(0, 0, 0, 0, 3),
                                     TrevikAC_encoder_polarity_set(0, 0, 64),
                                     TrevikAC_DA_set(0, 0, 65536),
                                     TrevikAC_DA_set(0, 0, INT32_MIN),
                                     TrevikAC_pulse_swap_set(0, 0, 2),
                                     TrevikAC_PID_control_mode_set(0, 5),
                                     TrevikAC_PID_set(0, 9, 0, 1),
                                     TrevikAC_PID_set(0, 9, 1, 4096),
                                     TrevikAC_PID_error_detector_set(0, 9, 2),
                                     TrevikAC_debounce_set(0, 0, 4)};
    for (const std::uint32_t result : refused)
        CHECK(result == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
    TrevikA_close();
    CHECK(TrevikAC_pulse_swap_set(0, 0, 2) == TREVIK_ERR_PARAM);
}

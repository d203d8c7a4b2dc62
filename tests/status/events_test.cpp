// Events, masks, comparators, counters and timers: requests and results.
#include "support/reading.h"
#include "support/started_library.h"

#include <trevik/Trevik.h>

#include <doctest/doctest.h>

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "events, comparators, signals and timers, request by request")
{
    driver.reg(2, Register::LIMIT_CONFIG) = 0xFFFFFFFF;
    driver.reg(2, Register::START_TRIGGER_ENV) = 0xFFFFFFFF;
    driver.reg(3, StatusRegister::LATCH_DATA) = 0xFFFFFFFB;
    driver.reg(3, StatusRegister::EVENT_FLAGS) = 0x80000001;
    driver.reg(3, StatusRegister::ERROR_FLAGS) = 0x12345678;
    CHECK(TrevikA_event_factor_set(0, 1, -1) == TREVIK_OK);
    CHECK(TrevikA_IRQ_source_set(0, 2, -1, 0x401) == TREVIK_OK);
    CHECK(shadow(2).IrqSourceShadow == 0x3F7F3);
    CHECK(Reading(TrevikA_event_flag_read, 0, 3) == "2147483649 ");
    CHECK(Reading(TrevikA_error_flag_read, 0, 3) == "305419896 ");
    CHECK(Reading(TrevikA_FB_counter_latch_value_read, 0, 3) == "4294967291 ");
    CHECK(TrevikA_compare_start_data_set(0, 5) == TREVIK_OK);
    CHECK(TrevikA_compare_start_set(0, 2, 1, 4) == TREVIK_OK);
    CHECK(TrevikA_compare_start_data_set(0, 6) == TREVIK_OK);
    CHECK(Reading(TrevikA_compare_start_data_read, 0) == "0 ");
    CHECK(TrevikA_CSTA_trigger(0) == TREVIK_OK);
    CHECK(TrevikA_CSTP_trigger(0) == TREVIK_OK);
    CHECK(TrevikA_timer_set(0, 1, 0x12345) == TREVIK_OK);
    CHECK(TrevikA_timer_set(0, 2, 1) == TREVIK_OK);
    CHECK(TrevikA_timer_start(0) == TREVIK_OK);
    CHECK(TrevikA_TC_set(0, 0, 1) == TREVIK_OK);
    CHECK(TrevikA_TC_set(0, 1, 0xABCD0001) == TREVIK_OK);
    CHECK(TrevikA_TC_set(0, 3, 1) == TREVIK_OK);
    CHECK(TrevikA_TC_set(0, 9, 7) == TREVIK_OK);
    CHECK(driver.log() == Requests(R"(
        write axis 1: EVENT_ENABLE = 351219
        write axis 2: EVENT_ENABLE = 1
        read axis 3: EVENT_FLAGS -> 0x80000001, ERROR_FLAGS -> 0x12345678, LATCH_DATA -> 0xFFFFFFFB
        write axis 0: COMPARE_START_DATA = 5
        modify axis 2: LIMIT_CONFIG 0xFFFFFFFF -> 0xFF91FFFF, START_TRIGGER_ENV 0xFFFFFFFF -> 0xFFF3FFFF
        modify axis 01: START_TRIGGER_ENV 0x00000000 -> 0x00200000
        modify axis 2: START_TRIGGER_ENV 0xFFFFFFFF -> 0xFFEFFFFF
        modify axis 3: START_TRIGGER_ENV 0x00000000 -> 0x00200000
        write axis 2: COMPARE_START_DATA = 6
        read axis 2: COMPARE_START_DATA -> 0
        command axes 0xF  CMD_CSTA_PULSE
        command axes 0xF  CMD_CSTP_PULSE
        write  port 76 = 0x0001
        write  port 74 = 0x2345
        write  port 68 = 0x0001
        write  port 68 = 0x0000
        write  port 72 = 0xABCD
        write  port 70 = 0x0001
        write  port 78 = 0x0001)"));
    // A move that waits for the comparator names the same axis.
    CHECK(Includes(sent(TrevikA_T_position_move(0, 0, 10, 0, 1, 1, 0, 0, 2)), "START_TRIGGER_ENV = 0x00200000"));
    driver.reg(2, Register::LIMIT_CONFIG) = 0xFFEDFFFF;
    CHECK(Reading(TrevikA_compare_start_read, 0, 2) == "1 3 ");
    TrevikA_compare_start_set(0, 0, 0, 0); // the choice outlasts start-ups
}

TEST_CASE_FIXTURE(StartedLibrary, "status words, masks, timers and the snapshot are taken apart")
{
    driver.port(MainStatusPort(1)) = 0x0100;
    CHECK(Reading(TrevikA_softlimit_flag_read, 0, 1) == "1 0 ");
    driver.port(MainStatusPort(1)) = 0x1200;
    CHECK(Reading(TrevikA_softlimit_flag_read, 0, 1) == "0 1 ");
    CHECK(Reading(TrevikA_CMP_flag_read, 0, 1) == "1 ");
    driver.port(MainStatusPort(1)) = 0xEFFF;
    CHECK(Reading(TrevikA_CMP_flag_read, 0, 1) == "0 ");
    driver.port(118) = 0xAB5C;
    CHECK(Reading(TrevikA_IRQ_mask_read, 0) == "92 ");
    driver.port(72) = 0x8001;
    driver.port(70) = 0x0002;
    driver.port(76) = 0x0003;
    driver.port(74) = 0xF004;
    CHECK(Reading(TrevikA_timer_read, 0, 0) == "2147549186 ");
    CHECK(Reading(TrevikA_timer_read, 0, 1) == "258052 ");
    CHECK(Reading(TrevikA_timer_read, 0, 2) == "77 ");
    CHECK(Reading(TrevikA_TC_read, 0, 0) == "77 ");
    for (std::uint8_t i = 0; i < 84; ++i)
        driver.snapshot()[i] = i;
    driver.snapshot()[0] = 0x45;
    driver.snapshot()[1] = 0x39;
    driver.forget();
    CHECK(Reading(TrevikA_IRQ_status_read, 0, 0) == "21 20 52 ");
    CHECK(Reading(TrevikA_IRQ_status_read, 0, 2) == "23 28 60 ");
    CHECK(Reading(TrevikA_IRQ_status_read, 0, 3) == "20 32 64 ");
    CHECK(Reading(TrevikA_IRQ_status_read, 0, 4) == "69 77 77 ");
    CHECK(Reading(TrevikA_IRQ_status_read, 0, 5) == "result 301 77 77 77 ");
    CHECK((driver.requests() == 5 && driver.raw()[0].code == 0x2220C4 && driver.raw()[0].in.empty() &&
           driver.raw()[0].out_size == 84));
}

TEST_CASE_FIXTURE(StartedLibrary, "sources, masks and timers: what is checked before what")
{
    CHECK(TrevikA_IRQ_mask_set(0, 5, 1) == TREVIK_ERR_AXIS);
    CHECK(Trevik_set_INT_mask(99, 4, 1) == TREVIK_ERR_AXIS); // before the card
    CHECK(Trevik_set_INT_mask(99, 3, 1) == TREVIK_ERR_CARD);
    TrevikA_close();
    CHECK(TrevikA_timer_start(0) == TREVIK_OK); // the timers do not look at the handle
    CHECK(TrevikA_TC_set(0, 3, 2) == TREVIK_ERR_HANDLE);
}

// Every setting goes to its field and nowhere else, and comes back from there.
#include "support/reading.h"
#include "support/started_library.h"

#include <doctest/doctest.h>

#include <functional>

using namespace trevik;
using namespace trevik::test;

namespace
{

constexpr std::uint8_t axis = 1;

template <class... P, class... Values>
std::function<std::uint32_t()> Set(std::uint32_t(TREVIK_CALL *set)(std::uint8_t, std::uint8_t, P...),
                                   Values... values)
{
    return [=] { return set(0, axis, static_cast<P>(values)...); };
}

// What a read of the axis gives.
template <class... Values>
std::function<std::string()> Back(std::uint32_t(TREVIK_CALL *read)(std::uint8_t, std::uint8_t, Values *...))
{
    return [=] { return Reading(read, 0, axis); };
}

} // namespace

#define SETTING(name, ...) Set(TrevikA_##name##_set, __VA_ARGS__), Back(TrevikA_##name##_read)

TEST_CASE_FIXTURE(StartedLibrary, "a setting changes its bits and no others, and reads back")
{
    struct Row {
        std::function<std::uint32_t()> set;
        std::function<std::string()> read;
        Register reg;
        std::uint32_t mask; // of the bits that the call owns
        std::uint32_t bits;
        const char *back; // live inputs and enables are 0 but for the one that is set
    };
    using enum Register;
    const Row rows[] = {
        {SETTING(pulse_outmode, 0), SIGNAL_CONFIG1, 7, 0, "0 "},
        {SETTING(pulse_outmode, 4), SIGNAL_CONFIG1, 7, 4, "4 "},
        {SETTING(pulse_outmode, 5), SIGNAL_CONFIG1, 7, 7, "5 "},
        {SETTING(pulse_outmode, 6), SIGNAL_CONFIG1, 7, 5, "6 "},
        {SETTING(pulse_outmode, 7), SIGNAL_CONFIG1, 7, 6, "7 "},
        {SETTING(pulse_inmode, 2, 0), SIGNAL_CONFIG2, 0x700000, 0x200000, "2 0 "},
        {SETTING(pulse_inmode, 1, 1), SIGNAL_CONFIG2, 0x700000, 0x500000, "1 1 "},
        {SETTING(SD_PIN, 0, 9, 0, 0), SIGNAL_CONFIG1, 0x70, 0x40, "0 1 0 0 0 "},
        {SETTING(SD_PIN, 7, 0, 9, 0), SIGNAL_CONFIG1, 0x70, 0x20, "1 0 1 0 0 "},
        {SETTING(SD_PIN, 0, 0, 0, 9), SIGNAL_CONFIG1, 0x70, 0x10, "0 0 0 1 0 "},
        {SETTING(PCS_PIN, 9, 9), SIGNAL_CONFIG1, 0x1000000, 0x1000000, "1 1 0 "},
        {SETTING(INP_PIN, 0, 9), SIGNAL_CONFIG1, 0x400000, 0x400000, "0 1 0 "},
        {SETTING(ERC_PIN, 9, 0, 5, 2), SIGNAL_CONFIG1, 0x3F800, 0x25800, "1 0 5 2 0 "},
        {SETTING(ERC_PIN, 0, 9, 2, 1), SIGNAL_CONFIG1, 0x3F800, 0x1F000, "0 1 7 1 0 "},
        {SETTING(ALM_PIN, 9, 0), SIGNAL_CONFIG1, 0x300, 0x200, "1 0 0 "},
        {SETTING(ALM_PIN, 0, 9), SIGNAL_CONFIG1, 0x300, 0x100, "0 1 0 "},
        {SETTING(CMP_PIN, 2), SIGNAL_CONFIG2, 0xC000, 0xC000, "2 1 "},
        {SETTING(EL_mode, 1), SIGNAL_CONFIG1, 8, 8, "1 "},
        {SETTING(HOME_PIN_logic, 9), SIGNAL_CONFIG1, 0x80, 0x80, "1 "},
        {SETTING(EZ_PIN_logic, 9), SIGNAL_CONFIG2, 0x800000, 0x800000, "1 "},
        {Set(TrevikA_home_mode_set, 12, 15), {}, HOME_CONFIG, 0xFF, 0xFC, ""},
        {SETTING(softlimit_config, 1, 2), LIMIT_CONFIG, 0x7F7F, 0x5959, "1 2 "},
        {SETTING(softlimit_enable, 9), LIMIT_CONFIG, 0x1C1C, 0x1818, "1 "},
        {SETTING(softlimit_enable, 0), LIMIT_CONFIG, 0x1C1C, 0, "0 "},
        {SETTING(suppress_vibration, 0x1234, 0xABCD), VIBRATION_CONFIG, 0xFFFFFFFF, 0xABCD1234, "4660 43981 "},
        {SETTING(pulser_mode, 2, 1), SIGNAL_CONFIG2, 0x7000000, 0x6000000, "2 1 "},
        {SETTING(CMP_out, 3, 5, 2), START_TRIGGER_ENV, 0xFF, 0xAB, "3 5 2 "},
        {SETTING(CMP_out, 0, 2, 0), START_TRIGGER_ENV, 0xFF, 0x10, "0 2 0 "},
        {Set(TrevikA_IRQ_mask_set, 1), {}, SIGNAL_CONFIG1, 0x20000000, 0, ""},
        {Set(TrevikA_IRQ_mask_set, 0), {}, SIGNAL_CONFIG1, 0x20000000, 0x20000000, ""},
        {SETTING(CMP_data, 0xFEDCBA98), COMPARATOR_DATA, 0xFFFFFFFF, 0xFEDCBA98, "4275878552 "},
        {SETTING(FB_counter, 0xFEDCBA98), COUNTER2, 0xFFFFFFFF, 0xFEDCBA98, "4275878552 "},
    };
    driver.remember_writes();
    for (const Row &row : rows) {
        CAPTURE(&row - rows);
        for (const std::uint32_t before : {0u, 0xFFFFFFFFu, 0xA5C3960Fu}) {
            driver.reg(axis, row.reg) = before;
            CHECK(row.set() == TREVIK_OK);
            CHECK((driver.reg(axis, row.reg) & row.mask) == row.bits);
            CHECK((driver.reg(axis, row.reg) & ~row.mask) == (before & ~row.mask));
            if (row.read)
                CHECK(row.read() == row.back);
        }
    }
}

TEST_CASE_FIXTURE(StartedLibrary, "settings of two registers, and what only later moves carry")
{
    driver.reg(1, Register::START_TRIGGER_ENV) = 0x000F0000;
    CHECK(TrevikA_LTC_PIN_set(0, 1, 0, 1) == TREVIK_OK);
    CHECK(TrevikA_backlash_comp_set(0, 1, 0x123, 5, 2500) == TREVIK_OK);
    CHECK(driver.log() == Requests(R"(
        modify axis 1: START_TRIGGER_ENV 0x000F0000 -> 0x000F8000, SIGNAL_CONFIG1 0x00000000 -> 0x00800000,
            MOTION_CONFIG 0x00000000 -> 0x00001123, HOME_CONFIG 0x00000000 -> 0x00000000)"));
    driver.reg(1, Register::HOME_CONFIG) = 0xFFFFFFFF;
    driver.reg(1, Register::MOTION_CONFIG) = 0xFFFFF123;
    CHECK(sent(TrevikA_backlash_comp_set(0, 1, 0xFFF, 9, 2500)) == Requests(R"(
        modify axis 1: MOTION_CONFIG 0xFFFFF123 -> 0xFFFFDFFF, HOME_CONFIG 0xFFFFFFFF -> 0xFEFFFFFF)"));
    CHECK(Back(TrevikA_backlash_comp_read)() == "291 9 2500 ");
    driver.reg(1, Register::START_TRIGGER_ENV) = 0x00008000;
    CHECK(Back(TrevikA_LTC_PIN_read)() == "0 0 0 ");
    TrevikA_SD_PIN_set(0, 1, 1, 0, 0, 0);
    TrevikA_INP_PIN_set(0, 1, 1, 0);
    TrevikA_PCS_PIN_set(0, 1, 1, 0);
    driver.forget();
    // A move without ramps sets bits 13 and 26, too; 2500 pulses/s in units of 300 / 3276 pulses/s.
    CHECK(Includes(sent(TrevikA_T_position_move(0, 1, 10, 0, 100, 6000, 0, 0, 0)),
                   "write axis 1: MODE = 0x05006349, CORRECTION_SPEED = 27300"));
}

TEST_CASE_FIXTURE(StartedLibrary, "values out of range are refused before anything is sent or remembered")
{
    const std::uint32_t results[] = {TrevikA_pulse_outmode_set(0, 1, 8),
                                     TrevikA_pulse_inmode_set(0, 1, 4, 0),
                                     TrevikA_pulse_inmode_set(0, 1, 0, 2),
                                     TrevikA_ERC_PIN_set(0, 1, 0, 0, 8, 0),
                                     TrevikA_ERC_PIN_set(0, 1, 0, 0, 0, 4),
                                     TrevikA_CMP_PIN_set(0, 1, 3),
                                     TrevikA_EL_mode_set(0, 1, 2),
                                     TrevikA_TTL_IO_mode_set(0, 4),
                                     TrevikA_home_mode_set(0, 1, 13, 0),
                                     TrevikA_home_mode_set(0, 1, 0, 16),
                                     TrevikA_pulser_mode_set(0, 1, 4, 0),
                                     TrevikA_pulser_mode_set(0, 1, 0, 2),
                                     TrevikA_pulser_map_set(0, 1, 4, 0),
                                     TrevikA_pulser_motion_enable(0, 1, 0, 0),
                                     TrevikA_pulser_motion_enable(0, 1, 0, 1001),
                                     TrevikA_softlimit_config_set(0, 1, 2, 0),
                                     TrevikA_softlimit_config_set(0, 1, 0, 3),
                                     TrevikA_backlash_comp_set(0, 1, 4096, 1, 9),
                                     TrevikA_CMP_out_set(0, 1, 4, 0, 0),
                                     TrevikA_CMP_out_set(0, 1, 0, 6, 0),
                                     TrevikA_CMP_out_set(0, 1, 0, 0, 3),
                                     TrevikA_compare_start_set(0, 1, 4, 0),
                                     TrevikA_compare_start_set(0, 1, 0, 6),
                                     TrevikA_IRQ_mask_set(0, 7, 2),
                                     TrevikA_TC_set(0, 0, 2),
                                     TrevikA_TC_set(0, 3, 256),
                                     TrevikA_IRQ_process_link(0, nullptr)};
    for (const std::uint32_t result : results)
        CHECK(result == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
    CHECK((shadow(1).BacklashEnabled == 0 && shadow(1).CorrectionSpeed == 1000));
}

TEST_CASE_FIXTURE(StartedLibrary, "pins and points read their live bit")
{
    struct Bit {
        bool extended; // of EXT_STATUS; otherwise of the sub status
        std::uint32_t axis;
        unsigned bit;
        bool inverted;
    };
    constexpr bool X = true;
    constexpr bool S = false;
    constexpr Bit points[] = {
        {X, 1, 15, false}, {X, 1, 8, false},  {X, 1, 16, false}, {S, 1, 11, false}, {S, 1, 2, true},
        {S, 1, 12, false}, {S, 1, 13, false}, {X, 1, 14, false}, {S, 1, 14, false}, {X, 1, 7, false},
        {X, 1, 10, false}, {X, 1, 9, false},  {S, 1, 1, true},   {S, 1, 0, true},   {S, 1, 7, true},
        {X, 1, 5, false},  {X, 1, 6, false},  {S, 1, 3, false},  {S, 1, 4, false},  {S, 1, 5, false},
        {S, 1, 6, false},  {S, 2, 3, false},  {S, 2, 4, false},  {S, 2, 5, false},  {S, 2, 6, false}};
    // Each read, whose last value is the state. A pin is one of the points.
    std::vector<std::pair<std::function<std::string()>, Bit>> rows = {
        {Back(TrevikA_SD_PIN_read), points[0]},  {Back(TrevikA_PCS_PIN_read), points[1]},
        {Back(TrevikA_INP_PIN_read), points[2]}, {Back(TrevikA_ERC_PIN_read), points[11]},
        {Back(TrevikA_LTC_PIN_read), points[7]}, {Back(TrevikA_ALM_PIN_read), points[3]},
        {Back(TrevikA_CMP_PIN_read), points[14]}};
    for (std::uint8_t number = 0; number < 25; ++number)
        rows.emplace_back([number] { return Reading(TrevikA_point_read, 0, axis, number); }, points[number]);
    for (const auto &row : rows) {
        const auto &[read, bit] = row;
        CAPTURE(row.second.bit);
        for (const bool on : {false, true}) {
            for (std::uint32_t n = 0; n < 4; ++n) { // the very opposite everywhere else
                const std::uint32_t own = n == bit.axis ? 1u << bit.bit : 0;
                const std::uint32_t others = on ? 0 : 0xFFFFFFFF;
                driver.reg(n, StatusRegister::EXT_STATUS) = bit.extended ? others ^ own : others;
                driver.port(SubStatusPort(n)) = static_cast<std::uint16_t>(bit.extended ? others : others ^ own);
            }
            CHECK(read().ends_with(on != bit.inverted ? "1 " : "0 "));
        }
    }
    // The two words are read for any point, one more for those of the card.
    driver.forget();
    CHECK(Reading(TrevikA_point_read, 0, 3, 25) == "77 ");
    driver.port(SubStatusPort(3)) = driver.port(SubStatusPort(2)) = 0;
    driver.reg(3, StatusRegister::EXT_STATUS) = 0;
    driver.forget();
    Reading(TrevikA_point_read, 0, 3, 21);
    CHECK(driver.log() == Requests(R"(
        read axis 3: sub status -> 0x0000, EXT_STATUS -> 0x00000000
        read axis 2: sub status -> 0x0000)"));
}

TEST_CASE_FIXTURE(StartedLibrary, "output points are commands, and the TTL mode turns ports round")
{
    constexpr struct {
        std::uint16_t on, off;
    } words[] = {{0x0824, 0x0825}, {0x0811, 0x0819}, {0x0810, 0x0818}, {0x0817, 0x081F},
                 {0x021B, 0x0213}, {0x021C, 0x0214}, {0x021D, 0x0215}, {0x021E, 0x0216},
                 {0x041B, 0x0413}, {0x041C, 0x0414}, {0x041D, 0x0415}, {0x041E, 0x0416}};
    for (std::uint8_t point = 0; point < 12; ++point)
        for (const std::uint8_t state : std::initializer_list<std::uint8_t>{0, 1, 255}) {
            driver.forget();
            CHECK(TrevikA_point_set(0, 3, point, state) == TREVIK_OK);
            const auto word = GetField<std::uint16_t>(driver.raw().at(0).in.data(), 20);
            CHECK(word == (state != 0 ? words[point].on : words[point].off));
        }
    driver.forget();
    CHECK(TrevikA_point_set(0, 3, 12, 1) == TREVIK_OK);
    CHECK(TrevikA_point_set(0, 4, 5, 1) == TREVIK_ERR_AXIS);
    CHECK(driver.requests() == 0);

    driver.reg(2, Register::SIGNAL_CONFIG2) = 0xFFFFFFFF;
    CHECK(sent(TrevikA_TTL_IO_mode_set(0, 1)) == Requests(R"(
        command axis 3: CMD_PORT3_HIGH, CMD_PORT4_LOW
        modify axis 1: SIGNAL_CONFIG2 0x00000000 -> 0x00001540
        modify axis 2: SIGNAL_CONFIG2 0xFFFFFFFF -> 0xFFFFC03F)"));
    CHECK(Reading(TrevikA_TTL_IO_mode_read, 0) == "2 ");
    driver.reg(1, Register::SIGNAL_CONFIG2) = 0x2000;
    CHECK(Reading(TrevikA_TTL_IO_mode_read, 0) == "3 ");
    driver.reg(2, Register::SIGNAL_CONFIG2) = 0xFFFFC03F;
    CHECK(Reading(TrevikA_TTL_IO_mode_read, 0) == "1 ");
}

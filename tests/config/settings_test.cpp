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

TEST_CASE_FIXTURE(StartedLibrary, "a setting changes its bits and no others, and reads back")
{
    struct Row {
        std::function<std::uint32_t()> set;
        Register reg;
        std::uint32_t mask; // of the bits that the call owns
        std::uint32_t bits;
        std::function<std::string()> read;
        const char *back; // live inputs and enables are 0 but for the one that is set
    };
    using enum Register;
    const auto out_mode = Back(TrevikA_pulse_outmode_read);
    const auto in_mode = Back(TrevikA_pulse_inmode_read);
    const auto sd = Back(TrevikA_SD_PIN_read);
    const auto erc = Back(TrevikA_ERC_PIN_read);
    const auto alm = Back(TrevikA_ALM_PIN_read);
    const auto limit = Back(TrevikA_softlimit_config_read);
    const auto limit_on = Back(TrevikA_softlimit_enable_read);
    const auto cmp = Back(TrevikA_CMP_out_read);
    const Row rows[] = {
        {Set(TrevikA_pulse_outmode_set, 0), SIGNAL_CONFIG1, 7, 0, out_mode, "0 "},
        {Set(TrevikA_pulse_outmode_set, 4), SIGNAL_CONFIG1, 7, 4, out_mode, "4 "},
        {Set(TrevikA_pulse_outmode_set, 5), SIGNAL_CONFIG1, 7, 7, out_mode, "5 "},
        {Set(TrevikA_pulse_outmode_set, 6), SIGNAL_CONFIG1, 7, 5, out_mode, "6 "},
        {Set(TrevikA_pulse_outmode_set, 7), SIGNAL_CONFIG1, 7, 6, out_mode, "7 "},
        {Set(TrevikA_pulse_inmode_set, 2, 0), SIGNAL_CONFIG2, 0x700000, 0x200000, in_mode, "2 0 "},
        {Set(TrevikA_pulse_inmode_set, 1, 1), SIGNAL_CONFIG2, 0x700000, 0x500000, in_mode, "1 1 "},
        {Set(TrevikA_SD_PIN_set, 0, 9, 0, 0), SIGNAL_CONFIG1, 0x70, 0x40, sd, "0 1 0 0 0 "},
        {Set(TrevikA_SD_PIN_set, 7, 0, 9, 0), SIGNAL_CONFIG1, 0x70, 0x20, sd, "1 0 1 0 0 "},
        {Set(TrevikA_SD_PIN_set, 0, 0, 0, 9), SIGNAL_CONFIG1, 0x70, 0x10, sd, "0 0 0 1 0 "},
        {Set(TrevikA_PCS_PIN_set, 9, 9), SIGNAL_CONFIG1, 0x1000000, 0x1000000, Back(TrevikA_PCS_PIN_read),
         "1 1 0 "},
        {Set(TrevikA_INP_PIN_set, 0, 9), SIGNAL_CONFIG1, 0x400000, 0x400000, Back(TrevikA_INP_PIN_read), "0 1 0 "},
        {Set(TrevikA_ERC_PIN_set, 9, 0, 5, 2), SIGNAL_CONFIG1, 0x3F800, 0x25800, erc, "1 0 5 2 0 "},
        {Set(TrevikA_ERC_PIN_set, 0, 9, 2, 1), SIGNAL_CONFIG1, 0x3F800, 0x1F000, erc, "0 1 7 1 0 "},
        {Set(TrevikA_ALM_PIN_set, 9, 0), SIGNAL_CONFIG1, 0x300, 0x200, alm, "1 0 0 "},
        {Set(TrevikA_ALM_PIN_set, 0, 9), SIGNAL_CONFIG1, 0x300, 0x100, alm, "0 1 0 "},
        {Set(TrevikA_CMP_PIN_set, 2), SIGNAL_CONFIG2, 0xC000, 0xC000, Back(TrevikA_CMP_PIN_read), "2 1 "},
        {Set(TrevikA_EL_mode_set, 1), SIGNAL_CONFIG1, 8, 8, Back(TrevikA_EL_mode_read), "1 "},
        {Set(TrevikA_HOME_PIN_logic_set, 9), SIGNAL_CONFIG1, 0x80, 0x80, Back(TrevikA_HOME_PIN_logic_read), "1 "},
        {Set(TrevikA_EZ_PIN_logic_set, 9), SIGNAL_CONFIG2, 0x800000, 0x800000, Back(TrevikA_EZ_PIN_logic_read),
         "1 "},
        {Set(TrevikA_softlimit_config_set, 1, 2), LIMIT_CONFIG, 0x7F7F, 0x5959, limit, "1 2 "},
        {Set(TrevikA_softlimit_enable_set, 9), LIMIT_CONFIG, 0x1C1C, 0x1818, limit_on, "1 "},
        {Set(TrevikA_softlimit_enable_set, 0), LIMIT_CONFIG, 0x1C1C, 0, limit_on, "0 "},
        {Set(TrevikA_suppress_vibration_set, 0x1234, 0xABCD), VIBRATION_CONFIG, 0xFFFFFFFF, 0xABCD1234,
         Back(TrevikA_suppress_vibration_read), "4660 43981 "},
        {Set(TrevikA_pulser_mode_set, 2, 1), SIGNAL_CONFIG2, 0x7000000, 0x6000000, Back(TrevikA_pulser_mode_read),
         "2 1 "},
        {Set(TrevikA_CMP_out_set, 3, 5, 2), START_TRIGGER_ENV, 0xFF, 0xAB, cmp, "3 5 2 "},
        {Set(TrevikA_CMP_out_set, 0, 2, 0), START_TRIGGER_ENV, 0xFF, 0x10, cmp, "0 2 0 "},
        {Set(TrevikA_IRQ_mask_set, 1), SIGNAL_CONFIG1, 0x20000000, 0, {}, ""},
        {Set(TrevikA_IRQ_mask_set, 0), SIGNAL_CONFIG1, 0x20000000, 0x20000000, {}, ""},
        {Set(TrevikA_CMP_data_set, 0xFEDCBA98), COMPARATOR_DATA, 0xFFFFFFFF, 0xFEDCBA98,
         Back(TrevikA_CMP_data_read), "4275878552 "},
        {Set(TrevikA_FB_counter_set, 0xFEDCBA98), COUNTER2, 0xFFFFFFFF, 0xFEDCBA98, Back(TrevikA_FB_counter_read),
         "4275878552 "},
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
    CHECK(driver.log() == R"(read   axis 1  START_TRIGGER_ENV -> 0x000F0000
write  axis 1  START_TRIGGER_ENV = 0x000F8000
read   axis 1  SIGNAL_CONFIG1 -> 0x00000000
write  axis 1  SIGNAL_CONFIG1 = 0x00800000
read   axis 1  MOTION_CONFIG -> 0x00000000
write  axis 1  MOTION_CONFIG = 0x00001123
read   axis 1  HOME_CONFIG -> 0x00000000
write  axis 1  HOME_CONFIG = 0x00000000
)");
    driver.reg(1, Register::HOME_CONFIG) = 0xFFFFFFFF;
    driver.reg(1, Register::MOTION_CONFIG) = 0xFFFFF123;
    CHECK(TrevikA_backlash_comp_set(0, 1, 0xFFF, 9, 2500) == TREVIK_OK);
    CHECK(Has(driver.log(), "MOTION_CONFIG = 0xFFFFDFFF\nread   axis 1  HOME_CONFIG -> 0xFFFFFFFF\n"
                            "write  axis 1  HOME_CONFIG = 0xFEFFFFFF\n"));
    CHECK(Back(TrevikA_backlash_comp_read)() == "291 9 2500 ");
    driver.reg(1, Register::START_TRIGGER_ENV) = 0x00008000;
    CHECK(Back(TrevikA_LTC_PIN_read)() == "0 0 0 ");
    TrevikA_SD_PIN_set(0, 1, 1, 0, 0, 0);
    TrevikA_INP_PIN_set(0, 1, 1, 0);
    TrevikA_PCS_PIN_set(0, 1, 1, 0);
    driver.forget();
    // A move without ramps sets bits 13 and 26, too; 2500 pulses/s in units of 300 / 3276 pulses/s.
    CHECK(TrevikA_T_position_move(0, 1, 10, 0, 100, 6000, 0, 0, 0) == TREVIK_OK);
    const std::string move = driver.log();
    CHECK(Has(move, "axis 1  MODE = 0x05006349\n"));
    CHECK(Has(move, "axis 1  CORRECTION_SPEED = 27300\n"));
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
    for (const auto &[read, bit] : rows) {
        CAPTURE(bit.bit);
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
    CHECK(driver.log() == "read   axis 3  sub status -> 0x0000\nread   axis 3  EXT_STATUS -> 0x00000000\n"
                          "read   axis 2  sub status -> 0x0000\n");
}

TEST_CASE_FIXTURE(StartedLibrary, "output points are commands, and the TTL mode turns ports round")
{
    struct Words {
        std::uint16_t on, off;
    };
    constexpr Words words[] = {{0x0824, 0x0825}, {0x0811, 0x0819}, {0x0810, 0x0818}, {0x0817, 0x081F},
                               {0x021B, 0x0213}, {0x021C, 0x0214}, {0x021D, 0x0215}, {0x021E, 0x0216},
                               {0x041B, 0x0413}, {0x041C, 0x0414}, {0x041D, 0x0415}, {0x041E, 0x0416}};
    for (std::uint8_t point = 0; point < 12; ++point)
        for (const std::uint8_t state : std::initializer_list<std::uint8_t>{0, 1, 255}) {
            driver.forget();
            CHECK(TrevikA_point_set(0, 3, point, state) == TREVIK_OK);
            const auto &request = driver.raw().at(0);
            CHECK(request.in[20] + 256 * request.in[21] == (state != 0 ? words[point].on : words[point].off));
        }
    driver.forget();
    CHECK(TrevikA_point_set(0, 3, 12, 1) == TREVIK_OK);
    CHECK(TrevikA_point_set(0, 4, 5, 1) == TREVIK_ERR_AXIS);
    CHECK(driver.requests() == 0);

    driver.reg(2, Register::SIGNAL_CONFIG2) = 0xFFFFFFFF;
    CHECK(TrevikA_TTL_IO_mode_set(0, 1) == TREVIK_OK);
    CHECK(driver.log() == R"(command axes 0x8  CMD_PORT3_HIGH
command axes 0x8  CMD_PORT4_LOW
read   axis 1  SIGNAL_CONFIG2 -> 0x00000000
write  axis 1  SIGNAL_CONFIG2 = 0x00001540
read   axis 2  SIGNAL_CONFIG2 -> 0xFFFFFFFF
write  axis 2  SIGNAL_CONFIG2 = 0xFFFFC03F
)");
    CHECK(Reading(TrevikA_TTL_IO_mode_read, 0) == "2 ");
    driver.reg(1, Register::SIGNAL_CONFIG2) = 0x2000;
    CHECK(Reading(TrevikA_TTL_IO_mode_read, 0) == "3 ");
    driver.reg(2, Register::SIGNAL_CONFIG2) = 0xFFFFC03F;
    CHECK(Reading(TrevikA_TTL_IO_mode_read, 0) == "1 ");
}

// The earlier names: the same requests as their current counterparts, and what differs.
#include "support/captured_output.h"
#include "support/started_library.h"

#include <trevik/Trevik.h>

#include <doctest/doctest.h>

#include <string>

using namespace trevik;
using namespace trevik::test;

namespace
{

struct Moves : StartedLibrary {
    // What a move sent, and the axes as they were before it.
    std::string one(std::uint32_t result)
    {
        const std::string log = sent(result);
        CHECK(Has(log, "command"));
        for (std::uint8_t axis = 0; axis < axis_count; ++axis)
            shadow(axis).start_up(axis);
        return log;
    }
};

} // namespace

TEST_CASE_FIXTURE(Moves, "earlier moves send what the current ones do")
{
    const std::uint8_t absolute[4] = {1, 1, 1, 1};
    CHECK(one(Trevik_T_curve_position_move(0, 1, 5000, 1, 100, 9000, 0.25, 0.6)) ==
          one(TrevikA_T_position_move(0, 1, 5000, 1, 100, 9000, 250, 600, 0)));
    CHECK(one(Trevik_T_curve_move_LINE2(0, 4, 50, -60, 1, 100, 9000, 0.25, 0.6)) ==
          one(TrevikA_T_LINE2_move(0, 4, 50, -60, absolute, 100, 9000, 250, 600, 0)));
    CHECK(one(Trevik_T_curve_move_LINE3(0, 1, 50, -60, 70, 0, 100, 9000, 0.25, 0.6)) ==
          one(TrevikA_T_LINE3_move(0, 1, 50, -60, 70, relative, 100, 9000, 250, 600, 0)));
    CHECK(one(Trevik_T_curve_move_LINE4(0, 50, -60, 70, 9, 0, 100, 9000, 0.25, 0.6)) ==
          one(TrevikA_T_LINE4_move(0, 50, -60, 70, 9, relative, 100, 9000, 250, 600, 0)));
    // Ranges of (9000 - 100) * 50 / (200 * 2) = 1112 and (9000 - 100) * 60 / (540 * 2) = 494 pulses/s.
    CHECK(one(Trevik_S_curve_move_LINE4(0, 50, -60, 70, 9, 0, 100, 9000, 0.25, 0.6, 1112, 494)) ==
          one(TrevikA_S_LINE4_move(0, 50, -60, 70, 9, relative, 100, 9000, 250, 600, 50, 60, 0)));
    CHECK(one(Trevik_S1_curve_move_LINE4(0, 50, -60, 70, 9, 1, 100, 9000, 250, 600, 50, 60)) ==
          one(TrevikA_S_LINE4_move(0, 50, -60, 70, 9, absolute, 100, 9000, 250, 600, 50, 60, 0)));
    CHECK(one(Trevik_S_curve_move_LINE2(0, 0, 50, -60, 0, 100, 9000, 0.25, 0.6, 1112, 494)) ==
          one(Trevik_S1_curve_move_LINE2(0, 0, 50, -60, 0, 100, 9000, 250, 600, 50, 60)));
    CHECK(one(Trevik_S_curve_move_LINE3(0, 2, 50, -60, 7, 0, 100, 9000, 0.25, 0.6, 1112, 494)) ==
          one(Trevik_S1_curve_move_LINE3(0, 2, 50, -60, 7, 0, 100, 9000, 250, 600, 50, 60)));
    CHECK(Trevik_S1_curve_move_LINE3(99, 9, 1, 1, 1, 0, 1, 9, 99, 100, 50, 50) == TREVIK_ERR_PARAM);
    CHECK(Trevik_S_curve_move_LINE3(99, 9, 1, 1, 1, 0, 1, 9, 1, 1, 50, 50) == TREVIK_ERR_CARD);
}

TEST_CASE("earlier names reach cards of any model")
{
    RecordingDriver driver({Device{"odd", 4, 0x55AA, 0x102, 0}});
    CHECK(Quietly(TrevikA_initial) == TREVIK_ERR_MODEL);
    CHECK(Quietly(Trevik_initial) == TREVIK_OK);
    std::uint16_t word = 0;
    CHECK((Trevik_info(4, &word) == TREVIK_OK && word == 0x55AA));
    CHECK(Trevik_info(4, nullptr) == TREVIK_ERR_PARAM);
    std::uint8_t count = 0;
    driver.reg(2, StatusRegister::EXT_STATUS) = 0xFFEFFFFF;
    CHECK((Trevik_read_conti_buffer_no(4, 2, &count) == TREVIK_OK && count == 2));

    // Moves count from where the axis stands, at once.
    driver.reg(2, Register::COUNTER1) = 4321;
    CHECK(Trevik_correct_current_POS(4, 2) == TREVIK_OK);
    CHECK(Trevik_T_curve_position_move(4, 2, 4321, 1, 1, 1, 0, 0) == TREVIK_ERR_PARAM);
    driver.port(MainStatusPort(2)) = 0;
    driver.reg(2, Register::COUNTER1) = 0;
    driver.forget();
    CHECK(Trevik_correct_current_POS(4, 2) == TREVIK_OK); // moving: left alone
    CHECK(driver.log() == "read   axis 2  main status -> 0x0000\n");
    CHECK(Trevik_set_current_position(4, 2, 9) == TREVIK_ERR_BUSY);
    driver.devices().clear();
    CHECK(Quietly(Trevik_initial) == TREVIK_ERR_OPEN);
    CHECK(Trevik_close() == TREVIK_OK);
}

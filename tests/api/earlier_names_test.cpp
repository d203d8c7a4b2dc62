// The earlier names: the same requests as their current counterparts, and what differs.
#include "support/captured_output.h"
#include "support/recording_driver.h"

#include <trevik/Trevik.h>

#include <doctest/doctest.h>

#include <functional>
#include <string>

using namespace trevik;
using namespace trevik::test;

TEST_CASE("earlier moves send what the current ones do")
{
    using Call = std::function<std::uint32_t()>;
    struct Row {
        const char *what;
        Call earlier;
        Call current;
    };
    static const std::uint8_t absolute[4] = {1, 1, 1, 1};
    static const std::uint8_t relative[4] = {0, 0, 0, 0};
    const Row rows[] = {
        {"T position", [] { return Trevik_T_curve_position_move(0, 1, 5000, 1, 100, 9000, 0.25, 0.6); },
         [] { return TrevikA_T_position_move(0, 1, 5000, 1, 100, 9000, 250, 600, 0); }},
        {"T LINE2", [] { return Trevik_T_curve_move_LINE2(0, 4, 50, -60, 1, 100, 9000, 0.25, 0.6); },
         [] { return TrevikA_T_LINE2_move(0, 4, 50, -60, absolute, 100, 9000, 250, 600, 0); }},
        {"T LINE3", [] { return Trevik_T_curve_move_LINE3(0, 1, 50, -60, 70, 0, 100, 9000, 0.25, 0.6); },
         [] { return TrevikA_T_LINE3_move(0, 1, 50, -60, 70, relative, 100, 9000, 250, 600, 0); }},
        {"T LINE4", [] { return Trevik_T_curve_move_LINE4(0, 50, -60, 70, 9, 0, 100, 9000, 0.25, 0.6); },
         [] { return TrevikA_T_LINE4_move(0, 50, -60, 70, 9, relative, 100, 9000, 250, 600, 0); }},
        // Ranges of (9000 - 100) * 50 / (200 * 2) = 1112 and (9000 - 100) * 60 / (540 * 2) = 494 pulses/s.
        {"S LINE4", [] { return Trevik_S_curve_move_LINE4(0, 50, -60, 70, 9, 0, 100, 9000, 0.25, 0.6, 1112, 494); },
         [] { return TrevikA_S_LINE4_move(0, 50, -60, 70, 9, relative, 100, 9000, 250, 600, 50, 60, 0); }},
        {"S1 LINE4", [] { return Trevik_S1_curve_move_LINE4(0, 50, -60, 70, 9, 1, 100, 9000, 250, 600, 50, 60); },
         [] { return TrevikA_S_LINE4_move(0, 50, -60, 70, 9, absolute, 100, 9000, 250, 600, 50, 60, 0); }},
        {"S LINE2 and S1 LINE2",
         [] { return Trevik_S_curve_move_LINE2(0, 0, 50, -60, 0, 100, 9000, 0.25, 0.6, 1112, 494); },
         [] { return Trevik_S1_curve_move_LINE2(0, 0, 50, -60, 0, 100, 9000, 250, 600, 50, 60); }},
        {"S LINE3 and S1 LINE3",
         [] { return Trevik_S_curve_move_LINE3(0, 2, 50, -60, 7, 0, 100, 9000, 0.25, 0.6, 1112, 494); },
         [] { return Trevik_S1_curve_move_LINE3(0, 2, 50, -60, 7, 0, 100, 9000, 250, 600, 50, 60); }}};
    for (const Row &row : rows) {
        CAPTURE(row.what);
        std::string logs[2];
        for (const bool current : {false, true}) {
            RecordingDriver driver;
            Quietly(TrevikA_initial);
            driver.forget();
            CHECK((current ? row.current : row.earlier)() == TREVIK_OK);
            logs[current] = driver.log();
        }
        CHECK(logs[0] == logs[1]);
        CHECK(logs[0].find("command") != std::string::npos);
    }
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
    std::uint32_t position = 7;
    driver.reg(2, Register::COUNTER1) = 4321;
    CHECK((Trevik_read_current_position(4, 2, &position) == TREVIK_OK && position == 4321));
    std::uint8_t flag = 0;
    CHECK((Trevik_read_motion_status(4, 2, 0, &flag) == TREVIK_OK && flag == 1));
    CHECK((Trevik_check_continuous_buffer(4, 2, &flag) == TREVIK_OK && flag == 0));
    driver.reg(2, StatusRegister::EXT_STATUS) = 0xFFEFFFFF;
    CHECK((Trevik_read_conti_buffer_no(4, 2, &flag) == TREVIK_OK && flag == 2));

    // Moves count from where the axis stands, at once.
    CHECK(Trevik_correct_current_POS(4, 2) == TREVIK_OK);
    CHECK(Trevik_T_curve_position_move(4, 2, 4321, 1, 1, 1, 0, 0) == TREVIK_ERR_PARAM);
    driver.port(MainStatusPort(2)) = 0;
    driver.reg(2, Register::COUNTER1) = 0;
    driver.forget();
    CHECK(Trevik_correct_current_POS(4, 2) == TREVIK_OK); // moving: left alone
    CHECK(driver.log() == "read   axis 2  main status -> 0x0000\n");
    CHECK(Trevik_position_change(4, 2, 9, 0) == TREVIK_OK);
    CHECK(Trevik_set_current_position(4, 2, 9) == TREVIK_ERR_BUSY);
    CHECK(Trevik_load_config_from_file(4, "no such file") == TREVIK_ERR_FILE);
    CHECK(Trevik_save_config2_file(16, "no such card") == TREVIK_ERR_CARD);
    driver.devices().clear();
    CHECK(Quietly(Trevik_initial) == TREVIK_ERR_OPEN);
    CHECK(Trevik_close() == TREVIK_OK);
}

// What every entry does before its operation, and what start-up and close leave behind.
#include "support/captured_output.h"
#include "support/recording_driver.h"

#include "platform/host/handles.h"

#include <trevik/TrevikAC.h>

#include <doctest/doctest.h>

#include <functional>
#include <string>
#include <string_view>

using namespace trevik;
using namespace trevik::test;

namespace
{

std::uint8_t flags[4] = {0, 0, 0, 0};
std::uint8_t byte = 0;
std::uint16_t half = 0;
std::uint32_t word = 0;
double real = 0;

struct Entry {
    const char *name;
    bool has_axis;
    std::function<std::uint32_t(std::uint8_t card, std::uint8_t axis)> call;
};

template <class... P, class... A>
Entry OfAxis(const char *name, std::uint32_t(TREVIK_CALL *function)(std::uint8_t, std::uint8_t, P...),
             A... arguments)
{
    const auto call = [=](auto card, auto axis) { return function(card, axis, static_cast<P>(arguments)...); };
    return {name, true, call};
}
template <class... P, class... A>
Entry OfCard(const char *name, std::uint32_t(TREVIK_CALL *function)(std::uint8_t, P...), A... arguments)
{
    const auto call = [=](auto card, auto) { return function(card, static_cast<P>(arguments)...); };
    return {name, false, call};
}

// Exported functions of every kind, with arguments that pass their own checks.
const Entry entries[] = {
    OfCard("info", TrevikA_info, &byte, &half),
    OfAxis("velocity_range_fix", TrevikA_velocity_range_fix, 1),
    OfAxis("velocity_range_unfix", TrevikA_velocity_range_unfix),
    OfAxis("T_position_move", TrevikA_T_position_move, 1, 0, 1, 1, 0, 0, 0),
    OfAxis("position_change", TrevikA_position_change, 1, 0), // not moving
    OfCard("stop", TrevikA_stop, flags, 0),
    OfCard("stop_emg", TrevikA_stop_emg),
    OfAxis("velocity_read", TrevikA_velocity_read, &real),
    OfCard("T_LINE2_move", TrevikA_T_LINE2_move, 0, 1, 1, flags, 1, 1, 0, 0, 0),
    OfCard("T_LINE3_move", TrevikA_T_LINE3_move, 0, 1, 1, 1, flags, 1, 1, 0, 0, 0),
    OfCard("T_LINE4_move", TrevikA_T_LINE4_move, 1, 1, 1, 1, flags, 1, 1, 0, 0, 0),
    OfCard("S_LINE2_move", TrevikA_S_LINE2_move, 0, 1, 1, flags, 1, 1, 0, 0, 0, 0, 0),
    OfCard("S_LINE3_move", TrevikA_S_LINE3_move, 0, 1, 1, 1, flags, 1, 1, 0, 0, 0, 0, 0),
    OfCard("S_LINE4_move", TrevikA_S_LINE4_move, 1, 1, 1, 1, flags, 1, 1, 0, 0, 0, 0, 0),
    OfAxis("continuous_flag_set", TrevikA_continuous_flag_set, 0),
    OfAxis("continuous_buffer_read", TrevikA_continuous_buffer_read, &byte),
    OfAxis("continuous_buffer_no_read", TrevikA_continuous_buffer_no_read, &byte),
    OfAxis("motion_status_read", TrevikA_motion_status_read, 0, &byte),
    OfAxis("current_position_read", TrevikA_current_position_read, &word),
    OfAxis("current_position_set", TrevikA_current_position_set, 0),
    OfCard("init_card", TrevikA_init_card),
    OfAxis("SD_PIN_set", TrevikA_SD_PIN_set, 0, 0, 0, 0),
    OfAxis("point_read", TrevikA_point_read, 0, &byte),
    OfCard("TTL_IO_mode_read", TrevikA_TTL_IO_mode_read, &byte),
    OfAxis("softlimit_data_read", TrevikA_softlimit_data_read, &word, &word),
    OfAxis("event_factor_set", TrevikA_event_factor_set, 0),
    OfCard("IRQ_mask_set", TrevikA_IRQ_mask_set, 4, 1),
    OfCard("IRQ_disable", TrevikA_IRQ_disable),
    OfAxis("CMP_out_set", TrevikA_CMP_out_set, 0, 0, 0),
    OfCard("compare_start_data_read", TrevikA_compare_start_data_read, &word),
    OfCard("CSTA_trigger", TrevikA_CSTA_trigger),
    OfAxis("AC_index_read", TrevikAC_index_read, 38, &half),
    OfAxis("AC_index_write", TrevikAC_index_write, 1, 2),
};

Device Card(std::uint8_t number, std::uint16_t model_word)
{
    return {"card " + std::to_string(number), number, 0x1234, model_word, 0};
}

} // namespace

TEST_CASE("every entry checks card, model, axis and handle in this order")
{
    RecordingDriver driver({Card(3, model_word_A), Card(7, 0x102)});
    CHECK(TrevikA_initial() == TREVIK_OK);
    for (const Entry &entry : entries) {
        CAPTURE(entry.name);
        driver.forget();
        CHECK(entry.call(16, 9) == TREVIK_ERR_CARD);
        CHECK(entry.call(255, 0) == TREVIK_ERR_CARD);
        CHECK(entry.call(0, 4) == (entry.has_axis ? TREVIK_ERR_AXIS : TREVIK_ERR_HANDLE));
        CHECK(entry.call(0, 0) == TREVIK_ERR_HANDLE);
        const bool asks_for_model = !std::string_view(entry.name).starts_with("AC_");
        CHECK(entry.call(7, 9) == (asks_for_model ? TREVIK_ERR_MODEL : TREVIK_ERR_AXIS));
        CHECK(driver.requests() == 0);
        const std::uint32_t result = entry.call(3, 2);
        CHECK((result == TREVIK_OK || result == TREVIK_ERR_NOT_MOVING));
    }
    TrevikA_close();
    driver.forget();
    for (const Entry &entry : entries)
        CHECK(entry.call(3, 0) == TREVIK_ERR_HANDLE);
    CHECK(driver.requests() == 0);
}

TEST_CASE("null pointers are refused after the other checks")
{
    RecordingDriver driver;
    TrevikA_initial();
    driver.forget();
    half = 77;
    CHECK(TrevikA_info(0, nullptr, &half) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_info(0, &byte, nullptr) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_stop(0, nullptr, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_velocity_read(0, 0, nullptr) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_continuous_buffer_read(0, 0, nullptr) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_continuous_buffer_no_read(0, 0, nullptr) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_motion_status_read(0, 0, 7, nullptr) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_current_position_read(0, 0, nullptr) == TREVIK_ERR_PARAM);
    CHECK(TrevikAC_index_read(0, 0, 38, nullptr) == TREVIK_ERR_PARAM);
    CHECK(half == 77);
    CHECK(TrevikA_motion_status_read(1, 0, 0, nullptr) == TREVIK_ERR_HANDLE);
    CHECK(driver.requests() == 0);
}

TEST_CASE("start-up finds cards by the numbers that they report")
{
    RecordingDriver driver({Card(3, model_word_AC), Card(9, model_word_A)});
    CHECK(Printed([] { CHECK(TrevikA_initial() == TREVIK_OK); }) == "counter=2\n");
    CHECK(driver.log() == R"(get resource -> card 3, word 0x1234
read   axis 0  index 38 -> 0x0101
get resource -> card 9, word 0x1234
read   axis 0  index 38 -> 0x0001
)");
    CHECK((TrevikA_info(3, &byte, &half) == TREVIK_OK && byte == 1 && half == 0x1234));
    CHECK(TrevikA_info(0, &byte, &half) == TREVIK_ERR_HANDLE);

    // Again: each held handle is closed before its path is opened again.
    CHECK(TrevikA_initial() == TREVIK_OK);
    CHECK((driver.opened() == 4 && driver.closed() == 2));
    driver.forget();
    CHECK(TrevikA_close() == TREVIK_OK);
    CHECK(driver.log() == "release\nrelease\n");
    CHECK(driver.closed() == 4);
    CHECK(TrevikA_close() == TREVIK_OK);
    CHECK(driver.requests() == 0);
}

TEST_CASE("start-up values are written again, and cards without a known model are of no use")
{
    RecordingDriver driver;
    CHECK(TrevikA_initial() == TREVIK_OK);
    TrevikA_continuous_flag_set(0, 0, 1);
    driver.devices()[0].model_word = 0x102;
    CHECK(TrevikA_initial() == TREVIK_ERR_MODEL);
    CHECK(TrevikA_continuous_flag_set(0, 0, 1) == TREVIK_ERR_MODEL);
    driver.devices()[0].model_word = model_word_A;
    CHECK(TrevikA_initial() == TREVIK_OK);
    driver.forget();
    CHECK(TrevikA_T_LINE2_move(0, 0, 1, 1, flags, 1, 1, 0, 0, 0) == TREVIK_OK); // both axes out of continuous mode
}

TEST_CASE("devices that cannot be entered are closed and say what failed")
{
    struct Row {
        const char *what;
        std::function<void(RecordingDriver &)> arrange;
        std::uint32_t result;
        const char *printed;
        int kept; // handles still open
    };
    constexpr const char *cannot = "(PCI) Can't open TrevikA device";
    const Row rows[] = {
        {"no device", [](auto &d) { d.devices().clear(); }, TREVIK_ERR_OPEN,
         "counter=0\nNo AMCC devices are present and enabled in the system.\n", 0},
        {"size of the detail", [](auto &d) { d.devices()[1].path.clear(); }, TREVIK_ERR_OPEN,
         "counter=2\nSetupDiGetDeviceInterfaceDetail failed, Error: 13", 1},
        {"card 16", [](auto &d) { d.devices()[1].card = 16; }, TREVIK_OK, "counter=2\n", 1},
        {"two cards of one number", [](auto &d) { d.devices()[1].card = 0; }, TREVIK_OK, "counter=2\n", 1}};
    for (const Row &row : rows) {
        CAPTURE(row.what);
        RecordingDriver driver({Card(0, model_word_A), Card(1, model_word_A)});
        row.arrange(driver);
        std::uint32_t result = 0;
        const std::string printed = Printed([&] { result = TrevikA_initial(); });
        CHECK(result == row.result);
        CHECK(printed == std::string(row.printed) + (result == TREVIK_ERR_OPEN ? cannot : ""));
        CHECK(driver.opened() - driver.closed() == row.kept);
        CHECK(host::OpenHandleCount() == static_cast<std::size_t>(row.kept));
    }
}

// Once on, simulation lasts as long as the process: this case runs in one of its own.
TEST_SUITE("simulation" * doctest::skip())
{
    TEST_CASE("in simulation mode every call answers 0 and touches nothing")
    {
        static std::string traced;
        TrevikHost_debug_output_set([](void *, const char *text) { traced += text; }, nullptr);
        RecordingDriver driver;
        CHECK(TrevikA_initial() == TREVIK_OK);
        CHECK(TrevikA_dll_Simu_mode(2) == TREVIK_OK);
        CHECK(TrevikA_current_position_read(200, 0, &word) == TREVIK_ERR_CARD);
        CHECK(TrevikA_dll_Simu_mode(1) == TREVIK_OK);
        CHECK(TrevikA_dll_Simu_mode(0) == TREVIK_OK);
        driver.forget();
        traced.clear();
        word = 77;
        for (const Entry &entry : entries)
            CHECK(entry.call(200, 200) == TREVIK_OK);
        CHECK(word == 77);
        CHECK((TrevikA_initial() == TREVIK_OK && TrevikA_close() == TREVIK_OK));
        os::OutputDebugStringA("%s\n");
        TrevikHost_debug_output_set(nullptr, nullptr);
        os::OutputDebugStringA("to nobody");
        CHECK(traced == "TrevikA_initial%s\n");
        CHECK(driver.requests() == 0);
    }
}

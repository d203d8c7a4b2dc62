// What every entry does before its operation, and what start-up and close leave behind.
#include "refusals/declared.h"
#include "refusals/table.h"
#include "support/captured_output.h"
#include "support/recording_driver.h"

#include "platform/host/handles.h"

#include <trevik/TrevikAC.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <initializer_list>
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

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> parts)
{
    return std::any_of(parts.begin(), parts.end(),
                       [=](std::string_view part) { return name.find(part) != name.npos; });
}

// Every exported function that looks at its card, with arguments that pass its own checks, as call(name, card, axis).
template <class Check>
void ForEachEntry(Check check)
{
    for (const Row &row : calls)
        for (const Export &function : row.functions) {
            if (function.call == nullptr || IsOneOf(function.name, {"Simu_mode", "TC_read", "tick"}))
                continue;
            const std::string name = function.name;
            CAPTURE(name);
            check(std::string_view(name), [&](unsigned card, unsigned axis) {
                auto arguments = std::to_array(row.arguments);
                arguments[0] = card;
                if (HasAxis(name))
                    arguments[1] = axis;
                Outs outs;
                return function.call(arguments.data(), outs);
            });
        }
}

// What looks at the model before the axis and the handle, the timers and the mask at no handle at all.
bool IsTimer(std::string_view name)
{
    return IsOneOf(name, {"TrevikA_timer", "TrevikA_TC_set", "TrevikA_IRQ_mask_read"});
}
bool IsRaw(std::string_view name)
{
    return IsOneOf(name, {"TrevikAC_index"});
}
bool IsAC(std::string_view name)
{
    return IsOneOf(name, {"TrevikAC_", "debounce"}) && !IsRaw(name);
}

Device CardDevice(std::uint8_t number, std::uint16_t model_word)
{
    return {"card " + std::to_string(number), number, 0x1234, model_word, 0};
}

} // namespace

TEST_CASE("every entry checks card, model, axis and handle in this order")
{
    RecordingDriver driver({CardDevice(3, model_word_A), CardDevice(4, model_word_AC), CardDevice(7, 0x102)});
    TrevikHost_clock_manual(1); // some of the calls let axes follow a handwheel
    Quietly(TrevikA_initial);
    CHECK(TrevikA_config_file_set(3, FileOf(1)) == TREVIK_OK);
    driver.forget();
    const auto without_handle = [](std::string_view name) {
        return IsTimer(name) || IsAC(name) ? TREVIK_ERR_MODEL : TREVIK_ERR_HANDLE;
    };
    ForEachEntry([&](std::string_view name, auto call) {
        CHECK(call(16, 9) == TREVIK_ERR_CARD);
        CHECK(call(255, 0) == TREVIK_ERR_CARD);
        CHECK(call(0, 0) == without_handle(name));
        if (!name.starts_with("Trevik_") && !IsRaw(name))
            CHECK(call(7, 9) == TREVIK_ERR_MODEL);
        if (HasAxis(name)) {
            const bool handle_first =
                IsOneOf(name, {"IRQ_source", "INT_source", "pulser_map", "pulser_Map", "pulser_motion", "PID"});
            CHECK(call(0, 4) == (handle_first ? without_handle(name) : TREVIK_ERR_AXIS));
            CHECK(call(IsAC(name) ? 4 : 3, 4) == TREVIK_ERR_AXIS);
        }
        CHECK(driver.requests() == 0);
    });
    ForEachEntry([&](std::string_view name, auto call) {
        if (name.starts_with("Trevik_")) // reaches a card of any model
            CHECK(call(7, 2) != TREVIK_ERR_MODEL);
    });
    TrevikA_close();
    driver.forget();
    ForEachEntry([&](std::string_view name, auto call) {
        if (!IsTimer(name))
            CHECK(call(IsAC(name) ? 4 : 3, 0) == TREVIK_ERR_HANDLE);
    });
    CHECK(driver.requests() == 0);
    for (const int file : {0, 1})
        CHECK(std::remove(FileOf(file)) == 0);
    manager.StopPulserTicks();
    TrevikHost_clock_manual(0);
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
    RecordingDriver driver({CardDevice(3, model_word_AC), CardDevice(9, model_word_A)});
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
        RecordingDriver driver({CardDevice(0, model_word_A), CardDevice(1, model_word_A)});
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
        ForEachEntry([](std::string_view, auto call) { CHECK(call(200, 200) == TREVIK_OK); });
        CHECK(TrevikA_current_position_read(0, 0, &word) == TREVIK_OK);
        CHECK(word == 77);
        CHECK((TrevikA_initial() == TREVIK_OK && TrevikA_close() == TREVIK_OK));
        os::OutputDebugStringA("%s\n");
        TrevikHost_debug_output_set(nullptr, nullptr);
        os::OutputDebugStringA("to nobody");
        CHECK(traced == "TrevikA_initial%s\n");
        CHECK(driver.requests() == 0);
    }
}

// What every entry does before its operation, and what start-up and close leave behind.
#include "refusals/table.h"
#include "support/captured_output.h"
#include "support/recording_driver.h"

#include "platform/host/handles.h"
#include "status/interrupts.h"

#include <trevik/TrevikAC.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>

using namespace trevik;
using namespace trevik::test;

namespace
{

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
    for (const Call &call : Calls()) {
        const Exported &function = *call.function;
        if (!function.has("card") || function.name == "TrevikA_TC_read")
            continue;
        const std::string name(function.name);
        CAPTURE(name);
        check(function, [&](unsigned card, unsigned axis) {
            Arguments arguments = call.arguments;
            arguments[0] = card;
            if (function.has("axis"))
                arguments[1] = axis;
            Outs outs;
            return function.call(arguments, outs);
        });
    }
}

// What looks at the model before the axis and the handle, the timers and the mask at no handle at all.
bool IsTimer(std::string_view name)
{
    return IsOneOf(name, {"TrevikA_timer", "TrevikA_TC_set", "TrevikA_IRQ_mask_read"});
}
// The index registers are there on every card.
bool IsAC(std::string_view name)
{
    return IsForAC(name) && name.find("_index_") == name.npos;
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
    ForEachEntry([&](const Exported &function, auto call) {
        const std::string_view name = function.name;
        CHECK(call(16, 9) == TREVIK_ERR_CARD);
        CHECK(call(255, 0) == TREVIK_ERR_CARD);
        CHECK(call(0, 0) == without_handle(name));
        if (!name.starts_with("Trevik_") && IsForAC(name) == IsAC(name))
            CHECK(call(7, 9) == TREVIK_ERR_MODEL);
        if (function.has("axis")) {
            const bool handle_first =
                IsOneOf(name, {"IRQ_source", "INT_source", "pulser_map", "pulser_Map", "pulser_motion", "PID"});
            CHECK(call(0, 4) == (handle_first ? without_handle(name) : TREVIK_ERR_AXIS));
            CHECK(call(IsAC(name) ? 4 : 3, 4) == TREVIK_ERR_AXIS);
        }
        CHECK(driver.requests() == 0);
    });
    ForEachEntry([&](const Exported &function, auto call) {
        const std::string_view name = function.name;
        if (name.starts_with("Trevik_")) // reaches a card of any model
            CHECK(call(7, 2) != TREVIK_ERR_MODEL);
    });
    Card odd;
    manager.numbered(7, odd);
    JoinCallbacks(odd);
    os::CloseHandle(odd.state().IrqEvent);
    TrevikA_close();
    driver.forget();
    ForEachEntry([&](const Exported &function, auto call) {
        const std::string_view name = function.name;
        if (!IsTimer(name))
            CHECK(call(IsAC(name) ? 4 : 3, 0) == TREVIK_ERR_HANDLE);
    });
    CHECK(driver.requests() == 0);
    for (const int file : {0, 1})
        CHECK(std::remove(FileOf(file)) == 0);
    manager.StopPulserTicks();
    TrevikHost_clock_manual(0);
}

TEST_CASE("null pointers are refused after the other checks; nothing is sent or handed out")
{
    RecordingDriver driver({CardDevice(0, model_word_A), CardDevice(1, model_word_AC)});
    Quietly(TrevikA_initial);
    driver.forget();
    for (const Call &call : Calls()) {
        if (call.function->name == "TrevikA_TC_read")
            continue;
        CAPTURE(std::string(call.function->name));
        for (std::size_t null = 0; null < call.function->outs; ++null) {
            Outs outs(null);
            CHECK(call.function->call(call.arguments, outs) == TREVIK_ERR_PARAM);
            CHECK(outs.untouched());
        }
    }
    CHECK(TrevikA_stop(0, nullptr, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_motion_status_read(2, 0, 0, nullptr) == TREVIK_ERR_HANDLE);
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

TEST_CASE("a card whose number is above 15 or that of a later one is closed again")
{
    for (const std::uint8_t number : {std::uint8_t{16}, std::uint8_t{1}}) {
        CAPTURE(number);
        RecordingDriver driver({CardDevice(number, model_word_A), {"later", 1}});
        CHECK(Printed([] { CHECK(TrevikA_initial() == TREVIK_OK); }) == "counter=2\n");
        CHECK(driver.opened() - driver.closed() == 1);
        CHECK(host::OpenHandleCount() == 1);
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
        ForEachEntry([](const Exported &, auto call) { CHECK(call(200, 200) == TREVIK_OK); });
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

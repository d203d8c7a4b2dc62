// System functions that fail: start-up at every one of its calls, events and threads that cannot be created.
#include "support/captured_output.h"
#include "support/recording_driver.h"
#include "support/system.h"

#include "api/card_manager.h"
#include "driver/patience.h"
#include "platform/host/faults.h"
#include "platform/host/handles.h"
#include "status/interrupts.h"

#include <trevik/Trevik.h>

#include <doctest/doctest.h>

#include <string>
#include <vector>

using namespace trevik;
using namespace trevik::test;
using host::FailNext;
using host::Function;

namespace
{

void TREVIK_CALL NeverCalled(std::uint32_t) {}

constexpr std::uint32_t all_cards = 0b111;

// One failure of a start-up with three cards, and what must come of it.
struct Failure {
    std::string what;
    Function function; // Count: the driver's request
    std::uint32_t number;
    std::string printed;
    std::uint32_t result = TREVIK_OK;
    std::uint32_t entered = all_cards; // one bit a card
    std::uint32_t closed = 0;          // those that are not open, even if they were before
    std::uint32_t of_no_model = 0;
};

std::vector<Failure> Failures()
{
    const std::string counted = "counter=3\n";
    std::vector<Failure> all{{"set", Function::SetupDiGetClassDevsA, 0,
                              "No AMCC devices are present and enabled in the system\n", 101, 0},
                             {"count", Function::SetupDiEnumDeviceInterfaces, 0,
                              "counter=0\nNo AMCC devices are present and enabled in the system.\n", 101, 0},
                             {"end of the count", Function::SetupDiEnumDeviceInterfaces, 3, counted},
                             {"tick", Function::timeSetEvent, 0, counted}};
    for (std::uint32_t i = 0; i < 3; ++i) {
        const std::uint32_t bit = 1u << i;
        const std::uint32_t before = bit - 1;
        if (i > 0)
            all.push_back({"count", Function::SetupDiEnumDeviceInterfaces, i, "counter=" + std::to_string(i) + "\n",
                           TREVIK_OK, before});
        all.push_back({"interface", Function::SetupDiEnumDeviceInterfaces, 4 + i,
                       counted + "SetupDiEnumDeviceInterfaces failed, Error: 5", 101, before});
        for (const std::uint32_t call : {2 * i, 2 * i + 1})
            all.push_back({"detail", Function::SetupDiGetDeviceInterfaceDetailA, call,
                           counted + "SetupDiGetDeviceInterfaceDetail failed, Error: 5", 101, before});
        all.push_back({"open", Function::CreateFileA, i,
                       counted + "CreateFile failed.  Error:5get resource failed, Error: 6",
                       i == 2 ? TREVIK_ERR_OPEN : TREVIK_OK, all_cards & ~bit, bit});
        all.push_back({"resource", Function::Count, 2 * i, counted + "get resource failed, Error: 5", TREVIK_OK,
                       all_cards & ~bit, bit});
        all.push_back({"model", Function::Count, 2 * i + 1, counted, TREVIK_OK, all_cards, 0, bit});
    }
    return all;
}

std::uint32_t InfoOf(std::uint8_t card)
{
    std::uint8_t model = 0;
    std::uint16_t word = 0;
    return TrevikA_info(card, &model, &word);
}

Card CardOf(std::uint8_t number)
{
    Card card;
    manager.numbered(number, card);
    return card;
}

// Starts up, `again` over a library that has all cards open, and checks what is left of it.
void CheckStartUp(const Failure &failure, bool again, std::uint32_t(TREVIK_CALL *initial)())
{
    RecordingDriver driver({{"a", 0}, {"b", 1, 0x1234, model_word_AC, 0}, {"c", 2}});
    if (again)
        Quietly(initial);
    CardOf(0).axis(0).shadow().ContinuousFlag = std::uint8_t{9};
    if (failure.function == Function::Count)
        driver.refuse(failure.number, 5);
    else
        FailNext(failure.function, 5, failure.number);
    std::uint32_t result = 0;
    const std::string printed = Printed([&] { result = initial(); });
    CHECK(result == failure.result);
    CHECK(printed == failure.printed + (result == TREVIK_ERR_OPEN ? "(PCI) Can't open TrevikA device" : ""));
    // Without a start-up the shadows are as they were.
    CHECK(CardOf(0).axis(0).shadow().ContinuousFlag == (result == TREVIK_ERR_OPEN ? 9 : 0));

    const std::uint32_t open = again ? all_cards & ~failure.closed : failure.entered;
    std::size_t handles = 0;
    for (std::uint8_t card = 0; card < 3; ++card) {
        const bool is_open = (open >> card & 1) != 0;
        const bool no_model = (failure.of_no_model >> card & 1) != 0;
        CHECK(InfoOf(card) == (no_model ? TREVIK_ERR_MODEL : is_open ? TREVIK_OK : TREVIK_ERR_HANDLE));
        handles += is_open ? 1 : 0;
    }
    CHECK(host::OpenHandleCount() == handles);
    driver.refuse_all(5); // releases are not reported
    CHECK(TrevikA_close() == TREVIK_OK);
    CHECK(host::OpenHandleCount() == 0);
    manager.StopPulserTicks();
}

} // namespace

TEST_CASE("start-up with every one of its calls failing")
{
    TrevikHost_clock_manual(1);
    for (const Failure &failure : Failures())
        for (const bool again : {false, true})
            for (const auto initial : {TrevikA_initial, Trevik_initial}) {
                CAPTURE(failure.what);
                CAPTURE(failure.number);
                CAPTURE(again);
                CheckStartUp(failure, again, initial);
            }
    TrevikHost_clock_manual(0);
}

TEST_CASE("events and threads that cannot be created are not reported, and nothing stays behind")
{
    RecordingDriver driver;
    REQUIRE(Quietly(TrevikA_initial) == TREVIK_OK);
    manager.StopPulserTicks();
    const Card card = CardOf(0);
    const std::size_t handles = host::OpenHandleCount();
    const std::size_t threads = ThreadCount();
    for (const Function function : {Function::OpenEventA, Function::CreateEventA, Function::CreateThread})
        for (const auto link : {TrevikA_IRQ_process_link, Trevik_link_IRQ_process}) {
            driver.forget();
            std::uint32_t event = 77;
            if (function != Function::CreateThread) {
                FailNext(function, 8);
                CHECK(Trevik_enable_IRQ(0, &event) == TREVIK_OK);
                CHECK((event == 0) == (function == Function::CreateEventA));
                os::CloseHandle(card.state().IrqEvent);
                CHECK(card.state().IrqIdle == 0);
                FailNext(function, 0);
            }
            if (function != Function::OpenEventA)
                FailNext(function, 8);
            card.state().IrqIdle = std::uint8_t{1};
            CHECK(link(0, NeverCalled) == TREVIK_OK);
            CHECK(card.state().IrqIdle == 0);
            CHECK((driver.linked_event() == 0) == (function == Function::CreateEventA));
            CHECK(driver.requests() == (function == Function::CreateThread ? 1 : 2));
            JoinCallbacks(card);
            CHECK(host::OpenHandleCount() == handles);
            CHECK(HappensSoon([=] { return ThreadCount() <= threads; }));
        }
}

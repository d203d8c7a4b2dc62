// A machine program on the real TrevikA.dll, with the virtual cards of the installed kernel driver behind it: everything
// here goes through the system's own card search, requests, events, threads and timers. Cards: 0 of model A, 5 of AC.
#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>

#include "support/reading.h"

#include <trevik/TrevikAC.h>
#include <trevik/TrevikVirtual.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

namespace
{

using namespace std::chrono_literals;
using namespace trevik;

constexpr std::array<std::uint8_t, 2> cards = {0, 5};

class Started
{
  public:
    Started()
    {
        CHECK(test::Reading(TrevikA_current_position_read, 0, 0) == "result 100 77 ");
        REQUIRE(TrevikA_initial() == TREVIK_OK);
        for (const std::uint8_t card : cards) {
            REQUIRE(TrevikA_init_card(card) == TREVIK_OK);
            for (std::uint8_t axis = 0; axis < 4; ++axis)
                REQUIRE(TrevikA_current_position_set(card, axis, 0) == TREVIK_OK);
        }
    }
    ~Started() { TrevikA_close(); }
    Started(const Started &) = delete;
    Started &operator=(const Started &) = delete;
};

template <class Condition>
bool Within(std::chrono::seconds limit, Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition() && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(1ms);
    return condition();
}

std::int32_t Position(std::uint8_t card, std::uint8_t axis)
{
    return static_cast<std::int32_t>(test::Value(TrevikA_current_position_read, card, axis));
}

std::atomic<std::uint32_t> ends{0};
std::atomic<std::uint32_t> called_for{99};

void TREVIK_CALL OnInterrupt(std::uint32_t card)
{
    called_for = card;
    ends += test::Value(TrevikA_event_flag_read, card, 0) & 1;
}

} // namespace

// The first: each further start adds a tick, and makes the axis slower. When the handwheel rests an axis goes on at
// the speed that it had last, which can be as little as 50 pulses/s.
TEST_CASE("the system's timer moves an axis behind its handwheel")
{
    const Started library;
    CHECK(TrevikA_pulser_map_set(0, 0, 0, 0) == TREVIK_OK);
    CHECK(TrevikA_pulser_motion_enable(0, 0, 1, 3) == TREVIK_OK);
    TrevikVirtual_handwheel_turn(0, 0, 500, 0.3);
    CHECK(Within(20s, [] { return Position(0, 0) == 1500; }));
    TrevikVirtual_handwheel_turn(0, 0, -700, 0.3);
    CHECK(Within(20s, [] { return Position(0, 0) == -600; }));
    CHECK(TrevikA_pulser_motion_enable(0, 0, 0, 1) == TREVIK_OK);
}

TEST_CASE("every end of a move calls back once, through the event that the driver signals")
{
    const Started library;
    CHECK(test::Value(TrevikAC_index_read, 5, 0, 38) == 0x101);
    constexpr std::uint32_t moves = 200;
    for (const std::uint8_t card : cards) {
        CAPTURE(card);
        ends = 0;
        TrevikA_event_factor_set(card, 0, 1);
        TrevikA_IRQ_mask_set(card, 0, 1);
        CHECK(TrevikA_IRQ_enable(card) == TREVIK_OK);
        CHECK(TrevikA_IRQ_process_link(card, OnInterrupt) == TREVIK_OK);
        for (std::uint32_t move = 1; move <= moves; ++move) {
            TrevikA_T_position_move(card, 0, 20, 0, 50000, 50000, 0, 0, 0);
            REQUIRE(Within(2s, [&] { return ends == move; }));
        }
        CHECK((called_for == card && Position(card, 0) == moves * 20));
        CHECK(TrevikA_IRQ_disable(card) == TREVIK_OK);
    }
}

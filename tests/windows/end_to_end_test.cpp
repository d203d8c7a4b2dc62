// A machine program on the real TrevikA.dll, with the virtual cards of the installed kernel driver behind it: everything
// here goes through the system's own card search, requests, events, threads and timers. Cards: 0 of model A, 5 of AC.
#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>

#include <trevik/Trevik.h>
#include <trevik/TrevikAC.h>
#include <trevik/TrevikVirtual.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <thread>

namespace
{

using namespace std::chrono_literals;

constexpr std::array<std::uint8_t, 2> cards = {0, 5};

class Started
{
  public:
    Started()
    {
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
bool Within(std::chrono::milliseconds limit, Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition())
        if (std::chrono::steady_clock::now() > end)
            return false;
        else
            std::this_thread::sleep_for(1ms);
    return true;
}

bool Idle(std::uint8_t card, std::uint8_t axis)
{
    std::uint8_t idle = 0;
    return TrevikA_motion_status_read(card, axis, 0, &idle) == TREVIK_OK && idle == 1;
}

std::int32_t Position(std::uint8_t card, std::uint8_t axis)
{
    std::uint32_t position = 0x7FFFFFFF;
    TrevikA_current_position_read(card, axis, &position);
    return static_cast<std::int32_t>(position);
}

bool Arrives(std::uint8_t card, std::uint8_t axis, std::int32_t position)
{
    return Within(5s, [&] { return Idle(card, axis); }) && Position(card, axis) == position;
}

std::atomic<int> ends{0};
std::atomic<std::uint32_t> called_for{99};

void TREVIK_CALL OnInterrupt(std::uint32_t card)
{
    std::uint32_t events = 0;
    TrevikA_event_flag_read(static_cast<std::uint8_t>(card), 0, &events);
    called_for = card;
    ends = ends + ((events & 1) != 0 ? 1 : 0);
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

TEST_CASE("both cards are found under their numbers, and again after a close")
{
    for (int round = 0; round < 3; ++round) {
        const Started library;
        std::array<std::uint8_t, 2> model = {9, 9};
        std::uint16_t word = 0;
        CHECK(TrevikA_info(0, &model[0], &word) == TREVIK_OK);
        CHECK(TrevikA_info(5, &model[1], &word) == TREVIK_OK);
        CHECK(model == std::array<std::uint8_t, 2>{0, 1});
        CHECK(TrevikA_info(4, &model[0], &word) == TREVIK_ERR_HANDLE);
        std::uint16_t value = 0;
        CHECK(TrevikAC_index_read(5, 0, 38, &value) == TREVIK_OK);
        CHECK(value == 0x101);
        CHECK(TrevikAC_DA_set(0, 0, 1) == TREVIK_ERR_MODEL);
    }
}

TEST_CASE("after a close the cards are gone for the library")
{
    {
        const Started library;
    }
    std::uint32_t position = 0;
    CHECK(TrevikA_current_position_read(0, 0, &position) == TREVIK_ERR_HANDLE);
}

TEST_CASE("moves, lines and arcs end on their targets on both cards")
{
    const Started library;
    const std::array<std::uint8_t, 4> relative = {};
    for (const std::uint8_t card : cards) {
        CAPTURE(card);
        CHECK(TrevikA_S_position_move(card, 2, 3000, 0, 500, 40000, 30, 30, 5, 5, 0) == TREVIK_OK);
        CHECK(Trevik_T_curve_position_move(card, 3, static_cast<std::uint32_t>(-2500), 0, 500, 40000, 0.03, 0.03) ==
              TREVIK_OK);
        CHECK(TrevikA_T_LINE2_move(card, 0, 4000, -1700, relative.data(), 500, 40000, 30, 30, 0) == TREVIK_OK);
        CHECK(Arrives(card, 0, 4000));
        CHECK(Arrives(card, 1, -1700));
        CHECK(TrevikA_ARC_center_move(card, 0, 0, 1000, 1000, 1000, 0, 20000, 1) == TREVIK_OK); // a quarter
        CHECK(Arrives(card, 0, 5000));
        CHECK(Arrives(card, 1, -700));
        CHECK(Arrives(card, 2, 3000));
        CHECK(Arrives(card, 3, -2500));
    }
}

TEST_CASE("an axis runs at the speed of its move, stops, and refuses what its limit forbids")
{
    const Started library;
    double speed = 0;
    CHECK(TrevikA_T_velocity_move(0, 0, 1000, 20000, 20) == TREVIK_OK);
    CHECK(Within(1s, [&] { return TrevikA_velocity_read(0, 0, &speed) == TREVIK_OK && speed > 19900.0; }));
    const std::array<std::uint8_t, 4> first = {1, 0, 0, 0};
    CHECK(TrevikA_stop(0, first.data(), 20) == TREVIK_OK);
    CHECK(Within(1s, [] { return Idle(0, 0); }));
    TrevikVirtual_input_set(0, 1, TREVIK_VIRTUAL_PLUS_LIMIT, 1);
    CHECK(TrevikA_T_position_move(0, 1, 1000, 0, 500, 20000, 20, 20, 0) == TREVIK_OK);
    CHECK(Arrives(0, 1, 0));
    TrevikVirtual_input_set(0, 1, TREVIK_VIRTUAL_PLUS_LIMIT, 0);
}

TEST_CASE("every end of a move calls back once, through the event that the driver signals")
{
    const Started library;
    constexpr int moves = 200;
    for (const std::uint8_t card : cards) {
        CAPTURE(card);
        ends = 0;
        TrevikA_event_factor_set(card, 0, 1);
        TrevikA_IRQ_mask_set(card, 0, 1);
        CHECK(TrevikA_IRQ_enable(card) == TREVIK_OK);
        CHECK(TrevikA_IRQ_process_link(card, OnInterrupt) == TREVIK_OK);
        int lost = 0;
        for (int move = 1; move <= moves && lost == 0; ++move) {
            TrevikA_T_position_move(card, 0, 20, 0, 50000, 50000, 0, 0, 0);
            lost += Within(2s, [&] { return ends == move; }) ? 0 : 1;
        }
        CHECK(lost == 0);
        CHECK(called_for == card);
        CHECK(Position(card, 0) == moves * 20);
        CHECK(TrevikA_IRQ_disable(card) == TREVIK_OK);
    }
}

TEST_CASE("a configuration file brings a card's settings back")
{
    const Started library;
    const char *file = "end to end.cfg";
    CHECK(TrevikA_EL_mode_set(0, 3, 1) == TREVIK_OK);
    CHECK(TrevikA_config_file_set(0, file) == TREVIK_OK);
    CHECK(TrevikA_EL_mode_set(0, 3, 0) == TREVIK_OK);
    CHECK(TrevikA_config_file_read(0, file) == TREVIK_OK);
    std::uint8_t mode = 9;
    CHECK(TrevikA_EL_mode_read(0, 3, &mode) == TREVIK_OK);
    CHECK(mode == 1);
    std::remove(file);
}

// The last: the process ends with a card open, an axis running, a handwheel followed and a callback linked. Whoever
// runs this program sees whether it ends at once and well.
TEST_CASE("a program may end in the middle of everything")
{
    REQUIRE(TrevikA_initial() == TREVIK_OK);
    CHECK(TrevikA_T_velocity_move(0, 1, 1000, 20000, 20) == TREVIK_OK);
    CHECK(TrevikA_pulser_map_set(0, 0, 0, 0) == TREVIK_OK);
    CHECK(TrevikA_pulser_motion_enable(0, 0, 1, 3) == TREVIK_OK);
    TrevikVirtual_handwheel_turn(0, 0, 5000, 5);
    CHECK(TrevikA_IRQ_enable(5) == TREVIK_OK);
    CHECK(TrevikA_IRQ_process_link(5, OnInterrupt) == TREVIK_OK);
}

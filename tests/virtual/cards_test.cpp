// The cards of the machine, their requests, and the machine around them.
#include "support/virtual_machine.h"

#include "virtual/request_log.h"

#include <trevik/TrevikAC.h>

#include <array>
#include <string>
#include <thread>

using namespace trevik;
using namespace trevik::test;

TEST_CASE("lists of cards")
{
    for (const char *list : {"", " ", "0:A", " 5 : AC , 0:A", "15:A"})
        CHECK_MESSAGE(virtual_card::ParseCards(list), list);
    for (const char *list : {"16:A", "0", "0:B", "0:A,", ",", "0:A,0:AC", "-1:A", "0x1:A", "1:a"})
        CHECK_FALSE_MESSAGE(virtual_card::ParseCards(list), list);
    CHECK(TrevikVirtual_cards_set("0:Z") == TREVIK_ERR_PARAM);
    CHECK(TrevikVirtual_cards_set(nullptr) == TREVIK_ERR_PARAM);
}

TEST_CASE("cards are found by number and model, and are gone when others take their place")
{
    VirtualMachine machine("3:AC,12:A");
    CHECK(Reading(TrevikA_info, 3).starts_with("1 "));
    CHECK(Reading(TrevikA_info, 12).starts_with("0 "));
    CHECK(TrevikAC_index_write(3, 2, 7, 0xBEEF) == TREVIK_OK);
    CHECK(Value(TrevikAC_index_read, 3, 2, 7) == 0xBEEF);

    CHECK(TrevikVirtual_cards_set("3:AC") == TREVIK_OK);
    std::uint32_t position = 0;
    CHECK(TrevikA_current_position_read(3, 0, &position) == 1167);
    CHECK(Quietly(TrevikA_initial) == TREVIK_OK);
    CHECK(Value(TrevikAC_index_read, 3, 2, 7) == 0);
    CHECK(TrevikVirtual_cards_set("") == TREVIK_OK);
    CHECK(Quietly(TrevikA_initial) == TREVIK_ERR_OPEN);
}

TEST_CASE_FIXTURE(VirtualMachine, "the machine around a card")
{
    CHECK(TrevikVirtual_position_set(0, 1, 500) == TREVIK_OK);
    CHECK(TrevikVirtual_counter_set(0, 1, 1, -20) == TREVIK_OK);
    CHECK(at(1) == -20);
    CHECK(TrevikA_T_position_move(0, 1, 1000, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    TrevikHost_advance(0.5);
    CHECK(TrevikVirtual_position_set(0, 1, 0) == TREVIK_ERR_BUSY);
    CHECK(TrevikVirtual_counter_set(0, 1, 1, 0) == TREVIK_OK); // the counter may be set while it counts
    run_out();
    CHECK(stands(1) == 1500);
    CHECK(at(1) == doctest::Approx(500).epsilon(0.01));
    for (std::uint8_t counter = 2; counter <= 4; ++counter) {
        CHECK(TrevikVirtual_counter_set(0, 2, counter, -counter) == TREVIK_OK);
        CHECK(Value(TrevikVirtual_counter_read, 0, 2, counter) == -counter);
    }

    // Each input moves its own bit of the status words.
    struct Row {
        std::uint8_t input;
        bool extended;
        unsigned bit;
    };
    const Row rows[] = {{TREVIK_VIRTUAL_PLUS_LIMIT, false, 12},    {TREVIK_VIRTUAL_MINUS_LIMIT, false, 13},
                        {TREVIK_VIRTUAL_HOME, false, 14},          {TREVIK_VIRTUAL_ALARM, false, 11},
                        {TREVIK_VIRTUAL_SLOW_DOWN, true, 15},      {TREVIK_VIRTUAL_INDEX, true, 10},
                        {TREVIK_VIRTUAL_IN_POSITION, true, 16},    {TREVIK_VIRTUAL_LATCH, true, 14},
                        {TREVIK_VIRTUAL_POSITION_CHANGE, true, 8}, {TREVIK_VIRTUAL_PORT3, false, 3},
                        {TREVIK_VIRTUAL_PORT4, false, 4},          {TREVIK_VIRTUAL_PORT5, false, 5},
                        {TREVIK_VIRTUAL_PORT6, false, 6},          {TREVIK_VIRTUAL_POINT4, false, 2},
                        {TREVIK_VIRTUAL_POINT9, true, 7},          {TREVIK_VIRTUAL_POINT15, true, 5},
                        {TREVIK_VIRTUAL_POINT16, true, 6}};
    const auto words = [] {
        const auto sub_status = OnChip([](auto &chip, auto now_ns) { return chip.sub_status(3, now_ns); });
        return std::array<std::uint32_t, 2>{sub_status, ReadStatus(3, StatusRegister::EXT_STATUS)};
    };
    const auto quiet = words();
    for (const Row &row : rows) {
        CAPTURE(row.input);
        CHECK(TrevikVirtual_input_set(0, 3, row.input, 1) == TREVIK_OK);
        CHECK(Value(TrevikVirtual_input_read, 0, 3, row.input) == 1);
        CHECK((words()[row.extended] ^ quiet[row.extended]) == 1u << row.bit);
        CHECK(words()[!row.extended] == quiet[!row.extended]);
        TrevikVirtual_input_set(0, 3, row.input, 0);
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "arguments out of range, and requests refused on purpose")
{
    std::int32_t value = 0;
    CHECK(TrevikVirtual_position_read(1, 0, &value) == TREVIK_ERR_HANDLE);
    CHECK(TrevikVirtual_position_read(200, 9, &value) == TREVIK_ERR_HANDLE);
    CHECK(TrevikVirtual_position_read(0, 4, &value) == TREVIK_ERR_AXIS);
    CHECK(TrevikVirtual_position_read(0, 0, nullptr) == TREVIK_ERR_PARAM);
    CHECK(TrevikVirtual_counter_read(0, 0, 0, &value) == TREVIK_ERR_PARAM);
    CHECK(TrevikVirtual_counter_set(0, 0, 5, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikVirtual_input_set(0, 0, TREVIK_VIRTUAL_INPUT_COUNT, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikVirtual_input_set(0, 0, 0, 2) == TREVIK_ERR_PARAM);
    CHECK(TrevikVirtual_refuse(0, 0, 1, 0) == TREVIK_ERR_PARAM);

    CHECK(TrevikVirtual_refuse(0, 1, 2, 31) == TREVIK_OK);
    for (const char *read : {"0 ", "result 31 77 ", "result 31 77 ", "0 "})
        CHECK(Reading(TrevikA_current_position_read, 0, 0) == read);

    // Requests that no library sends: refused, and nothing happens.
    const auto card = virtual_card::TheBus().hold(0);
    std::array<std::uint32_t, 8> in{};
    std::array<std::uint32_t, 8> out{};
    std::uint32_t returned = 9;
    CHECK(card->control({0x222000 + 4, in.data(), 32, out.data(), 32}, 0, returned) == 1);
    CHECK(card->control({0x22209C, in.data(), 31, out.data(), 16}, 0, returned) == 87);
    CHECK(card->control({0x22205C, in.data(), 32, out.data(), 17}, 0, returned) == 87);
    in[0] = 4;
    CHECK(card->control({0x22209C, in.data(), 32, out.data(), 16}, 0, returned) == 87);
    CHECK(returned == 0);
}

TEST_CASE("requests in words, of what has no name")
{
    RequestBuffer<32> in;
    in.put(0, 2u).put(4, 0xBBu).put(8, 7u);
    CHECK(DescribeRequest({0x22209C, in.data(), 32, nullptr, 0, 5}) ==
          "write  axis 2  register 0xBB = 7  refused: 5");
    in.put(8, 0u).put(20, std::uint16_t{0x0212});
    CHECK(DescribeRequest({0x222088, in.data(), 32, nullptr, 0, 0}) == "command axes 0x2  0x12");
}

TEST_SUITE("concurrent")
{
    TEST_CASE("threads drive a card each, and look at each other's, while time passes")
    {
        VirtualMachine machine("0:A,1:AC,2:A");
        TrevikHost_clock_manual(0);
        std::vector<std::thread> threads;
        for (std::uint8_t card = 0; card < 3; ++card) {
            threads.emplace_back([card] {
                for (int i = 0; i < 300; ++i) {
                    TrevikA_T_position_move(card, static_cast<std::uint8_t>(i & 3), 200, 0, 100000, 100000, 0, 0,
                                            0);
                    std::int32_t pulses = 0;
                    TrevikVirtual_position_read(static_cast<std::uint8_t>((card + 1) % 3), 0, &pulses);
                    TrevikVirtual_input_set(0, 0, TREVIK_VIRTUAL_HOME, static_cast<std::uint8_t>(i & 1));
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        TrevikHost_clock_manual(1);
        TrevikHost_advance(1);
        for (std::uint8_t card = 0; card < 3; ++card) {
            for (std::uint8_t axis = 0; axis < 4; ++axis) {
                CHECK(VirtualMachine::idle(axis, card));
                CHECK(VirtualMachine::at(axis, card) % 200 == 0);
            }
        }
    }
}

// The cards of the machine, their requests, and the machine around them.
#include "support/virtual_machine.h"

#include <trevik/TrevikAC.h>

#include <iterator>

using namespace trevik;
using namespace trevik::test;

TEST_CASE("lists of cards")
{
    for (const char *list : {"", " ", "0:A", " 5 : AC , 0:A", "15:A"})
        CHECK_MESSAGE(virtual_card::ParseCards(list), list);
    for (const char *list : {"16:A", "0", "0:B", "0:A,", ",", "0:A,0:AC", "-1:A", "0x1:A", "1:a"})
        CHECK_FALSE_MESSAGE(virtual_card::ParseCards(list), list);
    CHECK(TrevikVirtual_cards_set("0:Z") == TREVIK_ERR_PARAM);
}

TEST_CASE("cards are found by number and model, and are gone when others take their place")
{
    const VirtualMachine machine("3:AC,12:A");
    CHECK(Reading(TrevikA_info, 3).starts_with("1 "));
    CHECK(Reading(TrevikA_info, 12).starts_with("0 "));
    CHECK(TrevikAC_index_write(3, 2, 7, 0xBEEF) == TREVIK_OK);
    CHECK(TrevikVirtual_cards_set("3:AC") == TREVIK_OK);
    CHECK(Reading(TrevikA_current_position_read, 3, 0) == "result 1167 77 ");
    CHECK(Quietly(TrevikA_initial) == TREVIK_OK);
    CHECK(Value(TrevikAC_index_read, 3, 2, 7) == 0);
    CHECK(TrevikVirtual_cards_set("") == TREVIK_OK);
    CHECK(Quietly(TrevikA_initial) == TREVIK_ERR_OPEN);
}

TEST_CASE_FIXTURE(VirtualMachine, "an axis is moved by hand while it stands; its counters are set at any time")
{
    CHECK(TrevikVirtual_position_set(0, 1, 500) == TREVIK_OK);
    CHECK(TrevikVirtual_counter_set(0, 1, 1, -20) == TREVIK_OK);
    CHECK(at(1) == -20);
    CHECK(TrevikA_T_position_move(0, 1, 1000, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    TrevikHost_advance(0.5);
    CHECK(TrevikVirtual_position_set(0, 1, 0) == TREVIK_ERR_BUSY);
    CHECK(TrevikVirtual_counter_set(0, 1, 1, 0) == TREVIK_OK);
    run_out();
    CHECK((stands(1) == 1500 && at(1) == 500));
}

TEST_CASE_FIXTURE(VirtualMachine, "a switch that is taken away stops nothing any more")
{
    for (const bool cleared : {false, true}) {
        TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_PLUS_LIMIT, 50, 2000);
        CHECK((!cleared || TrevikVirtual_switch_clear(0, 0, TREVIK_VIRTUAL_PLUS_LIMIT) == TREVIK_OK));
        TrevikA_T_position_move(0, 0, 100, 1, 1000, 1000, 0, 0, 0);
        run_out();
        CHECK(stands(0) == (cleared ? 100 : 50));
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "each input moves its own bit of the status words")
{
    // In the order of their numbers: of the sub status, and of EXT_STATUS from 32 on.
    const unsigned bits[] = {12, 13, 14, 32 + 10, 32 + 15, 11,     32 + 16, 32 + 14, 32 + 8,
                             3,  4,  5,  6,       2,       32 + 7, 32 + 5,  32 + 6};
    static_assert(std::size(bits) == TREVIK_VIRTUAL_INPUT_COUNT);
    const auto words = [] {
        const std::uint64_t extended = ReadStatus(3, StatusRegister::EXT_STATUS);
        return extended << 32 | OnChip([](auto &chip, auto now_ns) { return chip.sub_status(3, now_ns); });
    };
    const std::uint64_t quiet = words();
    for (std::uint8_t input = 0; input < TREVIK_VIRTUAL_INPUT_COUNT; ++input) {
        CAPTURE(input);
        CHECK(TrevikVirtual_input_set(0, 3, input, 1) == TREVIK_OK);
        CHECK(Value(TrevikVirtual_input_read, 0, 3, input) == 1);
        CHECK((words() ^ quiet) == std::uint64_t{1} << bits[input]);
        TrevikVirtual_input_set(0, 3, input, 0);
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "arguments out of range, and requests refused on purpose")
{
    std::int32_t value = 0;
    CHECK(TrevikVirtual_position_read(200, 9, &value) == TREVIK_ERR_HANDLE);
    CHECK(TrevikVirtual_position_read(0, 4, &value) == TREVIK_ERR_AXIS);
    for (const std::uint32_t result :
         {TrevikVirtual_counter_read(0, 0, 0, &value), TrevikVirtual_counter_set(0, 0, 5, 0),
          TrevikVirtual_input_set(0, 0, TREVIK_VIRTUAL_INPUT_COUNT, 0), TrevikVirtual_input_set(0, 0, 0, 2),
          TrevikVirtual_output_read(0, 1, TREVIK_VIRTUAL_OUTPUT_COUNT, nullptr),
          TrevikVirtual_switch_set(0, 0, 0, 100, 99), TrevikVirtual_handwheel_turn(0, 0, 500, -1)})
        CHECK(result == TREVIK_ERR_PARAM);

    CHECK(TrevikVirtual_refuse(0, 1, 2, 31) == TREVIK_OK);
    for (const char *read : {"0 ", "result 31 77 ", "result 31 77 ", "0 "})
        CHECK(Reading(TrevikA_current_position_read, 0, 0) == read);
}

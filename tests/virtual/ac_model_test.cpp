// What the AC model adds to an axis: encoder, pulse swap, analogue output, position loop and its detector.
#include "support/virtual_machine.h"

#include <trevik/TrevikAC.h>

#include <cstdlib>

using namespace trevik::test;

namespace
{

struct AcMachine : VirtualMachine {
    AcMachine() : VirtualMachine("0:AC") {}
};

std::int32_t Feedback()
{
    return static_cast<std::int32_t>(Value(TrevikA_FB_counter_read, 0, 0));
}
std::int32_t LoopError()
{
    return static_cast<std::int32_t>(Value(TrevikAC_PID_error_counter_read, 0, 0));
}
std::int32_t Output()
{
    return Value(TrevikVirtual_analog_output_read, 0, 0);
}
bool Tripped()
{
    return Reading(TrevikAC_PID_error_detector_read, 0, 0).starts_with("1");
}

void Move(std::int32_t pulses, std::uint32_t pps = 20000, std::uint32_t ramp_ms = 0)
{
    CHECK(TrevikA_T_position_move(0, 0, Unsigned(pulses), 0, ramp_ms != 0 ? 500 : pps, pps, ramp_ms, ramp_ms, 0) ==
          TREVIK_OK);
}

void StartLoop(std::uint16_t gain, std::uint16_t time)
{
    CHECK(TrevikAC_PID_set(0, 0, gain, time) == TREVIK_OK);
    CHECK(TrevikAC_PID_start(0, 0) == TREVIK_OK);
}

} // namespace

TEST_CASE_FIXTURE(AcMachine, "the encoder counts as it is set, on from where it was")
{
    std::int32_t expected = 0;
    for (const int polarity : {0, 1}) {
        for (const int setting : {0, 1, 2}) {
            INFO("polarity " << polarity << ", setting " << setting);
            CHECK(TrevikAC_encoder_mode_set(0, 0, static_cast<std::uint16_t>(setting), 4, 2) == TREVIK_OK);
            CHECK(TrevikAC_encoder_polarity_set(0, 0, static_cast<std::uint16_t>(polarity)) == TREVIK_OK);
            Move(1001);
            run_out();
            expected += (polarity != 0 ? -1001 : 1001) * (1 << setting);
            CHECK(Feedback() == expected);
        }
    }
    CHECK(TrevikVirtual_encoder_status_set(0, 0, 0xBEEF) == TREVIK_OK);
    CHECK(TrevikAC_index_write(0, 0, 8, 1) == TREVIK_OK);
    CHECK(Value(TrevikAC_encoder_status_read, 0, 0) == 0xBEEF);
}

TEST_CASE_FIXTURE(AcMachine, "with its pulses swapped the machine goes the other way, from where it stands")
{
    Move(3000);
    TrevikHost_advance(0.05);
    CHECK(TrevikAC_pulse_swap_set(0, 0, 1) == TREVIK_OK);
    CHECK((stands(0) == 1000 && at(0) == 1000 && Feedback() == 1000));
    run_out();
    CHECK((stands(0) == -1000 && at(0) == 3000 && Feedback() == -1000));
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_HOME, -3100, -3000);
    TrevikVirtual_index_set(0, 0, -600, 2400);
    Move(2000);
    run_out();
    CHECK((stands(0) == -3000 && Value(TrevikVirtual_input_read, 0, 0, TREVIK_VIRTUAL_HOME) == 1));
    CHECK(Value(TrevikVirtual_input_read, 0, 0, TREVIK_VIRTUAL_INDEX) == 1);
    CHECK(TrevikVirtual_position_set(0, 0, 77) == TREVIK_OK);
    CHECK(TrevikAC_pulse_swap_set(0, 0, 0) == TREVIK_OK);
    CHECK(stands(0) == 77);
}

TEST_CASE("an A card has no index registers but the model word, which is read-only everywhere")
{
    const VirtualMachine machine("0:A,1:AC");
    for (const std::uint8_t card : {std::uint8_t{0}, std::uint8_t{1}}) {
        CHECK(TrevikAC_index_write(card, 0, 38, 0x55) == TREVIK_OK);
        CHECK(Value(TrevikAC_index_read, card, 0, 38) == (card == 0 ? 0x001 : 0x101));
        CHECK(TrevikAC_index_write(card, 2, 12, 3) == TREVIK_OK);
        CHECK(Value(TrevikAC_index_read, card, 2, 12) == (card == 0 ? 0 : 3));
    }
    std::int32_t value = 0;
    CHECK(TrevikVirtual_analog_output_read(0, 0, &value) == TREVIK_ERR_MODEL);
}

TEST_CASE_FIXTURE(AcMachine, "a loop's feedback trails by its time constant, which error counter and output show")
{
    CHECK(TrevikAC_DA_set(0, 0, -7) == TREVIK_OK);
    CHECK(Output() == -7);
    StartLoop(10, 1000); // 1000 ms / 10
    for (const std::int32_t way : {1, -1}) {
        Move(way * 20000, 20000, 200);
        while (!idle(0)) {
            const double trail = speed(0) * (4194304.0 / 4194 / 10 / 1000);
            const std::int32_t error = LoopError();
            REQUIRE(std::abs(error - trail) <= 0.5 + 1e-6);
            REQUIRE(Feedback() == at(0) - error);
            REQUIRE(Output() == 10 * error);
            const std::string latched = std::to_string(static_cast<std::uint32_t>(Feedback())) + " 0 0 0 ";
            REQUIRE(Reading(TrevikAC_counter_simultaneous_read, 0) == latched);
            TrevikHost_advance(0.0037);
        }
        CHECK((LoopError() == 0 && Feedback() == at(0) && Output() == 0));
    }
    StartLoop(1000, 4000);
    Move(1000);
    CHECK(Output() == 65535); // as much as there is
    CHECK(TrevikAC_PID_stop(0, 0) == TREVIK_OK);
    CHECK((Output() == -7 && LoopError() == 0));
}

TEST_CASE_FIXTURE(AcMachine, "the detector trips when the error gets to 32767 pulses, and keeps the loop stopped")
{
    CHECK(TrevikAC_PID_error_detector_set(0, 0, 1) == TREVIK_OK);
    StartLoop(1, 4095); // K is 1024, the time constant 4.096 s
    Move(-20000, 20000, 100);
    TrevikHost_advance(next_event() - 2e-9);
    CHECK(speed(0) == doctest::Approx(-32767 / 4.096).epsilon(1e-6));
    CHECK((!Tripped() && LoopError() == -32767));
    TrevikHost_advance(3e-9);
    CHECK((Tripped() && LoopError() == 0));
    CHECK(TrevikAC_PID_start(0, 0) == TREVIK_OK); // not before it is cleared
    CHECK(LoopError() == 0);
    run_out();
    CHECK(Reading(TrevikA_IRQ_status_read, 0, 0) == "2 0 8 ");
}

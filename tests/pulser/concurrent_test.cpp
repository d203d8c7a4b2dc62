// The tick beside an application that calls, for the thread sanitizer.
#include "support/virtual_machine.h"

#include "api/card_manager.h"

#include <atomic>
#include <thread>

using namespace trevik;
using trevik::test::VirtualMachine;

TEST_SUITE("concurrent")
{
    TEST_CASE("the tick runs while the application maps, moves, stops, and moves other cards")
    {
        const VirtualMachine machine("0:A,3:A");
        std::atomic<bool> done{false};
        std::thread ticks([&done] {
            while (!done)
                manager.PulserFollowTick();
        });
        std::thread other_card([] {
            for (int i = 0; i < 300; ++i) {
                TrevikA_T_position_move(3, 0, 100, 0, 500, 5000, 10, 10, 0);
                TrevikA_stop_emg(3);
            }
        });
        for (std::uint8_t i = 0; i < 200; ++i) {
            const auto axis = static_cast<std::uint8_t>(i % 4);
            TrevikA_pulser_map_set(0, axis, static_cast<std::uint8_t>((i + 1) % 4), i % 2);
            TrevikA_pulser_motion_enable(0, axis, 1, static_cast<std::uint16_t>(i + 1));
            TrevikVirtual_counter_set(0, axis, 4, i * 100);
            TrevikA_T_position_move(0, axis, 100, 0, 500, 5000, 10, 10, 0);
            TrevikA_pulser_counter_set(0, axis, i);
            TrevikA_stop(0, test::all_axes, 10);
            TrevikA_pulser_motion_enable(0, axis, i % 2, 2);
        }
        other_card.join();
        for (std::uint8_t axis = 0; axis < 4; ++axis)
            TrevikA_pulser_motion_enable(0, axis, 0, 1);
        done = true;
        ticks.join();
        TrevikA_stop_emg(0);
        CHECK(VirtualMachine::idle(0));
        CHECK(VirtualMachine::idle(0, 3));
    }
}

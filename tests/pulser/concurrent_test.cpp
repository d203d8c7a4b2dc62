// The tick beside an application that calls, for the thread sanitizer.
#include "support/virtual_machine.h"

#include "api/card_manager.h"
#include "platform/host/handles.h"
#include "platform/os.h"
#include "status/interrupts.h"

#include <trevik/Trevik.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>
#include <vector>

using namespace trevik;
using trevik::test::VirtualMachine;

namespace
{

constexpr const char *sixteen_cards = "0:A,1:A,2:A,3:A,4:A,5:A,6:A,7:A,8:A,9:A,10:A,11:A,12:A,13:A,14:A,15:A";

std::atomic<int> callbacks{0};

void TREVIK_CALL ReadsPosition(std::uint32_t card)
{
    ++callbacks;
    std::uint32_t position = 0;
    TrevikA_current_position_read(static_cast<std::uint8_t>(card), 0, &position);
}

} // namespace

TEST_SUITE("concurrent")
{
    TEST_CASE(
        "64 axes follow, and threads drive, move and link four cards each; the library is closed and started anew")
    {
        constexpr std::uint8_t ratio = 10;
        constexpr std::uint8_t cards = 16;
        constexpr std::uint8_t axes = 4 * cards;
        std::array<std::int32_t, axes> stood{};
        const auto follow = [&stood](std::uint8_t card, std::int32_t counts) {
            for (std::uint8_t axis = 0; axis < 4; ++axis) {
                TrevikVirtual_counter_set(card, axis, 4, counts);
                CHECK(TrevikA_pulser_map_set(card, axis, axis, 0) == TREVIK_OK);
                CHECK(TrevikA_pulser_motion_enable(card, axis, 1, ratio) == TREVIK_OK);
                stood[4u * card + axis] = VirtualMachine::at(axis, card);
            }
        };
        const auto drive = [&](std::uint8_t first) {
            for (std::int32_t turn = 0; turn < 20; ++turn)
                for (std::uint8_t card = first; card < first + 4; ++card) {
                    if (turn % 10 == 0)
                        follow(card, turn);
                    if (turn % 4 == 0)
                        CHECK(TrevikA_IRQ_process_link(card, ReadsPosition) == TREVIK_OK);
                    for (std::uint8_t axis = 0; axis < 4; ++axis)
                        TrevikVirtual_counter_set(card, axis, 4, 7 * turn);
                    TrevikA_CSTP_trigger(card); // interrupts when an axis moves
                    // What the tick finds changed: an axis that moves, stops, has its count set.
                    TrevikA_T_position_move(card, 1, 100, 0, 500, 5000, 10, 10, 0);
                    TrevikA_pulser_counter_set(card, 2, 7u);
                    TrevikA_stop(card, test::first_axis, 10);
                    TrevikA_pulser_motion_enable(card, 3, static_cast<std::uint8_t>(turn % 2), 2);
                    if (turn % 4 == 3)
                        TrevikA_IRQ_disable(card);
                }
        };
        for (const int manual : {0, 1}) {
            const VirtualMachine machine(sixteen_cards, true);
            TrevikHost_clock_manual(manual);
            std::atomic<bool> done{false};
            std::thread time([&] {
                while (!done)
                    manual != 0 ? TrevikHost_advance(0.005) : manager.PulserFollowTick();
            });
            for (int round = 0; round < 10; ++round) {
                CHECK(TrevikA_close() == TREVIK_OK);
                CHECK(test::Quietly(TrevikA_initial) == TREVIK_OK);
                for (std::uint8_t card = 0; card < cards; ++card) {
                    std::uint32_t event = 0;
                    CHECK(Trevik_enable_IRQ(card, &event) == TREVIK_OK);
                    os::CloseHandle(host::HandleOf(event)); // the library never does
                }
                std::vector<std::thread> threads;
                for (std::uint8_t first = 0; first < cards; first = static_cast<std::uint8_t>(first + 4))
                    threads.emplace_back(drive, first);
                for (std::thread &thread : threads)
                    thread.join();
            }
            done = true;
            time.join();
            CHECK(callbacks.exchange(0) > 0);
            for (std::uint8_t number = 0; number < cards; ++number) {
                Card card;
                CHECK(manager.numbered(number, card) == Result::Ok);
                JoinCallbacks(card);
            }
            // And they still follow, pulse by pulse.
            TrevikHost_clock_manual(1);
            manager.StopPulserTicks();
            for (std::uint8_t card = 0; card < cards; ++card) {
                TrevikA_stop_emg(card);
                follow(card, 0);
            }
            for (int tick = 0; tick < 100; ++tick) {
                for (std::uint8_t axis = 0; axis < axes; ++axis)
                    TrevikVirtual_counter_set(axis / 4, axis % 4, 4, std::min(tick, 50));
                manager.PulserFollowTick();
                TrevikHost_advance(0.020);
            }
            for (std::uint8_t axis = 0; axis < axes; ++axis)
                CHECK(VirtualMachine::at(axis % 4, axis / 4) - stood[axis] == 50 * ratio);
        }
    }
}

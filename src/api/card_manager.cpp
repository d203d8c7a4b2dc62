#include "api/card_manager.h"

#include "driver/enumeration.h"
#include "driver/patience.h"
#include "driver/requests.h"
#include "driver/simulation.h"
#include "pulser/follow.h"
#include "status/interrupts.h"

#include <algorithm>
#include <atomic>
#include <cstdio>

namespace trevik
{

constinit CardManager manager;

namespace
{

std::atomic<unsigned> ticks_running{0};

void TREVIK_CALL OnTick(os::UINT, os::UINT, os::DWORD_PTR, os::DWORD_PTR, os::DWORD_PTR)
{
    ++ticks_running;
    manager.PulserFollowTick();
    --ticks_running;
}

} // namespace

CardManager::~CardManager()
{
    StopPulserTicks();
    Close();
    for (std::uint8_t number = 0; number < card_count; ++number)
        JoinCallbacks({cards_[number], number});
}

Result CardManager::Initial()
{
    for (CardState &card : cards_) {
        card.IrqIdle = std::uint8_t{1};
        card.Record.CardNumber = std::uint8_t{255};
        card.Record.Model = CardModel::None;
    }
    if (EnumerateCards(cards_) == os::InvalidHandle()) {
        std::printf("(PCI) Can't open TrevikA device");
        return Result::Open;
    }
    for (CardState &card : cards_) {
        for (std::uint8_t axis = 0; axis < axis_count; ++axis)
            card.Axes[axis].start_up(axis);
        card.IrqIdle = std::uint8_t{1};
    }
    StartPulserTick();
    const bool usable = std::any_of(cards_.begin(), cards_.end(), [](const CardState &card) {
        const CardModel model = card.Record.Model;
        return model == CardModel::A || model == CardModel::AC;
    });
    return usable ? Result::Ok : Result::Model;
}

// It runs until the library is unloaded; every further start-up adds one.
void CardManager::StartPulserTick()
{
    constexpr os::UINT period_ms = 20;
    constexpr os::UINT resolution_ms = 1;
    if (tick_count_ == most_ticks)
        return;
    const os::UINT id = os::timeSetEvent(period_ms, resolution_ms, OnTick, 0, os::TimePeriodic);
    if (id != 0)
        tick_ids_[tick_count_++] = id;
}

void CardManager::StopPulserTicks()
{
    while (tick_count_ > 0)
        os::timeKillEvent(tick_ids_[--tick_count_]);
    // Windows lets a tick that has begun go on.
    HappensSoon([] { return ticks_running == 0; });
}

void CardManager::PulserFollowTick()
{
    if (SimulationOn())
        return;
    for (std::uint8_t number = 0; number < card_count; ++number) {
        const Card card(cards_[number], number);
        if (!card.state().DriverHandle.open())
            continue;
        for (std::uint8_t axis = 0; axis < axis_count; ++axis)
            if (card.state().Axes[axis].PulserEnabled == 1)
                FollowPulser(card.axis(axis));
    }
}

void CardManager::Close()
{
    for (std::uint8_t number = 0; number < card_count; ++number) {
        CardState &card = cards_[number];
        if (!card.DriverHandle.open())
            continue;
        EndCallbacks({card, number});
        ReleaseRequest(card.DriverHandle.get());
        CloseCard(card);
    }
}

} // namespace trevik

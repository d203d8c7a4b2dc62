#include "api/card_manager.h"

#include "driver/enumeration.h"
#include "driver/requests.h"
#include "driver/simulation.h"
#include "pulser/follow.h"

#include <algorithm>
#include <cstdio>

namespace trevik
{

constinit CardManager manager;

namespace
{

void TREVIK_CALL OnTick(os::UINT, os::UINT, os::DWORD_PTR, os::DWORD_PTR, os::DWORD_PTR)
{
    manager.PulserFollowTick();
}

} // namespace

CardManager::~CardManager()
{
    StopPulserTicks();
    Close();
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
}

void CardManager::PulserFollowTick()
{
    if (SimulationOn())
        return;
    for (CardState &card : cards_) {
        if (!card.DriverHandle.open())
            continue;
        for (std::uint8_t axis = 0; axis < axis_count; ++axis)
            if (card.Axes[axis].PulserEnabled == 1)
                FollowPulser(Axis(card, axis));
    }
}

void CardManager::Close()
{
    for (CardState &card : cards_) {
        if (!card.DriverHandle.open())
            continue;
        ReleaseRequest(card.DriverHandle.get());
        CloseCard(card);
    }
}

} // namespace trevik

// The one owner of all library state: the card table. It makes the checks that every operation shares and hands out
// cards and axes that have passed them.
#pragma once

#include "driver/card.h"
#include "driver/card_state.h"
#include "driver/result.h"
#include "platform/os.h"

#include <array>
#include <cstdint>

namespace trevik
{

class CardManager
{
  public:
    constexpr CardManager() = default;
    ~CardManager(); // releases every card, as Close does
    CardManager(const CardManager &) = delete;
    CardManager &operator=(const CardManager &) = delete;

    // Finds the cards and writes the start-up values: Ok, Open or Model.
    Result Initial();

    // Releases and closes every card. Records and shadows keep their values.
    void Close();

    // The periodic task: every axis that follows a handwheel takes its next step.
    void PulserFollowTick();

    // Ends the periodic task.
    void StopPulserTicks();

    // True for a found card whose model word nobody knows; false for numbers above 15.
    bool unsupported(std::uint8_t card) const
    {
        return card < card_count && cards_[card].Record.Model == CardModel::Unsupported;
    }

    // For operations that look at the handle later or not at all.
    Result numbered(std::uint8_t number, Card &card)
    {
        if (number >= card_count)
            return Result::Card;
        card = Card(cards_[number], number);
        return Result::Ok;
    }

    // The checks that come before every other operation, in their order.
    Result checked(std::uint8_t number, Card &card)
    {
        if (number >= card_count)
            return Result::Card;
        card = Card(cards_[number], number);
        return cards_[number].DriverHandle.open() ? Result::Ok : Result::Handle;
    }
    Result checked(std::uint8_t number, std::uint8_t axis_number, Axis &axis)
    {
        if (number >= card_count)
            return Result::Card;
        if (axis_number >= axis_count)
            return Result::Axis;
        axis = Axis(Card(cards_[number], number), axis_number);
        return cards_[number].DriverHandle.open() ? Result::Ok : Result::Handle;
    }

  private:
    void StartPulserTick();

    // More than any program starts; each start-up that finds cards adds one.
    static constexpr unsigned most_ticks = 256;

    CardTable cards_;
    std::array<os::UINT, most_ticks> tick_ids_{};
    unsigned tick_count_ = 0;
};

// Lives from the loading of the library to its unloading.
extern constinit CardManager manager;

} // namespace trevik

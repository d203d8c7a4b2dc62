#include "api/card_manager.h"

#include "driver/enumeration.h"
#include "driver/requests.h"

#include <algorithm>
#include <cstdio>

namespace trevik
{

constinit CardManager manager;

CardManager::~CardManager()
{
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
            card.Axes[axis] = AxisShadow::StartUp(axis);
        card.IrqIdle = std::uint8_t{1};
    }
    const bool usable = std::any_of(cards_.begin(), cards_.end(), [](const CardState &card) {
        const CardModel model = card.Record.Model;
        return model == CardModel::A || model == CardModel::AC;
    });
    return usable ? Result::Ok : Result::Model;
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

// The virtual cards of the driver, for what the functions of TrevikVirtual.h do with them. It takes the place of the
// header of the same name beside the cards, which stands on the host layer.
#pragma once

#include "virtual/card_list.h"

#include <cstdint>

namespace trevik::virtual_card
{

class Bus
{
  public:
    struct Slot;

    // A card for the time that the caller holds it. When it is let go, its interrupt is signalled, if there is one.
    class Hold
    {
      public:
        Hold() = default;
        explicit Hold(Slot &slot); // its guard is taken already
        ~Hold();
        Hold(const Hold &) = delete;
        Hold &operator=(const Hold &) = delete;
        explicit operator bool() const { return slot_ != nullptr; }
        Card *operator->() const;
        std::int64_t now_ns() const { return now_ns_; }

      private:
        Slot *slot_ = nullptr;
        std::int64_t now_ns_ = 0;
    };

    // The cards of the list, powered up anew, for the devices in their order; there are enough of them.
    static void place(const CardList &cards);

    // Empty: no such card.
    static Hold hold(std::uint32_t number);
};

inline Bus TheBus()
{
    return {};
}

} // namespace trevik::virtual_card

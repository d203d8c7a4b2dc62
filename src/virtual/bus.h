// The virtual cards of the process: which there are, and one thread at a time on each.
#pragma once

#include "virtual/card_list.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace trevik::virtual_card
{

class Bus
{
  public:
    // On cache lines of its own, so that threads on different cards do not slow each other.
    struct alignas(128) Slot {
        std::atomic<bool> guard{false};
        std::atomic<bool> present{false};
        std::atomic<bool> opened{false};
        std::atomic<bool> watched{false}; // a program waits for its interrupts, and the alarm is in use for it
        Card card;
    };

    // A card for the time that the caller holds it; the only thread that does. Empty: no such card. When it is let go,
    // an interrupt that the card has raised meanwhile is signalled.
    class Hold
    {
      public:
        Hold() = default;
        explicit Hold(Slot &slot);
        ~Hold()
        {
            if (slot_ == nullptr)
                return;
            if (slot_->watched.load(std::memory_order_relaxed) || slot_->card.delivers())
                let_go_watched();
            else
                slot_->guard.store(false, std::memory_order_release);
        }
        Hold(const Hold &) = delete;
        Hold &operator=(const Hold &) = delete;
        explicit operator bool() const { return slot_ != nullptr; }
        Card *operator->() const { return &slot_->card; }
        std::int64_t now_ns() const { return now_ns_; }

      private:
        void let_go_watched();

        Slot *slot_ = nullptr;
        std::int64_t now_ns_ = 0; // read when the card was taken: what happens while it is held happens then
    };

    // Puts these cards in the slots, powered up anew. Devices opened before are gone.
    void place(const CardList &cards);

    Hold hold(std::uint32_t number);

    // Devices: the n-th card present, its opening, and the card behind an open device.
    std::uint32_t device_count() const;
    const char *device_path(std::uint32_t index) const;
    std::uint32_t open(const char *path, std::uint32_t &device);
    void close(std::uint32_t device);
    bool alive(std::uint32_t device) const { return device >> 8 == generation_.load(std::memory_order_relaxed); }

  private:
    static void LookAtWatched();

    std::array<Slot, bus_slots> slots_;
    alignas(128) std::atomic<std::uint32_t> generation_{0}; // of the placement; in the high bits of device numbers
};

// The one bus; its cards are those of TREVIK_CARDS until others are placed.
Bus &TheBus();

} // namespace trevik::virtual_card

#include "virtual/bus.h"

#include "platform/host/clock.h"
#include "platform/host/driver_seam.h"
#include "platform/host/immortal.h"
#include "platform/host/system.h"
#include "platform/host/timers.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

namespace trevik::virtual_card
{
namespace
{

constexpr std::uint32_t error_file_not_found = 2;
constexpr std::uint32_t error_sharing_violation = 32;
constexpr std::uint32_t error_device_not_connected = 1167;

constexpr std::array<const char *, bus_slots> paths = {
    R"(\\.\TrevikVirtual0)",  R"(\\.\TrevikVirtual1)",  R"(\\.\TrevikVirtual2)",  R"(\\.\TrevikVirtual3)",
    R"(\\.\TrevikVirtual4)",  R"(\\.\TrevikVirtual5)",  R"(\\.\TrevikVirtual6)",  R"(\\.\TrevikVirtual7)",
    R"(\\.\TrevikVirtual8)",  R"(\\.\TrevikVirtual9)",  R"(\\.\TrevikVirtual10)", R"(\\.\TrevikVirtual11)",
    R"(\\.\TrevikVirtual12)", R"(\\.\TrevikVirtual13)", R"(\\.\TrevikVirtual14)", R"(\\.\TrevikVirtual15)"};

CardList CardsOfEnvironment()
{
    const std::string text = host::Environment("TREVIK_CARDS").value_or("0:A");
    const auto cards = ParseCards(text.c_str());
    if (cards)
        return *cards;
    std::fprintf(stderr, "TREVIK_CARDS: \"%s\" is not a list of cards such as 0:A,5:AC; there are none now\n",
                 text.c_str());
    return {};
}

std::uint32_t Control(void *context, std::uint32_t device, std::uint32_t code, const void *in,
                      std::uint32_t in_size, void *out, std::uint32_t out_size, std::uint32_t *returned)
{
    Bus &bus = *static_cast<Bus *>(context);
    *returned = 0;
    if (!bus.alive(device))
        return error_device_not_connected;
    const Bus::Hold card = bus.hold(device & 0xFF);
    if (!card)
        return error_device_not_connected;
    return card->control({code, in, in_size, out, out_size}, card.now_ns(), *returned);
}

} // namespace

Bus::Hold::Hold(Slot &slot) : slot_(&slot)
{
    while (slot.guard.exchange(true, std::memory_order_acquire))
        while (slot.guard.load(std::memory_order_relaxed))
            std::this_thread::yield();
    now_ns_ = host::NowNanoseconds();
}

// Without the guard other threads set the alarm, too: a time that is out of date by then only makes it look in vain.
void Bus::Hold::let_go_watched()
{
    Card &card = slot_->card;
    const bool was_watched = slot_->watched.load(std::memory_order_relaxed);
    const bool watched = card.delivers();
    if (watched && !was_watched)
        host::UseAlarm(LookAtWatched);
    slot_->watched.store(watched, std::memory_order_relaxed);
    if (const std::uint32_t event = watched ? card.take_signal(now_ns_) : 0; event != 0)
        TrevikHost_event_signal(event); // first: it only wakes a thread
    const std::int64_t next_ns = watched ? card.next_interrupt(now_ns_) : never_ns;
    slot_->guard.store(false, std::memory_order_release);
    if (was_watched && !watched)
        host::LeaveAlarm();
    if (!host::AlarmIsSetBy(next_ns))
        host::SetAlarm(next_ns);
}

// The alarm: every watched card is taken and let go.
void Bus::LookAtWatched()
{
    Bus &bus = TheBus();
    for (Slot &slot : bus.slots_)
        if (slot.watched.load(std::memory_order_relaxed))
            const Hold card(slot);
}

void Bus::place(const CardList &cards)
{
    generation_.fetch_add(1);
    for (unsigned number = 0; number < bus_slots; ++number) {
        Slot &slot = slots_[number];
        const Hold card(slot);
        slot.opened = false;
        slot.present = cards[number].has_value();
        card->reset(static_cast<std::uint8_t>(number), cards[number].value_or(Model::A));
    }
}

Bus::Hold Bus::hold(std::uint32_t number)
{
    if (number >= bus_slots || !slots_[number].present.load(std::memory_order_relaxed))
        return {};
    return Hold(slots_[number]);
}

std::uint32_t Bus::device_count() const
{
    std::uint32_t count = 0;
    for (const Slot &slot : slots_)
        count += slot.present ? 1 : 0;
    return count;
}

const char *Bus::device_path(std::uint32_t index) const
{
    for (unsigned number = 0; number < bus_slots; ++number)
        if (slots_[number].present && index-- == 0)
            return paths[number];
    return nullptr;
}

std::uint32_t Bus::open(const char *path, std::uint32_t &device)
{
    for (unsigned number = 0; number < bus_slots; ++number) {
        if (!slots_[number].present || std::strcmp(paths[number], path) != 0)
            continue;
        if (slots_[number].opened.exchange(true))
            return error_sharing_violation;
        device = generation_.load() << 8 | number;
        return 0;
    }
    return error_file_not_found;
}

void Bus::close(std::uint32_t device)
{
    if (!alive(device))
        return;
    if (const Hold card = hold(device & 0xFF))
        card->disconnect();
    slots_[device & 0xFF].opened = false;
}

Bus &TheBus()
{
    struct BusOfEnvironment : Bus {
        BusOfEnvironment() { place(CardsOfEnvironment()); }
    };
    // Never destroyed: the library closes its cards while the process is ending.
    static host::Immortal<BusOfEnvironment> bus;
    return bus.get();
}

} // namespace trevik::virtual_card

namespace trevik::host
{

const TrevikHostDriver *BuiltInDriver()
{
    using trevik::virtual_card::Bus;
    static const TrevikHostDriver driver = {
        &virtual_card::TheBus(),
        [](void *bus) { return static_cast<Bus *>(bus)->device_count(); },
        [](void *bus, std::uint32_t index) { return static_cast<Bus *>(bus)->device_path(index); },
        [](void *bus, const char *path, std::uint32_t *device) {
            return static_cast<Bus *>(bus)->open(path, *device);
        },
        virtual_card::Control,
        [](void *bus, std::uint32_t device) { static_cast<Bus *>(bus)->close(device); },
    };
    return &driver;
}

} // namespace trevik::host

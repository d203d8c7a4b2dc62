#include "trevikv/cards.h"

#include "trevikv/clock.h"
#include "trevikv/floating_point.h"
#include "trevikv/kernel.h"
#include "virtual/bus.h"

#include <new>

namespace trevik::virtual_card
{

// Under the guard, but for the thread and its ending.
struct Bus::Slot {
    FAST_MUTEX guard;
    Card *card; // null: no device here

    // Of the device's card.
    std::int64_t last_ns;     // time of the last look, for time never goes back
    std::uint32_t generation; // counts its power-ups: what was opened before is gone
    std::uint8_t number;
    bool present;
    bool opened;

    // Its interrupts: the program's event, and the thread that looks when the next thing happens.
    bool ending;
    KEVENT *event;
    void *thread;
    KEVENT wake;
    std::int64_t alarm_ns; // until then the thread sleeps
};

namespace
{

using Slot = Bus::Slot;

Slot slots[bus_slots];

// The guard of a slot for a while.
class Guard
{
  public:
    explicit Guard(Slot &slot) : slot_(slot) { ExAcquireFastMutex(&slot.guard); }
    ~Guard() { ExReleaseFastMutex(&slot_.guard); }
    Guard(const Guard &) = delete;
    Guard &operator=(const Guard &) = delete;

  private:
    Slot &slot_;
};

std::int64_t Now(Slot &slot)
{
    const std::int64_t now_ns = kernel::NowNanoseconds();
    if (slot.last_ns < now_ns)
        slot.last_ns = now_ns;
    return slot.last_ns;
}

// Signals what has happened up to now. Returns when to look again.
std::int64_t Deliver(Slot &slot, std::int64_t now_ns)
{
    if (slot.card == nullptr || !slot.card->delivers())
        return never_ns;
    if (slot.card->take_signal(now_ns) != 0 && slot.event != nullptr)
        KeSetEvent(slot.event, IO_NO_INCREMENT, FALSE);
    return slot.card->next_interrupt(now_ns);
}

// An alarm that has become too early only lets the thread look in vain.
void DeliverAndSetAlarm(Slot &slot, std::int64_t now_ns)
{
    const std::int64_t next_ns = Deliver(slot, now_ns);
    if (next_ns >= slot.alarm_ns)
        return;
    slot.alarm_ns = next_ns;
    KeSetEvent(&slot.wake, IO_NO_INCREMENT, FALSE);
}

// How long to wait for an alarm, as the system's waits take it: in units of 100 ns, negative from now on.
LARGE_INTEGER WaitFor(std::int64_t alarm_ns, std::int64_t now_ns)
{
    constexpr std::int64_t unit_ns = 100;
    LARGE_INTEGER wait;
    wait.QuadPart = alarm_ns > now_ns ? -((alarm_ns - now_ns - 1) / unit_ns + 1) : 0;
    return wait;
}

// Waits of a millisecond are as good as a driver's get; without this they are as coarse as 16 ms.
void SetFineWaits(bool fine)
{
    constexpr ULONG millisecond = 10'000;
    ExSetTimerResolution(millisecond, fine ? TRUE : FALSE);
}

void NTAPI WatchInterrupts(void *context)
{
    Slot &slot = *static_cast<Slot *>(context);
    const kernel::FloatingPoint floating_point;
    bool fine = false;
    while (NT_SUCCESS(floating_point.status()) && !__atomic_load_n(&slot.ending, __ATOMIC_ACQUIRE)) {
        LARGE_INTEGER wait{};
        bool watching = false;
        {
            const Guard guard(slot);
            const std::int64_t now_ns = Now(slot);
            slot.alarm_ns = Deliver(slot, now_ns);
            watching = slot.alarm_ns != never_ns;
            wait = WaitFor(slot.alarm_ns, now_ns);
        }
        if (watching != fine)
            SetFineWaits(watching);
        fine = watching;
        KeWaitForSingleObject(&slot.wake, Executive, KernelMode, FALSE, watching ? &wait : nullptr);
    }
    if (fine)
        SetFineWaits(false);
}

bool StartThread(Slot &slot)
{
    OBJECT_ATTRIBUTES attributes;
    InitializeObjectAttributes(&attributes, nullptr, OBJ_KERNEL_HANDLE, nullptr, nullptr);
    HANDLE thread = nullptr;
    __atomic_store_n(&slot.ending, false, __ATOMIC_RELEASE);
    if (!NT_SUCCESS(PsCreateSystemThread(&thread, THREAD_ALL_ACCESS, &attributes, nullptr, nullptr, WatchInterrupts,
                                         &slot)))
        return false;
    // A handle that was just made can be referenced.
    ObReferenceObjectByHandle(thread, SYNCHRONIZE, nullptr, KernelMode, &slot.thread, nullptr);
    ZwClose(thread);
    return true;
}

void EndThread(Slot &slot)
{
    __atomic_store_n(&slot.ending, true, __ATOMIC_RELEASE);
    KeSetEvent(&slot.wake, IO_NO_INCREMENT, FALSE);
    KeWaitForSingleObject(slot.thread, Executive, KernelMode, FALSE, nullptr);
    ObDereferenceObject(slot.thread);
}

// A card as it is after power-up; under the guard.
void PowerUp(Slot &slot, std::optional<Model> model, unsigned number)
{
    ++slot.generation;
    slot.opened = false;
    slot.present = model.has_value();
    slot.number = static_cast<std::uint8_t>(number);
    slot.card->reset(slot.number, model.value_or(Model::A));
    if (slot.event != nullptr)
        ObDereferenceObject(slot.event);
    slot.event = nullptr;
}

bool Shows(const Slot &slot, std::uint32_t number)
{
    return slot.card != nullptr && slot.present && slot.number == number;
}

// The number of the only card of a list; bus_slots: it has none or several.
unsigned OnlyCard(const CardList &cards)
{
    unsigned only = bus_slots;
    for (unsigned number = 0; number < bus_slots; ++number) {
        if (!cards[number])
            continue;
        if (only != bus_slots)
            return bus_slots;
        only = number;
    }
    return only;
}

Slot *FreeSlot()
{
    for (Slot &slot : slots)
        if (slot.card == nullptr)
            return &slot;
    return nullptr;
}

bool InUse(unsigned number)
{
    for (const Slot &slot : slots)
        if (Shows(slot, number))
            return true;
    return false;
}

} // namespace

Bus::Hold::Hold(Slot &slot) : slot_(&slot), now_ns_(Now(slot)) {}

Bus::Hold::~Hold()
{
    if (slot_ == nullptr)
        return;
    DeliverAndSetAlarm(*slot_, now_ns_);
    ExReleaseFastMutex(&slot_->guard);
}

Card *Bus::Hold::operator->() const
{
    return slot_->card;
}

Bus::Hold Bus::hold(std::uint32_t number)
{
    for (Slot &slot : slots) {
        ExAcquireFastMutex(&slot.guard);
        if (Shows(slot, number))
            return Hold(slot);
        ExReleaseFastMutex(&slot.guard);
    }
    return {};
}

void Bus::place(const CardList &cards)
{
    unsigned number = 0;
    for (Slot &slot : slots) {
        const Guard guard(slot);
        if (slot.card == nullptr)
            continue;
        while (number < bus_slots && !cards[number])
            ++number;
        PowerUp(slot, number < bus_slots ? cards[number] : std::nullopt, number);
        number += number < bus_slots ? 1 : 0;
    }
}

} // namespace trevik::virtual_card

namespace trevik::kernel
{

using namespace trevik::virtual_card;

static_assert(places == bus_slots);

namespace
{

constexpr std::uint32_t error_sharing_violation = 32;
constexpr std::uint32_t error_device_not_connected = 1167;

bool IsOpen(const Slot &slot, std::uint32_t opening)
{
    return slot.opened && slot.generation == opening;
}

} // namespace

void SetUpCards()
{
    for (Slot &slot : slots) {
        ExInitializeFastMutex(&slot.guard);
        KeInitializeEvent(&slot.wake, SynchronizationEvent, FALSE);
        slot.alarm_ns = never_ns;
    }
}

bool Occupy(const char *list, unsigned &place)
{
    const std::optional<CardList> cards = ParseCards(list);
    const unsigned number = cards ? OnlyCard(*cards) : bus_slots;
    Slot *slot = FreeSlot();
    if (number == bus_slots || InUse(number) || slot == nullptr)
        return false;
    void *memory = ExAllocatePoolWithTag(NonPagedPool, sizeof(Card), pool_tag);
    if (memory == nullptr)
        return false;
    {
        const Guard guard(*slot);
        slot->card = new (memory) Card();
        PowerUp(*slot, (*cards)[number], number);
    }
    place = static_cast<unsigned>(slot - slots);
    if (StartThread(*slot))
        return true;
    const Guard guard(*slot);
    slot->card = nullptr;
    ExFreePoolWithTag(memory, pool_tag);
    return false;
}

void Vacate(unsigned place)
{
    Slot &slot = slots[place];
    EndThread(slot);
    const Guard guard(slot);
    PowerUp(slot, std::nullopt, bus_slots);
    ExFreePoolWithTag(slot.card, pool_tag);
    slot.card = nullptr;
    slot.alarm_ns = never_ns;
}

bool HasCard(unsigned place)
{
    const Guard guard(slots[place]);
    return slots[place].present;
}

unsigned PlacesOccupied()
{
    unsigned count = 0;
    for (const Slot &slot : slots)
        count += slot.card != nullptr ? 1 : 0;
    return count;
}

std::uint32_t OpenCard(unsigned place, std::uint32_t &opening)
{
    Slot &slot = slots[place];
    const Guard guard(slot);
    opening = no_opening;
    if (!slot.present)
        return error_device_not_connected;
    if (slot.opened)
        return error_sharing_violation;
    slot.opened = true;
    opening = slot.generation;
    return 0;
}

void CloseCard(unsigned place, std::uint32_t opening)
{
    Slot &slot = slots[place];
    const Guard guard(slot);
    if (!IsOpen(slot, opening))
        return;
    slot.opened = false;
    slot.card->disconnect();
    if (slot.event != nullptr)
        ObDereferenceObject(slot.event);
    slot.event = nullptr;
}

std::uint32_t ControlCard(unsigned place, std::uint32_t opening, CardRequest &request, std::uint32_t &returned)
{
    Slot &slot = slots[place];
    const Guard guard(slot);
    returned = 0;
    if (opening == no_opening)
        return error_sharing_violation;
    if (!IsOpen(slot, opening))
        return error_device_not_connected;
    const std::int64_t now_ns = Now(slot);
    const std::uint32_t error = slot.card->control(
        {request.code, request.in, request.in_size, request.out, request.out_size}, now_ns, returned);
    if (error == 0 && static_cast<ControlCode>(request.code) == ControlCode::IOCTL_IRQ_LINK) {
        KEVENT *earlier = slot.event;
        slot.event = static_cast<KEVENT *>(request.event);
        request.event = earlier;
    }
    DeliverAndSetAlarm(slot, now_ns);
    return error;
}

} // namespace trevik::kernel

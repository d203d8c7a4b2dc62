#include "platform/host/handles.h"

#include "platform/host/immortal.h"
#include "platform/host/last_error.h"

#include <mutex>

namespace trevik::host
{

constinit std::array<DeviceSlot, handle_capacity> device_slots{};

namespace
{

struct HandleTable {
    std::mutex mutex;
    std::array<std::shared_ptr<Object>, handle_capacity> objects;
    std::array<std::uint32_t, handle_capacity> generations{};
    std::size_t last_slot = handle_capacity - 1;
    std::size_t open_count = 0;
};

HandleTable &Table()
{
    static Immortal<HandleTable> table;
    return table.get();
}

// Slots are taken in turn, so that a generation comes back as late as possible. The mutex is held.
std::size_t TakeFreeSlot(HandleTable &table)
{
    do {
        table.last_slot = (table.last_slot + 1) % handle_capacity;
    } while (device_slots[table.last_slot].handle != 0);
    return table.last_slot;
}

// Slot number from bit 2 on and generation, never 0, above: not null, not InvalidHandle, a multiple of 4.
std::uint32_t NextKey(HandleTable &table, std::size_t slot)
{
    constexpr std::uint32_t generation_limit = 1u << (30 - slot_bits);
    std::uint32_t &generation = table.generations[slot];
    generation = generation + 1 == generation_limit ? 1 : generation + 1;
    return (generation << (2 + slot_bits)) | (static_cast<std::uint32_t>(slot) << 2);
}

os::HANDLE Open(std::shared_ptr<Object> object, const TrevikHostDriver *driver, std::uint32_t device)
{
    HandleTable &table = Table();
    const std::lock_guard lock(table.mutex);
    if (table.open_count == handle_capacity) {
        SetLastError(os::ErrorTooManyOpenFiles);
        return nullptr;
    }
    const std::size_t number = TakeFreeSlot(table);
    const std::uint32_t key = NextKey(table, number);
    ++table.open_count;
    table.objects[number] = std::move(object);
    // In this order: who reads the new device or driver also sees that the slot's earlier handle is gone.
    device_slots[number].device.store(device, std::memory_order_release);
    device_slots[number].driver.store(driver, std::memory_order_release);
    device_slots[number].handle.store(key, std::memory_order_release);
    return HandleOf(key);
}

} // namespace

os::HANDLE OpenHandle(std::shared_ptr<Object> object)
{
    return Open(std::move(object), nullptr, 0);
}

os::HANDLE OpenHandle(const TrevikHostDriver *driver, std::uint32_t device)
{
    return Open(nullptr, driver, device);
}

bool ReleaseHandle(os::HANDLE handle)
{
    const std::uint32_t key = HandleKey(handle);
    DeviceSlot &slot = device_slots[SlotNumber(key)];
    std::shared_ptr<Object> object; // ends after the mutex is free
    const TrevikHostDriver *driver = nullptr;
    std::uint32_t device = 0;
    {
        HandleTable &table = Table();
        const std::lock_guard lock(table.mutex);
        if (key == 0 || slot.handle != key)
            return false;
        slot.handle.store(0, std::memory_order_release);
        driver = slot.driver.exchange(nullptr);
        device = slot.device;
        object = std::move(table.objects[SlotNumber(key)]);
        --table.open_count;
        if (driver == nullptr)
            return true;
    }
    driver->close(driver->context, device);
    return true;
}

void CloseAllDevices()
{
    for (DeviceSlot &slot : device_slots) {
        if (slot.driver.load() != nullptr)
            ReleaseHandle(HandleOf(slot.handle));
    }
}

std::shared_ptr<Object> ObjectOf(os::HANDLE handle)
{
    const std::uint32_t key = HandleKey(handle);
    HandleTable &table = Table();
    const std::lock_guard lock(table.mutex);
    const bool known = key != 0 && device_slots[SlotNumber(key)].handle == key;
    return known ? table.objects[SlotNumber(key)] : nullptr;
}

std::shared_ptr<Object> ObjectNamed(std::string_view name)
{
    HandleTable &table = Table();
    const std::lock_guard lock(table.mutex);
    for (const std::shared_ptr<Object> &object : table.objects) {
        if (object && object->name() == name)
            return object;
    }
    return nullptr;
}

std::size_t OpenHandleCount()
{
    HandleTable &table = Table();
    const std::lock_guard lock(table.mutex);
    return table.open_count;
}

} // namespace trevik::host

namespace trevik::os
{

BOOL CloseHandle(HANDLE handle)
{
    const std::shared_ptr<host::Object> object = host::ObjectOf(handle);
    const bool is_set = object && object->kind() == host::ObjectKind::DeviceSet;
    return !is_set && host::ReleaseHandle(handle) ? 1 : host::Fail(ErrorInvalidHandle);
}

} // namespace trevik::os

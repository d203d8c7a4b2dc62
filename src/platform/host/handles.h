// One table of handles. A handle's low 32 bits identify it: slot number and the slot's generation, so that a closed
// handle stays refused after its slot is used again.
//
// A slot holds a device or an object. Devices are atomics, because DeviceIoControl reads them without a lock;
// objects are shared with the calls that are inside them and stay behind the table's mutex.
#pragma once

#include "platform/os.h"

#include <array>
#include <atomic>
#include <memory>
#include <string_view>

namespace trevik::host
{

enum class ObjectKind : std::uint8_t { Event, Thread, DeviceSet };

// What a handle that is no device stands for.
class Object
{
  public:
    explicit Object(ObjectKind kind) : kind_(kind) {}
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;
    virtual ~Object() = default;

    ObjectKind kind() const { return kind_; }
    virtual std::string_view name() const { return {}; }

  private:
    const ObjectKind kind_;
};

struct DeviceSlot {
    std::atomic<std::uint32_t> handle{0}; // 0: free
    std::atomic<std::uint32_t> device{0};
    std::atomic<const TrevikHostDriver *> driver{nullptr}; // null: no device
};

// The library never closes the events of TrevikA_IRQ_enable, so there is room for many.
inline constexpr unsigned slot_bits = 14;
inline constexpr std::size_t handle_capacity = std::size_t{1} << slot_bits;
extern constinit std::array<DeviceSlot, handle_capacity> device_slots;

// The low 32 bits, or 0 (never a handle) when the upper ones are not clear.
inline std::uint32_t HandleKey(os::HANDLE handle)
{
    const auto value = reinterpret_cast<std::uintptr_t>(handle);
    const auto key = static_cast<std::uint32_t>(value);
    return key == value ? key : 0;
}

inline os::HANDLE HandleOf(std::uint32_t key)
{
    return reinterpret_cast<os::HANDLE>(std::uintptr_t{key}); // NOLINT(performance-no-int-to-ptr)
}

inline std::size_t SlotNumber(std::uint32_t key)
{
    return (key >> 2) % handle_capacity;
}

// Null when the table is full (the last error is then set).
os::HANDLE OpenHandle(std::shared_ptr<Object> object);
os::HANDLE OpenHandle(const TrevikHostDriver *driver, std::uint32_t device);

// Frees the slot; a device is closed at its driver. False when there is no such handle.
bool ReleaseHandle(os::HANDLE handle);
void CloseAllDevices();

// Null when the handle is none, or a device's.
std::shared_ptr<Object> ObjectOf(os::HANDLE handle);
std::shared_ptr<Object> ObjectNamed(std::string_view name);

// Not std::make_shared: its type tag is a unique symbol, and a library that has one is never unloaded.
template <class T, class... Arguments>
std::shared_ptr<T> NewObject(Arguments... arguments)
{
    return std::shared_ptr<T>(new T(arguments...));
}

template <class T>
std::shared_ptr<T> ObjectOf(os::HANDLE handle)
{
    std::shared_ptr<Object> object = ObjectOf(handle);
    if (!object || object->kind() != T::kind_of)
        return nullptr;
    return std::static_pointer_cast<T>(std::move(object));
}

std::size_t OpenHandleCount();

} // namespace trevik::host

// Events, which drivers signal on interrupts. A named event lives as long as a handle to it is open.
#include "platform/host/faults.h"
#include "platform/host/immortal.h"
#include "platform/host/last_error.h"
#include "platform/host/waitable.h"

#include <string>

namespace trevik::host
{
namespace
{

class Event : public Waitable
{
  public:
    static constexpr ObjectKind kind_of = ObjectKind::Event;

    Event(bool manual_reset, bool signalled, std::string_view name)
        : Waitable(kind_of, !manual_reset, signalled), name_(name)
    {
    }

    std::string_view name() const override { return name_; }

  private:
    const std::string name_;
};

// Held from the search for a name to the handle of the event made for it.
std::mutex &Naming()
{
    static Immortal<std::mutex> mutex;
    return mutex.get();
}

std::shared_ptr<Object> FindEvent(std::string_view name)
{
    return name.empty() ? nullptr : ObjectNamed(name);
}

} // namespace
} // namespace trevik::host

namespace trevik::os
{

HANDLE CreateEventA(LPSECURITY_ATTRIBUTES, BOOL manual_reset, BOOL signalled, LPCSTR name)
{
    using namespace trevik::host;
    if (TakeFault(Function::CreateEventA))
        return nullptr;
    const std::string_view key = name != nullptr ? name : "";
    const std::lock_guard lock(Naming());
    if (std::shared_ptr<Object> event = FindEvent(key)) {
        HANDLE handle = OpenHandle(std::move(event));
        if (handle != nullptr)
            SetLastError(ErrorAlreadyExists);
        return handle;
    }
    return OpenHandle(NewObject<Event>(manual_reset != 0, signalled != 0, key));
}

HANDLE OpenEventA(DWORD, BOOL, LPCSTR name)
{
    using namespace trevik::host;
    if (TakeFault(Function::OpenEventA))
        return nullptr;
    std::shared_ptr<Object> event = FindEvent(name != nullptr ? name : "");
    if (event)
        return OpenHandle(std::move(event));
    SetLastError(name != nullptr ? ErrorFileNotFound : ErrorInvalidParameter);
    return nullptr;
}

BOOL SetEvent(HANDLE handle)
{
    const auto event = host::ObjectOf<host::Event>(handle);
    if (!event)
        return host::Fail(ErrorInvalidHandle);
    event->signal();
    return 1;
}

} // namespace trevik::os

uint32_t TrevikHost_event_signal(uint32_t event)
{
    using namespace trevik;
    const auto object = host::ObjectOf<host::Event>(host::HandleOf(event));
    if (!object)
        return os::ErrorInvalidHandle;
    object->signal();
    return os::ErrorSuccess;
}

#include "platform/host/waitable.h"

#include "platform/host/clock.h"
#include "platform/host/last_error.h"

#include <chrono>

namespace trevik::host
{
namespace
{

// A timeout under the manual clock: a timer that wakes the waiting thread.
struct Timeout {
    std::mutex &mutex;
    std::condition_variable &changed;
    bool over = false;
};

void TREVIK_CALL EndTimeout(os::UINT, os::UINT, os::DWORD_PTR user, os::DWORD_PTR, os::DWORD_PTR)
{
    Timeout &timeout = *reinterpret_cast<Timeout *>(user); // NOLINT(performance-no-int-to-ptr)
    const std::lock_guard lock(timeout.mutex);
    timeout.over = true;
    timeout.changed.notify_all();
}

} // namespace

void Waitable::signal()
{
    const std::lock_guard lock(mutex_);
    signalled_ = true;
    changed_.notify_all();
}

bool Waitable::wait(os::DWORD timeout_ms)
{
    {
        std::unique_lock lock(mutex_);
        if (!wait_locked(lock, timeout_ms))
            return false;
    }
    waited();
    return true;
}

bool Waitable::wait_locked(std::unique_lock<std::mutex> &lock, os::DWORD timeout_ms)
{
    const auto signalled = [this] { return signalled_; };
    if (timeout_ms == os::Infinite) {
        changed_.wait(lock, signalled);
    } else if (timeout_ms != 0 && !signalled_ && ClockIsManual()) {
        return wait_manual(lock, timeout_ms);
    } else if (!changed_.wait_for(lock, std::chrono::milliseconds(timeout_ms), signalled)) {
        return false;
    }
    signalled_ = !auto_reset_;
    return true;
}

bool Waitable::wait_manual(std::unique_lock<std::mutex> &lock, os::DWORD timeout_ms)
{
    Timeout timeout{mutex_, changed_};
    const os::UINT timer =
        os::timeSetEvent(timeout_ms, 0, EndTimeout, reinterpret_cast<os::DWORD_PTR>(&timeout), os::TimeOneShot);
    changed_.wait(lock, [this, &timeout] { return signalled_ || timeout.over; });
    const bool taken = signalled_;
    if (taken)
        signalled_ = !auto_reset_;
    lock.unlock();
    os::timeKillEvent(timer); // the timer's callback takes the mutex
    return taken;
}

} // namespace trevik::host

namespace trevik::os
{

DWORD WaitForSingleObject(HANDLE handle, DWORD timeout_ms)
{
    const std::shared_ptr<host::Object> object = host::ObjectOf(handle);
    if (!object || object->kind() == host::ObjectKind::DeviceSet) {
        host::SetLastError(ErrorInvalidHandle);
        return WaitFailed;
    }
    return static_cast<host::Waitable &>(*object).wait(timeout_ms) ? WaitObject0 : WaitTimeout;
}

} // namespace trevik::os

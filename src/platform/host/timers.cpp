// Multimedia timers. While the clock is real, one service thread runs the callbacks; it exists as long as there are
// timers. While the clock is manual, the thread that moves it runs them. Either way one callback at a time, in the
// order of their due times. A period is added to the due time, not to the time of the call: nothing drifts.
#include "platform/host/timers.h"

#include "platform/host/clock.h"
#include "platform/host/faults.h"
#include "platform/host/immortal.h"
#include "platform/host/system.h"
#include "platform/host/system_thread.h"
#include "platform/os.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <vector>

namespace trevik::host
{
namespace
{

struct Timer {
    os::UINT id;
    std::int64_t due_ns;
    std::int64_t period_ns; // 0: once
    os::LPTIMECALLBACK callback;
    os::DWORD_PTR user;
};

// The alarm stands in the list like a timer. Its id is the lowest: it comes first among those that are due together.
constexpr os::UINT alarm_id = 1;

constexpr std::int64_t no_time = std::numeric_limits<std::int64_t>::max();

struct Timers {
    std::mutex mutex;
    std::condition_variable changed; // timers, running callback, kind of clock, service
    std::vector<Timer> list;
    os::UINT last_id = alarm_id;
    unsigned alarm_users = 0;
    Alarm alarm = nullptr;
    os::UINT running_id = 0; // 0: no callback is running
    SystemThread service;
    std::uintptr_t service_number = 0; // the service thread with another number ends
    bool serving = false;
    bool unloaded = false;
};

using Lock = std::unique_lock<std::mutex>;

thread_local os::UINT own_running_id = 0;

Timers &TheTimers()
{
    static Immortal<Timers> timers;
    return timers.get();
}

// Ids count up, so the smaller one was created first.
std::vector<Timer>::iterator Earliest(Timers &timers)
{
    return std::min_element(timers.list.begin(), timers.list.end(), [](const Timer &a, const Timer &b) {
        return a.due_ns != b.due_ns ? a.due_ns < b.due_ns : a.id < b.id;
    });
}

std::vector<Timer>::iterator TheAlarm(Timers &timers)
{
    return std::find_if(timers.list.begin(), timers.list.end(),
                        [](const Timer &timer) { return timer.id == alarm_id; });
}

void Changed(Timers &timers)
{
    const auto earliest = Earliest(timers);
    clock_state.next_due_ns = earliest == timers.list.end() ? no_time : earliest->due_ns;
    const auto alarm = TheAlarm(timers);
    clock_state.alarm_due_ns = alarm == timers.list.end() ? no_time : alarm->due_ns;
    timers.changed.notify_all();
}

void RunEarliest(Timers &timers, Lock &lock)
{
    const auto earliest = Earliest(timers);
    const Timer timer = *earliest;
    if (timer.id == alarm_id) {
        earliest->due_ns = no_time;
    } else if (timer.period_ns != 0) {
        earliest->due_ns += timer.period_ns;
    } else {
        timers.list.erase(earliest);
    }
    timers.running_id = own_running_id = timer.id;
    clock_state.callback_running = true;
    Changed(timers);
    lock.unlock();
    timer.callback(timer.id, 0, timer.user, 0, 0);
    lock.lock();
    timers.running_id = own_running_id = 0;
    clock_state.callback_running = false;
    Changed(timers);
}

void WaitUntilNoneRuns(Timers &timers, Lock &lock)
{
    timers.changed.wait(lock, [&timers] { return timers.running_id == 0; });
}

bool HasService(const Timers &timers, std::uintptr_t number)
{
    return timers.service_number == number && !timers.list.empty() && !ClockIsManual();
}

void Serve(void *parameter)
{
    constexpr std::int64_t longest_wait_ns = 3'600'000'000'000; // so that no sum overflows
    const auto number = reinterpret_cast<std::uintptr_t>(parameter);
    BeginExactWaits();
    Timers &timers = TheTimers();
    Lock lock(timers.mutex);
    while (HasService(timers, number)) {
        const std::int64_t wait_ns = Earliest(timers)->due_ns - NowNanoseconds();
        if (timers.running_id != 0) {
            timers.changed.wait(lock); // a callback that began under the manual clock
        } else if (wait_ns <= 0) {
            RunEarliest(timers, lock);
        } else {
            const std::chrono::nanoseconds wait(std::min(wait_ns, longest_wait_ns));
            timers.changed.wait_until(lock, std::chrono::steady_clock::now() + wait);
        }
    }
    if (timers.service_number == number)
        timers.serving = false;
    EndExactWaits();
}

// Starts the service thread when it is needed. The mutex is held.
void StartService(Timers &timers)
{
    if (timers.serving || timers.list.empty() || ClockIsManual())
        return;
    timers.service.join(); // has ended its service, needs the mutex no more
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the thread's parameter
    timers.serving = timers.service.start(Serve, reinterpret_cast<void *>(++timers.service_number));
}

// Ends the service thread and gives it to be joined without the mutex.
SystemThread TakeService(Timers &timers)
{
    ++timers.service_number;
    timers.serving = false;
    timers.changed.notify_all();
    return std::move(timers.service);
}

// Without timers the service thread ends. While a callback runs it does so by itself: the callback may need what the
// caller holds.
void EndUnusedService(Timers &timers, Lock &lock)
{
    if (!timers.list.empty() || timers.running_id != 0)
        return;
    SystemThread service = TakeService(timers);
    lock.unlock();
    service.join();
}

void TREVIK_CALL RunAlarm(os::UINT, os::UINT, os::DWORD_PTR, os::DWORD_PTR, os::DWORD_PTR)
{
    TheTimers().alarm();
}

// No timer outlives the library's code.
struct Unload {
    Unload() = default;
    Unload(const Unload &) = delete;
    Unload &operator=(const Unload &) = delete;
    ~Unload()
    {
        Timers &timers = TheTimers();
        Lock lock(timers.mutex);
        timers.unloaded = true;
        std::vector<Timer>().swap(timers.list);
        SystemThread service = TakeService(timers);
        lock.unlock();
        service.join(); // from this thread itself when exit() was called in a callback
    }
};

const Unload unload;

} // namespace

bool InsideTimerCallback()
{
    return clock_state.callback_running.load(std::memory_order_relaxed) && own_running_id != 0;
}

void RunTimersUntil(std::int64_t target_ns)
{
    Timers &timers = TheTimers();
    Lock lock(timers.mutex);
    WaitUntilNoneRuns(timers, lock);
    while (ClockIsManual()) { // a callback may switch the clock
        const auto earliest = Earliest(timers);
        const bool due = earliest != timers.list.end() && earliest->due_ns <= target_ns;
        MoveManualClock(std::max(NowNanoseconds(), due ? earliest->due_ns : target_ns));
        if (!due)
            return;
        RunEarliest(timers, lock);
    }
}

void ClockSwitched()
{
    Timers &timers = TheTimers();
    const Lock lock(timers.mutex);
    StartService(timers);
    timers.changed.notify_all();
}

void UseAlarm(Alarm alarm)
{
    Timers &timers = TheTimers();
    const Lock lock(timers.mutex);
    if (++timers.alarm_users != 1 || timers.unloaded)
        return;
    timers.alarm = alarm;
    timers.list.push_back({alarm_id, no_time, 0, RunAlarm, 0});
    StartService(timers);
    Changed(timers);
}

void LeaveAlarm()
{
    Timers &timers = TheTimers();
    Lock lock(timers.mutex);
    if (--timers.alarm_users != 0)
        return;
    std::erase_if(timers.list, [](const Timer &timer) { return timer.id == alarm_id; });
    Changed(timers);
    EndUnusedService(timers, lock);
}

void SetAlarm(std::int64_t due_ns)
{
    Timers &timers = TheTimers();
    const Lock lock(timers.mutex);
    const auto alarm = TheAlarm(timers);
    if (alarm == timers.list.end() || alarm->due_ns <= due_ns)
        return;
    alarm->due_ns = due_ns;
    Changed(timers);
}

} // namespace trevik::host

namespace trevik::os
{

MMRESULT timeSetEvent(UINT delay_ms, UINT, LPTIMECALLBACK callback, DWORD_PTR user, UINT flags)
{
    using namespace trevik::host;
    if (TakeFault(Function::timeSetEvent) || delay_ms == 0 || callback == nullptr || flags > TimePeriodic)
        return 0;
    Timers &timers = TheTimers();
    const Lock lock(timers.mutex);
    if (timers.unloaded)
        return 0;
    const std::int64_t delay_ns = std::int64_t{delay_ms} * 1'000'000;
    const std::int64_t period_ns = flags == TimePeriodic ? delay_ns : 0;
    const UINT id = ++timers.last_id;
    timers.list.push_back({id, NowNanoseconds() + delay_ns, period_ns, callback, user});
    StartService(timers);
    Changed(timers);
    return id;
}

MMRESULT timeKillEvent(UINT id)
{
    using namespace trevik::host;
    Timers &timers = TheTimers();
    Lock lock(timers.mutex);
    const bool listed = std::erase_if(timers.list, [id](const Timer &timer) { return timer.id == id; }) != 0;
    const bool known = listed || (id != 0 && timers.running_id == id);
    Changed(timers);
    if (own_running_id != id)
        timers.changed.wait(lock, [&timers, id] { return id == 0 || timers.running_id != id; });
    EndUnusedService(timers, lock);
    return known ? TimerNoError : TimerNoCanDo;
}

} // namespace trevik::os

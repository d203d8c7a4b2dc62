// Threads and the ids of threads and of the process.
#include "platform/host/faults.h"
#include "platform/host/last_error.h"
#include "platform/host/system.h"
#include "platform/host/system_thread.h"
#include "platform/host/waitable.h"

#include <chrono>
#include <thread>
#include <utility>

namespace trevik::host
{
namespace
{

os::DWORD NewThreadId()
{
    static std::atomic<os::DWORD> last_id{0};
    return ++last_id;
}

// A system thread is made when the thread is first resumed. It is joined by the first wait that sees its end, so
// that none of its code runs any more after the wait, or else left to itself when the last handle is closed.
class Thread : public Waitable
{
  public:
    static constexpr ObjectKind kind_of = ObjectKind::Thread;

    Thread(os::LPTHREAD_START_ROUTINE start, os::LPVOID parameter)
        : Waitable(kind_of, false, false), start_(start), parameter_(parameter)
    {
    }
    Thread(const Thread &) = delete;
    Thread &operator=(const Thread &) = delete;
    ~Thread() override = default;

    os::DWORD id() const { return id_; }
    os::DWORD resume(std::shared_ptr<Thread> self);
    void set_priority(int priority);
    void end();

  protected:
    void waited() override;

  private:
    static void Main(void *thread);
    void begin();
    void apply_priority() const;

    const os::LPTHREAD_START_ROUTINE start_;
    const os::LPVOID parameter_;
    const os::DWORD id_ = NewThreadId();
    bool suspended_ = true;
    SystemThread thread_;
    int system_id_ = 0; // 0: not running
    int priority_ = 0;
    std::shared_ptr<Thread> self_; // while it runs
};

thread_local Thread *own_thread = nullptr;
thread_local os::DWORD own_id = 0;

// The number of times that the thread was suspended before, which is 0 or 1 as nothing suspends a running thread.
os::DWORD Thread::resume(std::shared_ptr<Thread> self)
{
    const std::lock_guard lock(mutex_);
    if (!suspended_)
        return 0;
    self_ = std::move(self);
    if (!thread_.start(Main, this)) {
        self_.reset();
        SetLastError(os::ErrorNotEnoughMemory);
        return os::WaitFailed;
    }
    suspended_ = false;
    return 1;
}

void Thread::set_priority(int priority)
{
    const std::lock_guard lock(mutex_);
    priority_ = priority;
    apply_priority();
}

// Way cannot be taken back, so other priorities change nothing.
void Thread::apply_priority() const
{
    if (system_id_ != 0 && priority_ == os::ThreadPriorityIdle)
        GiveWay(system_id_);
}

void Thread::begin()
{
    own_thread = this;
    own_id = id_;
    const std::lock_guard lock(mutex_);
    system_id_ = OwnSystemId();
    apply_priority();
}

void Thread::Main(void *parameter)
{
    Thread &thread = *static_cast<Thread *>(parameter);
    thread.begin();
    thread.start_(thread.parameter_);
    thread.end();
}

void Thread::end()
{
    std::shared_ptr<Thread> self;
    {
        const std::lock_guard lock(mutex_);
        system_id_ = 0;
        self = std::move(self_);
    }
    signal();
}

void Thread::waited()
{
    const std::lock_guard lock(mutex_);
    thread_.join();
}

} // namespace
} // namespace trevik::host

namespace trevik::os
{

HANDLE CreateThread(LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE start, LPVOID parameter, DWORD flags,
                    LPDWORD id)
{
    using namespace trevik::host;
    if (TakeFault(Function::CreateThread))
        return nullptr;
    if (start == nullptr) {
        SetLastError(ErrorInvalidParameter);
        return nullptr;
    }
    const auto thread = NewObject<Thread>(start, parameter);
    HANDLE handle = OpenHandle(thread);
    if (handle == nullptr)
        return nullptr;
    if (id != nullptr)
        *id = thread->id();
    if ((flags & CreateSuspended) != 0 || thread->resume(thread) != WaitFailed)
        return handle;
    ReleaseHandle(handle);
    return nullptr;
}

DWORD ResumeThread(HANDLE handle)
{
    const auto thread = host::ObjectOf<host::Thread>(handle);
    if (thread)
        return thread->resume(thread);
    host::SetLastError(ErrorInvalidHandle);
    return WaitFailed;
}

BOOL SetThreadPriority(HANDLE handle, int priority)
{
    const auto thread = host::ObjectOf<host::Thread>(handle);
    if (!thread)
        return host::Fail(ErrorInvalidHandle);
    thread->set_priority(priority);
    return 1;
}

void ExitThread(DWORD)
{
    if (host::own_thread != nullptr)
        host::own_thread->end();
    host::SystemThread::exit();
}

void Sleep(DWORD time_ms)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(time_ms));
}

DWORD GetCurrentThreadId()
{
    if (host::own_id == 0)
        host::own_id = host::NewThreadId();
    return host::own_id;
}

DWORD GetCurrentProcessId()
{
    return host::ProcessId();
}

} // namespace trevik::os

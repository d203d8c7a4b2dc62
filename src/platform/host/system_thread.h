// A thread of the system.
#pragma once

#include <cstdint>

namespace trevik::host
{

class SystemThread
{
  public:
    using Main = void (*)(void *parameter);

    SystemThread() = default;
    SystemThread(SystemThread &&other) noexcept : handle_(other.handle_) { other.handle_ = 0; }
    SystemThread &operator=(SystemThread &&other) noexcept;
    ~SystemThread() { detach(); }

    // False: the system has no thread left. Nothing was started before, or it was joined or detached.
    bool start(Main main, void *parameter);
    bool joinable() const { return handle_ != 0; }

    // Returns when none of the thread's code runs any more, also while the library is being unloaded; the thread has
    // been told to end. From the thread itself, and without a thread, nothing happens but that it is detached.
    void join();

    // Leaves the thread to itself.
    void detach();

    // Ends the calling thread, which may hold nothing.
    [[noreturn]] static void exit();

  private:
    std::uintptr_t handle_ = 0;
};

// Has the running thread of this id give way to others. OwnSystemId is the calling thread's.
int OwnSystemId();
void GiveWay(int system_id);

inline SystemThread &SystemThread::operator=(SystemThread &&other) noexcept
{
    detach();
    handle_ = other.handle_;
    other.handle_ = 0;
    return *this;
}

} // namespace trevik::host

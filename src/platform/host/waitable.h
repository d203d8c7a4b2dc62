// Objects that WaitForSingleObject waits for: events, and threads, which are signalled at their end.
#pragma once

#include "platform/host/handles.h"

#include <condition_variable>
#include <mutex>

namespace trevik::host
{

class Waitable : public Object
{
  public:
    Waitable(ObjectKind kind, bool auto_reset, bool signalled)
        : Object(kind), auto_reset_(auto_reset), signalled_(signalled)
    {
    }

    void signal();

    // False when the time ran out. A timeout is counted by the clock that is in use when the wait begins.
    bool wait(os::DWORD timeout_ms);

  protected:
    // Called after each successful wait.
    virtual void waited() {}

    std::mutex mutex_;
    std::condition_variable changed_;

  private:
    bool wait_locked(std::unique_lock<std::mutex> &lock, os::DWORD timeout_ms);
    bool wait_manual(std::unique_lock<std::mutex> &lock, os::DWORD timeout_ms);

    const bool auto_reset_;
    bool signalled_;
};

} // namespace trevik::host

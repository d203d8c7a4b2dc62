#include "trevik-run/interrupt.h"

#include <atomic>
#include <csignal>

namespace trevik_run
{
namespace
{

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "it is set by a signal handler");

void OnSignal(int)
{
    interrupted.store(true, std::memory_order_relaxed);
}

} // namespace

void CatchInterrupts()
{
    std::signal(SIGINT, OnSignal);
    std::signal(SIGTERM, OnSignal);
}

bool Interrupted()
{
    return interrupted.load(std::memory_order_relaxed);
}

void SetInterrupted(bool value)
{
    interrupted.store(value, std::memory_order_relaxed);
}

} // namespace trevik_run

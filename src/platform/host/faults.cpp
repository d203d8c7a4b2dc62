#include "platform/host/faults.h"

#include "platform/host/last_error.h"

#include <array>
#include <atomic>

namespace trevik::host
{
namespace
{

struct Fault {
    std::atomic<os::DWORD> error{0};
    std::atomic<std::uint32_t> calls_before{0};
};

constinit std::array<Fault, static_cast<std::size_t>(Function::Count)> faults{};

} // namespace

void FailNext(Function function, os::DWORD error, std::uint32_t calls_before)
{
    Fault &fault = faults[static_cast<std::size_t>(function)];
    fault.calls_before = calls_before;
    fault.error = error;
}

bool TakeFault(Function function)
{
    Fault &fault = faults[static_cast<std::size_t>(function)];
    if (fault.error.load(std::memory_order_relaxed) == 0)
        return false;
    if (fault.calls_before > 0) {
        --fault.calls_before;
        return false;
    }
    SetLastError(fault.error.exchange(0));
    return true;
}

} // namespace trevik::host

#include "trevik-run/clock.h"

#include <trevik/TrevikA.h>

#include <algorithm>
#include <cmath>
#include <thread>

#include "trevik-run/virtual_clock.h"

namespace trevik_run
{
namespace
{

constexpr double poll_s = 100e-6;     // in real time: how late a queued move may be noticed
constexpr double least_step_s = 1e-9; // time never stands still while somebody waits

} // namespace

Clock::Clock(std::uint8_t card, bool realtime) : card_(card)
{
    const VirtualClock *virtual_clock = TheVirtualClock();
    double next_event_s = 0;
    if (!realtime && virtual_clock != nullptr && virtual_clock->next_event_read(card, &next_event_s) == TREVIK_OK) {
        manual_ = virtual_clock;
        manual_->manual(1);
    }
}

Clock::~Clock()
{
    if (manual_ != nullptr) {
        manual_->manual(0);
    }
}

void Clock::Wait(double seconds)
{
    manual_ != nullptr ? WaitManual(seconds) : WaitReal(seconds);
}

void Clock::WaitManual(double seconds)
{
    double next_event_s = seconds; // kept when there is no answer
    manual_->next_event_read(card_, &next_event_s);
    nothing_due_ = std::isinf(next_event_s);
    const double step_s = std::max(std::min(next_event_s, seconds), least_step_s);
    manual_->advance(step_s);
    now_s_ += step_s;
}

void Clock::WaitReal(double seconds)
{
    std::this_thread::sleep_for(std::chrono::duration<double>(std::min(seconds, poll_s)));
    now_s_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

} // namespace trevik_run

#include "trevik-run/clock.h"

#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <algorithm>
#include <cmath>
#include <thread>

namespace trevik_run
{
namespace
{

constexpr double poll_s = 100e-6;     // in real time: how late a queued move may be noticed
constexpr double least_step_s = 1e-9; // time never stands still while somebody waits

} // namespace

Clock::Clock(std::uint8_t card, bool realtime) : card_(card)
{
    double next_event_s = 0;
    manual_ = !realtime && TrevikVirtual_next_event_read(card, &next_event_s) == TREVIK_OK;
    if (manual_) {
        TrevikHost_clock_manual(1);
    }
}

Clock::~Clock()
{
    if (manual_) {
        TrevikHost_clock_manual(0);
    }
}

void Clock::Wait(double seconds)
{
    manual_ ? WaitManual(seconds) : WaitReal(seconds);
}

void Clock::WaitManual(double seconds)
{
    double next_event_s = seconds; // kept when there is no answer
    TrevikVirtual_next_event_read(card_, &next_event_s);
    nothing_due_ = std::isinf(next_event_s);
    const double step_s = std::max(std::min(next_event_s, seconds), least_step_s);
    TrevikHost_advance(step_s);
    now_s_ += step_s;
}

void Clock::WaitReal(double seconds)
{
    std::this_thread::sleep_for(std::chrono::duration<double>(std::min(seconds, poll_s)));
    now_s_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

} // namespace trevik_run

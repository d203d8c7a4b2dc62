// The time that the card lives in: the host layer's manual clock, moved as fast as the program can, or real time.
#pragma once

#include <chrono>
#include <cstdint>

namespace trevik_run
{

struct VirtualClock;

class Clock
{
  public:
    // The manual clock serves virtual cards only; any other card runs in real time.
    Clock(std::uint8_t card, bool realtime);
    ~Clock();
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;

    double Now() const { return now_s_; }            // seconds since the clock was made
    bool NothingDue() const { return nothing_due_; } // manual clock: the card will do nothing more by itself

    // Lets at most `seconds` go by. The manual clock stops where the card does something by itself; real time is
    // given back early enough to keep the card's queue filled.
    void Wait(double seconds);

  private:
    void WaitManual(double seconds);
    void WaitReal(double seconds);

    std::uint8_t card_;
    const VirtualClock *manual_ = nullptr; // null: real time
    bool nothing_due_ = false;
    double now_s_ = 0;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

} // namespace trevik_run

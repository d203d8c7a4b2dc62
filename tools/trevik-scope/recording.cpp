#include "trevik-scope/recording.h"

#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace trevik_scope
{
namespace
{

constexpr double even_samples = 5000;
constexpr double longest_s = 10000; // the library's ticks go on all the while: longer moves take long to make
constexpr double clock_unit_s = 1e-9;
constexpr double just_before_s = 2 * clock_unit_s;
constexpr std::int64_t tick_ns = 20'000'000; // the library's own, when an axis follows a handwheel
constexpr double never = std::numeric_limits<double>::infinity();

class Recorder
{
  public:
    Recorder(const Motion &motion, RequestLog &log) : motion_(motion), calls_(CallsOf(motion)), log_(log) {}

    // step_s: between even samples; infinite: none.
    Recording Run(double step_s)
    {
        recording_.step_s = step_s;
        limit_s_ = LongestSeconds(motion_);
        PrepareMachine();
        if (MakeDueCalls()) {
            TrevikVirtual_handwheel_turn(card, axis, motion_.handwheel.counts, motion_.handwheel.turn_ms / 1000);
            while (recording_.failed_call.empty() && Step()) {
            }
        }
        TakeTickWrites();
        TrevikA_close();
        return std::move(recording_);
    }

  private:
    void PrepareMachine();
    bool MakeDueCalls();
    bool Step();
    void Advance(double to_s);
    void TakeSample();
    double NextEvent() const;
    double NextTick() const
    {
        const std::int64_t next = now_ns_ / tick_ns + 1;
        return static_cast<double>(next * tick_ns) * clock_unit_s;
    }
    void TakeTickWrites();
    double Now() const { return static_cast<double>(now_ns_) * clock_unit_s; }
    double NextCall() const
    {
        if (next_call_ == calls_.size()) {
            return never;
        }
        return calls_[next_call_].at_s;
    }

    const Motion &motion_;
    std::vector<Call> calls_;
    RequestLog &log_;
    Recording recording_;
    std::size_t next_call_ = 0;
    std::int64_t now_ns_ = 0;
    double limit_s_ = 0;
    long next_even_ = 1;
};

void Recorder::PrepareMachine()
{
    TrevikHost_clock_manual(1);
    TrevikVirtual_cards_set("0:A");
    const std::uint32_t result = TrevikA_initial();
    if (result != TREVIK_OK) {
        recording_.failed_call = "TrevikA_initial";
        recording_.failed_code = result;
    }
    for (const Switch &one : motion_.switches) {
        TrevikVirtual_switch_set(card, axis, one.input, one.first, one.last);
    }
    TrevikVirtual_index_set(card, axis, motion_.index.first, motion_.index.period);
    log_.Take();
}

double Recorder::NextEvent() const
{
    double seconds = never;
    TrevikVirtual_next_event_read(card, &seconds);
    return std::isinf(seconds)
               ? never
               : static_cast<double>(now_ns_ + std::max(1LL, std::llround(std::ceil(seconds / clock_unit_s)))) *
                     clock_unit_s;
}

// False when the library refused one.
bool Recorder::MakeDueCalls()
{
    while (recording_.failed_call.empty() && NextCall() <= Now() + clock_unit_s / 2) {
        const Call &call = calls_[next_call_++];
        if (const std::uint32_t result = call.make(); result != TREVIK_OK) {
            recording_.failed_call = call.name;
            recording_.failed_code = result;
            recording_.failed_at_s = Now();
        }
        recording_.calls.push_back({call, log_.Take()});
        TakeSample();
    }
    return recording_.failed_call.empty();
}

// Goes on to the next sample, call or event. False when there is nothing more to see.
bool Recorder::Step()
{
    const double event = NextEvent();
    const double call = NextCall();
    const bool nothing_due = std::isinf(event) && std::isinf(call);
    const bool follows = motion_.kind == Kind::handwheel; // the ticks of the library are no events of the card
    if (nothing_due && recording_.samples.back().speed_pps == 0 && !follows) {
        recording_.ended = true;
        return false;
    }
    const double deadline = std::max(Now(), nothing_due || follows || motion_.for_ms > 0 ? limit_s_ : longest_s);
    const double even = recording_.step_s * static_cast<double>(next_even_);
    const double sudden = std::min({event, call, follows ? NextTick() : never});
    double next = std::min({sudden, even, deadline});
    if (next > sudden - just_before_s) { // an even sample must not hide what was before
        next = sudden;
        Advance(sudden - just_before_s);
        TakeSample();
    }
    Advance(next);
    TakeSample();
    next_even_ += next >= even ? 1 : 0;
    return next < deadline && MakeDueCalls();
}

void Recorder::Advance(double to_s)
{
    if (const std::int64_t to_ns = std::llround(to_s / clock_unit_s); to_ns > now_ns_) {
        TrevikHost_advance(static_cast<double>(to_ns - now_ns_) * clock_unit_s);
        now_ns_ = to_ns;
    }
}

// Each begins with a distance.
void Recorder::TakeTickWrites()
{
    std::vector<Write> writes = log_.Take();
    const auto distance =
        std::find_if(writes.rbegin(), writes.rend(), [](const Write &write) { return write.name == "DISTANCE"; });
    if (distance != writes.rend()) {
        recording_.last_tick.assign(std::prev(distance.base()), writes.end());
    }
}

void Recorder::TakeSample()
{
    std::int32_t position = 0;
    double speed_pps = 0;
    TrevikVirtual_position_read(card, axis, &position);
    TrevikVirtual_speed_read(card, axis, &speed_pps);
    recording_.samples.push_back({Now(), static_cast<double>(position), speed_pps});
}

} // namespace

// Made twice: once to see how long it takes. Not so the handwheel, whose time is known: each start of the library
// adds a tick of its own.
Recording Record(const Motion &motion, RequestLog &log)
{
    double seconds = LongestSeconds(motion);
    if (motion.kind != Kind::handwheel) {
        Recording events = Recorder(motion, log).Run(never);
        if (!events.failed_call.empty()) {
            return events;
        }
        seconds = std::max(events.EndSeconds(), 1e-6);
    }
    return Recorder(motion, log).Run(seconds / even_samples);
}

} // namespace trevik_scope

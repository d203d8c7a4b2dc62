#include "trevik-run/executor.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "trevik-run/interrupt.h"
#include "trevik-run/planner.h"

namespace trevik_run
{
namespace
{

constexpr std::uint32_t err_busy = 303;
constexpr int stop_attempts = 4;

} // namespace

Executor::Executor(const Program &program, const CheckedProgram &checked, const Machine &machine, Card &card,
                   Clock &clock)
    : program_(program),
      checked_(checked),
      machine_(machine),
      card_(card),
      clock_(clock),
      meter_(machine),
      from_(program.start),
      commanded_(ToPulses(program.start, machine)),
      position_(commanded_)
{
    running_.line = MakePathLine(program.start, program.start, machine);
    meter_.Follow(running_.line, running_.line);
}

RunEnd Executor::Run(const RampMaker &ramps)
{
    card_.Prepare(checked_.top_pps);
    const bool done = GoesOn() && RunMoves(ramps) && WaitUntilIdle();
    if (!done) {
        SlowDown(ramps);
        StopAxes();
    }
    card_.Release();
    TakeSample();
    if (card_.Error()) {
        return RunEnd::failed;
    }
    return done ? RunEnd::completed : RunEnd::interrupted;
}

bool Executor::GoesOn() const
{
    return !card_.Error() && (slowing_ || !Interrupted());
}

bool Executor::RunMoves(const RampMaker &ramps)
{
    for (; next_move_ < program_.moves.size(); ++next_move_) {
        const Move &move = program_.moves[next_move_];
        if (move.kind == MoveKind::dwell) {
            if (!RunDwell(static_cast<double>(move.rate))) {
                return false;
            }
            continue;
        }
        const double exit_pps = ExitSpeed(program_, next_move_, machine_);
        if (!RunLine(move, {move.entry_pps, exit_pps, move.speed_pps}, ramps)) {
            return false;
        }
    }
    return true;
}

bool Executor::RunLine(const Move &move, const MoveSpeeds &speeds, const RampMaker &ramps)
{
    const Pulses to = ToPulses(move.target, machine_);
    const PathLine line = MakePathLine(from_, move.target, machine_);
    const CardMoves lines = MakeCardMoves(commanded_, to, line, speeds, ramps, card_.FirstAxis(), machine_.s_curve);
    const double longest = MakePiece(commanded_, to).longest;
    const Handed handed = {&move, line, FeedLength(from_, move.target) / longest};
    for (int i = 0; i < lines.count; ++i) {
        if (!Hand(lines.move[static_cast<std::size_t>(i)], handed)) {
            return false;
        }
        partly_handed_ = i + 1 < lines.count;
    }
    commanded_ = to;
    from_ = move.target;
    return true;
}

bool Executor::RunDwell(double seconds)
{
    if (!WaitUntilIdle()) {
        return false;
    }
    const double end_s = clock_.Now() + seconds;
    while (GoesOn() && clock_.Now() < end_s) {
        Step(end_s - clock_.Now());
    }
    return GoesOn();
}

bool Executor::Hand(const CardMove &move, const Handed &handed)
{
    while (WaitForRoom()) {
        if (card_.Line(move)) {
            queued_ = handed;
            queue_full_ = card_.QueueFull();
            if (!queue_full_) { // the card was idle: it runs already
                QueuedMoveStarts();
            }
            return !card_.Error();
        }
        if (!Step(sample_period_s_)) {
            return false;
        }
    }
    return false;
}

bool Executor::WaitForRoom()
{
    while (queue_full_ && GoesOn()) {
        if (!Step(std::numeric_limits<double>::infinity())) {
            return false;
        }
    }
    return GoesOn();
}

bool Executor::WaitUntilIdle()
{
    if (!WaitForRoom()) {
        return false;
    }
    while (GoesOn() && !card_.Idle()) {
        if (!Step(std::numeric_limits<double>::infinity())) {
            return false;
        }
    }
    TakeSample();
    return GoesOn();
}

// After an interrupt. Short lines end before a stop could ramp down: the contour is followed at falling speeds
// until a line runs that is long enough to be stopped on, or the axes stand.
void Executor::SlowDown(const RampMaker &ramps)
{
    slowing_ = true;
    const bool more = next_move_ < program_.moves.size() && !partly_handed_;
    double speed_pps = more ? static_cast<double>(program_.moves[next_move_].entry_pps) : 0;
    while (!card_.Error() && (queue_full_ || !card_.Idle()) && !RunningLineCanStop()) {
        if (queue_full_ || !HandSlower(ramps, speed_pps)) {
            Step(std::numeric_limits<double>::infinity());
        }
    }
}

// Hands over the next line of the contour. False where the contour ends or its speed is down already.
bool Executor::HandSlower(const RampMaker &ramps, double &speed_pps)
{
    if (speed_pps <= machine_.start_pps || next_move_ == program_.moves.size() ||
        program_.moves[next_move_].kind != MoveKind::feed) {
        return false;
    }
    const Move &move = program_.moves[next_move_];
    const double fall = 2 * ramps.DecelPps2() * static_cast<double>(move.length_pulses);
    const double reached_pps = std::sqrt(std::max(0.0, speed_pps * speed_pps - fall));
    const double exit_pps =
        std::min(ExitSpeed(program_, next_move_, machine_), std::max(reached_pps, machine_.start_pps));
    if (!RunLine(move, {speed_pps, exit_pps, speed_pps}, ramps)) {
        return false;
    }
    speed_pps = exit_pps;
    ++next_move_;
    return true;
}

bool Executor::RunningLineCanStop()
{
    return LongestAxisLeft() >= card_.LongestAxisSpeed() * machine_.ramp_ms / 2000;
}

// Of the running line, in pulses.
double Executor::LongestAxisLeft() const
{
    double left_pulses = 0;
    for (std::size_t i = 0; i < axis_count; ++i) {
        const double end = running_.line.from[i] + running_.line.delta[i];
        left_pulses = std::max(left_pulses, std::fabs(end - position_[i]));
    }
    return left_pulses;
}

double Executor::PulsesDone() const
{
    if (running_.move == nullptr) {
        return 0;
    }
    double longest = 0;
    for (const double delta : running_.line.delta) {
        longest = std::max(longest, std::fabs(delta));
    }
    const double share_left = longest > 0 ? std::min(1.0, LongestAxisLeft() / longest) : 0;
    return pulses_started_ - share_left * static_cast<double>(running_.move->length_pulses);
}

// A move that is queued when the axes are stopped may still start: it is stopped like the first.
void Executor::StopAxes()
{
    for (int attempt = 0; attempt < stop_attempts; ++attempt) {
        card_.Stop(attempt + 1 < stop_attempts ? machine_.ramp_ms : 0);
        const double deadline_s = clock_.Now() + 2e-3 * machine_.ramp_ms + 0.05;
        while (!card_.Idle() && clock_.Now() < deadline_s) {
            const bool was_full = queue_full_;
            Step(deadline_s - clock_.Now());
            if (was_full && !queue_full_) {
                break;
            }
        }
        if (card_.Idle()) {
            return;
        }
    }
}

// Lets time go by until something happens or a sample is due. False when nothing will ever happen.
bool Executor::Step(double longest_wait_s)
{
    const double until_sample_s = std::max(0.0, next_sample_s_ - clock_.Now());
    clock_.Wait(std::min(longest_wait_s, until_sample_s));
    if (queue_full_ && !card_.QueueFull()) {
        QueuedMoveStarts();
        TakeSample();
    } else if (clock_.Now() >= next_sample_s_) {
        TakeSample();
    }
    if (clock_.NothingDue() && longest_wait_s > 1e9 && !card_.Idle()) {
        card_.Fail("waiting for TrevikA_motion_status_read", err_busy);
        return false;
    }
    return true;
}

void Executor::QueuedMoveStarts()
{
    queue_full_ = false;
    if (queued_.move == running_.move) { // the second line of a split move
        return;
    }
    meter_.Follow(running_.line, queued_.line);
    running_ = queued_;
    ++segments_started_;
    pulses_started_ += static_cast<double>(running_.move->length_pulses);
}

void Executor::TakeSample()
{
    while (next_sample_s_ <= clock_.Now()) {
        next_sample_s_ += sample_period_s_;
    }
    card_.ReadPosition(position_);
    meter_.Measure(position_);
    if (progress_ != nullptr) {
        progress_->Update(segments_started_, PulsesDone() / std::max(1.0, checked_.path_pulses), clock_.Now());
    }
    if (sinks_.empty()) {
        return;
    }
    Sample sample;
    sample.time_s = clock_.Now();
    for (std::size_t i = 0; i < axis_count; ++i) {
        sample.position[i] = position_[i] / machine_.pulses_per_unit[i];
    }
    if (running_.move != nullptr) {
        const bool idle = card_.Idle(); // the speed register keeps its last value
        sample.speed_mm_min = idle ? 0 : card_.LongestAxisSpeed() * running_.units_per_pulse * 60;
        sample.rapid = running_.move->kind == MoveKind::rapid;
    }
    for (SampleSink *sink : sinks_) {
        sink->Take(sample);
    }
}

} // namespace trevik_run

#include "trevik-run/executor.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <trevik/TrevikA.h>

#include "trevik-run/interrupt.h"
#include "trevik-run/planner.h"

namespace trevik_run
{
namespace
{

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
    running_.path = {program.start, program.start, machine};
    meter_.Follow(running_.path, running_.path);
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
        if (!RunMove({move.entry_pps, exit_pps, move.speed_pps}, ramps)) {
            return false;
        }
    }
    return true;
}

// The next move of the program, or what is left of it.
bool Executor::RunMove(const MoveSpeeds &speeds, const RampMaker &ramps)
{
    const Move &move = program_.moves[next_move_];
    const ProgrammedPath path = PathOf(program_, move, from_, machine_);
    if (!(path.Curved() ? RunArc(path, speeds, ramps) : RunLine(path, speeds, ramps))) {
        return false;
    }
    commanded_ = ToPulses(move.target, machine_);
    from_ = move.target;
    handed_share_ = 0;
    return true;
}

bool Executor::RunLine(const ProgrammedPath &path, const MoveSpeeds &speeds, const RampMaker &ramps)
{
    const Move &move = program_.moves[next_move_];
    const Pulses to = ToPulses(move.target, machine_);
    const CardMoves lines =
        MakeCardMoves(commanded_, to, path.Line(), speeds, ramps, card_.FirstAxis(), machine_.s_curve);
    for (int i = 0; i < lines.count; ++i) {
        if (!Hand(lines.move[static_cast<std::size_t>(i)], {&move, path, 1})) {
            return false;
        }
        partly_handed_ = i + 1 < lines.count;
    }
    return true;
}

bool Executor::RunArc(const ProgrammedPath &path, const MoveSpeeds &speeds, const RampMaker &ramps)
{
    const Move &move = program_.moves[next_move_];
    const bool helices = !machine_.keep_a && (checked_.axes >> angular_axis & 1U) == 0;
    MakeArcMoves(path, {handed_share_, commanded_, ToPulses(move.target, machine_)}, speeds, ramps,
                 {machine_.start_pps, helices}, arc_moves_);
    for (const CardMove &piece : arc_moves_) {
        if (!Hand(piece, {&move, path, piece.end_share})) {
            return false;
        }
        commanded_ = piece.target;
        handed_share_ = piece.end_share;
        handed_pps_ = piece.max_pps;
    }
    if (arc_moves_.empty()) {
        ++segments_started_;
    }
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
        if (card_.Make(move)) {
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

// After an interrupt. Short moves end before a stop could ramp down: the contour is followed at falling speeds
// until a move runs that is long enough to be stopped on, or the axes stand.
void Executor::SlowDown(const RampMaker &ramps)
{
    slowing_ = true;
    double speed_pps = SpeedToSlowFrom();
    while (!card_.Error() && (queue_full_ || !card_.Idle()) && !RunningMoveCanStop()) {
        if (queue_full_ || !HandSlower(ramps, speed_pps)) {
            Step(std::numeric_limits<double>::infinity());
        }
    }
}

// The path speed at the end of what was handed over; 0 where nothing can follow it.
double Executor::SpeedToSlowFrom() const
{
    if (next_move_ == program_.moves.size() || partly_handed_) {
        return 0;
    }
    return handed_share_ > 0 ? handed_pps_ : static_cast<double>(program_.moves[next_move_].entry_pps);
}

// Hands over the next move of the contour. False where the contour ends or its speed is down already.
bool Executor::HandSlower(const RampMaker &ramps, double &speed_pps)
{
    if (speed_pps <= machine_.start_pps || next_move_ == program_.moves.size() ||
        program_.moves[next_move_].kind != MoveKind::feed) {
        return false;
    }
    const Move &move = program_.moves[next_move_];
    const double fall = 2 * ramps.DecelPps2() * static_cast<double>(move.length_pulses) * (1 - handed_share_);
    const double reached_pps = std::sqrt(std::max(0.0, speed_pps * speed_pps - fall));
    const double exit_pps =
        std::min(ExitSpeed(program_, next_move_, machine_), std::max(reached_pps, machine_.start_pps));
    if (!RunMove({speed_pps, exit_pps, speed_pps}, ramps)) {
        return false;
    }
    speed_pps = exit_pps;
    ++next_move_;
    return true;
}

bool Executor::RunningMoveCanStop()
{
    const double left_pulses = (ShareLeft() - (1 - running_.end_share)) * running_.path.Steps();
    return left_pulses >= card_.LongestAxisSpeed() * machine_.ramp_ms / 2000;
}

double Executor::ShareLeft() const
{
    return 1 - running_.path.NearestShare(position_);
}

double Executor::PulsesDone() const
{
    if (running_.move == nullptr) {
        return 0;
    }
    return pulses_started_ - ShareLeft() * static_cast<double>(running_.move->length_pulses);
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
        card_.Fail("waiting for TrevikA_motion_status_read", TREVIK_ERR_BUSY);
        return false;
    }
    return true;
}

void Executor::QueuedMoveStarts()
{
    queue_full_ = false;
    if (queued_.move == running_.move) { // the next part of a split move
        running_.end_share = queued_.end_share;
        return;
    }
    meter_.Follow(running_.path, queued_.path);
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
        const double per_step = running_.path.UnitsPerStep(running_.path.NearestShare(position_));
        sample.speed_mm_min = idle ? 0 : card_.LongestAxisSpeed() * per_step * 60;
        sample.rapid = running_.move->kind == MoveKind::rapid;
    }
    for (SampleSink *sink : sinks_) {
        sink->Take(sample);
    }
}

} // namespace trevik_run

// Drives the card through a planned program and measures what it does.
#pragma once

#include <vector>

#include "trevik-run/arc_moves.h"
#include "trevik-run/card.h"
#include "trevik-run/checker.h"
#include "trevik-run/clock.h"
#include "trevik-run/deviation.h"
#include "trevik-run/progress.h"
#include "trevik-run/sample.h"

namespace trevik_run
{

enum class RunEnd : std::uint8_t { completed, interrupted, failed };

class Executor
{
  public:
    Executor(const Program &program, const CheckedProgram &checked, const Machine &machine, Card &card,
             Clock &clock);

    void SampleEvery(double seconds) { sample_period_s_ = seconds; }
    void SendSamplesTo(SampleSink &sink) { sinks_.push_back(&sink); }
    void ShowOn(Progress &progress) { progress_ = progress.Hidden() ? nullptr : &progress; }

    RunEnd Run(const RampMaker &ramps);

    const Deviation &LargestDeviation() const { return meter_.Largest(); }
    const Pulses &Position() const { return position_; }
    std::uint32_t SegmentsBegun() const { return segments_started_; }

  private:
    // A move that was handed to the card, as far as measuring needs it.
    struct Handed {
        const Move *move = nullptr;
        ProgrammedPath path;
        double end_share = 1; // of an arc: where the card's move ends
    };

    bool RunMoves(const RampMaker &ramps);
    bool RunMove(const MoveSpeeds &speeds, const RampMaker &ramps);
    bool RunArc(const ProgrammedPath &path, const MoveSpeeds &speeds, const RampMaker &ramps);
    bool RunLine(const ProgrammedPath &path, const MoveSpeeds &speeds, const RampMaker &ramps);
    bool RunDwell(double seconds);
    bool Hand(const CardMove &move, const Handed &handed);
    bool WaitForRoom();
    bool WaitUntilIdle();
    void SlowDown(const RampMaker &ramps);
    bool HandSlower(const RampMaker &ramps, double &speed_pps);
    bool RunningMoveCanStop();
    double SpeedToSlowFrom() const;
    double ShareLeft() const;
    double PulsesDone() const;
    void StopAxes();
    bool Step(double longest_wait_s);
    void QueuedMoveStarts();
    void TakeSample();
    bool GoesOn() const;

    const Program &program_;
    const CheckedProgram &checked_;
    const Machine &machine_;
    Card &card_;
    Clock &clock_;
    DeviationMeter meter_;
    std::vector<SampleSink *> sinks_;
    Progress *progress_ = nullptr;
    double sample_period_s_ = 1e-3;
    double next_sample_s_ = 0;
    std::size_t next_move_ = 0;  // the first that was not wholly handed over
    Vec4 from_;                  // where it begins
    bool partly_handed_ = false; // of a split line only the beginning
    double handed_share_ = 0;    // of an arc
    double handed_pps_ = 0;      // path speed there
    std::vector<CardMove> arc_moves_;
    bool slowing_ = false; // an interrupt is being obeyed
    Pulses commanded_{};   // where the last handed move ends
    Pulses position_{};
    Handed running_;
    Handed queued_;
    bool queue_full_ = false;
    std::uint32_t segments_started_ = 0;
    double pulses_started_ = 0;
};

} // namespace trevik_run

// From the text of a part program to the machine's last stop.
#pragma once

#include <string_view>
#include <vector>

#include "trevik-run/checker.h"
#include "trevik-run/options.h"
#include "trevik-run/report.h"

namespace trevik_run
{

// A part that was read, checked and planned for a machine. Throws PartError.
class Part
{
  public:
    // start: where the axes stand, mm and degrees.
    Part(std::string_view text, const Options &options, const Vec4 &start);

    const Program &Moves() const { return program_; }
    const CheckedProgram &Checked() const { return checked_; }
    const RampMaker &Ramps() const { return ramps_; }

  private:
    Program program_;
    CheckedProgram checked_;
    RampMaker ramps_;
};

// Runs the part on the card of the options. The library must be open (OpenCard); it stays open. Samples go to the
// sinks; with none, positions are still measured. The result is report.end.
RunEnd RunOnCard(const Part &part, const Options &options, const std::vector<SampleSink *> &sinks, Report &report);

// The whole way for a part in memory: opens the library, reads, checks, plans and runs the part without drawing,
// and closes the library. Throws PartError; then nothing has moved.
RunEnd RunPart(std::string_view text, const Options &options, Report &report);

// Where the axes of a card stand, in mm and degrees.
Vec4 ToUnits(const Pulses &position, const Machine &machine);

} // namespace trevik_run

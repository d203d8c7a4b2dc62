// What the card reports at one moment, and who takes it.
#pragma once

#include "trevik-run/machine.h"

namespace trevik_run
{

struct Sample {
    double time_s = 0;
    Vec4 position{};         // mm and degrees
    double speed_mm_min = 0; // along the path; degrees/min where only A turns
    bool rapid = false;
};

class SampleSink
{
  public:
    SampleSink() = default;
    virtual ~SampleSink() = default;
    SampleSink(const SampleSink &) = delete;
    SampleSink &operator=(const SampleSink &) = delete;
    virtual void Take(const Sample &sample) = 0;
};

} // namespace trevik_run

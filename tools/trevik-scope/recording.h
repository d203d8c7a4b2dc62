// A motion made on a virtual card, and what was seen of it.
#pragma once

#include <vector>

#include "trevik-scope/calls.h"
#include "trevik-scope/request_log.h"

namespace trevik_scope
{

struct Sample {
    double time_s = 0;
    double position = 0;  // pulses
    double speed_pps = 0; // signed
};

// What one call wrote.
struct CallWrites {
    Call call;
    std::vector<Write> writes;
};

struct Recording {
    std::vector<Sample> samples; // where something happens at once: one just before and one just after
    std::vector<CallWrites> calls;
    std::vector<Write> last_tick; // what the library wrote by itself, following a handwheel
    double step_s = 0;            // between even samples
    bool ended = false;           // false: the axis was still moving when the time was up
    std::string failed_call;      // empty: every call was accepted
    std::uint32_t failed_code = 0;
    double failed_at_s = 0;

    double EndSeconds() const { return samples.empty() ? 0 : samples.back().time_s; }
};

// Makes the motion on a fresh card in no time at all.
Recording Record(const Motion &motion, RequestLog &log);

} // namespace trevik_scope

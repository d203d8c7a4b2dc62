// The home modes as lists of phases.
#pragma once

#include <cstdint>

namespace trevik::virtual_card
{

enum class Way : std::int8_t { Toward = 1, Away = -1 };
enum class Pace : std::uint8_t { Full, Start };

// What ends a phase. Home and the end limit of the homing side count as soon as they are active; going off is
// waited for. Back is a move to where the phase before it was reached. End: there are no more phases.
enum class Until : std::uint8_t { HomeOn, HomeOff, Index, LimitOn, LimitOff, Back, End };

// What happens there: a stop on this pulse; a ramp down to the start speed and a stop; nothing, the next phase goes
// on; the search's clearance is travelled.
enum class Then : std::uint8_t { Stop, SlowDown, GoOn, Clear };

struct HomePhase {
    Way way = Way::Toward;
    Pace pace = Pace::Full;
    Until until = Until::End;
    Then then = Then::Stop;
};

inline constexpr unsigned home_mode_count = 13;
inline constexpr unsigned most_home_phases = 4;

using HomePhases = HomePhase[most_home_phases];

// Modes above the highest one do what mode 0 does.
const HomePhase *PhasesOfMode(std::uint32_t mode);

// A search that meets the end limit, or starts on the home switch, first leaves the switch: the first phase ends at
// the limit, the second one goes back over the switch.
const HomePhase *PhasesOfSearch();

// Progress of one homing.
struct HomingState {
    const HomePhase *phase = nullptr;
    const HomePhase *mode = nullptr;
    bool phase_over = false; // the axis slows down to the phase's end
    bool may_turn = false;   // the search has not met the end limit yet
    std::uint32_t index_left = 0;
    std::int64_t mark = 0; // where the last phase was reached
};

} // namespace trevik::virtual_card

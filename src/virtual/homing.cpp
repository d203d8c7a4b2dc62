#include "virtual/homing.h"

namespace trevik::virtual_card
{
namespace
{

constexpr HomePhase to_home{Way::Toward, Pace::Full, Until::HomeOn, Then::SlowDown};
constexpr HomePhase over_home{Way::Toward, Pace::Full, Until::HomeOn, Then::GoOn};
constexpr HomePhase to_limit{Way::Toward, Pace::Full, Until::LimitOn, Then::SlowDown};
constexpr HomePhase off_home{Way::Away, Pace::Start, Until::HomeOff, Then::Stop};
constexpr HomePhase onto_home{Way::Toward, Pace::Start, Until::HomeOn, Then::Stop};
constexpr HomePhase off_limit{Way::Away, Pace::Start, Until::LimitOff, Then::Stop};
constexpr HomePhase on_to_index{Way::Toward, Pace::Start, Until::Index, Then::Stop};
constexpr HomePhase fast_on_to_index{Way::Toward, Pace::Full, Until::Index, Then::SlowDown};
constexpr HomePhase back_to_index{Way::Away, Pace::Start, Until::Index, Then::Stop};
constexpr HomePhase fast_back_to_index{Way::Away, Pace::Full, Until::Index, Then::SlowDown};
constexpr HomePhase back{Way::Away, Pace::Full, Until::Back, Then::Stop};
constexpr HomePhase end{};

constexpr HomePhases modes[home_mode_count] = {
    {to_home, end},
    {to_home, off_home, onto_home, end},
    {over_home, on_to_index, end},
    {over_home, fast_on_to_index, end},
    {to_home, back_to_index, end},
    {to_home, fast_back_to_index, end},
    {to_limit, off_limit, end},
    {to_limit, back_to_index, end},
    {to_limit, fast_back_to_index, end},
    {to_home, back, end},
    {over_home, fast_on_to_index, back, end},
    {to_home, fast_back_to_index, back, end},
    {to_limit, fast_back_to_index, back, end},
};

constexpr HomePhases search = {to_limit, {Way::Away, Pace::Full, Until::HomeOff, Then::Clear}, end};

} // namespace

const HomePhase *PhasesOfMode(std::uint32_t mode)
{
    // cppcheck-suppress CastIntegerToAddressAtReturn ; an element is an array
    return modes[mode < home_mode_count ? mode : 0];
}

const HomePhase *PhasesOfSearch()
{
    return search;
}

} // namespace trevik::virtual_card

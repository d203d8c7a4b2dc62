// Homing: the phases of the home mode, one leg after another.
#include "virtual/chip.h"

#include "virtual/register_profile.h"

namespace trevik::virtual_card
{
namespace
{

// Fields of HOME_CONFIG.
constexpr auto home_mode = home_config::mode;
constexpr auto index_option = home_config::option;

constexpr Input LimitOf(std::int64_t way)
{
    return way > 0 ? Input::PlusLimit : Input::MinusLimit;
}

} // namespace

// A search that stands on the home switch leaves it first.
void Chip::begin_homing(Section &axis, const Moment &now)
{
    HomingState &homing = axis.homing;
    const bool search = axis.kind == Kind::HomeSearch;
    const bool on_home = (inputs_at(axis, 0) & Bit(Input::Home)) != 0;
    homing.mode = PhasesOfMode(home_mode.get(axis.reg(Register::HOME_CONFIG)));
    homing.phase = search && on_home ? PhasesOfSearch() + 1 : homing.mode;
    homing.may_turn = search && !on_home && homing.mode->until == Until::HomeOn;
    begin_phase(axis, {now, 0, false});
}

// Begins the phase: as a new leg, unless the axis is on its way already.
void Chip::begin_phase(Section &axis, const Instant &now)
{
    HomingState &homing = axis.homing;
    const HomePhase &phase = *homing.phase;
    if (phase.until == Until::End) {
        raise_event(axis, Event::Ended);
        return;
    }
    homing.phase_over = false;
    homing.index_left = index_option.get(axis.reg(Register::HOME_CONFIG)) + 1;
    axis.creeping = phase.pace == Pace::Start;
    if (axis.state == State::Running) {
        if (axis.creeping)
            replan(axis, now.when);
        return;
    }
    const std::int64_t way = phase.way == Way::Toward ? axis.target : -axis.target;
    axis.distance = phase.until == Until::Back ? homing.mark - axis.base_position : way;
    launch(axis, now.when);
}

void Chip::end_phase(Section &axis, const Instant &now)
{
    HomingState &homing = axis.homing;
    ++homing.phase;
    const bool search_left = homing.phase == PhasesOfSearch() + 2;
    if (search_left)
        homing.phase = homing.mode;
    begin_phase(axis, now);
}

// True when the end limit that the axis runs into is where its homing goes. A search that meets it before the home
// switch turns round there.
bool Chip::expects_limit(const Section &axis)
{
    if (!IsHoming(axis.kind) || axis.stopping)
        return false;
    const HomingState &homing = axis.homing;
    const bool first = homing.phase == homing.mode && !homing.phase_over;
    return homing.phase->until == Until::LimitOn || (homing.may_turn && first);
}

void Chip::look_for_home(Section &axis, std::uint32_t before, const Instant &now)
{
    HomingState &homing = axis.homing;
    if (homing.phase_over || axis.stopping)
        return;
    const std::uint32_t limit = Bit(LimitOf(axis.target));
    const std::uint32_t falling = before & ~axis.seen;
    if (homing.may_turn && homing.phase == homing.mode && (axis.seen & limit) != 0) {
        homing.may_turn = false;
        homing.phase = PhasesOfSearch();
    }
    bool reached = false;
    switch (homing.phase->until) {
    case Until::HomeOn:
        reached = (axis.seen & Bit(Input::Home)) != 0;
        break;
    case Until::HomeOff:
        reached = (falling & Bit(Input::Home)) != 0;
        break;
    case Until::LimitOn:
        reached = (axis.seen & limit) != 0;
        break;
    case Until::LimitOff:
        reached = (falling & limit) != 0;
        break;
    case Until::Index:
        reached = index_counted(axis, axis.seen & ~before, now);
        break;
    case Until::Back:
    case Until::End:
        break;
    }
    if (reached)
        reach(axis, now);
}

// Counts an index pulse, and tells whether it was the last one to count.
bool Chip::index_counted(Section &axis, std::uint32_t rising, const Instant &now)
{
    const std::int64_t position = axis.base_position + share(axis, now.pulses);
    const bool index = (rising & Bit(Input::Index)) != 0 || (now.arrived && axis.around.index_at(position));
    return index && --axis.homing.index_left == 0;
}

// The axis is where its phase ends, or begins to slow down for it.
void Chip::reach(Section &axis, const Instant &now)
{
    HomingState &homing = axis.homing;
    const HomePhase &phase = *homing.phase;
    homing.mark = axis.base_position + share(axis, now.pulses);
    if (phase.then == Then::GoOn) {
        end_phase(axis, now);
        return;
    }
    if (phase.then == Then::Clear) {
        travel_clearance(axis, now);
        return;
    }
    const bool hard_limit =
        phase.until == Until::LimitOn && signal_config1::el_mode.get(axis.reg(Register::SIGNAL_CONFIG1)) == 0;
    const bool stands = now.pulses == 0;
    if (phase.then == Then::Stop || axis.start == StartKind::High || hard_limit || stands) {
        settle_group(axis, now);
        end_phase(axis, now);
    } else {
        homing.phase_over = true;
        slow_to_start_speed(axis, axis, now.when);
    }
}

// The leg ends DISTANCE pulses from here, or where the axis has slowed down if that is farther.
void Chip::travel_clearance(Section &axis, const Instant &now)
{
    const std::int64_t clearance = Size(static_cast<std::int32_t>(axis.reg(Register::DISTANCE)));
    const double pps = axis.profile.speed_at(axis.start_time.seconds_until(now.when));
    axis.homing.phase_over = true;
    if (BrakingDistance(pps, leg_input(axis)) > static_cast<double>(clearance)) {
        slow_to_start_speed(axis, axis, now.when);
        return;
    }
    axis.longest = now.pulses + clearance;
    axis.distance = axis.distance < 0 ? -axis.longest : axis.longest;
    replan(axis, now.when);
}

} // namespace trevik::virtual_card

// Operations of the chip: how they start, follow one another, change and end.
#include "virtual/chip.h"

namespace trevik::virtual_card
{
namespace
{

constexpr double reference_clock_hz = 19'660'800.0;

// Stands for the distance of an operation that only a stop ends.
constexpr std::int64_t endless = std::int64_t{1} << 60;

std::int64_t Size(std::int64_t distance)
{
    return distance < 0 ? -distance : distance;
}

bool SameOperation(std::uint32_t mode, OperationCode code)
{
    return mode_field::operation.get(mode) == static_cast<std::uint32_t>(code);
}

bool Positioning(std::uint32_t mode)
{
    return SameOperation(mode, OperationCode::Positioning) ||
           SameOperation(mode, OperationCode::PositioningBacklash);
}

// What this chip can run; a start of anything else is ignored.
bool Known(std::uint32_t mode)
{
    return Positioning(mode) || SameOperation(mode, OperationCode::Line) ||
           SameOperation(mode, OperationCode::ContinuousPlus) ||
           SameOperation(mode, OperationCode::ContinuousMinus);
}

// Signed distance of the operation that the direct registers describe.
std::int64_t OperationDistance(std::uint32_t mode, std::uint32_t distance)
{
    if (SameOperation(mode, OperationCode::ContinuousPlus))
        return endless;
    if (SameOperation(mode, OperationCode::ContinuousMinus))
        return -endless;
    return static_cast<std::int32_t>(distance);
}

// A ramp register counts reference clocks: 4 for each unit of speed and step of the rate. One unit is 300 /
// units_per pulses/s.
RampShape Ramp(double unit_pps, double units_per, std::uint32_t rate, std::uint32_t s_range, bool s_curve)
{
    constexpr double clocks_per_unit = 4;
    constexpr double seconds_per_clock_unit = clocks_per_unit / (300 * reference_clock_hz);
    const double steps = rate + 1.0;
    return {unit_pps * (reference_clock_hz / clocks_per_unit) / steps, steps * units_per * seconds_per_clock_unit,
            s_curve, s_range * unit_pps};
}

// Values of an operation in pulses and seconds, from the direct registers of its leader.
template <class Section>
ProfileInput ProfileOf(const Section &s, double distance)
{
    const double units_per = s.reg(Register::MULTIPLIER) + 1.0;
    const double unit = 300.0 / units_per;
    const std::uint32_t mode = s.reg(Register::MODE);
    const bool s_curve = mode_field::s_curve.get(mode) != 0;
    ProfileInput input;
    input.distance = distance;
    input.start_pps = s.reg(Register::START_SPEED) * unit;
    input.max_pps = s.reg(Register::MAX_SPEED) * unit;
    input.accel = Ramp(unit, units_per, s.reg(Register::ACCEL_RATE), s.reg(Register::S_ACCEL_RANGE), s_curve);
    input.decel = Ramp(unit, units_per, s.reg(Register::DECEL_RATE), s.reg(Register::S_DECEL_RANGE), s_curve);
    input.start = s.start;
    input.manual_rampdown = mode_field::manual_rampdown.get(mode) != 0;
    input.rampdown_pulses = s.reg(Register::RAMPDOWN_POINT);
    return input;
}

double ProfileDistance(std::int64_t pulses)
{
    return pulses >= endless ? never : static_cast<double>(pulses);
}

} // namespace

// Axes of a set whose mode register asks for a line: they move as one.
unsigned Chip::line_axes(unsigned axis_set, Register mode)
{
    unsigned axes = 0;
    each(axis_set, [&](unsigned axis, const Section &section) {
        if (SameOperation(section.reg(mode), OperationCode::Line))
            axes |= 1u << axis;
    });
    return axes;
}

// A start command takes the set of an axis whose mode word was written last.
void Chip::start(unsigned axis_set, StartKind kind, const Moment &now)
{
    unsigned preset = 0;
    unsigned idle = 0;
    each(axis_set, [&](unsigned axis, const Section &section) {
        if (section.preset_chosen)
            preset |= 1u << axis;
        else if (!section.busy())
            idle |= 1u << axis;
    });
    queue(preset, kind);
    start_queued(now);

    const unsigned direct = axis_set & 0xFu & ~preset;
    const unsigned line = line_axes(direct, Register::MODE);
    if (line != 0 && (line & ~idle) == 0)
        prepare(line, kind, now);
    each(direct & idle & ~line, [&](unsigned axis, const Section &section) {
        if (Known(section.reg(Register::MODE)))
            prepare(1u << axis, kind, now);
    });
}

void Chip::queue(unsigned axis_set, StartKind kind)
{
    const unsigned line = line_axes(axis_set, Register::PRESET_MODE);
    each(axis_set, [&](unsigned axis, Section &section) {
        const unsigned bit = 1u << axis;
        section.preset_chosen = false;
        section.queued = Known(section.reg(Register::PRESET_MODE));
        section.queued_group = static_cast<std::uint8_t>((line & bit) != 0 ? line : bit);
        section.queued_start = kind;
    });
}

// True when every axis of the queued operation is free and has it queued.
bool Chip::queue_ready(unsigned axis)
{
    const Section &first = sections_[axis];
    bool ready = first.queued;
    each(first.queued_group, [&](unsigned, const Section &section) {
        ready =
            ready && section.queued && section.queued_group == first.queued_group && section.state == State::Idle;
    });
    return ready;
}

void Chip::start_queued(const Moment &now)
{
    constexpr unsigned copied = WriteCode(Register::PRESET_S_DECEL_RANGE) - 0x80u + 1;
    for (unsigned axis = 0; axis < chip_axes; ++axis) {
        if (!queue_ready(axis))
            continue;
        const unsigned group = sections_[axis].queued_group;
        const StartKind kind = sections_[axis].queued_start;
        each(group, [](unsigned, Section &section) {
            for (unsigned i = 0; i < copied; ++i)
                section.registers[i + 0x10] = section.registers[i];
            section.reg(Register::ARC_STEPS) = section.reg(Register::PRESET_ARC_STEPS);
            section.queued = false;
        });
        prepare(group, kind, now);
    }
}

// The direct registers of a group become its operation: at once, or when its trigger comes.
void Chip::prepare(unsigned group, StartKind kind, const Moment &now)
{
    unsigned leader = chip_axes;
    each(group, [&](unsigned axis, Section &section) {
        section.group = static_cast<std::uint8_t>(group);
        section.start = kind;
        section.origin = 0;
        section.remaining = 0;
        section.distance = OperationDistance(section.reg(Register::MODE), section.reg(Register::DISTANCE));
        section.state = State::Waiting;
        if (leader == chip_axes || Size(section.distance) > Size(sections_[leader].distance))
            leader = axis;
    });
    each(group, [&](unsigned, Section &section) { section.leader = static_cast<std::uint8_t>(leader); });
    if (mode_field::start_trigger.get(sections_[leader].reg(Register::MODE)) == 0)
        launch(sections_[leader], now);
}

void Chip::launch(Section &leader, const Moment &now)
{
    each(leader.group, [](unsigned, Section &section) { section.state = State::Running; });
    leader.turns_back = false;
    leader.stopping = false;
    leader.start_time = now;
    leader.longest = Size(leader.distance);
    leader.profile.plan(ProfileOf(leader, ProfileDistance(leader.longest)));
    leader.due = now.later(leader.profile.duration_s());
}

// The simultaneous-start signal reaches every axis that waits for it.
void Chip::trigger_waiting(const Moment &now)
{
    constexpr auto simultaneous = static_cast<std::uint32_t>(StartTrigger::SimultaneousStart);
    each(all_axes, [&](unsigned axis, Section &section) {
        if (section.state == State::Waiting && section.leader == axis &&
            mode_field::start_trigger.get(section.reg(Register::MODE)) == simultaneous)
            launch(section, now);
    });
}

// The axes of an operation stand where `pulses` of its leader have brought them.
void Chip::settle_group(Section &leader, std::int64_t pulses)
{
    each(leader.group, [&](unsigned, Section &section) {
        const std::int64_t done = section.state == State::Running ? share(section, pulses) : 0;
        section.remaining = static_cast<std::uint32_t>(Size(section.distance - done));
        section.base_counter1 += static_cast<std::uint32_t>(done);
        section.base_position = static_cast<std::int32_t>(static_cast<std::uint32_t>(section.base_position) +
                                                          static_cast<std::uint32_t>(done));
        section.origin += done;
        section.state = State::Idle;
    });
    leader.due = {};
}

void Chip::finish(Section &leader, const Moment &now)
{
    settle_group(leader, leader_pulses(leader, now.reached_ns()));
    if (!leader.turns_back)
        return;
    leader.distance = static_cast<std::int32_t>(leader.reg(Register::DISTANCE)) - leader.origin;
    leader.start = StartKind::Accelerating;
    launch(leader, now);
}

// Decelerates to standstill by the deceleration registers of `rates` as they are now.
void Chip::slow_down(Section &leader, const Section &rates, std::int64_t now_ns)
{
    leader.profile.stop(leader.start_time.seconds_until(now_ns), ProfileOf(rates, 0).decel,
                        ProfileDistance(leader.longest));
    leader.due = leader.start_time.later(leader.profile.duration_s());
}

// What is queued on an axis is dropped with all axes that it would have moved.
void Chip::drop_queue(unsigned axis_set)
{
    each(axis_set, [&](unsigned, const Section &section) {
        each(section.queued ? section.queued_group : 0u, [](unsigned, Section &other) { other.queued = false; });
    });
}

// A stop of one axis of a line stops the line: by the rates of its leader if that was named, otherwise by those of
// the first axis that was. What is queued behind a stopped operation is dropped.
void Chip::stop(unsigned axis_set, std::int64_t now_ns)
{
    each(axis_set, [&](unsigned axis, Section &section) {
        const unsigned group = section.state == State::Idle ? 1u << axis : section.group;
        drop_queue(group);
        Section &leader = leader_of(section);
        if (section.state == State::Waiting)
            settle_group(leader, 0);
        const unsigned named = group & axis_set;
        const bool leader_named = (named >> section.leader & 1) != 0;
        const bool decides = leader_named ? axis == section.leader : named >> axis << axis == named;
        if (section.state != State::Running || !decides)
            return;
        leader.turns_back = false;
        leader.stopping = true;
        slow_down(leader, section, now_ns);
    });
}

void Chip::stop_at_once(unsigned axis_set, std::int64_t now_ns)
{
    each(axis_set, [&](unsigned axis, Section &section) {
        drop_queue(section.state == State::Idle ? 1u << axis : section.group);
        if (section.state == State::Idle)
            return;
        Section &leader = leader_of(section);
        settle_group(leader, section.state == State::Running ? leader_pulses(leader, now_ns) : 0);
    });
}

// A new distance for a positioning operation. A waiting one takes it when it starts. A running one is kept straight
// on while the axis can still slow down before the new end; otherwise the axis slows down and comes back. An
// operation that is being stopped stays so.
void Chip::change_distance(Section &section, std::int64_t now_ns)
{
    if (section.state == State::Idle || section.stopping || !Positioning(section.reg(Register::MODE)))
        return;
    const std::int64_t target = static_cast<std::int32_t>(section.reg(Register::DISTANCE)) - section.origin;
    if (section.state == State::Waiting) {
        section.distance = target;
        return;
    }
    const bool same_way = (target < 0) == (section.distance < 0);
    const ProfileInput input = ProfileOf(section, static_cast<double>(Size(target)));
    const double time_s = section.start_time.seconds_until(now_ns);
    const double slowing = RampDistance(section.profile.speed_at(time_s), input.start_pps, input.decel);
    if (same_way && section.profile.distance_at(time_s) + slowing <= input.distance) {
        section.distance = target;
        section.longest = Size(target);
        section.turns_back = false;
        section.profile.replan(time_s, input);
        section.due = section.start_time.later(section.profile.duration_s());
    } else {
        section.longest = endless;
        section.turns_back = true;
        slow_down(section, section, now_ns);
    }
    update_next_event(now_ns);
}

} // namespace trevik::virtual_card

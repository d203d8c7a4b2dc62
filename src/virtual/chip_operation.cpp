// Operations of the chip: how they start, follow one another and end.
#include "virtual/chip.h"

#include "virtual/register_profile.h"

namespace trevik::virtual_card
{
namespace
{

// Backlash correction, in MOTION_CONFIG.
constexpr BitField backlash_pulses{0, 12};
constexpr BitField backlash_mode{12, 2};

std::int8_t WayOf(std::int64_t distance)
{
    return static_cast<std::int8_t>(distance > 0 ? 1 : distance < 0 ? -1 : 0);
}

// Pulses at a speed that stays the same.
ProfileInput EvenRun(double pulses, double pps)
{
    ProfileInput input;
    input.distance = pulses;
    input.start_pps = input.max_pps = pps;
    return input;
}

} // namespace

// Axes of a set whose mode register asks for a line: they move as one.
unsigned Chip::line_axes(unsigned axis_set, Register mode)
{
    unsigned axes = 0;
    each(axis_set, [&](unsigned axis, const Section &section) {
        if (KindOf(section.reg(mode)) == Kind::Line)
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
        if (KindOf(section.reg(Register::MODE)) != Kind::Unknown)
            prepare(1u << axis, kind, now);
    });
    // A start of an axis that runs continuously changes its speed: all registers count as they are.
    each(direct & ~idle & ~line, [&](unsigned, Section &section) {
        if (section.kind == Kind::Continuous && section.state == State::Running)
            retarget(section, now);
    });
}

void Chip::queue(unsigned axis_set, StartKind kind)
{
    const unsigned line = line_axes(axis_set, Register::PRESET_MODE);
    each(axis_set, [&](unsigned axis, Section &section) {
        const unsigned bit = 1u << axis;
        section.preset_chosen = false;
        section.queued = KindOf(section.reg(Register::PRESET_MODE)) != Kind::Unknown;
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
        const std::uint32_t mode = section.reg(Register::MODE);
        section.group = static_cast<std::uint8_t>(group);
        section.kind = KindOf(mode);
        section.start = kind;
        section.origin = 0;
        section.distance = section.target = OperationDistance(mode, section.reg(Register::DISTANCE));
        section.rest = 0;
        section.state = State::Waiting;
        if (leader == chip_axes || Size(section.distance) > Size(sections_[leader].distance))
            leader = axis;
    });
    each(group, [&](unsigned, Section &section) { section.leader = static_cast<std::uint8_t>(leader); });
    if (mode_field::start_trigger.get(sections_[leader].reg(Register::MODE)) == 0)
        begin(sections_[leader], now);
}

void Chip::begin(Section &leader, const Moment &now)
{
    leader.stopping = false;
    leader.creeping = false;
    if (IsHoming(leader.kind))
        begin_homing(leader, now);
    else
        launch(leader, now);
}

// The simultaneous-start signal reaches every axis that waits for it.
void Chip::trigger_waiting(const Moment &now)
{
    constexpr auto simultaneous = static_cast<std::uint32_t>(StartTrigger::SimultaneousStart);
    each(all_axes, [&](unsigned axis, Section &section) {
        if (section.state == State::Waiting && section.leader == axis &&
            mode_field::start_trigger.get(section.reg(Register::MODE)) == simultaneous)
            begin(section, now);
    });
}

// The running leg as its leader's registers describe it now.
ProfileInput Chip::leg_input(const Section &leader)
{
    ProfileInput input = ProfileOf(leader, ProfileDistance(leader.longest));
    if (leader.slowed || leader.creeping)
        input.max_pps = Smaller(input.max_pps, input.start_pps);
    if (IsHoming(leader.kind))
        input.manual_rampdown = false; // the point is that of an earlier move
    return input;
}

// Pulses that take up the backlash before a leg that turns the axis round.
std::uint32_t Chip::slack(const Section &leader)
{
    constexpr auto corrected = static_cast<std::uint32_t>(OperationCode::PositioningBacklash);
    const std::uint32_t config = leader.reg(Register::MOTION_CONFIG);
    const bool asked = mode_field::operation.get(leader.reg(Register::MODE)) == corrected &&
                       leader.kind == Kind::Positioning && backlash_mode.get(config) != 0;
    return asked && leader.last_way * WayOf(leader.distance) < 0 ? backlash_pulses.get(config) : 0;
}

// A leg starts: the distances of the group are its own.
void Chip::launch(Section &leader, const Moment &now)
{
    const std::uint32_t correction = slack(leader);
    std::uint32_t active = 0;
    each(leader.group, [&](unsigned, Section &section) {
        section.state = State::Running;
        section.rest = 0;
        section.last_way = section.distance != 0 ? WayOf(section.distance) : section.last_way;
        section.seen = inputs_at(section, 0);
        active |= section.seen;
    });
    leader.turns_back = false;
    leader.correcting = correction != 0;
    leader.slowed = active != 0 && slow_down_asked(leader);
    leader.start_time = now;
    leader.passed = 0;
    leader.longest = leader.correcting ? 0 : Size(leader.distance);
    const double unit = SpeedUnit(leader.reg(Register::MULTIPLIER));
    leader.profile.plan(leader.correcting ? EvenRun(correction, leader.reg(Register::CORRECTION_SPEED) * unit)
                                          : leg_input(leader));
    leader.due = now.later(leader.profile.duration_s());
    if (active != 0)
        look(leader, {now, 0, false});
}

// The axes of an operation stand where `pulses` of its leader have brought them.
void Chip::settle_group(Section &leader, std::int64_t pulses)
{
    each(leader.group, [&](unsigned, Section &section) {
        const std::int64_t done = section.state == State::Running ? share(section, pulses) : 0;
        section.rest = HasDistance(section.kind) ? section.target - done : 0;
        section.base_counter1 += static_cast<std::uint32_t>(done);
        section.base_position = static_cast<std::int32_t>(static_cast<std::uint32_t>(section.base_position) +
                                                          static_cast<std::uint32_t>(done));
        section.origin += done;
        section.state = State::Idle;
    });
    leader.due = leader.edge = {};
}

// A leg has put out its last pulse. Another one follows if the axis turns back, has taken up its backlash, or is
// homing.
void Chip::finish(Section &leader, const Moment &now)
{
    settle_group(leader, leader_pulses(leader, now.reached_ns()));
    if (leader.stopping)
        return;
    if (leader.turns_back || leader.correcting) {
        if (leader.turns_back)
            leader.start = StartKind::Accelerating;
        leader.distance = leader.target = rest_of_operation(leader);
        launch(leader, now);
    } else if (IsHoming(leader.kind)) {
        end_phase(leader, {now, 0, false});
    }
}

} // namespace trevik::virtual_card

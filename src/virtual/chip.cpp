// The chip as the driver and the machine see it: registers, status, and what passing time does.
#include "virtual/chip.h"

#include "virtual/register_profile.h"

namespace trevik::virtual_card
{
namespace
{

// A pulse counts as put out a hair before its exact time, so that rounding never hides the last one.
constexpr double pulse_tolerance = 1e-6;

constexpr auto encoder_backwards = signal_config2::pulse_input_option;

// Bits of the main status.
constexpr unsigned soft_limit_status = 8; // and 9
constexpr std::uint32_t comparator_status = 1u << 12;

constexpr unsigned first_write_code = 0x80;
constexpr unsigned first_read_code = 0xC0;

constexpr unsigned CounterNumber(Register reg)
{
    return WriteCode(reg) - WriteCode(Register::COUNTER1) + 1u;
}

// The flags of a register that reading clears.
std::uint32_t Taken(std::uint32_t &flags)
{
    const std::uint32_t taken = flags;
    flags = 0;
    return taken;
}

} // namespace

// The first thing that happens by itself, and what follows from it at the same moment.
void Chip::next_thing()
{
    Section *first = &sections_[0];
    for (unsigned axis = 0; axis < chip_axes; ++axis)
        if (sections_[axis].leader == axis && sections_[axis].next().before(first->next()))
            first = &sections_[axis];
    const Moment now = first->next();
    if (next_look_ns_ < now.reached_ns()) {
        look_at_time(next_look_ns_);
        return;
    }
    if (first->edge.before(first->due)) {
        look(*first, {now, first->edge_pulses, true});
    } else if (first->state == State::Running) {
        finish(*first, now);
    } else {
        begin(*first, now);
    }
    start_queued(now);
    update_next_event(now.reached_ns());
}

void Chip::update_next_event(std::int64_t now_ns)
{
    next_event_ns_ = never_ns;
    each(busy_axes_, [&](unsigned axis, Section &section) {
        if (section.leader != axis)
            return;
        if (section.state == State::Running)
            find_edge(section, now_ns);
        else if (section.due.ns == never_ns && triggered(section))
            section.due = {now_ns, 0};
        const std::int64_t event_ns = section.next().reached_ns();
        if (event_ns < next_event_ns_)
            next_event_ns_ = event_ns;
    });
    if (timed_axes_ != 0) {
        find_next_look(now_ns);
        next_event_ns_ = Smaller(next_event_ns_, next_look_ns_);
    }
}

// The next time at which a handwheel brings its counter to a change of a comparator, or a ramp ends.
void Chip::find_next_look(std::int64_t now_ns)
{
    next_look_ns_ = never_ns;
    each(timed_axes_, [&](unsigned, Section &section) {
        next_look_ns_ = Smaller(next_look_ns_, wheel_edge(section));
        if (section.state == State::Running)
            note_ramp(leader_of(section), now_ns);
    });
}

void Chip::look_at_time(std::int64_t now_ns)
{
    each(timed_axes_, [&](unsigned axis, Section &section) {
        if (wheel_edge(section) == now_ns)
            look_again(axis, now_ns);
    });
    update_next_event(now_ns);
}

std::int64_t Chip::leader_pulses(Section &leader, std::int64_t now_ns)
{
    const double distance = leader.profile.distance_at(leader.start_time.seconds_until(now_ns)) + pulse_tolerance;
    const auto pulses = static_cast<std::int64_t>(distance);
    return pulses < leader.longest ? pulses : leader.longest;
}

// What an axis has done when the leader of its operation has put out `pulses`: the nearest pulse to the line.
std::int64_t Chip::share(const Section &section, std::int64_t pulses)
{
    const Section &leader = leader_of(section);
    if (IsArc(section.kind))
        return arc_share(section, pulses);
    if (&section != &leader) {
        pulses = leader.longest == 0 ? 0 : (Size(section.distance) * pulses + leader.longest / 2) / leader.longest;
    }
    return section.distance < 0 ? -pulses : pulses;
}

// The leader's pulses with which an axis takes its `step`-th step, which its distance has.
std::int64_t Chip::pulses_at_step(const Section &section, std::int64_t step)
{
    const Section &leader = leader_of(section);
    if (&section == &leader)
        return step;
    const std::int64_t size = Size(section.distance);
    return (step * leader.longest - leader.longest / 2 + size - 1) / size;
}

// Which way an axis goes: 1, -1, or 0 for not at all.
int Chip::way(const Section &section, const Instant &now)
{
    std::int64_t step = section.distance;
    if (IsArc(section.kind)) {
        const std::int64_t here = share(section, now.pulses);
        step = now.arrived ? here - share(section, now.pulses - 1) : 0;
        if (step == 0)
            step = share(section, pulses_at_turn(section, now.pulses)) - here;
    }
    return step > 0 ? 1 : step < 0 ? -1 : 0;
}

// Signed pulses of an axis for each pulse of its leader.
double Chip::part_of_speed(const Section &section, std::int64_t pulses)
{
    const Section &leader = leader_of(section);
    const auto longest = static_cast<double>(leader.longest);
    if (IsArc(section.kind)) {
        const Section &circle = sections_[section.arc_axis];
        double x = 0;
        double y = 0;
        circle.arc.slope(circle.arc_done + arc_steps(section, pulses), x, y);
        const double steps = static_cast<double>(circle.arc.steps() - circle.arc_done) / longest;
        return (section.arc_second ? y : x) * steps;
    }
    if (&section == &leader)
        return section.distance < 0 ? -1 : 1;
    return static_cast<double>(section.distance) / longest;
}

std::int64_t Chip::travelled(const Section &section, std::int64_t now_ns)
{
    if (section.state != State::Running)
        return 0;
    return share(section, leader_pulses(leader_of(section), now_ns));
}

// What counters 1 to 4 count, from power-up; the leg has travelled so far.
std::uint32_t Chip::counted(const Section &section, unsigned number, std::int64_t travelled, std::int64_t now_ns)
{
    if (number == 4)
        return section.wheel.counted(now_ns);
    const std::uint32_t put_out = section.put_out + static_cast<std::uint32_t>(travelled);
    if (number == 1)
        return put_out;
    const std::uint32_t encoder = section.encoder.count(section.base_position + travelled);
    return number == 2 ? encoder : put_out - encoder;
}

std::uint32_t Chip::counter(const Section &section, unsigned number, std::int64_t now_ns)
{
    const std::uint32_t count =
        section.reg(CounterRegister(number)) + counted(section, number, travelled(section, now_ns), now_ns);
    const std::uint32_t trailing = trailing_counts(section, now_ns);
    return number == 2 ? count - trailing : number == 3 ? count + trailing : count;
}

std::uint32_t Chip::status_register(Section &section, std::uint32_t read_code, std::int64_t now_ns)
{
    const bool running = section.state == State::Running;
    switch (static_cast<StatusRegister>(read_code)) {
    case StatusRegister::EXT_STATUS: {
        const std::uint32_t operations = (section.state != State::Idle ? 1u : 0u) + (section.queued ? 1u : 0u);
        return extended_inputs(section, now_ns) | operations << 20;
    }
    case StatusRegister::ERROR_FLAGS:
        return Taken(section.errors);
    case StatusRegister::LATCH_DATA:
        return section.latched;
    case StatusRegister::EVENT_FLAGS:
        return Taken(section.events);
    case StatusRegister::REMAINING: {
        if (!running)
            return static_cast<std::uint32_t>(Size(section.rest));
        const bool counts = HasDistance(section.kind);
        return counts ? static_cast<std::uint32_t>(Size(section.target - travelled(section, now_ns))) : 0;
    }
    case StatusRegister::CURRENT_SPEED: {
        if (!running)
            return 0;
        Section &leader = leader_of(section);
        const double pps = leader.profile.speed_at(leader.start_time.seconds_until(now_ns));
        const double units = pps / SpeedUnit(leader.reg(Register::MULTIPLIER)) + pulse_tolerance;
        // Above it when the multiplier was written and the speed is still old.
        constexpr double highest_units = 65535;
        return static_cast<std::uint32_t>(Smaller(units, highest_units));
    }
    default:
        return 0;
    }
}

std::uint32_t Chip::read(unsigned axis, std::uint32_t read_code, std::int64_t now_ns)
{
    if (read_code < first_read_code || read_code >= first_read_code + register_count)
        return 0;
    advance(now_ns);
    Section &section = sections_[axis];
    if (read_code == ReadCode(Register::COUNTER1)) // first: nothing else is read so often
        return section.reg(Register::COUNTER1) + section.put_out +
               static_cast<std::uint32_t>(travelled(section, now_ns));
    if (read_code >= ReadCode(StatusRegister::LATCH_DATA) && read_code <= ReadCode(StatusRegister::CURRENT_SPEED))
        return status_register(section, read_code, now_ns);
    if (read_code >= ReadCode(Register::COUNTER2) && read_code <= ReadCode(Register::COUNTER4))
        return counter(section, read_code - ReadCode(Register::COUNTER1) + 1, now_ns);
    return section.registers[read_code - first_read_code];
}

void Chip::write(unsigned axis, std::uint32_t write_code, std::uint32_t value, std::int64_t now_ns)
{
    if (write_code < first_write_code || write_code >= first_write_code + register_count)
        return;
    advance(now_ns);
    Section &section = sections_[axis];
    section.registers[write_code - first_write_code] = value;
    written(section, static_cast<Register>(write_code), value, now_ns);
}

// What a register does when it is written; most of them count when an operation starts.
void Chip::written(Section &section, Register reg, std::uint32_t value, std::int64_t now_ns)
{
    switch (reg) {
    case Register::COUNTER1:
    case Register::COUNTER2:
    case Register::COUNTER3:
    case Register::COUNTER4:
        section.reg(reg) = value - counted(section, CounterNumber(reg), travelled(section, now_ns), now_ns);
        reconsider(axis_of(section), now_ns);
        break;
    case Register::SIGNAL_CONFIG2:
        scale_encoder(section, now_ns);
        break;
    case Register::PRESET_MODE:
        section.preset_chosen = true;
        break;
    case Register::MODE:
        section.preset_chosen = false;
        mode_written(section, {now_ns, 0});
        break;
    case Register::DISTANCE:
        distance_written(section, {now_ns, 0});
        break;
    case Register::MAX_SPEED:
        if (section.kind == Kind::Continuous)
            retarget(section, {now_ns, 0});
        break;
    case Register::EVENT_ENABLE:
        events_chosen(axis_of(section), now_ns);
        break;
    case Register::LIMIT_CONFIG:
    case Register::SOFTLIMIT1:
    case Register::SOFTLIMIT2:
    case Register::COMPARE_START_DATA:
    case Register::COMPARATOR_DATA:
    case Register::START_TRIGGER_ENV:
        note_watched(axis_of(section));
        reconsider(axis_of(section), now_ns);
        break;
    default:
        break;
    }
}

void Chip::command(unsigned axis_set, std::uint8_t code, std::int64_t now_ns)
{
    advance(now_ns);
    switch (static_cast<Command>(code)) {
    case Command::CMD_START_HIGH:
        start(axis_set, StartKind::High, {now_ns, 0});
        break;
    case Command::CMD_START_HIGH_DEC:
        start(axis_set, StartKind::HighDecelerating, {now_ns, 0});
        break;
    case Command::CMD_START_ACC_DEC:
        start(axis_set, StartKind::Accelerating, {now_ns, 0});
        break;
    case Command::CMD_CSTA_PULSE:
        trigger_waiting({now_ns, 0});
        break;
    case Command::CMD_STOP_DECEL:
        stop(axis_set, {now_ns, 0});
        break;
    case Command::CMD_STOP_IMMEDIATE:
        stop_at_once(axis_set, now_ns);
        break;
    case Command::CMD_EMERGENCY_STOP:
        raise_in_busy(axis_set, Error::EmergencyStop);
        stop_at_once(axis_set, now_ns);
        break;
    case Command::CMD_CSTP_PULSE:
        raise_in_busy(axis_set, Error::StoppedTogether);
        stop_at_once(axis_set, now_ns);
        break;
    case Command::CMD_RESTART:
        restart(axis_set, {now_ns, 0});
        break;
    case Command::CMD_LATCH_COUNTERS:
        latch_all(axis_set, now_ns);
        return;
    default:
        switch_output(axis_set, code);
        return;
    }
    update_next_event(now_ns);
    advance(now_ns); // an operation without a distance ends where it started
}

std::uint16_t Chip::main_status(unsigned axis, std::int64_t now_ns)
{
    advance(now_ns);
    const Section &section = sections_[axis];
    return static_cast<std::uint16_t>((section.busy() ? 0u : MainStatus::idle_bit) |
                                      (section.met & soft_limits) << soft_limit_status |
                                      ((section.met & Bit(Compared::Output)) != 0 ? comparator_status : 0u) |
                                      (section.queued ? MainStatus::preset_full_bit : 0u));
}

std::int32_t Chip::position(unsigned axis, std::int64_t now_ns)
{
    advance(now_ns);
    const Section &section = sections_[axis];
    const std::int64_t position = section.base_position + travelled(section, now_ns);
    return static_cast<std::int32_t>(section.reversed ? -position : position);
}

bool Chip::move_by_hand(unsigned axis, std::int32_t position, std::int64_t now_ns)
{
    advance(now_ns);
    Section &section = sections_[axis];
    if (section.state == State::Running)
        return false;
    section.base_position = section.reversed ? -std::int64_t{position} : position;
    reconsider(axis, now_ns);
    return true;
}

double Chip::speed(unsigned axis, std::int64_t now_ns)
{
    advance(now_ns);
    return speed_of(sections_[axis], now_ns);
}

double Chip::speed_of(const Section &section, std::int64_t now_ns)
{
    Section &leader = leader_of(section);
    if (section.state != State::Running || leader.longest == 0)
        return 0;
    const double pps = leader.profile.speed_at(leader.start_time.seconds_until(now_ns));
    return pps * part_of_speed(section, leader_pulses(leader, now_ns));
}

void Chip::turn_handwheel(unsigned axis, std::int32_t counts, double seconds, std::int64_t now_ns)
{
    advance(now_ns);
    Section &section = sections_[axis];
    section.reg(Register::COUNTER4) += section.wheel.counted(now_ns);
    section.wheel = {now_ns, seconds, counts};
    reconsider(axis, now_ns);
}

void Chip::set_encoder_scale(unsigned axis, std::int32_t counts, std::int64_t now_ns)
{
    advance(now_ns);
    Section &section = sections_[axis];
    section.encoder_counts = counts;
    scale_encoder(section, now_ns);
}

// The encoder counts on from here by its scale and the way in which its input is configured.
void Chip::scale_encoder(Section &section, std::int64_t now_ns)
{
    const bool backwards = encoder_backwards.get(section.reg(Register::SIGNAL_CONFIG2)) != 0;
    const std::int64_t counts = section.encoder_counts;
    section.encoder.scale(backwards != section.reversed ? -counts : counts,
                          section.base_position + travelled(section, now_ns));
    reconsider(axis_of(section), now_ns);
}

std::int64_t Chip::next_event(std::int64_t now_ns)
{
    advance(now_ns);
    return next_event_ns_;
}

} // namespace trevik::virtual_card

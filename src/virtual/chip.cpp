// The chip as the driver and the machine see it: registers, status, and what passing time does.
#include "virtual/chip.h"

namespace trevik::virtual_card
{
namespace
{

// A pulse counts as put out a hair before its exact time, so that rounding never hides the last one.
constexpr double pulse_tolerance = 1e-6;

constexpr unsigned first_write_code = 0x80;
constexpr unsigned first_read_code = 0xC0;

// One speed unit of a section, pulses/s.
double SpeedUnit(std::uint32_t multiplier)
{
    return 300.0 / (multiplier + 1.0);
}

bool ActiveInput(std::uint32_t inputs, Input input)
{
    return (inputs >> static_cast<unsigned>(input) & 1) != 0;
}

std::uint32_t InputBit(std::uint32_t inputs, Input input, unsigned bit)
{
    return ActiveInput(inputs, input) ? 1u << bit : 0;
}

// The inputs as EXT_STATUS shows them; the operations in the buffer come on top.
std::uint32_t ExtendedInputs(std::uint32_t inputs)
{
    return InputBit(inputs, Input::PositionChange, 8) | InputBit(inputs, Input::Index, 10) |
           InputBit(inputs, Input::Latch, 14) | InputBit(inputs, Input::SlowDown, 15) |
           InputBit(inputs, Input::InPosition, 16);
}

} // namespace

// The first thing that happens by itself, and what follows from it at the same moment.
void Chip::next_thing()
{
    Section *first = &sections_[0];
    for (unsigned axis = 0; axis < chip_axes; ++axis)
        if (sections_[axis].leader == axis && sections_[axis].due.before(first->due))
            first = &sections_[axis];
    const Moment now = first->due;
    if (first->state == State::Running)
        finish(*first, now);
    else
        launch(*first, now);
    start_queued(now);
    update_next_event(now.reached_ns());
}

void Chip::update_next_event(std::int64_t now_ns)
{
    next_event_ns_ = never_ns;
    for (unsigned axis = 0; axis < chip_axes; ++axis) {
        Section &section = sections_[axis];
        if (section.leader != axis || section.state == State::Idle)
            continue;
        if (section.state == State::Waiting)
            section.due = comparator_time(section, now_ns);
        const std::int64_t due_ns = section.due.reached_ns();
        if (due_ns < next_event_ns_)
            next_event_ns_ = due_ns;
    }
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
    if (&section != &leader) {
        const std::int64_t size = section.distance < 0 ? -section.distance : section.distance;
        pulses = leader.longest == 0 ? 0 : (size * pulses + leader.longest / 2) / leader.longest;
    }
    return section.distance < 0 ? -pulses : pulses;
}

std::int64_t Chip::travelled(const Section &section, std::int64_t now_ns)
{
    if (section.state != State::Running)
        return 0;
    return share(section, leader_pulses(leader_of(section), now_ns));
}

std::uint32_t Chip::counter1(const Section &section, std::int64_t now_ns)
{
    return section.base_counter1 + static_cast<std::uint32_t>(travelled(section, now_ns));
}

std::uint32_t Chip::status_register(const Section &section, std::uint32_t read_code, std::int64_t now_ns)
{
    const bool running = section.state == State::Running;
    switch (static_cast<StatusRegister>(read_code)) {
    case StatusRegister::EXT_STATUS: {
        const std::uint32_t operations = (section.state != State::Idle ? 1u : 0u) + (section.queued ? 1u : 0u);
        return ExtendedInputs(section.inputs) | operations << 20;
    }
    case StatusRegister::REMAINING: {
        if (!running)
            return section.remaining;
        const std::int64_t rest = section.distance - travelled(section, now_ns);
        return static_cast<std::uint32_t>(rest < 0 ? -rest : rest);
    }
    case StatusRegister::CURRENT_SPEED: {
        if (!running)
            return 0;
        Section &leader = leader_of(section);
        const double pps = leader.profile.speed_at(leader.start_time.seconds_until(now_ns));
        return static_cast<std::uint32_t>(pps / SpeedUnit(leader.reg(Register::MULTIPLIER)) + pulse_tolerance);
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
    const Section &section = sections_[axis];
    if (read_code >= ReadCode(StatusRegister::LATCH_DATA) && read_code <= ReadCode(StatusRegister::CURRENT_SPEED))
        return status_register(section, read_code, now_ns);
    if (read_code == ReadCode(Register::COUNTER1))
        return counter1(section, now_ns);
    return section.registers[read_code - first_read_code];
}

void Chip::write(unsigned axis, std::uint32_t write_code, std::uint32_t value, std::int64_t now_ns)
{
    if (write_code < first_write_code || write_code >= first_write_code + register_count)
        return;
    advance(now_ns);
    Section &section = sections_[axis];
    const unsigned index = write_code - first_write_code;
    section.registers[index] = value;
    switch (static_cast<Register>(write_code)) {
    case Register::COUNTER1:
        section.base_counter1 = value - static_cast<std::uint32_t>(travelled(section, now_ns));
        update_next_event(now_ns);
        break;
    case Register::PRESET_MODE:
        section.preset_chosen = true;
        break;
    case Register::MODE:
        section.preset_chosen = false;
        break;
    case Register::DISTANCE:
        change_distance(section, now_ns);
        break;
    case Register::LIMIT_CONFIG:
    case Register::COMPARE_START_DATA:
    case Register::START_TRIGGER_ENV:
        update_next_event(now_ns);
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
        stop(axis_set, now_ns);
        break;
    case Command::CMD_STOP_IMMEDIATE:
    case Command::CMD_EMERGENCY_STOP:
        stop_at_once(axis_set, now_ns);
        break;
    default:
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
                                      (section.queued ? MainStatus::preset_full_bit : 0u));
}

std::uint16_t Chip::sub_status(unsigned axis) const
{
    const std::uint32_t inputs = sections_[axis].inputs;
    return static_cast<std::uint16_t>(InputBit(inputs, Input::Alarm, 11) | InputBit(inputs, Input::PlusLimit, 12) |
                                      InputBit(inputs, Input::MinusLimit, 13) | InputBit(inputs, Input::Home, 14));
}

std::int32_t Chip::position(unsigned axis, std::int64_t now_ns)
{
    advance(now_ns);
    const Section &section = sections_[axis];
    const auto base = static_cast<std::uint32_t>(section.base_position);
    return static_cast<std::int32_t>(base + static_cast<std::uint32_t>(travelled(section, now_ns)));
}

bool Chip::move_by_hand(unsigned axis, std::int32_t position, std::int64_t now_ns)
{
    advance(now_ns);
    Section &section = sections_[axis];
    if (section.state == State::Running)
        return false;
    section.base_position = position;
    return true;
}

double Chip::speed(unsigned axis, std::int64_t now_ns)
{
    advance(now_ns);
    const Section &section = sections_[axis];
    if (section.state != State::Running)
        return 0;
    Section &leader = leader_of(section);
    const double pps = leader.profile.speed_at(leader.start_time.seconds_until(now_ns));
    if (&section == &leader)
        return section.distance < 0 ? -pps : pps;
    return leader.longest == 0 ? 0
                               : pps * static_cast<double>(section.distance) / static_cast<double>(leader.longest);
}

bool Chip::input(unsigned axis, Input input) const
{
    return ActiveInput(sections_[axis].inputs, input);
}

void Chip::set_input(unsigned axis, Input input, bool active)
{
    const std::uint32_t bit = 1u << static_cast<unsigned>(input);
    std::uint32_t &inputs = sections_[axis].inputs;
    inputs = active ? inputs | bit : inputs & ~bit;
}

std::int64_t Chip::next_event(std::int64_t now_ns)
{
    advance(now_ns);
    return next_event_ns_;
}

} // namespace trevik::virtual_card

// Inputs and outputs as the status words show them, and the commands that switch outputs.
#include "virtual/chip.h"

namespace trevik::virtual_card
{
namespace
{

// Ports 0 to 7 of an axis are general ones. A command sets the level of one.
constexpr auto port_low_command = static_cast<unsigned>(Command::CMD_PORT0_LOW);
constexpr auto port_high_command = static_cast<unsigned>(Command::CMD_PORT0_HIGH);
constexpr unsigned port_count = 8;
constexpr unsigned first_switched_port = 3; // of those whose direction is chosen
constexpr unsigned last_switched_port = 6;
constexpr unsigned comparator_port = 7;
constexpr std::uint32_t always_outputs = 1u << 0 | 1u << 1;

constexpr auto clear_on_command = static_cast<unsigned>(Command::CMD_OUTPUT_ON);
constexpr auto clear_off_command = static_cast<unsigned>(Command::CMD_OUTPUT_OFF);

// Direction of a port in SIGNAL_CONFIG2.
bool IsOutput(std::uint32_t config, unsigned port)
{
    constexpr std::uint32_t output = 1;
    return BitField{2 * port, 2}.get(config) == output;
}

std::uint32_t InputBit(std::uint32_t inputs, Input input, unsigned bit)
{
    return (inputs & Bit(input)) != 0 ? 1u << bit : 0;
}

// Bits of those ports 3 to 6 that are outputs.
std::uint32_t SwitchedOutputs(std::uint32_t config)
{
    std::uint32_t outputs = 0;
    for (unsigned port = first_switched_port; port <= last_switched_port; ++port)
        outputs |= IsOutput(config, port) ? 1u << port : 0u;
    return outputs;
}

std::uint32_t PortInputs(std::uint32_t inputs)
{
    return InputBit(inputs, Input::Port3, 3) | InputBit(inputs, Input::Port4, 4) |
           InputBit(inputs, Input::Port5, 5) | InputBit(inputs, Input::Port6, 6);
}

} // namespace

// The inputs as EXT_STATUS shows them; the operations in the buffer come on top.
std::uint32_t Chip::extended_inputs(const Section &section, std::int64_t now_ns)
{
    const std::uint32_t inputs = inputs_now(section, now_ns);
    return InputBit(inputs, Input::Point15, 5) | InputBit(inputs, Input::Point16, 6) |
           InputBit(inputs, Input::Point9, 7) | InputBit(inputs, Input::PositionChange, 8) |
           (section.drive_cleared ? 1u << 9 : 0u) | InputBit(inputs, Input::Index, 10) |
           InputBit(inputs, Input::Latch, 14) | InputBit(inputs, Input::SlowDown, 15) |
           InputBit(inputs, Input::InPosition, 16);
}

// Points 4 and 12 to 14 are 1 while their bit is 0.
std::uint16_t Chip::sub_status(unsigned axis, std::int64_t now_ns)
{
    advance(now_ns);
    const Section &section = sections_[axis];
    const std::uint32_t inputs = inputs_now(section, now_ns);
    const bool compared = (section.met & Bit(Compared::Output)) != 0;
    const std::uint32_t switched = SwitchedOutputs(section.reg(Register::SIGNAL_CONFIG2));
    const std::uint32_t outputs = always_outputs | switched | (compared ? 0u : 1u << comparator_port);
    return static_cast<std::uint16_t>((section.ports & outputs) | (PortInputs(inputs) & ~switched) |
                                      ((inputs & Bit(Input::Point4)) == 0 ? 1u << 2 : 0u) |
                                      InputBit(inputs, Input::Alarm, 11) | InputBit(inputs, Input::PlusLimit, 12) |
                                      InputBit(inputs, Input::MinusLimit, 13) | InputBit(inputs, Input::Home, 14));
}

void Chip::switch_output(unsigned axis_set, unsigned code)
{
    each(axis_set, [&](unsigned, Section &section) {
        if (code >= port_high_command && code < port_high_command + port_count)
            section.ports |= 1u << (code - port_high_command);
        else if (code >= port_low_command && code < port_low_command + port_count)
            section.ports &= ~(1u << (code - port_low_command));
        else if (code == clear_on_command || code == clear_off_command)
            section.drive_cleared = code == clear_on_command;
    });
}

bool Chip::output(unsigned axis, Output output, std::int64_t now_ns)
{
    advance(now_ns);
    const Section &section = sections_[axis];
    const auto high = [&](unsigned port) { return (section.ports >> port & 1) != 0; };
    const auto switched = [&](unsigned port) {
        return IsOutput(section.reg(Register::SIGNAL_CONFIG2), port) && high(port);
    };
    switch (output) {
    case Output::Point0:
        return section.drive_cleared;
    case Output::Point1:
        return !high(1);
    case Output::Point2:
        return !high(0);
    case Output::Point3:
        return !high(comparator_port) || (section.met & Bit(Compared::Output)) != 0;
    case Output::Port3:
        return switched(3);
    case Output::Port4:
        return switched(4);
    case Output::Port5:
        return switched(5);
    case Output::Port6:
        return switched(6);
    }
    return false;
}

} // namespace trevik::virtual_card

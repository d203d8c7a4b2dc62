#include "config/points.h"

#include <array>

namespace trevik
{
namespace
{

// Axes whose chip sections drive the card's points, and the one that switches these between input and output.
constexpr std::uint8_t first_port_axis = 1;
constexpr std::uint8_t second_port_axis = 2;
constexpr std::uint8_t direction_axis = 3;

// Ports 3 to 6 all outputs.
constexpr std::uint32_t all_outputs = 0b01010101;

struct Switch {
    Command on;
    Command off;
};

// Points 0 to 3 of an axis.
constexpr std::array<Switch, 4> axis_points = {{
    {Command::CMD_OUTPUT_ON, Command::CMD_OUTPUT_OFF},
    {Command::CMD_PORT1_LOW, Command::CMD_PORT1_HIGH},
    {Command::CMD_PORT0_LOW, Command::CMD_PORT0_HIGH},
    {Command::CMD_PORT7_LOW, Command::CMD_PORT7_HIGH},
}};

// Ports 3 to 6 of an axis: points 4 to 7 are those of axis 1, points 8 to 11 those of axis 2.
constexpr std::array<Switch, 4> ports = {{
    {Command::CMD_PORT3_HIGH, Command::CMD_PORT3_LOW},
    {Command::CMD_PORT4_HIGH, Command::CMD_PORT4_LOW},
    {Command::CMD_PORT5_HIGH, Command::CMD_PORT5_LOW},
    {Command::CMD_PORT6_HIGH, Command::CMD_PORT6_LOW},
}};

Result Drive(const Axis &axis, const Switch &output, bool on)
{
    return axis.command(on ? output.on : output.off);
}

// Where a point is seen.
enum class Source { Extended, Sub, SubOfFirstPortAxis, SubOfSecondPortAxis };

struct InputPoint {
    Source source = Source::Sub;
    unsigned bit = 0;
    bool inverted = false;
};

constexpr std::array<InputPoint, 25> input_points = {{
    {Source::Extended, 15},
    {Source::Extended, 8},
    {Source::Extended, 16},
    {Source::Sub, 11},
    {Source::Sub, 2, true},
    {Source::Sub, 12},
    {Source::Sub, 13},
    {Source::Extended, 14},
    {Source::Sub, 14},
    {Source::Extended, 7},
    {Source::Extended, 10},
    {Source::Extended, 9},
    {Source::Sub, 1, true},
    {Source::Sub, 0, true},
    {Source::Sub, 7, true},
    {Source::Extended, 5},
    {Source::Extended, 6},
    {Source::SubOfFirstPortAxis, 3},
    {Source::SubOfFirstPortAxis, 4},
    {Source::SubOfFirstPortAxis, 5},
    {Source::SubOfFirstPortAxis, 6},
    {Source::SubOfSecondPortAxis, 3},
    {Source::SubOfSecondPortAxis, 4},
    {Source::SubOfSecondPortAxis, 5},
    {Source::SubOfSecondPortAxis, 6},
}};

} // namespace

// The axis's own two words are read whichever the point is.
Result PointRead(const Axis &axis, std::uint8_t point, std::uint8_t *state)
{
    if (state == nullptr)
        return Result::Param;
    std::uint32_t sub = 0;
    std::uint32_t extended = 0;
    axis.read(StatusWord::Sub, sub);
    Result result = axis.read(StatusRegister::EXT_STATUS, extended);
    if (point >= input_points.size())
        return result;
    const InputPoint &input = input_points[point];
    if (input.source == Source::SubOfFirstPortAxis)
        result = axis.card().axis(first_port_axis).read(StatusWord::Sub, sub);
    else if (input.source == Source::SubOfSecondPortAxis)
        result = axis.card().axis(second_port_axis).read(StatusWord::Sub, sub);
    const std::uint32_t word = input.source == Source::Extended ? extended : sub;
    *state = ((word >> input.bit & 1) != 0) != input.inverted;
    return result;
}

Result PointSet(const Axis &axis, std::uint8_t point, std::uint8_t state)
{
    const unsigned index = point % 4u;
    switch (point / 4) {
    case 0:
        return Drive(axis, axis_points[index], state != 0);
    case 1:
        return Drive(axis.card().axis(first_port_axis), ports[index], state != 0);
    case 2:
        return Drive(axis.card().axis(second_port_axis), ports[index], state != 0);
    default:
        return Result::Ok;
    }
}

// Two ports of the last axis switch the card's drivers; the chip's ports follow.
Result TTLIOModeSet(const Card &card, std::uint8_t mode)
{
    if (mode > 3)
        return Result::Param;
    const bool first = (mode & 1) != 0;
    const bool second = (mode & 2) != 0;
    Drive(card.axis(direction_axis), ports[0], first);
    Drive(card.axis(direction_axis), ports[1], second);
    Modify(card.axis(first_port_axis), signal_config2::ports_3_to_6.to(first ? all_outputs : 0));
    return Modify(card.axis(second_port_axis), signal_config2::ports_3_to_6.to(second ? all_outputs : 0));
}

Result TTLIOModeRead(const Card &card, std::uint8_t *mode)
{
    if (mode == nullptr)
        return Result::Param;
    std::uint8_t first = 0;
    std::uint8_t second = 0;
    Fetch(card.axis(first_port_axis), signal_config2::ports_3_to_6.into(&first));
    const Result result = Fetch(card.axis(second_port_axis), signal_config2::ports_3_to_6.into(&second));
    *mode = static_cast<std::uint8_t>((first != 0 ? 1 : 0) | (second != 0 ? 2 : 0));
    return result;
}

} // namespace trevik

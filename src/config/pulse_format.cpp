#include "config/pulse_format.h"

#include <algorithm>
#include <array>

namespace trevik
{
namespace
{

// The chip's code of each output format.
constexpr std::array<std::uint8_t, 8> output_codes = {0, 1, 2, 3, 4, 7, 5, 6};

std::uint8_t OutputFormatOf(std::uint8_t code)
{
    const auto *found = std::find(output_codes.begin(), output_codes.end(), code);
    return static_cast<std::uint8_t>(found - output_codes.begin());
}

} // namespace

Result PulseOutmodeSet(const Axis &axis, std::uint8_t mode)
{
    if (mode >= output_codes.size())
        return Result::Param;
    return Modify(axis, signal_config1::pulse_output.to(output_codes[mode]));
}

Result PulseOutmodeRead(const Axis &axis, std::uint8_t *mode)
{
    if (mode == nullptr)
        return Result::Param;
    const Result result = Fetch(axis, signal_config1::pulse_output.into(mode));
    *mode = OutputFormatOf(*mode);
    return result;
}

Result PulseInmodeSet(const Axis &axis, std::uint8_t format, std::uint8_t option)
{
    if (format > 3 || option > 1)
        return Result::Param;
    return Modify(axis, signal_config2::pulse_input_format.to(format),
                  signal_config2::pulse_input_option.to(option));
}

Result PulseInmodeRead(const Axis &axis, std::uint8_t *format, std::uint8_t *option)
{
    if (AnyNull(format, option))
        return Result::Param;
    return Fetch(axis, signal_config2::pulse_input_format.into(format),
                 signal_config2::pulse_input_option.into(option));
}

} // namespace trevik

#include "pulser/pulser.h"

#include "pulser/follow.h"

namespace trevik
{
namespace
{

// Keeps the periodic task off an axis.
class PulserPause
{
  public:
    explicit PulserPause(AxisShadow &shadow) : shadow_(shadow), enabled_(shadow.PulserEnabled)
    {
        shadow_.PulserEnabled = std::uint8_t{0};
    }
    ~PulserPause() { shadow_.PulserEnabled = enabled_; }
    PulserPause(const PulserPause &) = delete;
    PulserPause &operator=(const PulserPause &) = delete;

  private:
    AxisShadow &shadow_;
    std::uint8_t enabled_;
};

// Following begins where handwheel and axis are.
Result BeginFollowing(const Axis &axis)
{
    SettlePulser(axis);
    const Axis source = axis.card().axis(axis.shadow().PulserMap);
    return Modify(source, motion_config::cleared_by_following.to(0));
}

} // namespace

Result PulserModeSet(const Axis &axis, std::uint8_t format, std::uint8_t option)
{
    if (format > 3 || option > 1)
        return Result::Param;
    return Modify(axis, signal_config2::pulser_format.to(format), signal_config2::pulser_option.to(option));
}

Result PulserModeRead(const Axis &axis, std::uint8_t *format, std::uint8_t *option)
{
    if (AnyNull(format, option))
        return Result::Param;
    return Fetch(axis, signal_config2::pulser_format.into(format), signal_config2::pulser_option.into(option));
}

Result PulserCounterRead(const Axis &axis, std::uint32_t *count)
{
    return count == nullptr ? Result::Param : axis.read(Register::COUNTER4, *count);
}

// Followers of the counter take the new count, in their own direction, as followed.
Result PulserCounterSet(const Axis &axis, std::uint32_t count)
{
    const Result result = axis.write(Register::COUNTER4, count);
    AxisShadow &own = axis.shadow();
    if (own.PulserEnabled != 1)
        own.PulserBase = static_cast<std::int32_t>(count);
    if (result != Result::Ok)
        return result;
    for (AxisShadow &shadow : axis.card().state().Axes)
        if (shadow.PulserEnabled == 1 && shadow.PulserMap == axis.number())
            shadow.PulserBase =
                static_cast<std::int32_t>(count * static_cast<std::uint32_t>(std::int32_t{shadow.PulserDirection}));
    return result;
}

Result PulserMapSet(const Card &card, std::uint8_t axis_number, std::uint8_t source, std::uint8_t reverse)
{
    if (axis_number >= axis_count)
        return Result::Axis;
    if (source >= axis_count || reverse > 1)
        return Result::Param;
    const Axis axis = card.axis(axis_number);
    const PulserPause pause(axis.shadow());
    axis.shadow().PulserMap = source;
    axis.shadow().PulserDirection = reverse == 1 ? -1 : 1;
    return SettlePulser(axis);
}

Result PulserMotionEnable(const Card &card, std::uint8_t axis_number, std::uint8_t enable, std::uint16_t ratio)
{
    constexpr std::uint16_t highest_ratio = 1000;
    if (axis_number >= axis_count)
        return Result::Axis;
    if (enable > 1 || ratio == 0 || ratio > highest_ratio)
        return Result::Param;
    const Axis axis = card.axis(axis_number);
    AxisShadow &shadow = axis.shadow();
    const Result result = shadow.PulserEnabled == 0 && enable == 1 ? BeginFollowing(axis) : Result::Ok;
    shadow.PulserRatio = ratio;
    shadow.PulserEnabled = enable;
    return result;
}

} // namespace trevik

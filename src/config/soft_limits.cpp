#include "config/soft_limits.h"

namespace trevik
{
namespace
{

using namespace limit_config;

// The condition that makes a comparator a software limit.
constexpr std::uint32_t soft_limit = 6;

} // namespace

Result SoftlimitConfigSet(const Axis &axis, std::uint8_t counter, std::uint8_t action)
{
    if (counter > 1 || action > 2)
        return Result::Param;
    return Modify(axis, counter1.to(counter), condition1.to(soft_limit), action1.to(action), counter2.to(counter),
                  condition2.to(soft_limit), action2.to(action));
}

Result SoftlimitConfigRead(const Axis &axis, std::uint8_t *counter, std::uint8_t *action)
{
    return AnyNull(counter, action) ? Result::Param : Fetch(axis, counter1.into(counter), action1.into(action));
}

Result SoftlimitDataSet(const Axis &axis, std::uint32_t first, std::uint32_t second)
{
    axis.write(Register::SOFTLIMIT1, first);
    return axis.write(Register::SOFTLIMIT2, second);
}

Result SoftlimitDataRead(const Axis &axis, std::uint32_t *first, std::uint32_t *second)
{
    if (AnyNull(first, second))
        return Result::Param;
    axis.read(Register::SOFTLIMIT1, *first);
    return axis.read(Register::SOFTLIMIT2, *second);
}

Result SoftlimitEnableSet(const Axis &axis, std::uint8_t enable)
{
    const std::uint32_t condition = enable != 0 ? soft_limit : 0;
    return Modify(axis, condition1.to(condition), condition2.to(condition));
}

Result SoftlimitEnableRead(const Axis &axis, std::uint8_t *enable)
{
    if (enable == nullptr)
        return Result::Param;
    const Result result = Fetch(axis, condition1.into(enable));
    *enable = *enable == soft_limit;
    return result;
}

Result SoftlimitFlagRead(const Axis &axis, std::uint8_t *flag1, std::uint8_t *flag2)
{
    if (AnyNull(flag1, flag2))
        return Result::Param;
    return Fetch(axis, main_status::softlimit1.into(flag1), main_status::softlimit2.into(flag2));
}

} // namespace trevik

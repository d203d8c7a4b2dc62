#include "config/pins.h"

#include "driver/mode_word.h"

namespace trevik
{
namespace
{

void PutModeWord(const Axis &axis, BitField enable, std::uint8_t value)
{
    AxisShadow &shadow = axis.shadow();
    shadow.ModeWord = enable.put(shadow.ModeWord, value != 0);
}

void GetModeWord(const Axis &axis, BitField enable, std::uint8_t *value)
{
    *value = static_cast<std::uint8_t>(enable.get(axis.shadow().ModeWord));
}

// An input that is switched on in the mode word and has its logic in a register.
Result EnabledInputSet(const Axis &axis, BitField enabled, signal_config1::Field logic_field, std::uint8_t enable,
                       std::uint8_t logic)
{
    PutModeWord(axis, enabled, enable);
    return Modify(axis, logic_field.to(logic != 0));
}

Result EnabledInputRead(const Axis &axis, BitField enabled, signal_config1::Field logic_field,
                        ext_status::Field input_field, std::uint8_t *enable, std::uint8_t *logic,
                        std::uint8_t *input)
{
    if (AnyNull(enable, logic, input))
        return Result::Param;
    GetModeWord(axis, enabled, enable);
    Fetch(axis, logic_field.into(logic));
    return Fetch(axis, input_field.into(input));
}

// One bit of a register, and nothing else.
template <Register Reg>
Result SwitchRead(const Axis &axis, FieldOf<Reg> field, std::uint8_t *value)
{
    return value == nullptr ? Result::Param : Fetch(axis, field.into(value));
}

} // namespace

Result SDPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t option_a, std::uint8_t option_b,
                std::uint8_t option_c)
{
    PutModeWord(axis, mode_field::sd_enable, enable);
    return Modify(axis, signal_config1::sd_option_a.to(option_a != 0),
                  signal_config1::sd_option_b.to(option_b != 0), signal_config1::sd_option_c.to(option_c != 0));
}

Result SDPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *option_a, std::uint8_t *option_b,
                 std::uint8_t *option_c, std::uint8_t *input)
{
    if (AnyNull(enable, option_a, option_b, option_c, input))
        return Result::Param;
    GetModeWord(axis, mode_field::sd_enable, enable);
    Fetch(axis, signal_config1::sd_option_a.into(option_a), signal_config1::sd_option_b.into(option_b),
          signal_config1::sd_option_c.into(option_c));
    return Fetch(axis, ext_status::sd.into(input));
}

Result PCSPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t logic)
{
    return EnabledInputSet(axis, mode_field::pcs_enable, signal_config1::pcs_logic, enable, logic);
}

Result PCSPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *logic, std::uint8_t *input)
{
    return EnabledInputRead(axis, mode_field::pcs_enable, signal_config1::pcs_logic, ext_status::pcs, enable, logic,
                            input);
}

Result INPPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t logic)
{
    return EnabledInputSet(axis, mode_field::inp_enable, signal_config1::inp_logic, enable, logic);
}

Result INPPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *logic, std::uint8_t *input)
{
    return EnabledInputRead(axis, mode_field::inp_enable, signal_config1::inp_logic, ext_status::inp, enable, logic,
                            input);
}

Result ERCPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t logic, std::uint8_t width,
                 std::uint8_t off_time)
{
    constexpr std::uint8_t widest = 7;
    if (width > widest || off_time > 3)
        return Result::Param;
    return Modify(axis, signal_config1::erc_enable.to(enable != 0), signal_config1::erc_logic.to(logic != 0),
                  signal_config1::erc_width.to(enable != 0 ? width : widest),
                  signal_config1::erc_off_time.to(off_time));
}

Result ERCPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *logic, std::uint8_t *width,
                  std::uint8_t *off_time, std::uint8_t *output)
{
    if (AnyNull(enable, logic, width, off_time, output))
        return Result::Param;
    Fetch(axis, signal_config1::erc_enable.into(enable), signal_config1::erc_logic.into(logic),
          signal_config1::erc_width.into(width), signal_config1::erc_off_time.into(off_time));
    return Fetch(axis, ext_status::erc.into(output));
}

Result ALMPinSet(const Axis &axis, std::uint8_t option_a, std::uint8_t option_b)
{
    return Modify(axis, signal_config1::alm_option_a.to(option_a != 0),
                  signal_config1::alm_option_b.to(option_b != 0));
}

Result ALMPinRead(const Axis &axis, std::uint8_t *option_a, std::uint8_t *option_b, std::uint8_t *input)
{
    if (AnyNull(option_a, option_b, input))
        return Result::Param;
    Fetch(axis, signal_config1::alm_option_a.into(option_a), signal_config1::alm_option_b.into(option_b));
    return Fetch(axis, sub_status::alm.into(input));
}

Result LTCPinSet(const Axis &axis, std::uint8_t enable, std::uint8_t logic)
{
    Modify(axis, start_trigger_env::latch_off.to(enable == 0));
    return Modify(axis, signal_config1::ltc_logic.to(logic != 0));
}

Result LTCPinRead(const Axis &axis, std::uint8_t *enable, std::uint8_t *logic, std::uint8_t *input)
{
    if (AnyNull(enable, logic, input))
        return Result::Param;
    Fetch(axis, start_trigger_env::latch_off.into(enable));
    *enable = *enable == 0;
    Fetch(axis, signal_config1::ltc_logic.into(logic));
    return Fetch(axis, ext_status::ltc.into(input));
}

// The chip counts the codes from 1.
Result CMPPinSet(const Axis &axis, std::uint8_t code)
{
    return code > 2 ? Result::Param : Modify(axis, signal_config2::cmp_pin.to(code + 1u));
}

Result CMPPinRead(const Axis &axis, std::uint8_t *code, std::uint8_t *output)
{
    if (AnyNull(code, output))
        return Result::Param;
    Fetch(axis, signal_config2::cmp_pin.into(code));
    *code = static_cast<std::uint8_t>(*code - 1);
    const Result result = Fetch(axis, sub_status::cmp_off.into(output));
    *output = *output == 0;
    return result;
}

Result ELModeSet(const Axis &axis, std::uint8_t mode)
{
    return mode > 1 ? Result::Param : Modify(axis, signal_config1::el_mode.to(mode));
}

Result ELModeRead(const Axis &axis, std::uint8_t *mode)
{
    return SwitchRead(axis, signal_config1::el_mode, mode);
}

Result HomePinLogicSet(const Axis &axis, std::uint8_t logic)
{
    return Modify(axis, signal_config1::home_logic.to(logic != 0));
}

Result HomePinLogicRead(const Axis &axis, std::uint8_t *logic)
{
    return SwitchRead(axis, signal_config1::home_logic, logic);
}

Result EZPinLogicSet(const Axis &axis, std::uint8_t logic)
{
    return Modify(axis, signal_config2::ez_logic.to(logic != 0));
}

Result EZPinLogicRead(const Axis &axis, std::uint8_t *logic)
{
    return SwitchRead(axis, signal_config2::ez_logic, logic);
}

} // namespace trevik

// The fields of the chip's configuration and status registers, each declared once, beside its register. A field
// knows its register, so an operation that mixes two registers up does not compile.
#pragma once

#include "driver/bit_field.h"
#include "driver/registers.h"

namespace trevik
{

// A new value for a field of a register.
template <auto Reg>
struct Setting {
    BitField field;
    std::uint32_t value;

    constexpr std::uint32_t in(std::uint32_t word) const { return field.put(word, value); }
};

// Where the value of a field of a register goes when it is read.
template <auto Reg, class Value>
struct Readout {
    BitField field;
    Value *value;

    constexpr void from(std::uint32_t word) const { *value = static_cast<Value>(field.get(word)); }
};

template <auto Reg>
struct FieldOf : BitField {
    constexpr Setting<Reg> to(std::uint32_t value) const { return {*this, value}; }

    template <class Value>
    constexpr Readout<Reg, Value> into(Value *value) const
    {
        return {*this, value};
    }
};

namespace signal_config1
{
using Field = FieldOf<Register::SIGNAL_CONFIG1>;
inline constexpr Field pulse_output{{0, 3}};
inline constexpr Field el_mode{{3, 1}};
inline constexpr Field sd_option_c{{4, 1}};
inline constexpr Field sd_option_b{{5, 1}};
inline constexpr Field sd_option_a{{6, 1}};
inline constexpr Field home_logic{{7, 1}};
inline constexpr Field alm_option_b{{8, 1}};
inline constexpr Field alm_option_a{{9, 1}};
inline constexpr Field erc_enable{{11, 1}};
inline constexpr Field erc_width{{12, 3}};
inline constexpr Field erc_logic{{15, 1}};
inline constexpr Field erc_off_time{{16, 2}};
inline constexpr Field inp_logic{{22, 1}};
inline constexpr Field ltc_logic{{23, 1}};
inline constexpr Field pcs_logic{{24, 1}};
inline constexpr Field interrupts_masked{{29, 1}};
} // namespace signal_config1

namespace signal_config2
{
using Field = FieldOf<Register::SIGNAL_CONFIG2>;
inline constexpr Field ports_3_to_6{{6, 8}}; // two bits a port; 01: output, 00: input
inline constexpr Field cmp_pin{{14, 2}};     // 1 to 3
inline constexpr Field pulse_input_format{{20, 2}};
inline constexpr Field pulse_input_option{{22, 1}};
inline constexpr Field ez_logic{{23, 1}};
inline constexpr Field pulser_format{{24, 2}};
inline constexpr Field pulser_option{{26, 1}};
} // namespace signal_config2

namespace home_config
{
using Field = FieldOf<Register::HOME_CONFIG>;
inline constexpr Field mode{{0, 4}};
inline constexpr Field option{{4, 4}};
inline constexpr Field cleared_by_backlash{{24, 1}};
} // namespace home_config

// Comparators 1 and 2 are the software limits, comparator 3 starts motion.
namespace limit_config
{
using Field = FieldOf<Register::LIMIT_CONFIG>;
inline constexpr Field counter1{{0, 2}};
inline constexpr Field condition1{{2, 3}};
inline constexpr Field action1{{5, 2}};
inline constexpr Field counter2{{8, 2}};
inline constexpr Field condition2{{10, 3}};
inline constexpr Field action2{{13, 2}};
inline constexpr Field counter3{{16, 2}};
inline constexpr Field condition3{{18, 3}};
inline constexpr Field action3{{21, 2}}; // 0: none but the start
} // namespace limit_config

// Comparator 5 drives the CMP output.
namespace start_trigger_env
{
using Field = FieldOf<Register::START_TRIGGER_ENV>;
inline constexpr Field counter5{{0, 3}};
inline constexpr Field condition5{{3, 3}};
inline constexpr Field action5{{6, 2}};
inline constexpr Field latch_off{{15, 1}};
inline constexpr Field compare_start{{16, 4}};
inline constexpr Field compare_start_axis{{20, 2}}; // whose comparator 3 starts this axis
} // namespace start_trigger_env

namespace motion_config
{
using Field = FieldOf<Register::MOTION_CONFIG>;
inline constexpr Field backlash_amount{{0, 12}};
inline constexpr Field backlash_mode{{12, 2}};        // 1: on
inline constexpr Field interpolation_option{{12, 2}}; // the same bits in an arc
inline constexpr Field cleared_by_following{{14, 18}};
} // namespace motion_config

namespace vibration_config
{
using Field = FieldOf<Register::VIBRATION_CONFIG>;
inline constexpr Field first{{0, 16}};
inline constexpr Field second{{16, 16}};
} // namespace vibration_config

namespace ext_status
{
using Field = FieldOf<StatusRegister::EXT_STATUS>;
inline constexpr Field pcs{{8, 1}};
inline constexpr Field erc{{9, 1}};
inline constexpr Field ltc{{14, 1}};
inline constexpr Field sd{{15, 1}};
inline constexpr Field inp{{16, 1}};
inline constexpr Field buffer_count{{20, 2}};
} // namespace ext_status

namespace main_status
{
using Field = FieldOf<StatusWord::Main>;
inline constexpr Field softlimit1{{8, 1}};
inline constexpr Field softlimit2{{9, 1}};
inline constexpr Field cmp{{12, 1}};
} // namespace main_status

namespace sub_status
{
using Field = FieldOf<StatusWord::Sub>;
inline constexpr Field cmp_off{{7, 1}};
inline constexpr Field alm{{11, 1}};
} // namespace sub_status

} // namespace trevik

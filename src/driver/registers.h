// The registers, ports and commands of a card, each named once: the enumerators and the names that logs print come
// from the same lists.
#pragma once

#include <cstdint>

namespace trevik
{

// Chip registers that can be written, with their write codes. Each axis has a set of its own.
#define TREVIK_REGISTERS(X)                                                                                        \
    X(PRESET_DISTANCE, 0x80) /* signed pulses of the next operation */                                             \
    X(PRESET_START_SPEED, 0x81)                                                                                    \
    X(PRESET_MAX_SPEED, 0x82)                                                                                      \
    X(PRESET_ACCEL_RATE, 0x83)                                                                                     \
    X(PRESET_DECEL_RATE, 0x84)                                                                                     \
    X(PRESET_MULTIPLIER, 0x85)                                                                                     \
    X(PRESET_RAMPDOWN_POINT, 0x86)                                                                                 \
    X(PRESET_MODE, 0x87)                                                                                           \
    X(PRESET_CENTER, 0x88)                                                                                         \
    X(PRESET_S_ACCEL_RANGE, 0x89)                                                                                  \
    X(PRESET_S_DECEL_RANGE, 0x8A)                                                                                  \
    X(PRESET_ARC_STEPS, 0x8C)                                                                                      \
    X(DISTANCE, 0x90)    /* signed pulses of the current operation */                                              \
    X(START_SPEED, 0x91) /* speed units */                                                                         \
    X(MAX_SPEED, 0x92)   /* speed units */                                                                         \
    X(ACCEL_RATE, 0x93)                                                                                            \
    X(DECEL_RATE, 0x94)                                                                                            \
    X(MULTIPLIER, 0x95)     /* m: one speed unit is 300 / (m + 1) pulses/s */                                      \
    X(RAMPDOWN_POINT, 0x96) /* pulses before the end */                                                            \
    X(MODE, 0x97)           /* operation-mode word */                                                              \
    X(CENTER, 0x98)                                                                                                \
    X(S_ACCEL_RANGE, 0x99) /* speed units; 0: the whole ramp is curved */                                          \
    X(S_DECEL_RANGE, 0x9A)                                                                                         \
    X(CORRECTION_SPEED, 0x9B) /* speed units */                                                                    \
    X(SIGNAL_CONFIG1, 0x9C)                                                                                        \
    X(SIGNAL_CONFIG2, 0x9D)                                                                                        \
    X(HOME_CONFIG, 0x9E)                                                                                           \
    X(LIMIT_CONFIG, 0x9F)                                                                                          \
    X(START_TRIGGER_ENV, 0xA0)                                                                                     \
    X(MOTION_CONFIG, 0xA1)                                                                                         \
    X(VIBRATION_CONFIG, 0xA2)                                                                                      \
    X(COUNTER1, 0xA3) /* command position */                                                                       \
    X(COUNTER2, 0xA4) /* feedback */                                                                               \
    X(COUNTER3, 0xA5)                                                                                              \
    X(COUNTER4, 0xA6) /* handwheel */                                                                              \
    X(SOFTLIMIT1, 0xA7)                                                                                            \
    X(SOFTLIMIT2, 0xA8)                                                                                            \
    X(COMPARE_START_DATA, 0xA9)                                                                                    \
    X(COMPARATOR_DATA_AUX, 0xAA)                                                                                   \
    X(COMPARATOR_DATA, 0xAB)                                                                                       \
    X(EVENT_ENABLE, 0xAC)                                                                                          \
    X(ARC_STEPS, 0xBC)

// Registers that can only be read, with their read codes.
#define TREVIK_STATUS_REGISTERS(X)                                                                                 \
    X(LATCH_DATA, 0xEE)                                                                                            \
    X(EXT_STATUS, 0xF1) /* inputs, and the number of operations in the buffer */                                   \
    X(ERROR_FLAGS, 0xF2)                                                                                           \
    X(EVENT_FLAGS, 0xF3)                                                                                           \
    X(REMAINING, 0xF4)     /* pulses left of a stopped operation */                                                \
    X(CURRENT_SPEED, 0xF5) /* speed units */

// Chip commands: one byte, sent to a set of axes.
#define TREVIK_COMMANDS(X)                                                                                         \
    X(CMD_EMERGENCY_STOP, 0x05)                                                                                    \
    X(CMD_CSTA_PULSE, 0x06)                                                                                        \
    X(CMD_CSTP_PULSE, 0x07)                                                                                        \
    X(CMD_PORT0_LOW, 0x10)                                                                                         \
    X(CMD_PORT1_LOW, 0x11)                                                                                         \
    X(CMD_PORT3_LOW, 0x13)                                                                                         \
    X(CMD_PORT4_LOW, 0x14)                                                                                         \
    X(CMD_PORT5_LOW, 0x15)                                                                                         \
    X(CMD_PORT6_LOW, 0x16)                                                                                         \
    X(CMD_PORT7_LOW, 0x17)                                                                                         \
    X(CMD_PORT0_HIGH, 0x18)                                                                                        \
    X(CMD_PORT1_HIGH, 0x19)                                                                                        \
    X(CMD_PORT3_HIGH, 0x1B)                                                                                        \
    X(CMD_PORT4_HIGH, 0x1C)                                                                                        \
    X(CMD_PORT5_HIGH, 0x1D)                                                                                        \
    X(CMD_PORT6_HIGH, 0x1E)                                                                                        \
    X(CMD_PORT7_HIGH, 0x1F)                                                                                        \
    X(CMD_OUTPUT_ON, 0x24)                                                                                         \
    X(CMD_OUTPUT_OFF, 0x25)                                                                                        \
    X(CMD_LATCH_COUNTERS, 0x29)                                                                                    \
    X(CMD_STOP_IMMEDIATE, 0x49)                                                                                    \
    X(CMD_STOP_DECEL, 0x4A)                                                                                        \
    X(CMD_START_HIGH, 0x51)     /* at the maximum speed, no ramps */                                               \
    X(CMD_START_HIGH_DEC, 0x52) /* at the maximum speed, decelerate at the end */                                  \
    X(CMD_START_ACC_DEC, 0x53)  /* accelerate, run, decelerate */                                                  \
    X(CMD_RESTART, 0x57)

#define TREVIK_ENUMERATOR(name, code) name = (code),

enum class Register : std::uint8_t { TREVIK_REGISTERS(TREVIK_ENUMERATOR) };
enum class StatusRegister : std::uint8_t { TREVIK_STATUS_REGISTERS(TREVIK_ENUMERATOR) };
enum class Command : std::uint8_t { TREVIK_COMMANDS(TREVIK_ENUMERATOR) };

#undef TREVIK_ENUMERATOR

constexpr std::uint8_t WriteCode(Register reg)
{
    return static_cast<std::uint8_t>(reg);
}
constexpr std::uint8_t ReadCode(Register reg)
{
    return static_cast<std::uint8_t>(static_cast<int>(reg) + 0x40);
}
constexpr std::uint8_t ReadCode(StatusRegister reg)
{
    return static_cast<std::uint8_t>(reg);
}

// The register of the next operation that stands for a register of the current one. They lie 16 codes apart, but
// for the step count; only the registers 0x80 to 0x8C have a direct twin.
constexpr Register PresetOf(Register direct)
{
    if (direct == Register::ARC_STEPS)
        return Register::PRESET_ARC_STEPS;
    return static_cast<Register>(static_cast<int>(direct) - 0x10);
}

// The two 16-bit status words of an axis.
enum class StatusWord : std::uint32_t { Main = 0, Sub = 2 };

constexpr std::uint32_t StatusPort(std::uint32_t axis, StatusWord word)
{
    return 8 * axis + static_cast<std::uint32_t>(word);
}

// 16-bit ports of a card, by offset.
enum class Port : std::uint32_t {
    Command = 0, // write: axis set in the high byte, command in the low byte
    TimerControl = 68,
    Timer0Low = 70,
    Timer0High = 72,
    Timer1Low = 74,
    Timer1High = 76,
    InterruptMask = 78,
    InterruptState = 118,
};

constexpr std::uint32_t MainStatusPort(std::uint32_t axis)
{
    return StatusPort(axis, StatusWord::Main);
}
constexpr std::uint32_t SubStatusPort(std::uint32_t axis)
{
    return StatusPort(axis, StatusWord::Sub);
}

// Index register of axis 0 that holds the model word, and the words of the two known models.
constexpr std::uint8_t model_index = 38;
constexpr std::uint16_t model_word_A = 0x0001;
constexpr std::uint16_t model_word_AC = 0x0101;

// Index registers of the AC model.
enum class Index : std::uint8_t {
    EncoderSetting1 = 0,
    EncoderSetting2 = 2,
    EncoderSetting3 = 4,
    EncoderPolarity = 6,
    EncoderStatus = 8,
    PulseSwap = 10,
    Debounce = 12,
    LoopRun = 16,
    OutputMagnitude = 18,
    OutputSign = 20, // 1: negative
    Gain = 22,
    LoopConstantLow = 24,
    LoopConstantHigh = 26,
    ErrorCounterLow = 28,
    ErrorCounterHigh = 30,
    DetectorStatus = 32,
    ControlMode = 34, // of axis 0, for the whole card
    DetectorEnable = 36,
};

// Bit of an axis in an axis set. Numbers above 3 count as 0.
constexpr std::uint8_t AxisBit(std::uint8_t axis)
{
    return static_cast<std::uint8_t>(axis > 3 ? 1 : 1u << axis);
}
constexpr std::uint8_t all_axes = 0x0F;

// Main status of an axis.
struct MainStatus {
    std::uint16_t word = 0;

    static constexpr std::uint16_t idle_bit = 1u << 3;
    static constexpr std::uint16_t preset_full_bit = 1u << 14;

    constexpr bool idle() const { return (word & idle_bit) != 0; }
    constexpr bool preset_full() const { return (word & preset_full_bit) != 0; }
};

} // namespace trevik

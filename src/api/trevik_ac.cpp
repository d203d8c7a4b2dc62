// The functions of the AC model: one line an entry.
#include <trevik/TrevikAC.h>

#include "ac/encoder.h"
#include "ac/index.h"
#include "ac/pid.h"
#include "api/entry.h"
#include "config/compensation.h"

using namespace trevik;

uint32_t TREVIK_CALL TrevikAC_index_read(uint8_t card, uint8_t axis, uint8_t index, uint16_t *value)
{
    return EarlierAxisEntry(card, axis, IndexRegisterRead, index, value);
}

uint32_t TREVIK_CALL TrevikAC_index_write(uint8_t card, uint8_t axis, uint8_t index, uint16_t value)
{
    return EarlierAxisEntry(card, axis, IndexRegisterWrite, index, value);
}

uint32_t TREVIK_CALL TrevikAC_encoder_mode_set(uint8_t card, uint8_t axis, uint16_t s1, uint16_t s2, uint16_t s3)
{
    return ACAxisEntry(card, axis, EncoderModeSet, s1, s2, s3);
}

uint32_t TREVIK_CALL TrevikAC_encoder_mode_read(uint8_t card, uint8_t axis, uint16_t *s1, uint16_t *s2,
                                                uint16_t *s3)
{
    return ACAxisEntry(card, axis, EncoderModeRead, s1, s2, s3);
}

uint32_t TREVIK_CALL TrevikAC_encoder_polarity_set(uint8_t card, uint8_t axis, uint16_t bits)
{
    return ACAxisEntry(card, axis, EncoderPolaritySet, bits);
}

uint32_t TREVIK_CALL TrevikAC_encoder_polarity_read(uint8_t card, uint8_t axis, uint16_t *bits)
{
    return ACAxisEntry(card, axis, EncoderPolarityRead, bits);
}

uint32_t TREVIK_CALL TrevikAC_encoder_status_read(uint8_t card, uint8_t axis, uint16_t *status)
{
    return ACAxisEntry(card, axis, EncoderStatusRead, status);
}

uint32_t TREVIK_CALL TrevikAC_pulse_swap_set(uint8_t card, uint8_t axis, uint8_t swap)
{
    return ACAxisEntry(card, axis, PulseSwapSet, swap);
}

uint32_t TREVIK_CALL TrevikAC_pulse_swap_read(uint8_t card, uint8_t axis, uint8_t *swap)
{
    return ACAxisEntry(card, axis, PulseSwapRead, swap);
}

uint32_t TREVIK_CALL TrevikAC_debounce_set(uint8_t card, uint8_t axis, uint8_t value)
{
    return ACAxisEntry(card, axis, DebounceSet, value);
}

uint32_t TREVIK_CALL TrevikAC_debounce_read(uint8_t card, uint8_t axis, uint8_t *value)
{
    return ACAxisEntry(card, axis, DebounceRead, value);
}

uint32_t TREVIK_CALL TrevikAC_DA_set(uint8_t card, uint8_t axis, int32_t value)
{
    return ACAxisEntry(card, axis, AnalogOutputSet, value);
}

uint32_t TREVIK_CALL TrevikAC_DA_read(uint8_t card, uint8_t axis, int32_t *value)
{
    return ACAxisEntry(card, axis, AnalogOutputRead, value);
}

uint32_t TREVIK_CALL TrevikAC_PID_control_mode_set(uint8_t card, uint8_t mode)
{
    return ACCardEntry(card, PIDControlModeSet, mode);
}

uint32_t TREVIK_CALL TrevikAC_PID_control_mode_read(uint8_t card, uint8_t *mode)
{
    return ACCardEntry(card, PIDControlModeRead, mode);
}

uint32_t TREVIK_CALL TrevikAC_PID_set(uint8_t card, uint8_t axis, uint16_t gain, uint16_t time)
{
    return ACCardEntry(card, PIDSet, axis, gain, time);
}

uint32_t TREVIK_CALL TrevikAC_PID_read(uint8_t card, uint8_t axis, uint16_t *gain, uint16_t *time)
{
    return ACCardEntry(card, PIDRead, axis, gain, time);
}

uint32_t TREVIK_CALL TrevikAC_PID_error_counter_read(uint8_t card, uint8_t axis, uint32_t *error)
{
    return ACCardEntry(card, PIDErrorCounterRead, axis, error);
}

uint32_t TREVIK_CALL TrevikAC_PID_start(uint8_t card, uint8_t axis)
{
    return ACCardEntry(card, PIDStart, axis);
}

uint32_t TREVIK_CALL TrevikAC_PID_stop(uint8_t card, uint8_t axis)
{
    return ACCardEntry(card, PIDStop, axis);
}

uint32_t TREVIK_CALL TrevikAC_PID_error_detector_set(uint8_t card, uint8_t axis, uint8_t enable)
{
    return ACCardEntry(card, PIDErrorDetectorSet, axis, enable);
}

uint32_t TREVIK_CALL TrevikAC_PID_error_detector_read(uint8_t card, uint8_t axis, uint8_t *status, uint8_t *enable)
{
    return ACCardEntry(card, PIDErrorDetectorRead, axis, status, enable);
}

uint32_t TREVIK_CALL TrevikAC_PID_error_detector_clear(uint8_t card, uint8_t axis)
{
    return ACCardEntry(card, PIDErrorDetectorClear, axis);
}

uint32_t TREVIK_CALL TrevikAC_counter_simultaneous_read(uint8_t card, uint32_t *axis0, uint32_t *axis1,
                                                        uint32_t *axis2, uint32_t *axis3)
{
    return ACCardEntry(card, SimultaneousCounterRead, axis0, axis1, axis2, axis3);
}

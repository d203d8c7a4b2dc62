/* TrevikAC.h - functions of the AC model (names TrevikAC_...). Arguments, results and threads as in TrevikA.h. */
#ifndef TREVIK_AC_H
#define TREVIK_AC_H

#include "TrevikA.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Raw access to the 16-bit index registers of a card. index 0 to 255; index 38 of axis 0 holds the model word
 * (1: A, 0x101: AC). These two do not look at the card's model: they work on a card of any model.
 * Results: TREVIK_ERR_CARD, TREVIK_ERR_AXIS, TREVIK_ERR_HANDLE as in TrevikA.h; TREVIK_ERR_PARAM for a null
 * pointer; otherwise the Windows error when the driver refuses the request, with `value` not written. */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_index_read(uint8_t card, uint8_t axis, uint8_t index, uint16_t *value);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_index_write(uint8_t card, uint8_t axis, uint8_t index, uint16_t value);

/* The functions below share the results of TrevikA.h, but look at things in another order: card, axis, model,
 * arguments, and last, when a request is to be sent, the handle.
 *   TREVIK_ERR_MODEL  the card is of another model than AC
 * The PID functions look at the axis together with the handle. What the driver refuses counts as 0 where a value is
 * put together or is a uint8_t; otherwise it is not written. */

/* Encoder settings: s1 0 to 2, s2 0 to 4, s3 0 to 2.
 *   TREVIK_ERR_PARAM  above these ranges */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_encoder_mode_set(uint8_t card, uint8_t axis, uint16_t s1, uint16_t s2,
                                                          uint16_t s3);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_encoder_mode_read(uint8_t card, uint8_t axis, uint16_t *s1, uint16_t *s2,
                                                           uint16_t *s3);

/* Six switches in one number, 0 to 63.
 *   TREVIK_ERR_PARAM  above 63 */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_encoder_polarity_set(uint8_t card, uint8_t axis, uint16_t bits);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_encoder_polarity_read(uint8_t card, uint8_t axis, uint16_t *bits);

/* The status word of the encoder input. */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_encoder_status_read(uint8_t card, uint8_t axis, uint16_t *status);

/* 0 or 1.
 *   TREVIK_ERR_PARAM  above 1 */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_pulse_swap_set(uint8_t card, uint8_t axis, uint8_t swap);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_pulse_swap_read(uint8_t card, uint8_t axis, uint8_t *swap);

/* TrevikA_debounce_set, TrevikA_debounce_read */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_debounce_set(uint8_t card, uint8_t axis, uint8_t value);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_debounce_read(uint8_t card, uint8_t axis, uint8_t *value);

/* Analogue output, -65535 to 65535.
 *   TREVIK_ERR_PARAM  outside */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_DA_set(uint8_t card, uint8_t axis, int32_t value);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_DA_read(uint8_t card, uint8_t axis, int32_t *value);

/* Control mode of the card's position loops, 0 to 4.
 *   TREVIK_ERR_PARAM  above 4 */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_control_mode_set(uint8_t card, uint8_t mode);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_control_mode_read(uint8_t card, uint8_t *mode);

/* Gain and time constant of a position loop, 1 to 4095 each. The card keeps 4194304 / time, cut, so the time that
 * is read can differ from the one set; 0 when the card holds none.
 *   TREVIK_ERR_PARAM  outside */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_set(uint8_t card, uint8_t axis, uint16_t gain, uint16_t time);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_read(uint8_t card, uint8_t axis, uint16_t *gain, uint16_t *time);

/* The position error of the loop, signed. */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_error_counter_read(uint8_t card, uint8_t axis, uint32_t *error);

/* Switches the loop on or off. */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_start(uint8_t card, uint8_t axis);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_stop(uint8_t card, uint8_t axis);

/* The error detector: on (1) or off (0), its status, and a reset of it.
 *   TREVIK_ERR_PARAM  enable above 1 */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_error_detector_set(uint8_t card, uint8_t axis, uint8_t enable);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_error_detector_read(uint8_t card, uint8_t axis, uint8_t *status,
                                                                 uint8_t *enable);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_PID_error_detector_clear(uint8_t card, uint8_t axis);

/* Latches the feedback counters of all axes at the same moment and reads them. */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_counter_simultaneous_read(uint8_t card, uint32_t *axis0, uint32_t *axis1,
                                                                   uint32_t *axis2, uint32_t *axis3);

#ifdef __cplusplus
}
#endif

#endif

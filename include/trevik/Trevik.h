/* Trevik.h - the earlier interface (names Trevik_...), kept for existing machine programs.
 *
 * Each function does what its current counterpart in TrevikA.h does, which is named beside it and documents the
 * arguments; only the differences stand here. Results, units and threads are those of TrevikA.h, except that a card
 * of an unsupported model is not refused with TREVIK_ERR_MODEL. In general:
 *   - ramp times are seconds, as double, fractions of a millisecond included, except in the S1 forms
 *   - moves have no trigger: they start at once
 *   - lines have one absolute/relative flag for all their axes
 *   - the S forms take the speed gained in each curved section (pulses/s) where the current ones take its time; the
 * S1 forms take whole ramp times and curved times in milliseconds and refuse a ramp shorter than its two curved
 *     sections with TREVIK_ERR_PARAM, before anything else
 *
 * New programs use TrevikA.h.
 */
#ifndef TREVIK_H
#define TREVIK_H

#include "TrevikA.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Library ------------------------------------------------------------------------------------------------ */

/* TrevikA_dll_Simu_mode */
TREVIK_API uint32_t TREVIK_CALL Trevik_dll_Simu_mode(uint8_t mode);

/* TrevikA_initial; 0 also when none of the cards found is of a supported model. */
TREVIK_API uint32_t TREVIK_CALL Trevik_initial(void);

/* TrevikA_info, without the model. */
TREVIK_API uint32_t TREVIK_CALL Trevik_info(uint8_t card, uint16_t *resource_word);

/* TrevikA_close */
TREVIK_API uint32_t TREVIK_CALL Trevik_close(void);

/* ---- Speed range -------------------------------------------------------------------------------------------- */

/* TrevikA_velocity_range_fix, TrevikA_velocity_range_unfix */
TREVIK_API uint32_t TREVIK_CALL Trevik_fix_speed_range(uint8_t card, uint8_t axis, uint32_t speed);
TREVIK_API uint32_t TREVIK_CALL Trevik_unfix_speed_range(uint8_t card, uint8_t axis);

/* ---- Single-axis moves -------------------------------------------------------------------------------------- */

/* TrevikA_T_position_move; accelTime, decelTime in seconds. */
TREVIK_API uint32_t TREVIK_CALL Trevik_T_curve_position_move(uint8_t card, uint8_t axis, uint32_t distance,
                                                             uint8_t absolute, uint32_t startSpeed,
                                                             uint32_t maxSpeed, double accelTime, double decelTime);

/* TrevikA_position_change */
TREVIK_API uint32_t TREVIK_CALL Trevik_position_change(uint8_t card, uint8_t axis, uint32_t position,
                                                       uint8_t absolute);

/* ---- Lines -------------------------------------------------------------------------------------------------- */

/* TrevikA_T_LINE2_move, TrevikA_T_LINE3_move, TrevikA_T_LINE4_move; absolute: for all axes; accel_s, decel_s:
 * seconds. */
TREVIK_API uint32_t TREVIK_CALL Trevik_T_curve_move_LINE2(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                          int32_t pos_b, uint8_t absolute, uint32_t start_speed,
                                                          uint32_t max_speed, double accel_s, double decel_s);
TREVIK_API uint32_t TREVIK_CALL Trevik_T_curve_move_LINE3(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                          int32_t pos_b, int32_t pos_c, uint8_t absolute,
                                                          uint32_t start_speed, uint32_t max_speed, double accel_s,
                                                          double decel_s);
TREVIK_API uint32_t TREVIK_CALL Trevik_T_curve_move_LINE4(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2,
                                                          int32_t pos_3, uint8_t absolute, uint32_t start_speed,
                                                          uint32_t max_speed, double accel_s, double decel_s);

/* The S-curve lines. s_accel, s_decel: pulses/s gained in each curved section; 0: the whole ramp is curved. accel_s
 * and decel_s are whole ramps in seconds, also for 2 and 3 axes. */
TREVIK_API uint32_t TREVIK_CALL Trevik_S_curve_move_LINE2(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                          int32_t pos_b, uint8_t absolute, uint32_t start_speed,
                                                          uint32_t max_speed, double accel_s, double decel_s,
                                                          uint32_t s_accel, uint32_t s_decel);
TREVIK_API uint32_t TREVIK_CALL Trevik_S_curve_move_LINE3(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                          int32_t pos_b, int32_t pos_c, uint8_t absolute,
                                                          uint32_t start_speed, uint32_t max_speed, double accel_s,
                                                          double decel_s, uint32_t s_accel, uint32_t s_decel);
TREVIK_API uint32_t TREVIK_CALL Trevik_S_curve_move_LINE4(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2,
                                                          int32_t pos_3, uint8_t absolute, uint32_t start_speed,
                                                          uint32_t max_speed, double accel_s, double decel_s,
                                                          uint32_t s_accel, uint32_t s_decel);

/* The S1 forms: whole ramps accel_ms, decel_ms with curved sections of s_accel_ms, s_decel_ms each. */
TREVIK_API uint32_t TREVIK_CALL Trevik_S1_curve_move_LINE2(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                           int32_t pos_b, uint8_t absolute, uint32_t start_speed,
                                                           uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                                           uint32_t s_accel_ms, uint32_t s_decel_ms);
TREVIK_API uint32_t TREVIK_CALL Trevik_S1_curve_move_LINE3(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                           int32_t pos_b, int32_t pos_c, uint8_t absolute,
                                                           uint32_t start_speed, uint32_t max_speed,
                                                           uint32_t accel_ms, uint32_t decel_ms,
                                                           uint32_t s_accel_ms, uint32_t s_decel_ms);
TREVIK_API uint32_t TREVIK_CALL Trevik_S1_curve_move_LINE4(uint8_t card, int32_t pos_0, int32_t pos_1,
                                                           int32_t pos_2, int32_t pos_3, uint8_t absolute,
                                                           uint32_t start_speed, uint32_t max_speed,
                                                           uint32_t accel_ms, uint32_t decel_ms,
                                                           uint32_t s_accel_ms, uint32_t s_decel_ms);

/* ---- Continuous motion, status and positions ---------------------------------------------------------------- */

/* TrevikA_continuous_flag_set, TrevikA_continuous_buffer_read, TrevikA_continuous_buffer_no_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_continuous_flag(uint8_t card, uint8_t axis, uint8_t flag);
TREVIK_API uint32_t TREVIK_CALL Trevik_check_continuous_buffer(uint8_t card, uint8_t axis, uint8_t *full);
TREVIK_API uint32_t TREVIK_CALL Trevik_read_conti_buffer_no(uint8_t card, uint8_t axis, uint8_t *count);

/* TrevikA_motion_status_read, TrevikA_current_position_read, TrevikA_current_position_set */
TREVIK_API uint32_t TREVIK_CALL Trevik_read_motion_status(uint8_t card, uint8_t axis, uint8_t kind, uint8_t *flag);
TREVIK_API uint32_t TREVIK_CALL Trevik_read_current_position(uint8_t card, uint8_t axis, uint32_t *position);
TREVIK_API uint32_t TREVIK_CALL Trevik_set_current_position(uint8_t card, uint8_t axis, uint32_t position);

/* Only here: makes later moves count from where an idle axis stands, as its command position tells. Nothing happens
 * on a moving axis. Result: that of the position read, or 0. */
TREVIK_API uint32_t TREVIK_CALL Trevik_correct_current_POS(uint8_t card, uint8_t axis);

#ifdef __cplusplus
}
#endif

#endif

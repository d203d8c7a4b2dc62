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

/* TrevikA_S_position_move; accelTime, decelTime in seconds, sAccel, sDecel: pulses/s gained in each curved section.
 */
TREVIK_API uint32_t TREVIK_CALL Trevik_S_curve_position_move(uint8_t card, uint8_t axis, uint32_t distance,
                                                             uint8_t absolute, uint32_t startSpeed,
                                                             uint32_t maxSpeed, double accelTime, double decelTime,
                                                             uint32_t sAccel, uint32_t sDecel);

/* TrevikA_S_position_move, with its milliseconds. */
TREVIK_API uint32_t TREVIK_CALL Trevik_S1_curve_position_move(uint8_t card, uint8_t axis, uint32_t distance,
                                                              uint8_t absolute, uint32_t startSpeed,
                                                              uint32_t maxSpeed, uint32_t accelTime,
                                                              uint32_t decelTime, uint32_t sAccelTime,
                                                              uint32_t sDecelTime);

/* TrevikA_position_change, TrevikA_T_onLINE_change */
TREVIK_API uint32_t TREVIK_CALL Trevik_position_change(uint8_t card, uint8_t axis, uint32_t position,
                                                       uint8_t absolute);
TREVIK_API uint32_t TREVIK_CALL Trevik_OnLine_T_curve_change(uint8_t card, uint8_t axis, uint32_t distance,
                                                             uint8_t absolute, uint32_t startSpeed,
                                                             uint32_t maxSpeed, double accelTime, double decelTime);

/* TrevikA_T_velocity_move; accelTime in seconds. */
TREVIK_API uint32_t TREVIK_CALL Trevik_T_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                       uint32_t maxSpeed, double accelTime);

/* TrevikA_S_velocity_move; accelTime in seconds, sAccel: pulses/s gained in each curved section. The S1 form is
 * TrevikA_S_velocity_move with its milliseconds. */
TREVIK_API uint32_t TREVIK_CALL Trevik_S_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                       uint32_t maxSpeed, double accelTime, uint32_t sAccel);
TREVIK_API uint32_t TREVIK_CALL Trevik_S1_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                        uint32_t maxSpeed, uint32_t accelTime, uint32_t sAccelTime);

/* TrevikA_velocity_change; time in seconds. */
TREVIK_API uint32_t TREVIK_CALL Trevik_velocity_change(uint8_t card, uint8_t axis, uint32_t newSpeed, double time);

/* Only here: TrevikA_velocity_change with an S-curve ramp of a linear section of linearTime ms between curved ones
 * of sTime ms (an axis that runs a T-curve keeps to it and takes linearTime). The axis is not asked what it runs:
 * no TREVIK_ERR_NOT_MOVING. No time at all is the slowest ramp. */
TREVIK_API uint32_t TREVIK_CALL Trevik_S1_velocity_change(uint8_t card, uint8_t axis, uint32_t newSpeed,
                                                          uint32_t linearTime, uint32_t sTime);

/* ---- Stops, speed, restart ---------------------------------------------------------------------------------- */

/* TrevikA_stop for one axis: decelerating over decelTime seconds (0.0: by the fastest rate), and at once. */
TREVIK_API uint32_t TREVIK_CALL Trevik_dec_stop(uint8_t card, uint8_t axis, double decelTime);
TREVIK_API uint32_t TREVIK_CALL Trevik_imd_stop(uint8_t card, uint8_t axis);

/* TrevikA_stop_emg, TrevikA_velocity_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_emg_stop(uint8_t card);
TREVIK_API uint32_t TREVIK_CALL Trevik_read_speed(uint8_t card, uint8_t axis, double *speed);

/* TrevikA_OneAxis_restart, TrevikA_2Axis_restart, TrevikA_3Axis_restart, TrevikA_4Axis_restart */
TREVIK_API uint32_t TREVIK_CALL Trevik_OneAxis_restart(uint8_t card, uint8_t axis);
TREVIK_API uint32_t TREVIK_CALL Trevik_2Axis_restart(uint8_t card, uint8_t group);
TREVIK_API uint32_t TREVIK_CALL Trevik_3Axis_restart(uint8_t card, uint8_t group);
TREVIK_API uint32_t TREVIK_CALL Trevik_4Axis_restart(uint8_t card);

/* ---- Homing ------------------------------------------------------------------------------------------------- */

/* TrevikA_home_mode_set, TrevikA_home_start, TrevikA_home_search; accelTime in seconds. */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_home_mode(uint8_t card, uint8_t axis, uint8_t mode, uint8_t option);
TREVIK_API uint32_t TREVIK_CALL Trevik_start_homing(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                    uint32_t maxSpeed, double accelTime, uint8_t direction);
TREVIK_API uint32_t TREVIK_CALL Trevik_start_origin_search_homing(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                                  uint32_t maxSpeed, double accelTime,
                                                                  uint8_t direction, uint32_t distance);

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

/* ---- Handwheel ---------------------------------------------------------------------------------------------- */

/* TrevikA_pulser_mode_set, TrevikA_pulser_mode_read, TrevikA_pulser_counter_read, TrevikA_pulser_counter_set,
 * TrevikA_pulser_map_set, TrevikA_pulser_motion_enable */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_pulser_mode(uint8_t card, uint8_t axis, uint8_t format,
                                                          uint8_t option);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_pulser_mode(uint8_t card, uint8_t axis, uint8_t *format,
                                                            uint8_t *option);
TREVIK_API uint32_t TREVIK_CALL Trevik_read_pulser_counter(uint8_t card, uint8_t axis, uint32_t *counter);
TREVIK_API uint32_t TREVIK_CALL Trevik_set_pulser_counter(uint8_t card, uint8_t axis, uint32_t counter);
TREVIK_API uint32_t TREVIK_CALL Trevik_set_pulser_Map(uint8_t card, uint8_t axis, uint8_t source, uint8_t reverse);
TREVIK_API uint32_t TREVIK_CALL Trevik_enable_pulser_motion(uint8_t card, uint8_t axis, uint8_t enable,
                                                            uint16_t ratio);

/* TrevikA_T_velocity_move and TrevikA_T_position_move without ramps, from 100 pulses/s. */
TREVIK_API uint32_t TREVIK_CALL Trevik_run_pulser_Vmove(uint8_t card, uint8_t axis, uint32_t maxSpeed);
TREVIK_API uint32_t TREVIK_CALL Trevik_run_pulser_Pmove(uint8_t card, uint8_t axis, uint32_t distance,
                                                        uint8_t absolute, uint32_t maxSpeed);

#ifdef __cplusplus
}
#endif

#endif

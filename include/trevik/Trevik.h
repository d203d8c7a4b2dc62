/* Trevik.h - the earlier interface (names Trevik_...), kept for existing machine programs.
 *
 * Each function does what its current counterpart in TrevikA.h does, which is named beside it and documents the
 * arguments; only the differences stand here. Results, units and threads are those of TrevikA.h, except that a card
 * of an unsupported model is not refused with TREVIK_ERR_MODEL. In general:
 *   - ramp times are seconds, as double, fractions of a millisecond included, except in the S1 forms
 *   - moves have no trigger: they start at once
 *   - lines have one absolute/relative flag for all their axes
 *   - the S forms take the speed gained in each curved section (pulses/s) where the current ones take its time; the
 *     S1 moves take whole ramp times and curved times in milliseconds and refuse a ramp shorter than its two curved
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

/* TrevikA_S_position_move; accelTime, decelTime in seconds, sAccel, sDecel: pulses/s gained in each curved part. */
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

/* TrevikA_position_change, and TrevikA_T_onLINE_change with accelTime, decelTime in seconds. */
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
 * of sTime ms (an axis that runs a T-curve keeps to it and takes linearTime); both 0: the fastest ramp. The axis is
 * not asked what it runs: no TREVIK_ERR_NOT_MOVING.
 *   TREVIK_ERR_PARAM  newSpeed above 6,553,500 either way */
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

/* TrevikA_S_LINE4_move, also for 2 and 3 axes. s_accel, s_decel: pulses/s gained in each curved section; 0: the
 * whole ramp is curved. accel_s, decel_s: whole ramps in seconds. */
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

/* The same with times: whole ramps accel_ms, decel_ms with curved sections of s_accel_ms, s_decel_ms each. */
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

/* Only here: new end, speeds and T-curve ramps for the running line of these axes, all at once; no new start. The
 * arguments are those of Trevik_T_curve_move_LINE2; absolute 0: distances from where the line started. The library
 * computes the ramp-down point. A refused max_speed has already moved the positions from which later relative moves
 * count.
 *   TREVIK_ERR_NOT_MOVING  an axis of the set is idle
 *   TREVIK_ERR_PARAM       axis_set above its range; max_speed above 6,553,500 */
TREVIK_API uint32_t TREVIK_CALL Trevik_OnLine_T_curve_change_LINE2(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                                   int32_t pos_b, uint8_t absolute,
                                                                   uint32_t start_speed, uint32_t max_speed,
                                                                   double accel_s, double decel_s);
TREVIK_API uint32_t TREVIK_CALL Trevik_OnLine_T_curve_change_LINE3(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                                   int32_t pos_b, int32_t pos_c, uint8_t absolute,
                                                                   uint32_t start_speed, uint32_t max_speed,
                                                                   double accel_s, double decel_s);
TREVIK_API uint32_t TREVIK_CALL Trevik_OnLine_T_curve_change_LINE4(uint8_t card, int32_t pos_0, int32_t pos_1,
                                                                   int32_t pos_2, int32_t pos_3, uint8_t absolute,
                                                                   uint32_t start_speed, uint32_t max_speed,
                                                                   double accel_s, double decel_s);

/* ---- Arcs and circles --------------------------------------------------------------------------------------- */

/* TrevikA_ARC_center_move; XY and ZA: always of axes 0 1, and of axes 2 3. */
TREVIK_API uint32_t TREVIK_CALL Trevik_ARC2_center_move(uint8_t card, uint8_t axis_pair, int32_t center_a,
                                                        int32_t center_b, int32_t end_a, int32_t end_b, uint8_t abs,
                                                        uint32_t speed, uint8_t dir);
TREVIK_API uint32_t TREVIK_CALL Trevik_ARC_center_move_XY(uint8_t card, int32_t center_a, int32_t center_b,
                                                          int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed,
                                                          uint8_t dir);
TREVIK_API uint32_t TREVIK_CALL Trevik_ARC_center_move_ZA(uint8_t card, int32_t center_a, int32_t center_b,
                                                          int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed,
                                                          uint8_t dir);

/* TrevikA_ARC_3P_move, TrevikA_CIR_3P_move, TrevikA_ARC_radius_move, TrevikA_CIR_radius_move */
TREVIK_API uint32_t TREVIK_CALL Trevik_ARC2_3P_move(uint8_t card, uint8_t axis_pair, int32_t mid_a, int32_t mid_b,
                                                    int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed);
TREVIK_API uint32_t TREVIK_CALL Trevik_CIR2_3P_move(uint8_t card, uint8_t axis_pair, int32_t p1_a, int32_t p1_b,
                                                    int32_t p2_a, int32_t p2_b, uint8_t abs, uint32_t speed);
TREVIK_API uint32_t TREVIK_CALL Trevik_ARC2_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius,
                                                        int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed,
                                                        uint8_t dir);
TREVIK_API uint32_t TREVIK_CALL Trevik_CIR2_radius_move(uint8_t card, uint8_t axis_pair, int32_t radius,
                                                        int32_t point_a, int32_t point_b, uint8_t abs,
                                                        uint32_t speed, uint8_t dir);

/* Only here: the center that TrevikA_ARC_radius_move finds for an end relative to the start. Nothing moves.
 *   TREVIK_ERR_PARAM  the end is the start; a null pointer */
TREVIK_API uint32_t TREVIK_CALL Trevik_ARC2_Radius_test(uint8_t card, uint32_t end_a, int32_t radius,
                                                        uint32_t end_b, uint8_t dir, uint32_t *center_a,
                                                        uint32_t *center_b);

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

/* ---- Card initialisation ------------------------------------------------------------------------------------ */

/* TrevikA_init_card */
TREVIK_API uint32_t TREVIK_CALL Trevik_init_card(uint8_t card);

/* ---- Pulse formats ------------------------------------------------------------------------------------------ */

/* TrevikA_pulse_outmode_set, TrevikA_pulse_outmode_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_pulse_outmode(uint8_t card, uint8_t axis, uint8_t mode);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_pulse_outmode(uint8_t card, uint8_t axis, uint8_t *mode);

/* TrevikA_pulse_inmode_set, TrevikA_pulse_inmode_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_pulse_inmode(uint8_t card, uint8_t axis, uint8_t format, uint8_t option);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_pulse_inmode(uint8_t card, uint8_t axis, uint8_t *format,
                                                             uint8_t *option);

/* ---- Signal pins -------------------------------------------------------------------------------------------- */

/* TrevikA_SD_PIN_set, TrevikA_SD_PIN_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_SD_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t optionA,
                                                     uint8_t optionB, uint8_t optionC);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_SD_PIN(uint8_t card, uint8_t axis, uint8_t *enable,
                                                       uint8_t *optionA, uint8_t *optionB, uint8_t *optionC,
                                                       uint8_t *input);

/* TrevikA_PCS_PIN_set, TrevikA_PCS_PIN_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_PCS_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_PCS_PIN(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                                        uint8_t *input);

/* TrevikA_INP_PIN_set, TrevikA_INP_PIN_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_INP_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_INP_PIN(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                                        uint8_t *input);

/* TrevikA_ERC_PIN_set, TrevikA_ERC_PIN_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_ERC_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic,
                                                      uint8_t width, uint8_t offTime);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_ERC_PIN(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                                        uint8_t *width, uint8_t *offTime, uint8_t *output);

/* TrevikA_ALM_PIN_set, TrevikA_ALM_PIN_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_ALM_PIN(uint8_t card, uint8_t axis, uint8_t optionA, uint8_t optionB);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_ALM_PIN(uint8_t card, uint8_t axis, uint8_t *optionA,
                                                        uint8_t *optionB, uint8_t *input);

/* TrevikA_LTC_PIN_set, TrevikA_LTC_PIN_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_LTC_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_LTC_PIN(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                                        uint8_t *input);

/* TrevikA_CMP_PIN_set, TrevikA_CMP_PIN_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_CMP_OUT(uint8_t card, uint8_t axis, uint8_t code);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_CMP_OUT(uint8_t card, uint8_t axis, uint8_t *code, uint8_t *output);

/* TrevikA_EL_mode_set, TrevikA_EL_mode_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_EL_MODE(uint8_t card, uint8_t axis, uint8_t mode);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_EL_MODE(uint8_t card, uint8_t axis, uint8_t *mode);

/* TrevikA_HOME_PIN_logic_set, TrevikA_HOME_PIN_logic_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_HOME_pin_logic(uint8_t card, uint8_t axis, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_HOME_pin_logic(uint8_t card, uint8_t axis, uint8_t *logic);

/* TrevikA_EZ_PIN_logic_set, TrevikA_EZ_PIN_logic_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_EZ_pin_logic(uint8_t card, uint8_t axis, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_EZ_pin_logic(uint8_t card, uint8_t axis, uint8_t *logic);

/* ---- General-purpose points --------------------------------------------------------------------------------- */

/* TrevikA_point_read, TrevikA_point_set */
TREVIK_API uint32_t TREVIK_CALL Trevik_read_point_status(uint8_t card, uint8_t axis, uint8_t point, uint8_t *state);
TREVIK_API uint32_t TREVIK_CALL Trevik_write_output_point(uint8_t card, uint8_t axis, uint8_t point, uint8_t state);

/* TrevikA_TTL_IO_mode_set, TrevikA_TTL_IO_mode_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_TTL_IO_MODE(uint8_t card, uint8_t mode);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_TTL_IO_MODE(uint8_t card, uint8_t *mode);

/* ---- Software limits ---------------------------------------------------------------------------------------- */

/* TrevikA_softlimit_config_set, TrevikA_softlimit_config_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_softlimit(uint8_t card, uint8_t axis, uint8_t counter,
                                                        uint8_t action);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_config_softlimit(uint8_t card, uint8_t axis, uint8_t *counter,
                                                                 uint8_t *action);

/* TrevikA_softlimit_data_set, TrevikA_softlimit_data_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_softlimit_data(uint8_t card, uint8_t axis, uint32_t first,
                                                          uint32_t second);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_softlimit_data(uint8_t card, uint8_t axis, uint32_t *first,
                                                               uint32_t *second);

/* TrevikA_softlimit_enable_set, TrevikA_softlimit_enable_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_enable_softlimit(uint8_t card, uint8_t axis, uint8_t enable);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_enable_softlimit(uint8_t card, uint8_t axis, uint8_t *enable);

/* TrevikA_softlimit_flag_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_read_softlimit_flag(uint8_t card, uint8_t axis, uint8_t *flagA,
                                                           uint8_t *flagB);

/* ---- Backlash, vibration, debounce -------------------------------------------------------------------------- */

/* TrevikA_backlash_comp_set, TrevikA_backlash_comp_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_backlash_comp(uint8_t card, uint8_t axis, uint16_t amount, uint8_t mode,
                                                     uint32_t speed);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_backlash_comp(uint8_t card, uint8_t axis, uint16_t *amount,
                                                              uint8_t *mode, uint32_t *speed);

/* TrevikA_suppress_vibration_set, TrevikA_suppress_vibration_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_suppress_vibration(uint8_t card, uint8_t axis, uint16_t first,
                                                          uint16_t second);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_suppress_vibration(uint8_t card, uint8_t axis, uint16_t *first,
                                                                   uint16_t *second);

/* ---- Configuration file ------------------------------------------------------------------------------------- */

/* TrevikA_config_file_set, TrevikA_config_file_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_save_config2_file(uint8_t card, const char *fileName);
TREVIK_API uint32_t TREVIK_CALL Trevik_load_config_from_file(uint8_t card, const char *fileName);

/* ---- Events and interrupts ---------------------------------------------------------------------------------- */

/* TrevikA_event_factor_set */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_event_factor(uint8_t card, uint8_t axis, int32_t factor);

/* TrevikA_event_flag_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_read_event_flag(uint8_t card, uint8_t axis, uint32_t *flags);

/* TrevikA_error_flag_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_read_error_flag(uint8_t card, uint8_t axis, uint32_t *flags);

/* TrevikA_IRQ_source_set */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_INT_source(uint8_t card, uint8_t axis, int32_t errorSource,
                                                      int32_t eventSource);

/* TrevikA_IRQ_mask_set, for axes only.
 *   TREVIK_ERR_AXIS  source above 3, before anything else */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_INT_mask(uint8_t card, uint8_t source, uint8_t value);

/* TrevikA_IRQ_enable; hands out the event (its handle, low 32 bits).
 *   TREVIK_ERR_PARAM  null pointer */
TREVIK_API uint32_t TREVIK_CALL Trevik_enable_IRQ(uint8_t card, uint32_t *event);

/* TrevikA_IRQ_disable */
TREVIK_API uint32_t TREVIK_CALL Trevik_disable_IRQ(uint8_t card);

/* TrevikA_IRQ_process_link */
TREVIK_API uint32_t TREVIK_CALL Trevik_link_IRQ_process(uint8_t card, TrevikA_callback callback);

/* TrevikA_IRQ_status_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_read_INT_status(uint8_t card, uint8_t source, uint8_t *status,
                                                       uint32_t *eventByte, uint32_t *errorByte);

/* ---- Feedback counter, latch, comparators ------------------------------------------------------------------- */

/* TrevikA_FB_counter_read, TrevikA_FB_counter_set */
TREVIK_API uint32_t TREVIK_CALL Trevik_read_FB_counter(uint8_t card, uint8_t axis, uint32_t *counter);
TREVIK_API uint32_t TREVIK_CALL Trevik_set_FB_counter(uint8_t card, uint8_t axis, uint32_t counter);

/* TrevikA_FB_counter_latch_value_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_read_FBcounter_latch_value(uint8_t card, uint8_t axis, uint32_t *counter);

/* TrevikA_CMP_out_set, TrevikA_CMP_out_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_config_comparator_out(uint8_t card, uint8_t axis, uint8_t counter,
                                                             uint8_t condition, uint8_t action);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_comparator_out(uint8_t card, uint8_t axis, uint8_t *counter,
                                                               uint8_t *condition, uint8_t *action);

/* TrevikA_CMP_data_set, TrevikA_CMP_data_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_set_comparator_data(uint8_t card, uint8_t axis, uint32_t value);
TREVIK_API uint32_t TREVIK_CALL Trevik_readback_comparator_data(uint8_t card, uint8_t axis, uint32_t *value);

/* TrevikA_CMP_flag_read */
TREVIK_API uint32_t TREVIK_CALL Trevik_read_compare_flag(uint8_t card, uint8_t axis, uint8_t *flag);

/* ---- Simultaneous start and stop, timers -------------------------------------------------------------------- */

/* TrevikA_CSTA_trigger */
TREVIK_API uint32_t TREVIK_CALL Trevik_trigger_CSTA_pulse(uint8_t card);

/* TrevikA_CSTP_trigger */
TREVIK_API uint32_t TREVIK_CALL Trevik_trigger_CSTP_pulse(uint8_t card);

#ifdef __cplusplus
}
#endif

#endif

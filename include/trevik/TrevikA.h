/* TrevikA.h - the current interface of the TrevikA motion cards (names TrevikA_...).
 *
 * THE CARDS. A machine holds up to 16 cards, numbered 0 to 15 by their drivers (the numbers need not be
 * contiguous), each with four axes, 0 to 3. An axis puts out pulses; its command position counts them. Call
 * TrevikA_initial once, then use the cards, then call TrevikA_close.
 *
 * ARGUMENTS. Positions and distances are pulses, signed 32-bit numbers even where they travel in a uint32_t. Speeds
 * are pulses per second; the absolute value of the argument read as a signed number is used, at most 6,553,500 for
 * a maximum speed (0x80000000 has no absolute value and passes, but for homing). Ramp times are milliseconds. Values are passed out
 * through pointers, which are written only as each function says; a null pointer gives TREVIK_ERR_PARAM after the
 * card, axis and handle checks.
 *
 * RESULTS. Every function returns 0 (TREVIK_OK) or a reason. All functions with a card argument share these,
 * checked in this order before anything else, and are not repeated below:
 *   TREVIK_OK          simulation mode is on: nothing was checked, done or written
 *   TREVIK_ERR_MODEL   the card's model is not supported
 *   TREVIK_ERR_CARD    card above 15
 *   TREVIK_ERR_AXIS    axis above 3 (functions with an axis argument)
 *   TREVIK_ERR_HANDLE  no such card, TrevikA_initial not called, or TrevikA_close called
 * Any other number is the Windows error with which the driver refused a register request. A function that sends
 * several requests returns the result of the last one; a refused request does not stop the rest. Commands, status
 * words, timers, the card's interrupt mask and the enabling of interrupts report no refusal; a refused status word
 * counts as 0.
 *
 * THREADS. No function takes a lock. Calls that concern different cards may run at the same time; the application
 * serialises calls that concern the same card, and does not run TrevikA_initial or TrevikA_close beside other
 * calls. Axes that follow a handwheel are moved by a thread of the library; callbacks run on others.
 */
#ifndef TREVIK_A_H
#define TREVIK_A_H

#include <stdint.h>

#if defined(_WIN32)
#define TREVIK_CALL __stdcall
#else
#define TREVIK_CALL
#endif

#if defined(__GNUC__) && !defined(_WIN32)
#define TREVIK_API __attribute__((visibility("default")))
#else
#define TREVIK_API /* exported through the library's .def file */
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Result codes. */
#define TREVIK_OK 0u                       /* done; also every call in simulation mode */
#define TREVIK_ERR_MODEL 6u                /* the card's model is not supported, or lacks this function */
#define TREVIK_ERR_HANDLE 100u             /* the card is not open: no such card, not initialised, or closed */
#define TREVIK_ERR_OPEN 101u               /* start-up found no card that could be opened */
#define TREVIK_ERR_CARD 300u               /* card number above 15 */
#define TREVIK_ERR_AXIS 301u               /* axis number above 3 */
#define TREVIK_ERR_PARAM 302u              /* an argument outside its range, or a single-axis move of 0 */
#define TREVIK_ERR_BUSY 303u               /* an axis is not idle and not in continuous mode */
#define TREVIK_ERR_QUEUE_FULL 304u         /* continuous mode: the next-move registers are still occupied */
#define TREVIK_ERR_NOT_MOVING 305u         /* an on-the-fly change, but no such motion is running */
#define TREVIK_ERR_CONTINUOUS_MIX 306u     /* some axes of the move are in continuous mode and some are not */
#define TREVIK_ERR_ARC_AS_LINE 308u        /* no such arc; see the function: a line was tried, or nothing */
#define TREVIK_ERR_FILE 309u               /* the configuration file could not be opened or is too short */
#define TREVIK_ERR_CIRCLE_AS_DIAMETER 311u /* collinear points: the circle over them was tried */

/* What an application gives TrevikA_IRQ_process_link. `card` is the number of the card that interrupts. */
typedef void(TREVIK_CALL *TrevikA_callback)(uint32_t card);

/* ---- Library ------------------------------------------------------------------------------------------------ */

/* Switches simulation mode on: with mode 1 every later call of any function returns 0 at once and touches nothing.
 * It stays on until the library is unloaded; every other value leaves it off. Result: 0. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_dll_Simu_mode(uint8_t mode);

/* Finds and opens every card of the machine and sets the library's state to its start-up values, but for the
 * choice of TrevikA_compare_start_set. A card that is already open is closed and opened again. Prints how many
 * devices there are, and what fails, to standard output.
 *   TREVIK_ERR_OPEN   no card, or the last card in the driver's list could not be opened
 *   TREVIK_ERR_MODEL  cards were found, none of a supported model */
TREVIK_API uint32_t TREVIK_CALL TrevikA_initial(void);

/* Tells a card's model (0: A, 1: AC) and the resource word that its driver reports. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_info(uint8_t card, uint8_t *model, uint16_t *resource_word);

/* Releases and closes every card. Axes that move go on moving. Result: 0. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_close(void);

/* ---- Speed range -------------------------------------------------------------------------------------------- */

/* Fixes the speed unit of an axis to the one that suits `speed` (pulses/s): velocity moves, homing, arcs, and
 * whatever is moved or changed in continuous mode, use it until TrevikA_velocity_range_unfix. Moves that follow one
 * another without a stop need it. Of a line or arc the first axis counts, of a helix axis 2.
 *   TREVIK_ERR_PARAM  speed above 6,553,500 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_velocity_range_fix(uint8_t card, uint8_t axis, uint32_t speed);

/* Lets every move choose its own speed unit again. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_velocity_range_unfix(uint8_t card, uint8_t axis);

/* ---- Single-axis moves -------------------------------------------------------------------------------------- */

/* Moves one axis with a trapezoidal speed profile. Starts at once on an idle axis; in continuous mode the move is
 * queued behind the running one.
 *   distance     pulses to move (absolute 0), or the position to move to (absolute not 0)
 *   startSpeed   pulses/s at which the ramps begin and end
 *   maxSpeed     pulses/s, at most 6,553,500
 *   accelTime    ms from startSpeed to maxSpeed; 0: no ramp
 *   decelTime    ms from maxSpeed to startSpeed; 0: no ramp
 *   trigger      0 start at once; 1 on the simultaneous-start signal; 2 on the comparator start trigger
 * Results:
 *   TREVIK_ERR_PARAM       trigger above 2; maxSpeed above 6,553,500; nothing to move
 *   TREVIK_ERR_BUSY        the axis is moving and not in continuous mode
 *   TREVIK_ERR_QUEUE_FULL  continuous mode, and a queued move still waits */
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_position_move(uint8_t card, uint8_t axis, uint32_t distance,
                                                        uint8_t absolute, uint32_t startSpeed, uint32_t maxSpeed,
                                                        uint32_t accelTime, uint32_t decelTime, uint8_t trigger);

/* The same with S-curve ramps: accelTime and decelTime are the whole ramps, sAccelTime and sDecelTime each of their
 * two curved sections, ms; the linear section lasts what is left. 0: the whole ramp is curved. A distance too short
 * for the ramps lowers the maximum speed when decelTime is longer than twice accelTime; otherwise the chip sees to
 * it.
 *   TREVIK_ERR_PARAM  also, before anything else but the model check: a ramp shorter than its curved sections */
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_position_move(uint8_t card, uint8_t axis, uint32_t distance,
                                                        uint8_t absolute, uint32_t startSpeed, uint32_t maxSpeed,
                                                        uint32_t accelTime, uint32_t decelTime, uint32_t sAccelTime,
                                                        uint32_t sDecelTime, uint8_t trigger);

/* ---- Changes of a running move ------------------------------------------------------------------------------ */

/* Changes where the running position move ends.
 *   position     pulses from the move's start (absolute 0), or the new end position (absolute not 0)
 *   TREVIK_ERR_NOT_MOVING  the axis is idle or in continuous mode */
TREVIK_API uint32_t TREVIK_CALL TrevikA_position_change(uint8_t card, uint8_t axis, uint32_t position,
                                                        uint8_t absolute);

/* Gives the running position move a new end, new speeds and new ramps at once; no new start. Arguments as in the
 * position moves; a relative distance counts from the running move's start. An end where the move started is
 * allowed.
 *   TREVIK_ERR_NOT_MOVING  the axis is idle
 *   TREVIK_ERR_PARAM       maxSpeed above 6,553,500; S: a ramp shorter than its two curved sections (before
 *                          anything else but the model check) */
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_onLINE_change(uint8_t card, uint8_t axis, uint32_t distance,
                                                        uint8_t absolute, uint32_t startSpeed, uint32_t maxSpeed,
                                                        uint32_t accelTime, uint32_t decelTime);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_onLINE_change(uint8_t card, uint8_t axis, uint32_t distance,
                                                        uint8_t absolute, uint32_t startSpeed, uint32_t maxSpeed,
                                                        uint32_t accelTime, uint32_t decelTime, uint32_t sAccelTime,
                                                        uint32_t sDecelTime);

/* ---- Velocity moves ----------------------------------------------------------------------------------------- */

/* Runs an axis at a speed until it is stopped. The axis is not asked whether it is idle. A fixed speed range
 * counts.
 *   startSpeed   pulses/s at which the ramp begins; above maxSpeed the axis ramps down to maxSpeed
 *   maxSpeed     pulses/s; its sign is the direction
 *   accelTime    ms from startSpeed to maxSpeed; 0: no ramp
 *   sAccelTime   S: ms of each of the two curved sections of the ramp; 0: the whole ramp is curved
 *   TREVIK_ERR_PARAM  a speed above 6,553,500 either way; S: a ramp shorter than its two curved sections (before
 *                     anything else but the model check) */
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                        uint32_t maxSpeed, uint32_t accelTime);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                        uint32_t maxSpeed, uint32_t accelTime, uint32_t sAccelTime);

/* Gives the running velocity move a new speed, reached after `time` ms with the curve that the move has. Fix the
 * speed range first: otherwise a new speed may come with a new speed unit, in which the old speed is another one.
 *   newSpeed     pulses/s; its sign is the direction
 *   TREVIK_ERR_PARAM       newSpeed above 6,553,500 either way
 *   TREVIK_ERR_NOT_MOVING  the axis's last operation was no velocity move, or the driver refuses to say */
TREVIK_API uint32_t TREVIK_CALL TrevikA_velocity_change(uint8_t card, uint8_t axis, uint32_t newSpeed,
                                                        uint32_t time);

/* ---- Stops and speed ---------------------------------------------------------------------------------------- */

/* Stops axes of a card. axes: 4 bytes; byte n exactly 1 selects axis n. decelTime: ms from the present maximum
 * speed to standstill; 0 stops at once. Result: that of the stop command, or of the position bookkeeping after an
 * immediate stop. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_stop(uint8_t card, const uint8_t *axes, uint32_t decelTime);

/* Stops all four axes of a card at once. Exported from the Windows DLL under its decorated name
 * ?TrevikA_stop_emg@@YGKE@Z. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_stop_emg(uint8_t card);

/* Reads the speed that an axis has now, pulses/s. In an interpolated move this is the speed of its longest axis. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_velocity_read(uint8_t card, uint8_t axis, double *speed);

/* ---- Restart ------------------------------------------------------------------------------------------------ */
/* Lets stopped position moves go on to where they were to end; axes of one card, at the same time. The axes' states
 * are not looked at; the command is sent also to axes that have nothing left.
 *   group   2 axes: 0: axes 0 1, 1: 0 2, 2: 0 3, 3: 1 2, 4: 1 3, 5: 2 3
 *           3 axes: 0: axes 0 1 2, 1: 0 1 3, 2: 0 2 3, 3: 1 2 3
 *   TREVIK_ERR_PARAM  no such group (found out before TREVIK_ERR_HANDLE) */
TREVIK_API uint32_t TREVIK_CALL TrevikA_OneAxis_restart(uint8_t card, uint8_t axis);
TREVIK_API uint32_t TREVIK_CALL TrevikA_2Axis_restart(uint8_t card, uint8_t group);
TREVIK_API uint32_t TREVIK_CALL TrevikA_3Axis_restart(uint8_t card, uint8_t group);
TREVIK_API uint32_t TREVIK_CALL TrevikA_4Axis_restart(uint8_t card);

/* ---- Homing ------------------------------------------------------------------------------------------------- */

/* Stores in the chip how homing runs.
 *   mode    0 to 12; what each does is the chip's (virtual cards: docs/virtual-cards.md)
 *   option  0 to 15
 *   TREVIK_ERR_PARAM  mode or option above its range */
TREVIK_API uint32_t TREVIK_CALL TrevikA_home_mode_set(uint8_t card, uint8_t axis, uint8_t mode, uint8_t option);

/* Starts homing by the stored mode.
 *   startSpeed, maxSpeed   pulses/s; the absolute value counts, maxSpeed at most 6,553,500
 *   accelTime              ms from startSpeed to maxSpeed; 0, or a time too short for the
 *                          rise, gives the SLOWEST ramp here
 *   direction              0 plus, otherwise minus
 *   distance               pulses that a search carries; a search runs with, and leaves, home mode 0
 *   TREVIK_ERR_BUSY, TREVIK_ERR_QUEUE_FULL  as in the position moves
 *   TREVIK_ERR_PARAM  maxSpeed above its range */
TREVIK_API uint32_t TREVIK_CALL TrevikA_home_start(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                   uint32_t maxSpeed, uint32_t accelTime, uint8_t direction);
TREVIK_API uint32_t TREVIK_CALL TrevikA_home_search(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                    uint32_t maxSpeed, uint32_t accelTime, uint8_t direction,
                                                    uint32_t distance);

/* ---- Lines -------------------------------------------------------------------------------------------------- */
/* Straight moves of 2, 3 or 4 axes that start and arrive together.
 *   axis_set     LINE2: 0: axes 0 1, 1: 0 2, 2: 0 3, 3: 1 2, 4: 1 3, 5: 2 3
 *                LINE3: 0: axes 0 1 2, 1: 0 1 3, 2: 0 2 3, 3: 1 2 3
 *   pos_...      pulses, one for each axis of the set in its order
 *   abs_flags    4 bytes, one for each axis NUMBER of the card: 0 relative distance, otherwise absolute position
 *   start_speed, max_speed   pulses/s along the path; max_speed at most 6,553,500
 *   accel_ms, decel_ms       ramp times as in TrevikA_T_position_move
 *   trigger      0 to 2 as in TrevikA_T_position_move; LINE4: 0 or 1
 * A distance of 0 is allowed. A refused max_speed has already moved the positions from which later relative moves
 * count. Results:
 *   TREVIK_ERR_PARAM           trigger or axis_set above its range; max_speed above 6,553,500
 *   TREVIK_ERR_CONTINUOUS_MIX  some axes of the set are in continuous mode and some are not
 *   TREVIK_ERR_BUSY            an axis of the set is moving (not in continuous mode)
 *   TREVIK_ERR_QUEUE_FULL      continuous mode, and an axis of the set still has a queued move waiting */
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_LINE2_move(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                                     const uint8_t *abs_flags, uint32_t start_speed,
                                                     uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                                     uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_LINE3_move(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                                     int32_t pos_c, const uint8_t *abs_flags, uint32_t start_speed,
                                                     uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                                     uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_LINE4_move(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2,
                                                     int32_t pos_3, const uint8_t *abs_flags, uint32_t start_speed,
                                                     uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                                     uint8_t trigger);

/* The same with S-curve ramps. For LINE2 and LINE3 accel_ms and decel_ms are the LINEAR part of each ramp and
 * s_accel_ms and s_decel_ms each of its two curved parts: the whole ramp lasts linear + 2 x curved; without a
 * linear part there is no ramp at all.
 * For LINE4 accel_ms and decel_ms are the WHOLE ramp and s_accel_ms and s_decel_ms each of its two curved parts;
 * TREVIK_ERR_PARAM, before anything else, when a ramp is shorter than twice its curved part.
 * A curved part of 0 makes the whole ramp curved. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_LINE2_move(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                                     const uint8_t *abs_flags, uint32_t start_speed,
                                                     uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                                     uint32_t s_accel_ms, uint32_t s_decel_ms, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_LINE3_move(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                                     int32_t pos_c, const uint8_t *abs_flags, uint32_t start_speed,
                                                     uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                                     uint32_t s_accel_ms, uint32_t s_decel_ms, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_LINE4_move(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2,
                                                     int32_t pos_3, const uint8_t *abs_flags, uint32_t start_speed,
                                                     uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                                     uint32_t s_accel_ms, uint32_t s_decel_ms, uint8_t trigger);

/* ---- Arcs and circles --------------------------------------------------------------------------------------- */
/* Two axes along a circle, from where their last moves end.
 *   axis_pair    0: axes 0 1, 1: 0 2, 2: 0 3, 3: 1 2, 4: 1 3, 5: 2 3; _a and _b are the first and the second axis
 *   center_...   the circle's center; it is not checked against the end
 *   mid_...      a point on the way. The center found from it is whole pulses, one coordinate computed from the
 *                other: the nearer the point lies to the first axis through the start, the farther the end may be
 *                off the circle
 *   radius       pulses; with direction, its sign chooses between the two circles through start and end. Below half
 *                the way to the end, the middle of the way is the center
 *   p1_, p2_, point_  points on a full circle (CIR), which ends where it starts
 *   abs          not 0: all coordinates are absolute positions, otherwise they are distances from the start
 *   abs_flags    the same by axis NUMBER, 4 bytes
 *   speed, start_speed, max_speed   pulses/s along the path, at most 7,281,396 (constant speed: 7,281,397)
 *   accel_ms     ms of both ramps; s_ms: of each curved section (S); when the ramp is shorter than two of them the
 *                whole ramp is curved
 *   dir          0: clockwise with axis a to the right and b up; otherwise counter-clockwise
 *   trigger      as in TrevikA_T_position_move
 * Ends are whole pulses and rarely lie on the circle: the next relative move counts from the planned end. It does
 * so, too, when the arc was stopped or refused on the way, or the axis was homed, moved by velocity or initialised
 * after it: then the axis first makes up all that is missing. Before such a move call TrevikA_stop with time 0 or
 * TrevikA_current_position_set, or make an absolute move. Results:
 *   TREVIK_ERR_PARAM           axis_pair or trigger above its range; a speed too high; a radius of 0; with ramps
 *                              and a radius: the end is the start
 *   TREVIK_ERR_CONTINUOUS_MIX, TREVIK_ERR_BUSY, TREVIK_ERR_QUEUE_FULL   as in the lines
 *   TREVIK_ERR_ARC_AS_LINE     the points lie in a line: a straight move to the end was tried instead,
 *                              whose own result is not told (TrevikA_T_CIR_3P_move tries nothing)
 *   TREVIK_ERR_CIRCLE_AS_DIAMETER   TrevikA_CIR_3P_move, the points lie in a line: the circle over the way from the
 *                              start to p2 was tried, whose own result is not told */

/* At constant speed. A radius arc whose end is its start moves nothing. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_ARC_center_move(uint8_t card, uint8_t axis_pair, int32_t center_a,
                                                        int32_t center_b, int32_t end_a, int32_t end_b, uint8_t abs,
                                                        uint32_t speed, uint8_t dir);
TREVIK_API uint32_t TREVIK_CALL TrevikA_ARC_3P_move(uint8_t card, uint8_t axis_pair, int32_t mid_a, int32_t mid_b,
                                                    int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed);
TREVIK_API uint32_t TREVIK_CALL TrevikA_CIR_3P_move(uint8_t card, uint8_t axis_pair, int32_t p1_a, int32_t p1_b,
                                                    int32_t p2_a, int32_t p2_b, uint8_t abs, uint32_t speed);
TREVIK_API uint32_t TREVIK_CALL TrevikA_ARC_radius_move(uint8_t card, uint8_t axis_pair, int32_t radius,
                                                        int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed,
                                                        uint8_t dir);
TREVIK_API uint32_t TREVIK_CALL TrevikA_CIR_radius_move(uint8_t card, uint8_t axis_pair, int32_t radius,
                                                        int32_t point_a, int32_t point_b, uint8_t abs,
                                                        uint32_t speed, uint8_t dir);

/* With T-curve ramps. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_ARC_center_move(uint8_t card, uint8_t axis_pair, int32_t center_a,
                                                          int32_t center_b, int32_t end_a, int32_t end_b,
                                                          const uint8_t *abs_flags, uint32_t start_speed,
                                                          uint32_t max_speed, uint32_t accel_ms, uint8_t dir,
                                                          uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_ARC_3P_move(uint8_t card, uint8_t axis_pair, int32_t mid_a, int32_t mid_b,
                                                      int32_t end_a, int32_t end_b, const uint8_t *abs_flags,
                                                      uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                      uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_CIR_3P_move(uint8_t card, uint8_t axis_pair, int32_t p1_a, int32_t p1_b,
                                                      int32_t p2_a, int32_t p2_b, const uint8_t *abs_flags,
                                                      uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                      uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_ARC_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius,
                                                          int32_t end_a, int32_t end_b, const uint8_t *abs_flags,
                                                          uint32_t start_speed, uint32_t max_speed,
                                                          uint32_t accel_ms, uint8_t dir, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_CIR_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius,
                                                          int32_t point_a, int32_t point_b,
                                                          const uint8_t *abs_flags, uint32_t start_speed,
                                                          uint32_t max_speed, uint32_t accel_ms, uint8_t dir,
                                                          uint8_t trigger);

/* With S-curve ramps. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_ARC_center_move(uint8_t card, uint8_t axis_pair, int32_t center_a,
                                                          int32_t center_b, int32_t end_a, int32_t end_b,
                                                          const uint8_t *abs_flags, uint32_t start_speed,
                                                          uint32_t max_speed, uint32_t accel_ms, uint32_t s_ms,
                                                          uint8_t dir, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_ARC_3P_move(uint8_t card, uint8_t axis_pair, int32_t mid_a, int32_t mid_b,
                                                      int32_t end_a, int32_t end_b, const uint8_t *abs_flags,
                                                      uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                      uint32_t s_ms, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_CIR_3P_move(uint8_t card, uint8_t axis_pair, int32_t p1_a, int32_t p1_b,
                                                      int32_t p2_a, int32_t p2_b, const uint8_t *abs_flags,
                                                      uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                      uint32_t s_ms, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_ARC_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius,
                                                          int32_t end_a, int32_t end_b, const uint8_t *abs_flags,
                                                          uint32_t start_speed, uint32_t max_speed,
                                                          uint32_t accel_ms, uint32_t s_ms, uint8_t dir,
                                                          uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_CIR_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius,
                                                          int32_t point_a, int32_t point_b,
                                                          const uint8_t *abs_flags, uint32_t start_speed,
                                                          uint32_t max_speed, uint32_t accel_ms, uint32_t s_ms,
                                                          uint8_t dir, uint8_t trigger);

/* ---- Helices ------------------------------------------------------------------------------------------------ */
/* Axes 0 and 1 along a circle while axis 2 moves to end_z in proportion and arrives with them. Axis 3 counts the
 * circle's steps: it must be idle and move nothing else meanwhile; it is not checked. Arguments as in the arcs,
 * with
 *   end_z        axis 2, absolute or relative by abs_flags[2]
 *   start_speed, max_speed   pulses/s of the leading axis; at most 6,553,500
 *   trigger      0 or 1
 * Results as in the arcs; no axis_pair. With TREVIK_ERR_ARC_AS_LINE nothing moves, but
 * TrevikA_T_ArcXY_LineZ_3P_move tries a line of three axes (and takes trigger 2 then). S-curve: TREVIK_ERR_PARAM,
 * before anything else but the model check, when the ramp is shorter than its two curved sections;
 * TrevikA_S_ArcXY_LineZ_center_move makes the whole ramp curved instead. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_ArcXY_LineZ_center_move(uint8_t card, int32_t center_x, int32_t center_y,
                                                                  int32_t end_x, int32_t end_y, int32_t end_z,
                                                                  const uint8_t *abs_flags, uint32_t start_speed,
                                                                  uint32_t max_speed, uint32_t accel_ms,
                                                                  uint8_t dir, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_ArcXY_LineZ_center_move(uint8_t card, int32_t center_x, int32_t center_y,
                                                                  int32_t end_x, int32_t end_y, int32_t end_z,
                                                                  const uint8_t *abs_flags, uint32_t start_speed,
                                                                  uint32_t max_speed, uint32_t accel_ms,
                                                                  uint32_t s_ms, uint8_t dir, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_ArcXY_LineZ_3P_move(uint8_t card, int32_t mid_x, int32_t mid_y,
                                                              int32_t end_x, int32_t end_y, int32_t end_z,
                                                              const uint8_t *abs_flags, uint32_t start_speed,
                                                              uint32_t max_speed, uint32_t accel_ms,
                                                              uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_ArcXY_LineZ_3P_move(uint8_t card, int32_t mid_x, int32_t mid_y,
                                                              int32_t end_x, int32_t end_y, int32_t end_z,
                                                              const uint8_t *abs_flags, uint32_t start_speed,
                                                              uint32_t max_speed, uint32_t accel_ms, uint32_t s_ms,
                                                              uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_CirXY_LineZ_3P_move(uint8_t card, int32_t p1_x, int32_t p1_y,
                                                              int32_t p2_x, int32_t p2_y, int32_t end_z,
                                                              const uint8_t *abs_flags, uint32_t start_speed,
                                                              uint32_t max_speed, uint32_t accel_ms,
                                                              uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_CirXY_LineZ_3P_move(uint8_t card, int32_t p1_x, int32_t p1_y,
                                                              int32_t p2_x, int32_t p2_y, int32_t end_z,
                                                              const uint8_t *abs_flags, uint32_t start_speed,
                                                              uint32_t max_speed, uint32_t accel_ms, uint32_t s_ms,
                                                              uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_ArcXY_LineZ_Radius_move(uint8_t card, int32_t radius, int32_t end_x,
                                                                  int32_t end_y, int32_t end_z,
                                                                  const uint8_t *abs_flags, uint32_t start_speed,
                                                                  uint32_t max_speed, uint32_t accel_ms,
                                                                  uint8_t dir, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_ArcXY_LineZ_Radius_move(uint8_t card, int32_t radius, int32_t end_x,
                                                                  int32_t end_y, int32_t end_z,
                                                                  const uint8_t *abs_flags, uint32_t start_speed,
                                                                  uint32_t max_speed, uint32_t accel_ms,
                                                                  uint32_t s_ms, uint8_t dir, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_T_CirXY_LineZ_Radius_move(uint8_t card, int32_t radius, int32_t point_x,
                                                                  int32_t point_y, int32_t end_z,
                                                                  const uint8_t *abs_flags, uint32_t start_speed,
                                                                  uint32_t max_speed, uint32_t accel_ms,
                                                                  uint8_t dir, uint8_t trigger);
TREVIK_API uint32_t TREVIK_CALL TrevikA_S_CirXY_LineZ_Radius_move(uint8_t card, int32_t radius, int32_t point_x,
                                                                  int32_t point_y, int32_t end_z,
                                                                  const uint8_t *abs_flags, uint32_t start_speed,
                                                                  uint32_t max_speed, uint32_t accel_ms,
                                                                  uint32_t s_ms, uint8_t dir, uint8_t trigger);

/* ---- Continuous motion -------------------------------------------------------------------------------------- */

/* flag not 0: later moves of the axis, velocity moves excepted, are queued behind the running one and follow it
 * without a stop. flag 0: moves need an idle axis. For an even speed across queued moves fix the speed range. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_continuous_flag_set(uint8_t card, uint8_t axis, uint8_t flag);

/* full = 1 while a queued move waits: another one would be refused with TREVIK_ERR_QUEUE_FULL. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_continuous_buffer_read(uint8_t card, uint8_t axis, uint8_t *full);

/* count = operations in the axis's buffer, 0 to 3; 0 when the driver refuses the read. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_continuous_buffer_no_read(uint8_t card, uint8_t axis, uint8_t *count);

/* ---- Status and positions ----------------------------------------------------------------------------------- */

/* kind 0: flag = 1 when the axis is idle, 0 while it moves or waits for a start trigger. kind 1: flag = 1 while a
 * queued move waits. Other kinds: result 0, flag not written. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_motion_status_read(uint8_t card, uint8_t axis, uint8_t kind, uint8_t *flag);

/* Reads the command position. Not written when the driver refuses the read. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_current_position_read(uint8_t card, uint8_t axis, uint32_t *position);

/* Sets the command position of an idle axis; later absolute moves count from it, even when the driver refuses.
 *   TREVIK_ERR_BUSY  the axis is not idle */
TREVIK_API uint32_t TREVIK_CALL TrevikA_current_position_set(uint8_t card, uint8_t axis, uint32_t position);

/* ---- Handwheel (manual pulser) ------------------------------------------------------------------------------ */
/* Axes follow a handwheel in software: every 20 ms, on a thread of its own, the library sends each following axis
 * to its new target. Following runs from TrevikA_initial to the end of the process. An application move on a
 * following axis competes with it. Call TrevikA_initial once: each further call that finds cards adds one more such
 * task, and the speeds, which are averages over its rounds, get too low. */

/* Input format (0 to 3) and option (0 to 1) of an axis's handwheel input. Read: both are 0 when the driver refuses.
 *   TREVIK_ERR_PARAM  above these ranges */
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulser_mode_set(uint8_t card, uint8_t axis, uint8_t format, uint8_t option);
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulser_mode_read(uint8_t card, uint8_t axis, uint8_t *format,
                                                         uint8_t *option);

/* The handwheel counter of an axis, signed. Axes that follow it when it is set do not move. Read: not written when
 * the driver refuses. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulser_counter_read(uint8_t card, uint8_t axis, uint32_t *counter);
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulser_counter_set(uint8_t card, uint8_t axis, uint32_t counter);

/* Says which axis's handwheel drives an axis (source, 0 to 3) and which way (reverse, 0 or 1). An axis that has
 * never been mapped does not move.
 *   TREVIK_ERR_PARAM  source or reverse above its range
 * Here and in TrevikA_pulser_motion_enable TREVIK_ERR_HANDLE comes before TREVIK_ERR_AXIS. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulser_map_set(uint8_t card, uint8_t axis, uint8_t source, uint8_t reverse);

/* Switches following on (enable 1) from where axis and handwheel are, or off (0).
 *   ratio   motion pulses for each handwheel count, 1 to 1000; may change while the axis follows
 *   TREVIK_ERR_PARAM  enable or ratio outside its range, also when switching off */
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulser_motion_enable(uint8_t card, uint8_t axis, uint8_t enable,
                                                             uint16_t ratio);

/* ---- Card initialisation ------------------------------------------------------------------------------------ */

/* Puts a card into a known state before it is configured: points 0 to 3 off, configuration registers at their
 * initial values (axes may not interrupt), all axes stopped at once, counters cleared, TTL I/O mode 0 (points 4 to
 * 11 become inputs), timer 0 at 10000. Everything else stays: event selection, enables of pins, backlash mode,
 * data of limits and comparators, continuous motion, running timers and their mask. Result: that of the TTL I/O
 * mode; a request refused before it does not stop the sequence and is not reported. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_init_card(uint8_t card);

/* ---- Pulse formats ------------------------------------------------------------------------------------------ */
/* Changes of one setting leave the others of its register alone. Here and below, a register that the driver refuses
 * to read counts as 0: a read gives what 0 means there, and a change starts from 0. */

/* How the axis puts its pulses out, 0 to 7.
 *   TREVIK_ERR_PARAM  above 7 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulse_outmode_set(uint8_t card, uint8_t axis, uint8_t mode);
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulse_outmode_read(uint8_t card, uint8_t axis, uint8_t *mode);

/* How the axis reads encoder pulses: format 0 to 3, option 0 to 1.
 *   TREVIK_ERR_PARAM  above these ranges */
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulse_inmode_set(uint8_t card, uint8_t axis, uint8_t format,
                                                         uint8_t option);
TREVIK_API uint32_t TREVIK_CALL TrevikA_pulse_inmode_read(uint8_t card, uint8_t axis, uint8_t *format,
                                                          uint8_t *option);

/* ---- Signal pins -------------------------------------------------------------------------------------------- */
/* enable, logic and options are 0 or not 0, unless a range is given; reads give 0 or 1. `input` and `output` are
 * the states of the pin now. The enables of SD, PCS and INP take effect with the next move. */

/* Slow-down input. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_SD_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t optionA,
                                                   uint8_t optionB, uint8_t optionC);
TREVIK_API uint32_t TREVIK_CALL TrevikA_SD_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *optionA,
                                                    uint8_t *optionB, uint8_t *optionC, uint8_t *input);

/* Position-change input. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_PCS_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL TrevikA_PCS_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                                     uint8_t *input);

/* In-position input. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_INP_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL TrevikA_INP_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                                     uint8_t *input);

/* Deviation-counter clear output: width 0 to 7 (7 when it is not enabled), offTime 0 to 3.
 *   TREVIK_ERR_PARAM  above these ranges */
TREVIK_API uint32_t TREVIK_CALL TrevikA_ERC_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic,
                                                    uint8_t width, uint8_t offTime);
TREVIK_API uint32_t TREVIK_CALL TrevikA_ERC_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                                     uint8_t *width, uint8_t *offTime, uint8_t *output);

/* Servo alarm input. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_ALM_PIN_set(uint8_t card, uint8_t axis, uint8_t optionA, uint8_t optionB);
TREVIK_API uint32_t TREVIK_CALL TrevikA_ALM_PIN_read(uint8_t card, uint8_t axis, uint8_t *optionA, uint8_t *optionB,
                                                     uint8_t *input);

/* Latch input. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_LTC_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL TrevikA_LTC_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                                     uint8_t *input);

/* Comparator output: code 0 to 2. A chip that holds no code reads as 255.
 *   TREVIK_ERR_PARAM  code above 2 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_CMP_PIN_set(uint8_t card, uint8_t axis, uint8_t code);
TREVIK_API uint32_t TREVIK_CALL TrevikA_CMP_PIN_read(uint8_t card, uint8_t axis, uint8_t *code, uint8_t *output);

/* What end limits do: mode 0 or 1.
 *   TREVIK_ERR_PARAM  above 1 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_EL_mode_set(uint8_t card, uint8_t axis, uint8_t mode);
TREVIK_API uint32_t TREVIK_CALL TrevikA_EL_mode_read(uint8_t card, uint8_t axis, uint8_t *mode);

/* Home input. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_HOME_PIN_logic_set(uint8_t card, uint8_t axis, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL TrevikA_HOME_PIN_logic_read(uint8_t card, uint8_t axis, uint8_t *logic);

/* Encoder index input. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_EZ_PIN_logic_set(uint8_t card, uint8_t axis, uint8_t logic);
TREVIK_API uint32_t TREVIK_CALL TrevikA_EZ_PIN_logic_read(uint8_t card, uint8_t axis, uint8_t *logic);

/* ---- General-purpose points --------------------------------------------------------------------------------- */

/* Reads a point, 0 to 24. Points 17 to 24 belong to the card, whatever the axis: 17 to 20 read what is set as
 * points 4 to 7, 21 to 24 what is set as points 8 to 11. Another point: state is not written. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_point_read(uint8_t card, uint8_t axis, uint8_t point, uint8_t *state);

/* Switches an output on (not 0) or off: point 0 to 3 of the axis, 4 to 11 of the card. Another point: result 0,
 * nothing is done. What the driver refuses is not reported. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_point_set(uint8_t card, uint8_t axis, uint8_t point, uint8_t state);

/* Bit 0 of the mode makes points 4 to 7 outputs, bit 1 points 8 to 11; else they are inputs.
 *   TREVIK_ERR_PARAM  above 3 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_TTL_IO_mode_set(uint8_t card, uint8_t mode);
TREVIK_API uint32_t TREVIK_CALL TrevikA_TTL_IO_mode_read(uint8_t card, uint8_t *mode);

/* ---- Software limits ---------------------------------------------------------------------------------------- */

/* Which counter is limited (0 command position, 1 feedback) and what happens at a limit (action 0 to 2). Switches
 * both limits on.
 *   TREVIK_ERR_PARAM  counter above 1, action above 2 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_softlimit_config_set(uint8_t card, uint8_t axis, uint8_t counter,
                                                             uint8_t action);
TREVIK_API uint32_t TREVIK_CALL TrevikA_softlimit_config_read(uint8_t card, uint8_t axis, uint8_t *counter,
                                                              uint8_t *action);

/* The two positions, signed (virtual cards: the upper one first). Set them before the limits are switched on: a
 * limit acts at once. Read: what the driver refuses is not written. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_softlimit_data_set(uint8_t card, uint8_t axis, uint32_t first,
                                                           uint32_t second);
TREVIK_API uint32_t TREVIK_CALL TrevikA_softlimit_data_read(uint8_t card, uint8_t axis, uint32_t *first,
                                                            uint32_t *second);

/* Switches both limits on (not 0) or off. Read: 1 when the first one is on. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_softlimit_enable_set(uint8_t card, uint8_t axis, uint8_t enable);
TREVIK_API uint32_t TREVIK_CALL TrevikA_softlimit_enable_read(uint8_t card, uint8_t axis, uint8_t *enable);

/* The limits that the axis is beyond now: 0 or 1 each. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_softlimit_flag_read(uint8_t card, uint8_t axis, uint8_t *flagA,
                                                            uint8_t *flagB);

/* ---- Backlash, vibration, debounce -------------------------------------------------------------------------- */

/* Pulses that take up the backlash when the axis turns round (0 to 4095), mode 0 off or not 0 on, and the speed of
 * that, pulses/s. Later moves follow mode and speed, also when the driver refuses the rest.
 *   TREVIK_ERR_PARAM  amount above 4095 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_backlash_comp_set(uint8_t card, uint8_t axis, uint16_t amount, uint8_t mode,
                                                          uint32_t speed);
TREVIK_API uint32_t TREVIK_CALL TrevikA_backlash_comp_read(uint8_t card, uint8_t axis, uint16_t *amount,
                                                           uint8_t *mode, uint32_t *speed);

/* The two times of vibration suppression, as the chip counts them. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_suppress_vibration_set(uint8_t card, uint8_t axis, uint16_t first,
                                                               uint16_t second);
TREVIK_API uint32_t TREVIK_CALL TrevikA_suppress_vibration_read(uint8_t card, uint8_t axis, uint16_t *first,
                                                                uint16_t *second);

/* Model AC only: debounce of the axis's inputs, 0 to 3. The card's model is looked at before the value, the handle
 * after it.
 *   TREVIK_ERR_MODEL  the card is of another model
 *   TREVIK_ERR_PARAM  above 3 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_debounce_set(uint8_t card, uint8_t axis, uint8_t value);
TREVIK_API uint32_t TREVIK_CALL TrevikA_debounce_read(uint8_t card, uint8_t axis, uint8_t *value);

/* ---- Configuration file ------------------------------------------------------------------------------------- */
/* The configuration registers of all four axes in a file of 212 bytes, stored as a Windows text stream on every
 * platform (0x0A as 0x0D 0x0A): formats, pins, home mode, TTL mode, handwheel input, axis interrupt masks, limits,
 * comparators, compensation with its mode and speed. Not in it: the enables of SD, PCS and INP, counters, events,
 * timers, the AC model. Neither function looks at the handle; the requests do. */

/* Saves. The result is that of the last register read; a register that could not be read is saved with the value of
 * the one before it. A byte 0x1A among the values ends the text for the reader: such a file does not load.
 *   TREVIK_ERR_FILE  it cannot be opened or written; a null pointer */
TREVIK_API uint32_t TREVIK_CALL TrevikA_config_file_set(uint8_t card, const char *fileName);

/* Loads. The result is that of the last register write.
 *   TREVIK_ERR_FILE  it cannot be opened, or its text ends before the 212 bytes; a null pointer. Nothing is loaded */
TREVIK_API uint32_t TREVIK_CALL TrevikA_config_file_read(uint8_t card, const char *fileName);

/* ---- Events and interrupts ---------------------------------------------------------------------------------- */
/* An axis raises the events that were selected; it, or the card's timers, interrupt if they are not masked. The
 * bits of the flags are the chip's (of virtual cards: docs/virtual-cards.md). */

/* Selects the events of an axis: bits 0, 1, 4 to 9, 11, 12, 14, 16 and 18; others are dropped. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_event_factor_set(uint8_t card, uint8_t axis, int32_t factor);

/* What has happened, and what went wrong. Not written when the driver refuses. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_event_flag_read(uint8_t card, uint8_t axis, uint32_t *flags);
TREVIK_API uint32_t TREVIK_CALL TrevikA_error_flag_read(uint8_t card, uint8_t axis, uint32_t *flags);

/* TrevikA_event_factor_set(eventSource); errorSource is only remembered: errors cannot be deselected.
 * TREVIK_ERR_HANDLE comes before TREVIK_ERR_AXIS. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_IRQ_source_set(uint8_t card, uint8_t axis, int32_t errorSource,
                                                       int32_t eventSource);

/* Lets a source interrupt (1) or not (0): 0 to 3 an axis, 4 the card's timers. TrevikA_init_card switches the axes
 * off.
 *   TREVIK_ERR_PARAM  value above 1
 *   TREVIK_ERR_AXIS   source above 4 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_IRQ_mask_set(uint8_t card, uint8_t source, uint8_t value);

/* The sources that may interrupt, one bit each; 0 when the driver refuses. It does not look at the handle.
 *   TREVIK_ERR_MODEL  no such card, or of another model */
TREVIK_API uint32_t TREVIK_CALL TrevikA_IRQ_mask_read(uint8_t card, uint8_t *mask);

/* Asks the driver to deliver interrupts, and opens or creates the event whose name is the card number as one byte
 * and "TrevikA"; card 0 has one without a name. The library never closes it. Not to be called for several cards at
 * the same time. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_IRQ_enable(uint8_t card);

/* Ends delivery: the callback thread ends at the next interrupt, without a callback, or with TrevikA_close. To go
 * on after that, link again. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_IRQ_disable(uint8_t card);

/* Starts a thread of idle priority that calls `callback` with the card number at each interrupt. The callback may
 * call any function of this library. TrevikA_IRQ_enable must be called, too. A second link adds a thread, and both
 * serve the newer callback, one at each interrupt.
 *   TREVIK_ERR_PARAM  null pointer
 *   1450              32 links of this card are not disabled */
TREVIK_API uint32_t TREVIK_CALL TrevikA_IRQ_process_link(uint8_t card, TrevikA_callback callback);

/* What the driver has noted of a source: 0 to 3 an axis, with its two bits, the card level above them, and the low
 * bytes of its event and error flags; 4 the card level alone, for which only status is written. A driver may
 * forget what it has noted of all sources when it is asked for one; virtual cards do: use this for the timers, and
 * the flags of each axis for the axes.
 *   TREVIK_ERR_HANDLE  the driver refused; what is written is 0
 *   TREVIK_ERR_AXIS    source above 4 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_IRQ_status_read(uint8_t card, uint8_t source, uint8_t *status,
                                                        uint32_t *eventByte, uint32_t *errorByte);

/* ---- Feedback counter, latch, comparators ------------------------------------------------------------------- */
/* Counters are chosen by number: 0 command position, 1 feedback, 2 deviation, 3 handwheel. Values that are read
 * whole are not written when the driver refuses. */

/* The feedback counter, signed, and the value of it that the latch input or the latch command caught. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_FB_counter_read(uint8_t card, uint8_t axis, uint32_t *counter);
TREVIK_API uint32_t TREVIK_CALL TrevikA_FB_counter_set(uint8_t card, uint8_t axis, uint32_t counter);
TREVIK_API uint32_t TREVIK_CALL TrevikA_FB_counter_latch_value_read(uint8_t card, uint8_t axis, uint32_t *counter);

/* The comparator behind the CMP output: counter 0 to 3, condition 0 to 5, action 0 to 2.
 *   TREVIK_ERR_PARAM  above these ranges */
TREVIK_API uint32_t TREVIK_CALL TrevikA_CMP_out_set(uint8_t card, uint8_t axis, uint8_t counter, uint8_t condition,
                                                    uint8_t action);
TREVIK_API uint32_t TREVIK_CALL TrevikA_CMP_out_read(uint8_t card, uint8_t axis, uint8_t *counter,
                                                     uint8_t *condition, uint8_t *action);

/* The value it compares with, signed; and whether its condition is met now. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_CMP_data_set(uint8_t card, uint8_t axis, uint32_t value);
TREVIK_API uint32_t TREVIK_CALL TrevikA_CMP_data_read(uint8_t card, uint8_t axis, uint32_t *value);
TREVIK_API uint32_t TREVIK_CALL TrevikA_CMP_flag_read(uint8_t card, uint8_t axis, uint8_t *flag);

/* Makes this axis's comparator the start trigger of the moves of the card that are commanded to wait for it
 * (trigger 2) from now on: counter 0 to 3, condition 0 to 5. The choice outlasts TrevikA_init_card and
 * TrevikA_initial.
 *   TREVIK_ERR_PARAM  above these ranges */
TREVIK_API uint32_t TREVIK_CALL TrevikA_compare_start_set(uint8_t card, uint8_t axis, uint8_t counter,
                                                          uint8_t condition);
TREVIK_API uint32_t TREVIK_CALL TrevikA_compare_start_read(uint8_t card, uint8_t axis, uint8_t *counter,
                                                           uint8_t *condition);

/* The position at which they start, of the axis that was chosen last, else of axis 0. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_compare_start_data_set(uint8_t card, uint32_t value);
TREVIK_API uint32_t TREVIK_CALL TrevikA_compare_start_data_read(uint8_t card, uint32_t *value);

/* ---- Simultaneous start and stop, timers -------------------------------------------------------------------- */

/* The simultaneous start and stop signals, to all axes of the card. What the driver refuses is not reported. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_CSTA_trigger(uint8_t card);
TREVIK_API uint32_t TREVIK_CALL TrevikA_CSTP_trigger(uint8_t card);

/* The card's two timers, timer 0 or 1: the value in units of the card's clock (virtual cards: microseconds); both
 * start and stop together. For another timer nothing is done, and a read writes nothing. What the driver refuses
 * is not reported and reads as 0. These functions do not look at the handle.
 *   TREVIK_ERR_MODEL  no such card, or of another model */
TREVIK_API uint32_t TREVIK_CALL TrevikA_timer_set(uint8_t card, uint8_t timer, uint32_t value);
TREVIK_API uint32_t TREVIK_CALL TrevikA_timer_read(uint8_t card, uint8_t timer, uint32_t *value);
TREVIK_API uint32_t TREVIK_CALL TrevikA_timer_start(uint8_t card);
TREVIK_API uint32_t TREVIK_CALL TrevikA_timer_stop(uint8_t card);

/* One entry for all of them. item 0: start (value 0) or stop (1); 1, 2: timers 0, 1; 3: TrevikA_IRQ_mask_set of
 * source 4, with its results; others: nothing.
 *   TREVIK_ERR_MODEL  no such card, or of another model
 *   TREVIK_ERR_PARAM  items 0 and 3: value above 1 */
TREVIK_API uint32_t TREVIK_CALL TrevikA_TC_set(uint8_t card, uint8_t item, uint32_t value);

/* Does nothing. Result: 0. */
TREVIK_API uint32_t TREVIK_CALL TrevikA_TC_read(uint8_t card, uint8_t item, uint32_t *value);

#ifdef __cplusplus
}
#endif

#endif

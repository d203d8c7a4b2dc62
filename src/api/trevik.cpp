// The earlier interface: one line an entry, on the operations of the current one.
#include <trevik/Trevik.h>

#include "api/entry.h"
#include "api/library.h"
#include "api/line_entry.h"
#include "motion/continuous.h"
#include "motion/homing.h"
#include "motion/online_change.h"
#include "motion/position_move.h"
#include "motion/restart.h"
#include "motion/speed_range.h"
#include "motion/stop.h"
#include "motion/velocity.h"
#include "pulser/pulser.h"
#include "status/motion_status.h"
#include "status/position.h"

using namespace trevik;

namespace
{

// Start speed of the moves that have only a maximum speed.
constexpr std::uint32_t pulser_start_pps = 100;

} // namespace

// Library

uint32_t TREVIK_CALL Trevik_dll_Simu_mode(uint8_t mode)
{
    return SimulationSwitch(mode);
}

uint32_t TREVIK_CALL Trevik_initial(void)
{
    const uint32_t result = LibraryInitial("Trevik_initial");
    return result == TREVIK_ERR_MODEL ? TREVIK_OK : result;
}

uint32_t TREVIK_CALL Trevik_info(uint8_t card, uint16_t *resource_word)
{
    return EarlierCardEntry(card, CardResourceWord, resource_word);
}

uint32_t TREVIK_CALL Trevik_close(void)
{
    return LibraryClose();
}

// Speed range

uint32_t TREVIK_CALL Trevik_fix_speed_range(uint8_t card, uint8_t axis, uint32_t speed)
{
    return EarlierAxisEntry(card, axis, VelocityRangeFix, speed);
}

uint32_t TREVIK_CALL Trevik_unfix_speed_range(uint8_t card, uint8_t axis)
{
    return EarlierAxisEntry(card, axis, VelocityRangeUnfix);
}

// Single-axis moves

uint32_t TREVIK_CALL Trevik_T_curve_position_move(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                                  uint32_t startSpeed, uint32_t maxSpeed, double accelTime,
                                                  double decelTime)
{
    return EarlierAxisEntry(card, axis, TPositionMove, Destination{distance, absolute != 0},
                            MoveSpeeds{startSpeed, maxSpeed}, RampTimes{accelTime, decelTime}, StartAtOnce);
}

uint32_t TREVIK_CALL Trevik_S_curve_position_move(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                                  uint32_t startSpeed, uint32_t maxSpeed, double accelTime,
                                                  double decelTime, uint32_t sAccel, uint32_t sDecel)
{
    return EarlierAxisEntry(card, axis, SPositionMove, SRangeSpeedsOf(sAccel, sDecel),
                            Destination{distance, absolute != 0}, MoveSpeeds{startSpeed, maxSpeed},
                            RampTimes{accelTime, decelTime}, StartAtOnce);
}

uint32_t TREVIK_CALL Trevik_S1_curve_position_move(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                                   uint32_t startSpeed, uint32_t maxSpeed, uint32_t accelTime,
                                                   uint32_t decelTime, uint32_t sAccelTime, uint32_t sDecelTime)
{
    return EarlierAxisEntry(card, axis,
                            SRampTimes{startSpeed, maxSpeed, accelTime, decelTime, sAccelTime, sDecelTime},
                            SPositionMove, Destination{distance, absolute != 0}, MoveSpeeds{startSpeed, maxSpeed},
                            Seconds(accelTime, decelTime), StartAtOnce);
}

uint32_t TREVIK_CALL Trevik_position_change(uint8_t card, uint8_t axis, uint32_t position, uint8_t absolute)
{
    return EarlierAxisEntry(card, axis, PositionChange, Destination{position, absolute != 0});
}

uint32_t TREVIK_CALL Trevik_OnLine_T_curve_change(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                                  uint32_t startSpeed, uint32_t maxSpeed, double accelTime,
                                                  double decelTime)
{
    return EarlierAxisEntry(card, axis, TOnlineChange, Destination{distance, absolute != 0},
                            MoveSpeeds{startSpeed, maxSpeed}, RampTimes{accelTime, decelTime});
}

uint32_t TREVIK_CALL Trevik_T_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed, uint32_t maxSpeed,
                                            double accelTime)
{
    return EarlierAxisEntry(card, axis, TVelocityMove, MoveSpeeds{startSpeed, maxSpeed}, accelTime);
}

uint32_t TREVIK_CALL Trevik_S_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed, uint32_t maxSpeed,
                                            double accelTime, uint32_t sAccel)
{
    return EarlierAxisEntry(card, axis, SVelocityMove, SRangeSpeedsOf(sAccel, 0), MoveSpeeds{startSpeed, maxSpeed},
                            accelTime);
}

uint32_t TREVIK_CALL Trevik_S1_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed, uint32_t maxSpeed,
                                             uint32_t accelTime, uint32_t sAccelTime)
{
    return EarlierAxisEntry(card, axis, SRampTime{startSpeed, maxSpeed, accelTime, sAccelTime}, SVelocityMove,
                            MoveSpeeds{startSpeed, maxSpeed}, Seconds(accelTime));
}

uint32_t TREVIK_CALL Trevik_velocity_change(uint8_t card, uint8_t axis, uint32_t newSpeed, double time)
{
    return EarlierAxisEntry(card, axis, VelocityChange, newSpeed, time);
}

uint32_t TREVIK_CALL Trevik_S1_velocity_change(uint8_t card, uint8_t axis, uint32_t newSpeed, uint32_t linearTime,
                                               uint32_t sTime)
{
    return EarlierAxisEntry(card, axis, S1VelocityChange, newSpeed, linearTime, sTime);
}

// Stops, speed, restart

uint32_t TREVIK_CALL Trevik_dec_stop(uint8_t card, uint8_t axis, double decelTime)
{
    return EarlierAxisEntry(card, axis, StopDecelerating, decelTime);
}

uint32_t TREVIK_CALL Trevik_imd_stop(uint8_t card, uint8_t axis)
{
    return EarlierAxisEntry(card, axis, StopImmediate);
}

uint32_t TREVIK_CALL Trevik_emg_stop(uint8_t card)
{
    return EarlierCardEntry(card, EmergencyStop);
}

uint32_t TREVIK_CALL Trevik_read_speed(uint8_t card, uint8_t axis, double *speed)
{
    return EarlierAxisEntry(card, axis, VelocityRead, speed);
}

uint32_t TREVIK_CALL Trevik_OneAxis_restart(uint8_t card, uint8_t axis)
{
    return EarlierAxisEntry(card, axis, RestartAxis);
}

uint32_t TREVIK_CALL Trevik_2Axis_restart(uint8_t card, uint8_t group)
{
    return EarlierAxisSetEntry(card, AxisPair(group), Restart);
}

uint32_t TREVIK_CALL Trevik_3Axis_restart(uint8_t card, uint8_t group)
{
    return EarlierAxisSetEntry(card, AxisTriple(group), Restart);
}

uint32_t TREVIK_CALL Trevik_4Axis_restart(uint8_t card)
{
    return EarlierAxisSetEntry(card, all_four_axes, Restart);
}

// Homing

uint32_t TREVIK_CALL Trevik_config_home_mode(uint8_t card, uint8_t axis, uint8_t mode, uint8_t option)
{
    return EarlierAxisEntry(card, axis, HomeModeSet, mode, option);
}

uint32_t TREVIK_CALL Trevik_start_homing(uint8_t card, uint8_t axis, uint32_t startSpeed, uint32_t maxSpeed,
                                         double accelTime, uint8_t direction)
{
    return EarlierAxisEntry(card, axis, HomeStart, MoveSpeeds{startSpeed, maxSpeed}, accelTime, direction);
}

uint32_t TREVIK_CALL Trevik_start_origin_search_homing(uint8_t card, uint8_t axis, uint32_t startSpeed,
                                                       uint32_t maxSpeed, double accelTime, uint8_t direction,
                                                       uint32_t distance)
{
    return EarlierAxisEntry(card, axis, HomeSearch, MoveSpeeds{startSpeed, maxSpeed}, accelTime, direction,
                            distance);
}

// Lines

uint32_t TREVIK_CALL Trevik_T_curve_move_LINE2(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                               uint8_t absolute, uint32_t start_speed, uint32_t max_speed,
                                               double accel_s, double decel_s)
{
    return EarlierCardEntry(card, LineMoveOneFlag, AxisPair(axis_set), Coordinates{pos_a, pos_b}, absolute,
                            MoveSpeeds{start_speed, max_speed}, TRamps({accel_s, decel_s}));
}

uint32_t TREVIK_CALL Trevik_T_curve_move_LINE3(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                               int32_t pos_c, uint8_t absolute, uint32_t start_speed,
                                               uint32_t max_speed, double accel_s, double decel_s)
{
    return EarlierCardEntry(card, LineMoveOneFlag, AxisTriple(axis_set), Coordinates{pos_a, pos_b, pos_c}, absolute,
                            MoveSpeeds{start_speed, max_speed}, TRamps({accel_s, decel_s}));
}

uint32_t TREVIK_CALL Trevik_T_curve_move_LINE4(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2,
                                               int32_t pos_3, uint8_t absolute, uint32_t start_speed,
                                               uint32_t max_speed, double accel_s, double decel_s)
{
    return EarlierCardEntry(card, LineMoveOneFlag, all_four_axes, Coordinates{pos_0, pos_1, pos_2, pos_3}, absolute,
                            MoveSpeeds{start_speed, max_speed}, TRamps({accel_s, decel_s}));
}

uint32_t TREVIK_CALL Trevik_S_curve_move_LINE2(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                               uint8_t absolute, uint32_t start_speed, uint32_t max_speed,
                                               double accel_s, double decel_s, uint32_t s_accel, uint32_t s_decel)
{
    return EarlierCardEntry(card, LineMoveOneFlag, AxisPair(axis_set), Coordinates{pos_a, pos_b}, absolute,
                            MoveSpeeds{start_speed, max_speed},
                            SRangeRamps({accel_s, decel_s}, SRangeSpeedsOf(s_accel, s_decel)));
}

uint32_t TREVIK_CALL Trevik_S_curve_move_LINE3(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                               int32_t pos_c, uint8_t absolute, uint32_t start_speed,
                                               uint32_t max_speed, double accel_s, double decel_s, uint32_t s_accel,
                                               uint32_t s_decel)
{
    return EarlierCardEntry(card, LineMoveOneFlag, AxisTriple(axis_set), Coordinates{pos_a, pos_b, pos_c}, absolute,
                            MoveSpeeds{start_speed, max_speed},
                            SRangeRamps({accel_s, decel_s}, SRangeSpeedsOf(s_accel, s_decel)));
}

uint32_t TREVIK_CALL Trevik_S_curve_move_LINE4(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2,
                                               int32_t pos_3, uint8_t absolute, uint32_t start_speed,
                                               uint32_t max_speed, double accel_s, double decel_s, uint32_t s_accel,
                                               uint32_t s_decel)
{
    return EarlierCardEntry(card, LineMoveOneFlag, all_four_axes, Coordinates{pos_0, pos_1, pos_2, pos_3}, absolute,
                            MoveSpeeds{start_speed, max_speed},
                            SRangeRamps({accel_s, decel_s}, SRangeSpeedsOf(s_accel, s_decel)));
}

uint32_t TREVIK_CALL Trevik_S1_curve_move_LINE2(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                                uint8_t absolute, uint32_t start_speed, uint32_t max_speed,
                                                uint32_t accel_ms, uint32_t decel_ms, uint32_t s_accel_ms,
                                                uint32_t s_decel_ms)
{
    return EarlierCardEntry(card, SRampTimes{start_speed, max_speed, accel_ms, decel_ms, s_accel_ms, s_decel_ms},
                            SRangeLineOneFlag, AxisPair(axis_set), Coordinates{pos_a, pos_b}, absolute,
                            MoveSpeeds{start_speed, max_speed}, Seconds(accel_ms, decel_ms));
}

uint32_t TREVIK_CALL Trevik_S1_curve_move_LINE3(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                                int32_t pos_c, uint8_t absolute, uint32_t start_speed,
                                                uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                                uint32_t s_accel_ms, uint32_t s_decel_ms)
{
    return EarlierCardEntry(card, SRampTimes{start_speed, max_speed, accel_ms, decel_ms, s_accel_ms, s_decel_ms},
                            SRangeLineOneFlag, AxisTriple(axis_set), Coordinates{pos_a, pos_b, pos_c}, absolute,
                            MoveSpeeds{start_speed, max_speed}, Seconds(accel_ms, decel_ms));
}

uint32_t TREVIK_CALL Trevik_S1_curve_move_LINE4(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2,
                                                int32_t pos_3, uint8_t absolute, uint32_t start_speed,
                                                uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                                uint32_t s_accel_ms, uint32_t s_decel_ms)
{
    return EarlierCardEntry(card, SRampTimes{start_speed, max_speed, accel_ms, decel_ms, s_accel_ms, s_decel_ms},
                            SRangeLineOneFlag, all_four_axes, Coordinates{pos_0, pos_1, pos_2, pos_3}, absolute,
                            MoveSpeeds{start_speed, max_speed}, Seconds(accel_ms, decel_ms));
}

// Continuous motion, status and positions

uint32_t TREVIK_CALL Trevik_set_continuous_flag(uint8_t card, uint8_t axis, uint8_t flag)
{
    return EarlierAxisEntry(card, axis, ContinuousFlagSet, flag);
}

uint32_t TREVIK_CALL Trevik_check_continuous_buffer(uint8_t card, uint8_t axis, uint8_t *full)
{
    return EarlierAxisEntry(card, axis, ContinuousBufferRead, full);
}

uint32_t TREVIK_CALL Trevik_read_conti_buffer_no(uint8_t card, uint8_t axis, uint8_t *count)
{
    return EarlierAxisEntry(card, axis, ContinuousBufferCountRead, count);
}

uint32_t TREVIK_CALL Trevik_read_motion_status(uint8_t card, uint8_t axis, uint8_t kind, uint8_t *flag)
{
    return EarlierAxisEntry(card, axis, MotionStatusQuery, kind, flag);
}

uint32_t TREVIK_CALL Trevik_read_current_position(uint8_t card, uint8_t axis, uint32_t *position)
{
    return EarlierAxisEntry(card, axis, CurrentPositionRead, position);
}

uint32_t TREVIK_CALL Trevik_set_current_position(uint8_t card, uint8_t axis, uint32_t position)
{
    return EarlierAxisEntry(card, axis, CurrentPositionSet, position);
}

uint32_t TREVIK_CALL Trevik_correct_current_POS(uint8_t card, uint8_t axis)
{
    return EarlierAxisEntry(card, axis, CorrectCurrentPosition);
}

// Handwheel

uint32_t TREVIK_CALL Trevik_config_pulser_mode(uint8_t card, uint8_t axis, uint8_t format, uint8_t option)
{
    return EarlierAxisEntry(card, axis, PulserModeSet, format, option);
}

uint32_t TREVIK_CALL Trevik_readback_pulser_mode(uint8_t card, uint8_t axis, uint8_t *format, uint8_t *option)
{
    return EarlierAxisEntry(card, axis, PulserModeRead, format, option);
}

uint32_t TREVIK_CALL Trevik_read_pulser_counter(uint8_t card, uint8_t axis, uint32_t *counter)
{
    return EarlierAxisEntry(card, axis, PulserCounterRead, counter);
}

uint32_t TREVIK_CALL Trevik_set_pulser_counter(uint8_t card, uint8_t axis, uint32_t counter)
{
    return EarlierAxisEntry(card, axis, PulserCounterSet, counter);
}

uint32_t TREVIK_CALL Trevik_set_pulser_Map(uint8_t card, uint8_t axis, uint8_t source, uint8_t reverse)
{
    return EarlierCardEntry(card, PulserMapSet, axis, source, reverse);
}

uint32_t TREVIK_CALL Trevik_enable_pulser_motion(uint8_t card, uint8_t axis, uint8_t enable, uint16_t ratio)
{
    return EarlierCardEntry(card, PulserMotionEnable, axis, enable, ratio);
}

uint32_t TREVIK_CALL Trevik_run_pulser_Vmove(uint8_t card, uint8_t axis, uint32_t maxSpeed)
{
    return EarlierAxisEntry(card, axis, TVelocityMove, MoveSpeeds{pulser_start_pps, maxSpeed}, 0.0);
}

uint32_t TREVIK_CALL Trevik_run_pulser_Pmove(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                             uint32_t maxSpeed)
{
    return EarlierAxisEntry(card, axis, TPositionMove, Destination{distance, absolute != 0},
                            MoveSpeeds{pulser_start_pps, maxSpeed}, RampTimes{}, StartAtOnce);
}

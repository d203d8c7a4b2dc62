// The earlier interface: one line an entry, on the operations of the current one.
#include <trevik/Trevik.h>

#include "api/card_init.h"
#include "api/entry.h"
#include "api/library.h"
#include "api/line_entry.h"
#include "config/compensation.h"
#include "config/config_file.h"
#include "config/pins.h"
#include "config/points.h"
#include "config/pulse_format.h"
#include "config/soft_limits.h"
#include "motion/arc.h"
#include "motion/continuous.h"
#include "motion/homing.h"
#include "motion/online_change.h"
#include "motion/position_move.h"
#include "motion/restart.h"
#include "motion/speed_range.h"
#include "motion/stop.h"
#include "motion/velocity.h"
#include "pulser/pulser.h"
#include "status/comparators.h"
#include "status/counters.h"
#include "status/events.h"
#include "status/interrupts.h"
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
                            MoveSpeeds{startSpeed, maxSpeed}, RampTimes{accelTime, decelTime}, start_at_once);
}

uint32_t TREVIK_CALL Trevik_S_curve_position_move(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                                  uint32_t startSpeed, uint32_t maxSpeed, double accelTime,
                                                  double decelTime, uint32_t sAccel, uint32_t sDecel)
{
    return EarlierAxisEntry(card, axis, SPositionMove, SRangeSpeedsOf(sAccel, sDecel),
                            Destination{distance, absolute != 0}, MoveSpeeds{startSpeed, maxSpeed},
                            RampTimes{accelTime, decelTime}, start_at_once);
}

uint32_t TREVIK_CALL Trevik_S1_curve_position_move(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                                   uint32_t startSpeed, uint32_t maxSpeed, uint32_t accelTime,
                                                   uint32_t decelTime, uint32_t sAccelTime, uint32_t sDecelTime)
{
    return EarlierAxisEntry(card, axis,
                            SRampTimes{startSpeed, maxSpeed, accelTime, decelTime, sAccelTime, sDecelTime},
                            SPositionMove, Destination{distance, absolute != 0}, MoveSpeeds{startSpeed, maxSpeed},
                            Seconds(accelTime, decelTime), start_at_once);
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

// Changes of a running line

uint32_t TREVIK_CALL Trevik_OnLine_T_curve_change_LINE2(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                        int32_t pos_b, uint8_t absolute, uint32_t start_speed,
                                                        uint32_t max_speed, double accel_s, double decel_s)
{
    return EarlierCardEntry(card, LineChange, AxisPair(axis_set), Coordinates{pos_a, pos_b}, absolute != 0,
                            MoveSpeeds{start_speed, max_speed}, RampTimes{accel_s, decel_s});
}

uint32_t TREVIK_CALL Trevik_OnLine_T_curve_change_LINE3(uint8_t card, uint8_t axis_set, int32_t pos_a,
                                                        int32_t pos_b, int32_t pos_c, uint8_t absolute,
                                                        uint32_t start_speed, uint32_t max_speed, double accel_s,
                                                        double decel_s)
{
    return EarlierCardEntry(card, LineChange, AxisTriple(axis_set), Coordinates{pos_a, pos_b, pos_c}, absolute != 0,
                            MoveSpeeds{start_speed, max_speed}, RampTimes{accel_s, decel_s});
}

uint32_t TREVIK_CALL Trevik_OnLine_T_curve_change_LINE4(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2,
                                                        int32_t pos_3, uint8_t absolute, uint32_t start_speed,
                                                        uint32_t max_speed, double accel_s, double decel_s)
{
    return EarlierCardEntry(card, LineChange, all_four_axes, Coordinates{pos_0, pos_1, pos_2, pos_3}, absolute != 0,
                            MoveSpeeds{start_speed, max_speed}, RampTimes{accel_s, decel_s});
}

// Arcs and circles

uint32_t TREVIK_CALL Trevik_ARC2_center_move(uint8_t card, uint8_t axis_pair, int32_t center_a, int32_t center_b,
                                             int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed, uint8_t dir)
{
    return EarlierCardEntry(card, ArcCenterMove, AxisPair(axis_pair),
                            CenterArc{{center_a, center_b}, {end_a, end_b}, dir}, abs != 0, speed);
}

uint32_t TREVIK_CALL Trevik_ARC_center_move_XY(uint8_t card, int32_t center_a, int32_t center_b, int32_t end_a,
                                               int32_t end_b, uint8_t abs, uint32_t speed, uint8_t dir)
{
    return Trevik_ARC2_center_move(card, 0, center_a, center_b, end_a, end_b, abs, speed, dir);
}

uint32_t TREVIK_CALL Trevik_ARC_center_move_ZA(uint8_t card, int32_t center_a, int32_t center_b, int32_t end_a,
                                               int32_t end_b, uint8_t abs, uint32_t speed, uint8_t dir)
{
    return Trevik_ARC2_center_move(card, 5, center_a, center_b, end_a, end_b, abs, speed, dir);
}

uint32_t TREVIK_CALL Trevik_ARC2_3P_move(uint8_t card, uint8_t axis_pair, int32_t mid_a, int32_t mid_b,
                                         int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed)
{
    return EarlierCardEntry(card, ArcThroughMove, AxisPair(axis_pair), ThroughArc{{mid_a, mid_b}, {end_a, end_b}},
                            ArcEnd::AtPoint, abs != 0, speed);
}

uint32_t TREVIK_CALL Trevik_CIR2_3P_move(uint8_t card, uint8_t axis_pair, int32_t p1_a, int32_t p1_b, int32_t p2_a,
                                         int32_t p2_b, uint8_t abs, uint32_t speed)
{
    return EarlierCardEntry(card, ArcThroughMove, AxisPair(axis_pair), ThroughArc{{p1_a, p1_b}, {p2_a, p2_b}},
                            ArcEnd::FullCircle, abs != 0, speed);
}

uint32_t TREVIK_CALL Trevik_ARC2_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius, int32_t end_a,
                                             int32_t end_b, uint8_t abs, uint32_t speed, uint8_t dir)
{
    return EarlierCardEntry(card, ArcRadiusMove, AxisPair(axis_pair), RadiusArc{radius, {end_a, end_b}, dir},
                            ArcEnd::AtPoint, abs != 0, speed);
}

uint32_t TREVIK_CALL Trevik_CIR2_radius_move(uint8_t card, uint8_t axis_pair, int32_t radius, int32_t point_a,
                                             int32_t point_b, uint8_t abs, uint32_t speed, uint8_t dir)
{
    return EarlierCardEntry(card, ArcRadiusMove, AxisPair(axis_pair), RadiusArc{radius, {point_a, point_b}, dir},
                            ArcEnd::FullCircle, abs != 0, speed);
}

uint32_t TREVIK_CALL Trevik_ARC2_Radius_test(uint8_t card, uint32_t end_a, int32_t radius, uint32_t end_b,
                                             uint8_t dir, uint32_t *center_a, uint32_t *center_b)
{
    return EarlierCardEntry(card, ArcRadiusTest, end_a, radius, end_b, dir, center_a, center_b);
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
                            MoveSpeeds{pulser_start_pps, maxSpeed}, RampTimes{}, start_at_once);
}

// Card initialisation

uint32_t TREVIK_CALL Trevik_init_card(uint8_t card)
{
    return EarlierCardEntry(card, CardInit);
}

// Pulse formats

uint32_t TREVIK_CALL Trevik_set_pulse_outmode(uint8_t card, uint8_t axis, uint8_t mode)
{
    return EarlierAxisEntry(card, axis, PulseOutmodeSet, mode);
}

uint32_t TREVIK_CALL Trevik_readback_pulse_outmode(uint8_t card, uint8_t axis, uint8_t *mode)
{
    return EarlierAxisEntry(card, axis, PulseOutmodeRead, mode);
}

uint32_t TREVIK_CALL Trevik_set_pulse_inmode(uint8_t card, uint8_t axis, uint8_t format, uint8_t option)
{
    return EarlierAxisEntry(card, axis, PulseInmodeSet, format, option);
}

uint32_t TREVIK_CALL Trevik_readback_pulse_inmode(uint8_t card, uint8_t axis, uint8_t *format, uint8_t *option)
{
    return EarlierAxisEntry(card, axis, PulseInmodeRead, format, option);
}

// Signal pins

uint32_t TREVIK_CALL Trevik_config_SD_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t optionA,
                                          uint8_t optionB, uint8_t optionC)
{
    return EarlierAxisEntry(card, axis, SDPinSet, enable, optionA, optionB, optionC);
}

uint32_t TREVIK_CALL Trevik_readback_SD_PIN(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *optionA,
                                            uint8_t *optionB, uint8_t *optionC, uint8_t *input)
{
    return EarlierAxisEntry(card, axis, SDPinRead, enable, optionA, optionB, optionC, input);
}

uint32_t TREVIK_CALL Trevik_config_PCS_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic)
{
    return EarlierAxisEntry(card, axis, PCSPinSet, enable, logic);
}

uint32_t TREVIK_CALL Trevik_readback_PCS_PIN(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                             uint8_t *input)
{
    return EarlierAxisEntry(card, axis, PCSPinRead, enable, logic, input);
}

uint32_t TREVIK_CALL Trevik_config_INP_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic)
{
    return EarlierAxisEntry(card, axis, INPPinSet, enable, logic);
}

uint32_t TREVIK_CALL Trevik_readback_INP_PIN(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                             uint8_t *input)
{
    return EarlierAxisEntry(card, axis, INPPinRead, enable, logic, input);
}

uint32_t TREVIK_CALL Trevik_config_ERC_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic, uint8_t width,
                                           uint8_t offTime)
{
    return EarlierAxisEntry(card, axis, ERCPinSet, enable, logic, width, offTime);
}

uint32_t TREVIK_CALL Trevik_readback_ERC_PIN(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                             uint8_t *width, uint8_t *offTime, uint8_t *output)
{
    return EarlierAxisEntry(card, axis, ERCPinRead, enable, logic, width, offTime, output);
}

uint32_t TREVIK_CALL Trevik_config_ALM_PIN(uint8_t card, uint8_t axis, uint8_t optionA, uint8_t optionB)
{
    return EarlierAxisEntry(card, axis, ALMPinSet, optionA, optionB);
}

uint32_t TREVIK_CALL Trevik_readback_ALM_PIN(uint8_t card, uint8_t axis, uint8_t *optionA, uint8_t *optionB,
                                             uint8_t *input)
{
    return EarlierAxisEntry(card, axis, ALMPinRead, optionA, optionB, input);
}

uint32_t TREVIK_CALL Trevik_config_LTC_PIN(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic)
{
    return EarlierAxisEntry(card, axis, LTCPinSet, enable, logic);
}

uint32_t TREVIK_CALL Trevik_readback_LTC_PIN(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                             uint8_t *input)
{
    return EarlierAxisEntry(card, axis, LTCPinRead, enable, logic, input);
}

uint32_t TREVIK_CALL Trevik_config_CMP_OUT(uint8_t card, uint8_t axis, uint8_t code)
{
    return EarlierAxisEntry(card, axis, CMPPinSet, code);
}

uint32_t TREVIK_CALL Trevik_readback_CMP_OUT(uint8_t card, uint8_t axis, uint8_t *code, uint8_t *output)
{
    return EarlierAxisEntry(card, axis, CMPPinRead, code, output);
}

uint32_t TREVIK_CALL Trevik_config_EL_MODE(uint8_t card, uint8_t axis, uint8_t mode)
{
    return EarlierAxisEntry(card, axis, ELModeSet, mode);
}

uint32_t TREVIK_CALL Trevik_readback_EL_MODE(uint8_t card, uint8_t axis, uint8_t *mode)
{
    return EarlierAxisEntry(card, axis, ELModeRead, mode);
}

uint32_t TREVIK_CALL Trevik_set_HOME_pin_logic(uint8_t card, uint8_t axis, uint8_t logic)
{
    return EarlierAxisEntry(card, axis, HomePinLogicSet, logic);
}

uint32_t TREVIK_CALL Trevik_readback_HOME_pin_logic(uint8_t card, uint8_t axis, uint8_t *logic)
{
    return EarlierAxisEntry(card, axis, HomePinLogicRead, logic);
}

uint32_t TREVIK_CALL Trevik_set_EZ_pin_logic(uint8_t card, uint8_t axis, uint8_t logic)
{
    return EarlierAxisEntry(card, axis, EZPinLogicSet, logic);
}

uint32_t TREVIK_CALL Trevik_readback_EZ_pin_logic(uint8_t card, uint8_t axis, uint8_t *logic)
{
    return EarlierAxisEntry(card, axis, EZPinLogicRead, logic);
}

// General-purpose points

uint32_t TREVIK_CALL Trevik_read_point_status(uint8_t card, uint8_t axis, uint8_t point, uint8_t *state)
{
    return EarlierAxisEntry(card, axis, PointRead, point, state);
}

uint32_t TREVIK_CALL Trevik_write_output_point(uint8_t card, uint8_t axis, uint8_t point, uint8_t state)
{
    return EarlierAxisEntry(card, axis, PointSet, point, state);
}

uint32_t TREVIK_CALL Trevik_config_TTL_IO_MODE(uint8_t card, uint8_t mode)
{
    return EarlierCardEntry(card, TTLIOModeSet, mode);
}

uint32_t TREVIK_CALL Trevik_readback_TTL_IO_MODE(uint8_t card, uint8_t *mode)
{
    return EarlierCardEntry(card, TTLIOModeRead, mode);
}

// Software limits

uint32_t TREVIK_CALL Trevik_config_softlimit(uint8_t card, uint8_t axis, uint8_t counter, uint8_t action)
{
    return EarlierAxisEntry(card, axis, SoftlimitConfigSet, counter, action);
}

uint32_t TREVIK_CALL Trevik_readback_config_softlimit(uint8_t card, uint8_t axis, uint8_t *counter, uint8_t *action)
{
    return EarlierAxisEntry(card, axis, SoftlimitConfigRead, counter, action);
}

uint32_t TREVIK_CALL Trevik_set_softlimit_data(uint8_t card, uint8_t axis, uint32_t first, uint32_t second)
{
    return EarlierAxisEntry(card, axis, SoftlimitDataSet, first, second);
}

uint32_t TREVIK_CALL Trevik_readback_softlimit_data(uint8_t card, uint8_t axis, uint32_t *first, uint32_t *second)
{
    return EarlierAxisEntry(card, axis, SoftlimitDataRead, first, second);
}

uint32_t TREVIK_CALL Trevik_enable_softlimit(uint8_t card, uint8_t axis, uint8_t enable)
{
    return EarlierAxisEntry(card, axis, SoftlimitEnableSet, enable);
}

uint32_t TREVIK_CALL Trevik_readback_enable_softlimit(uint8_t card, uint8_t axis, uint8_t *enable)
{
    return EarlierAxisEntry(card, axis, SoftlimitEnableRead, enable);
}

uint32_t TREVIK_CALL Trevik_read_softlimit_flag(uint8_t card, uint8_t axis, uint8_t *flagA, uint8_t *flagB)
{
    return EarlierAxisEntry(card, axis, SoftlimitFlagRead, flagA, flagB);
}

// Backlash, vibration, debounce

uint32_t TREVIK_CALL Trevik_backlash_comp(uint8_t card, uint8_t axis, uint16_t amount, uint8_t mode, uint32_t speed)
{
    return EarlierAxisEntry(card, axis, BacklashCompSet, amount, mode, speed);
}

uint32_t TREVIK_CALL Trevik_readback_backlash_comp(uint8_t card, uint8_t axis, uint16_t *amount, uint8_t *mode,
                                                   uint32_t *speed)
{
    return EarlierAxisEntry(card, axis, BacklashCompRead, amount, mode, speed);
}

uint32_t TREVIK_CALL Trevik_suppress_vibration(uint8_t card, uint8_t axis, uint16_t first, uint16_t second)
{
    return EarlierAxisEntry(card, axis, SuppressVibrationSet, first, second);
}

uint32_t TREVIK_CALL Trevik_readback_suppress_vibration(uint8_t card, uint8_t axis, uint16_t *first,
                                                        uint16_t *second)
{
    return EarlierAxisEntry(card, axis, SuppressVibrationRead, first, second);
}

// Configuration file

uint32_t TREVIK_CALL Trevik_save_config2_file(uint8_t card, const char *fileName)
{
    return EarlierNumberEntry(card, ConfigFileSave, fileName);
}

uint32_t TREVIK_CALL Trevik_load_config_from_file(uint8_t card, const char *fileName)
{
    return EarlierNumberEntry(card, ConfigFileLoad, fileName);
}

// Events and interrupts

uint32_t TREVIK_CALL Trevik_set_event_factor(uint8_t card, uint8_t axis, int32_t factor)
{
    return EarlierAxisEntry(card, axis, EventFactorSet, factor);
}

uint32_t TREVIK_CALL Trevik_read_event_flag(uint8_t card, uint8_t axis, uint32_t *flags)
{
    return EarlierAxisEntry(card, axis, EventFlagRead, flags);
}

uint32_t TREVIK_CALL Trevik_read_error_flag(uint8_t card, uint8_t axis, uint32_t *flags)
{
    return EarlierAxisEntry(card, axis, ErrorFlagRead, flags);
}

uint32_t TREVIK_CALL Trevik_set_INT_source(uint8_t card, uint8_t axis, int32_t errorSource, int32_t eventSource)
{
    return EarlierCardEntry(card, IRQSourceSet, axis, errorSource, eventSource);
}

uint32_t TREVIK_CALL Trevik_set_INT_mask(uint8_t card, uint8_t source, uint8_t value)
{
    if (!SimulationOn() && source >= axis_count)
        return TREVIK_ERR_AXIS;
    return EarlierCardEntry(card, IRQMaskSet, source, value);
}

uint32_t TREVIK_CALL Trevik_enable_IRQ(uint8_t card, uint32_t *event)
{
    return EarlierCardEntry(card, IRQEnableEvent, event);
}

uint32_t TREVIK_CALL Trevik_disable_IRQ(uint8_t card)
{
    return EarlierCardEntry(card, IRQDisable);
}

uint32_t TREVIK_CALL Trevik_link_IRQ_process(uint8_t card, TrevikA_callback callback)
{
    return EarlierCardEntry(card, IRQProcessLink, callback);
}

uint32_t TREVIK_CALL Trevik_read_INT_status(uint8_t card, uint8_t source, uint8_t *status, uint32_t *eventByte,
                                            uint32_t *errorByte)
{
    return EarlierCardEntry(card, IRQStatusRead, source, status, eventByte, errorByte);
}

// Feedback counter, latch, comparators

uint32_t TREVIK_CALL Trevik_read_FB_counter(uint8_t card, uint8_t axis, uint32_t *counter)
{
    return EarlierAxisEntry(card, axis, FBCounterRead, counter);
}

uint32_t TREVIK_CALL Trevik_set_FB_counter(uint8_t card, uint8_t axis, uint32_t counter)
{
    return EarlierAxisEntry(card, axis, FBCounterSet, counter);
}

uint32_t TREVIK_CALL Trevik_read_FBcounter_latch_value(uint8_t card, uint8_t axis, uint32_t *counter)
{
    return EarlierAxisEntry(card, axis, FBCounterLatchValueRead, counter);
}

uint32_t TREVIK_CALL Trevik_config_comparator_out(uint8_t card, uint8_t axis, uint8_t counter, uint8_t condition,
                                                  uint8_t action)
{
    return EarlierAxisEntry(card, axis, CMPOutSet, counter, condition, action);
}

uint32_t TREVIK_CALL Trevik_readback_comparator_out(uint8_t card, uint8_t axis, uint8_t *counter,
                                                    uint8_t *condition, uint8_t *action)
{
    return EarlierAxisEntry(card, axis, CMPOutRead, counter, condition, action);
}

uint32_t TREVIK_CALL Trevik_set_comparator_data(uint8_t card, uint8_t axis, uint32_t value)
{
    return EarlierAxisEntry(card, axis, CMPDataSet, value);
}

uint32_t TREVIK_CALL Trevik_readback_comparator_data(uint8_t card, uint8_t axis, uint32_t *value)
{
    return EarlierAxisEntry(card, axis, CMPDataRead, value);
}

uint32_t TREVIK_CALL Trevik_read_compare_flag(uint8_t card, uint8_t axis, uint8_t *flag)
{
    return EarlierAxisEntry(card, axis, CMPFlagRead, flag);
}

// Simultaneous start and stop, timers

uint32_t TREVIK_CALL Trevik_trigger_CSTA_pulse(uint8_t card)
{
    return EarlierCardEntry(card, CSTATrigger);
}

uint32_t TREVIK_CALL Trevik_trigger_CSTP_pulse(uint8_t card)
{
    return EarlierCardEntry(card, CSTPTrigger);
}

// The current interface: one line an entry. Each names the operation that does the work, declared in its
// subsystem's header.
#include <trevik/TrevikA.h>

#include "api/arc_entry.h"
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
#include "motion/continuous.h"
#include "motion/homing.h"
#include "motion/online_change.h"
#include "motion/position_move.h"
#include "motion/restart.h"
#include "motion/speed_range.h"
#include "motion/stop.h"
#include "motion/velocity.h"
#include "pulser/pulser.h"
#include "status/card_timers.h"
#include "status/comparators.h"
#include "status/counters.h"
#include "status/events.h"
#include "status/interrupts.h"
#include "status/motion_status.h"
#include "status/position.h"

using namespace trevik;

// Library

uint32_t TREVIK_CALL TrevikA_dll_Simu_mode(uint8_t mode)
{
    return SimulationSwitch(mode);
}

uint32_t TREVIK_CALL TrevikA_initial(void)
{
    return LibraryInitial("TrevikA_initial");
}

uint32_t TREVIK_CALL TrevikA_info(uint8_t card, uint8_t *model, uint16_t *resource_word)
{
    return CardEntry(card, CardInfo, model, resource_word);
}

uint32_t TREVIK_CALL TrevikA_close(void)
{
    return LibraryClose();
}

// Speed range

uint32_t TREVIK_CALL TrevikA_velocity_range_fix(uint8_t card, uint8_t axis, uint32_t speed)
{
    return AxisEntry(card, axis, VelocityRangeFix, speed);
}

uint32_t TREVIK_CALL TrevikA_velocity_range_unfix(uint8_t card, uint8_t axis)
{
    return AxisEntry(card, axis, VelocityRangeUnfix);
}

// Single-axis moves

uint32_t TREVIK_CALL TrevikA_T_position_move(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                             uint32_t startSpeed, uint32_t maxSpeed, uint32_t accelTime,
                                             uint32_t decelTime, uint8_t trigger)
{
    return AxisEntry(card, axis, TPositionMove, Destination{distance, absolute != 0},
                     MoveSpeeds{startSpeed, maxSpeed}, Seconds(accelTime, decelTime), trigger);
}

uint32_t TREVIK_CALL TrevikA_S_position_move(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                             uint32_t startSpeed, uint32_t maxSpeed, uint32_t accelTime,
                                             uint32_t decelTime, uint32_t sAccelTime, uint32_t sDecelTime,
                                             uint8_t trigger)
{
    return AxisEntry(card, axis, SRampTimes{startSpeed, maxSpeed, accelTime, decelTime, sAccelTime, sDecelTime},
                     SPositionMove, Destination{distance, absolute != 0}, MoveSpeeds{startSpeed, maxSpeed},
                     Seconds(accelTime, decelTime), trigger);
}

// Changes of a running move

uint32_t TREVIK_CALL TrevikA_position_change(uint8_t card, uint8_t axis, uint32_t position, uint8_t absolute)
{
    return AxisEntry(card, axis, PositionChange, Destination{position, absolute != 0});
}

uint32_t TREVIK_CALL TrevikA_T_onLINE_change(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                             uint32_t startSpeed, uint32_t maxSpeed, uint32_t accelTime,
                                             uint32_t decelTime)
{
    return AxisEntry(card, axis, TOnlineChange, Destination{distance, absolute != 0},
                     MoveSpeeds{startSpeed, maxSpeed}, Seconds(accelTime, decelTime));
}

uint32_t TREVIK_CALL TrevikA_S_onLINE_change(uint8_t card, uint8_t axis, uint32_t distance, uint8_t absolute,
                                             uint32_t startSpeed, uint32_t maxSpeed, uint32_t accelTime,
                                             uint32_t decelTime, uint32_t sAccelTime, uint32_t sDecelTime)
{
    return AxisEntry(card, axis, SRampTimes{startSpeed, maxSpeed, accelTime, decelTime, sAccelTime, sDecelTime},
                     SOnlineChange, Destination{distance, absolute != 0}, MoveSpeeds{startSpeed, maxSpeed},
                     Seconds(accelTime, decelTime));
}

// Velocity moves

uint32_t TREVIK_CALL TrevikA_T_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed, uint32_t maxSpeed,
                                             uint32_t accelTime)
{
    return AxisEntry(card, axis, TVelocityMove, MoveSpeeds{startSpeed, maxSpeed}, Seconds(accelTime));
}

uint32_t TREVIK_CALL TrevikA_S_velocity_move(uint8_t card, uint8_t axis, uint32_t startSpeed, uint32_t maxSpeed,
                                             uint32_t accelTime, uint32_t sAccelTime)
{
    return AxisEntry(card, axis, SRampTime{startSpeed, maxSpeed, accelTime, sAccelTime}, SVelocityMove,
                     MoveSpeeds{startSpeed, maxSpeed}, Seconds(accelTime));
}

uint32_t TREVIK_CALL TrevikA_velocity_change(uint8_t card, uint8_t axis, uint32_t newSpeed, uint32_t time)
{
    return AxisEntry(card, axis, VelocityChange, newSpeed, Seconds(time));
}

// Stops and speed

uint32_t TREVIK_CALL TrevikA_stop(uint8_t card, const uint8_t *axes, uint32_t decelTime)
{
    return CardEntry(card, Stop, axes, Seconds(decelTime));
}

uint32_t TREVIK_CALL TrevikA_stop_emg(uint8_t card)
{
    return CardEntry(card, EmergencyStop);
}

uint32_t TREVIK_CALL TrevikA_velocity_read(uint8_t card, uint8_t axis, double *speed)
{
    return AxisEntry(card, axis, VelocityRead, speed);
}

// Restart

uint32_t TREVIK_CALL TrevikA_OneAxis_restart(uint8_t card, uint8_t axis)
{
    return AxisEntry(card, axis, RestartAxis);
}

uint32_t TREVIK_CALL TrevikA_2Axis_restart(uint8_t card, uint8_t group)
{
    return AxisSetEntry(card, AxisPair(group), Restart);
}

uint32_t TREVIK_CALL TrevikA_3Axis_restart(uint8_t card, uint8_t group)
{
    return AxisSetEntry(card, AxisTriple(group), Restart);
}

uint32_t TREVIK_CALL TrevikA_4Axis_restart(uint8_t card)
{
    return AxisSetEntry(card, all_four_axes, Restart);
}

// Homing

uint32_t TREVIK_CALL TrevikA_home_mode_set(uint8_t card, uint8_t axis, uint8_t mode, uint8_t option)
{
    return AxisEntry(card, axis, HomeModeSet, mode, option);
}

uint32_t TREVIK_CALL TrevikA_home_start(uint8_t card, uint8_t axis, uint32_t startSpeed, uint32_t maxSpeed,
                                        uint32_t accelTime, uint8_t direction)
{
    return AxisEntry(card, axis, HomeStart, MoveSpeeds{startSpeed, maxSpeed}, Seconds(accelTime), direction);
}

uint32_t TREVIK_CALL TrevikA_home_search(uint8_t card, uint8_t axis, uint32_t startSpeed, uint32_t maxSpeed,
                                         uint32_t accelTime, uint8_t direction, uint32_t distance)
{
    return AxisEntry(card, axis, HomeSearch, MoveSpeeds{startSpeed, maxSpeed}, Seconds(accelTime), direction,
                     distance);
}

// Lines

uint32_t TREVIK_CALL TrevikA_T_LINE2_move(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                          const uint8_t *abs_flags, uint32_t start_speed, uint32_t max_speed,
                                          uint32_t accel_ms, uint32_t decel_ms, uint8_t trigger)
{
    return CardEntry(card, LineMove, AxisPair(axis_set), LineDestination{{pos_a, pos_b}, abs_flags},
                     MoveSpeeds{start_speed, max_speed}, TRamps(Seconds(accel_ms, decel_ms)), trigger);
}

uint32_t TREVIK_CALL TrevikA_T_LINE3_move(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                          int32_t pos_c, const uint8_t *abs_flags, uint32_t start_speed,
                                          uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms, uint8_t trigger)
{
    return CardEntry(card, LineMove, AxisTriple(axis_set), LineDestination{{pos_a, pos_b, pos_c}, abs_flags},
                     MoveSpeeds{start_speed, max_speed}, TRamps(Seconds(accel_ms, decel_ms)), trigger);
}

uint32_t TREVIK_CALL TrevikA_T_LINE4_move(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2, int32_t pos_3,
                                          const uint8_t *abs_flags, uint32_t start_speed, uint32_t max_speed,
                                          uint32_t accel_ms, uint32_t decel_ms, uint8_t trigger)
{
    return CardEntry(card, LineMove, all_four_axes, LineDestination{{pos_0, pos_1, pos_2, pos_3}, abs_flags},
                     MoveSpeeds{start_speed, max_speed}, TRamps(Seconds(accel_ms, decel_ms)), trigger);
}

uint32_t TREVIK_CALL TrevikA_S_LINE2_move(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                          const uint8_t *abs_flags, uint32_t start_speed, uint32_t max_speed,
                                          uint32_t accel_ms, uint32_t decel_ms, uint32_t s_accel_ms,
                                          uint32_t s_decel_ms, uint8_t trigger)
{
    return CardEntry(card, LineMove, AxisPair(axis_set), LineDestination{{pos_a, pos_b}, abs_flags},
                     MoveSpeeds{start_speed, max_speed}, STimeRamps(accel_ms, decel_ms, s_accel_ms, s_decel_ms),
                     trigger);
}

uint32_t TREVIK_CALL TrevikA_S_LINE3_move(uint8_t card, uint8_t axis_set, int32_t pos_a, int32_t pos_b,
                                          int32_t pos_c, const uint8_t *abs_flags, uint32_t start_speed,
                                          uint32_t max_speed, uint32_t accel_ms, uint32_t decel_ms,
                                          uint32_t s_accel_ms, uint32_t s_decel_ms, uint8_t trigger)
{
    return CardEntry(card, LineMove, AxisTriple(axis_set), LineDestination{{pos_a, pos_b, pos_c}, abs_flags},
                     MoveSpeeds{start_speed, max_speed}, STimeRamps(accel_ms, decel_ms, s_accel_ms, s_decel_ms),
                     trigger);
}

uint32_t TREVIK_CALL TrevikA_S_LINE4_move(uint8_t card, int32_t pos_0, int32_t pos_1, int32_t pos_2, int32_t pos_3,
                                          const uint8_t *abs_flags, uint32_t start_speed, uint32_t max_speed,
                                          uint32_t accel_ms, uint32_t decel_ms, uint32_t s_accel_ms,
                                          uint32_t s_decel_ms, uint8_t trigger)
{
    return CardEntry(card, SRampTimes{start_speed, max_speed, accel_ms, decel_ms, s_accel_ms, s_decel_ms},
                     SRangeLine, all_four_axes, LineDestination{{pos_0, pos_1, pos_2, pos_3}, abs_flags},
                     MoveSpeeds{start_speed, max_speed}, Seconds(accel_ms, decel_ms), trigger);
}

// Arcs and circles

uint32_t TREVIK_CALL TrevikA_ARC_center_move(uint8_t card, uint8_t axis_pair, int32_t center_a, int32_t center_b,
                                             int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed, uint8_t dir)
{
    return CardEntry(card, ArcCenterMove, AxisPair(axis_pair), CenterArc{{center_a, center_b}, {end_a, end_b}, dir},
                     abs != 0, speed);
}

uint32_t TREVIK_CALL TrevikA_ARC_3P_move(uint8_t card, uint8_t axis_pair, int32_t mid_a, int32_t mid_b,
                                         int32_t end_a, int32_t end_b, uint8_t abs, uint32_t speed)
{
    return CardEntry(card, ArcThroughMove, AxisPair(axis_pair), ThroughArc{{mid_a, mid_b}, {end_a, end_b}},
                     ArcEnd::AtPoint, abs != 0, speed);
}

uint32_t TREVIK_CALL TrevikA_CIR_3P_move(uint8_t card, uint8_t axis_pair, int32_t p1_a, int32_t p1_b, int32_t p2_a,
                                         int32_t p2_b, uint8_t abs, uint32_t speed)
{
    return CardEntry(card, ArcThroughMove, AxisPair(axis_pair), ThroughArc{{p1_a, p1_b}, {p2_a, p2_b}},
                     ArcEnd::FullCircle, abs != 0, speed);
}

uint32_t TREVIK_CALL TrevikA_ARC_radius_move(uint8_t card, uint8_t axis_pair, int32_t radius, int32_t end_a,
                                             int32_t end_b, uint8_t abs, uint32_t speed, uint8_t dir)
{
    return CardEntry(card, ArcRadiusMove, AxisPair(axis_pair), RadiusArc{radius, {end_a, end_b}, dir},
                     ArcEnd::AtPoint, abs != 0, speed);
}

uint32_t TREVIK_CALL TrevikA_CIR_radius_move(uint8_t card, uint8_t axis_pair, int32_t radius, int32_t point_a,
                                             int32_t point_b, uint8_t abs, uint32_t speed, uint8_t dir)
{
    return CardEntry(card, ArcRadiusMove, AxisPair(axis_pair), RadiusArc{radius, {point_a, point_b}, dir},
                     ArcEnd::FullCircle, abs != 0, speed);
}

uint32_t TREVIK_CALL TrevikA_T_ARC_center_move(uint8_t card, uint8_t axis_pair, int32_t center_a, int32_t center_b,
                                               int32_t end_a, int32_t end_b, const uint8_t *abs_flags,
                                               uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                               uint8_t dir, uint8_t trigger)
{
    return CardEntry(card, RampedArcCenterMove, AxisPair(axis_pair),
                     CenterArc{{center_a, center_b}, {end_a, end_b}, dir},
                     TArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_T_ARC_3P_move(uint8_t card, uint8_t axis_pair, int32_t mid_a, int32_t mid_b,
                                           int32_t end_a, int32_t end_b, const uint8_t *abs_flags,
                                           uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                           uint8_t trigger)
{
    return CardEntry(card, RampedArcThroughMove, AxisPair(axis_pair), ThroughArc{{mid_a, mid_b}, {end_a, end_b}},
                     ArcEnd::AtPoint, TArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_T_CIR_3P_move(uint8_t card, uint8_t axis_pair, int32_t p1_a, int32_t p1_b,
                                           int32_t p2_a, int32_t p2_b, const uint8_t *abs_flags,
                                           uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                           uint8_t trigger)
{
    return CardEntry(card, RampedArcThroughMove, AxisPair(axis_pair), ThroughArc{{p1_a, p1_b}, {p2_a, p2_b}},
                     ArcEnd::FullCircle, TArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_T_ARC_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius, int32_t end_a,
                                               int32_t end_b, const uint8_t *abs_flags, uint32_t start_speed,
                                               uint32_t max_speed, uint32_t accel_ms, uint8_t dir, uint8_t trigger)
{
    return CardEntry(card, RampedArcRadiusMove, AxisPair(axis_pair), RadiusArc{radius, {end_a, end_b}, dir},
                     ArcEnd::AtPoint, TArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_T_CIR_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius, int32_t point_a,
                                               int32_t point_b, const uint8_t *abs_flags, uint32_t start_speed,
                                               uint32_t max_speed, uint32_t accel_ms, uint8_t dir, uint8_t trigger)
{
    return CardEntry(card, RampedArcRadiusMove, AxisPair(axis_pair), RadiusArc{radius, {point_a, point_b}, dir},
                     ArcEnd::FullCircle, TArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_ARC_center_move(uint8_t card, uint8_t axis_pair, int32_t center_a, int32_t center_b,
                                               int32_t end_a, int32_t end_b, const uint8_t *abs_flags,
                                               uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                               uint32_t s_ms, uint8_t dir, uint8_t trigger)
{
    return CardEntry(card, RampedArcCenterMove, AxisPair(axis_pair),
                     CenterArc{{center_a, center_b}, {end_a, end_b}, dir},
                     SArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, s_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_ARC_3P_move(uint8_t card, uint8_t axis_pair, int32_t mid_a, int32_t mid_b,
                                           int32_t end_a, int32_t end_b, const uint8_t *abs_flags,
                                           uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                           uint32_t s_ms, uint8_t trigger)
{
    return CardEntry(card, RampedArcThroughMove, AxisPair(axis_pair), ThroughArc{{mid_a, mid_b}, {end_a, end_b}},
                     ArcEnd::AtPoint,
                     SArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, s_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_CIR_3P_move(uint8_t card, uint8_t axis_pair, int32_t p1_a, int32_t p1_b,
                                           int32_t p2_a, int32_t p2_b, const uint8_t *abs_flags,
                                           uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                           uint32_t s_ms, uint8_t trigger)
{
    return CardEntry(card, RampedArcThroughMove, AxisPair(axis_pair), ThroughArc{{p1_a, p1_b}, {p2_a, p2_b}},
                     ArcEnd::FullCircle,
                     SArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, s_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_ARC_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius, int32_t end_a,
                                               int32_t end_b, const uint8_t *abs_flags, uint32_t start_speed,
                                               uint32_t max_speed, uint32_t accel_ms, uint32_t s_ms, uint8_t dir,
                                               uint8_t trigger)
{
    return CardEntry(card, RampedArcRadiusMove, AxisPair(axis_pair), RadiusArc{radius, {end_a, end_b}, dir},
                     ArcEnd::AtPoint,
                     SArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, s_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_CIR_Radius_move(uint8_t card, uint8_t axis_pair, int32_t radius, int32_t point_a,
                                               int32_t point_b, const uint8_t *abs_flags, uint32_t start_speed,
                                               uint32_t max_speed, uint32_t accel_ms, uint32_t s_ms, uint8_t dir,
                                               uint8_t trigger)
{
    return CardEntry(card, RampedArcRadiusMove, AxisPair(axis_pair), RadiusArc{radius, {point_a, point_b}, dir},
                     ArcEnd::FullCircle,
                     SArcRun(abs_flags, MoveSpeeds{start_speed, max_speed}, accel_ms, s_ms, trigger));
}

// Helices

uint32_t TREVIK_CALL TrevikA_T_ArcXY_LineZ_center_move(uint8_t card, int32_t center_x, int32_t center_y,
                                                       int32_t end_x, int32_t end_y, int32_t end_z,
                                                       const uint8_t *abs_flags, uint32_t start_speed,
                                                       uint32_t max_speed, uint32_t accel_ms, uint8_t dir,
                                                       uint8_t trigger)
{
    return CardEntry(card, HelixCenterMove, CenterArc{{center_x, center_y}, {end_x, end_y}, dir}, HelixEnd{end_z},
                     TArcRun(abs_flags, {start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_ArcXY_LineZ_center_move(uint8_t card, int32_t center_x, int32_t center_y,
                                                       int32_t end_x, int32_t end_y, int32_t end_z,
                                                       const uint8_t *abs_flags, uint32_t start_speed,
                                                       uint32_t max_speed, uint32_t accel_ms, uint32_t s_ms,
                                                       uint8_t dir, uint8_t trigger)
{
    return CardEntry(card, HelixCenterMove, CenterArc{{center_x, center_y}, {end_x, end_y}, dir}, HelixEnd{end_z},
                     SArcRun(abs_flags, {start_speed, max_speed}, accel_ms, s_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_T_ArcXY_LineZ_3P_move(uint8_t card, int32_t mid_x, int32_t mid_y, int32_t end_x,
                                                   int32_t end_y, int32_t end_z, const uint8_t *abs_flags,
                                                   uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                   uint8_t trigger)
{
    return CardEntry(card, HelixThroughMove, ThroughArc{{mid_x, mid_y}, {end_x, end_y}}, ArcEnd::AtPoint,
                     HelixEnd{end_z}, TArcRun(abs_flags, {start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_ArcXY_LineZ_3P_move(uint8_t card, int32_t mid_x, int32_t mid_y, int32_t end_x,
                                                   int32_t end_y, int32_t end_z, const uint8_t *abs_flags,
                                                   uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                   uint32_t s_ms, uint8_t trigger)
{
    return CardEntry(card, HelixTimes({start_speed, max_speed}, accel_ms, s_ms), SHelixThroughMove,
                     ThroughArc{{mid_x, mid_y}, {end_x, end_y}}, ArcEnd::AtPoint, HelixEnd{end_z},
                     SArcRun(abs_flags, {start_speed, max_speed}, accel_ms, s_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_T_CirXY_LineZ_3P_move(uint8_t card, int32_t p1_x, int32_t p1_y, int32_t p2_x,
                                                   int32_t p2_y, int32_t end_z, const uint8_t *abs_flags,
                                                   uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                   uint8_t trigger)
{
    return CardEntry(card, HelixThroughMove, ThroughArc{{p1_x, p1_y}, {p2_x, p2_y}}, ArcEnd::FullCircle,
                     HelixEnd{end_z}, TArcRun(abs_flags, {start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_CirXY_LineZ_3P_move(uint8_t card, int32_t p1_x, int32_t p1_y, int32_t p2_x,
                                                   int32_t p2_y, int32_t end_z, const uint8_t *abs_flags,
                                                   uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                   uint32_t s_ms, uint8_t trigger)
{
    return CardEntry(card, HelixTimes({start_speed, max_speed}, accel_ms, s_ms), SHelixThroughMove,
                     ThroughArc{{p1_x, p1_y}, {p2_x, p2_y}}, ArcEnd::FullCircle, HelixEnd{end_z},
                     SArcRun(abs_flags, {start_speed, max_speed}, accel_ms, s_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_T_ArcXY_LineZ_Radius_move(uint8_t card, int32_t radius, int32_t end_x, int32_t end_y,
                                                       int32_t end_z, const uint8_t *abs_flags,
                                                       uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                       uint8_t dir, uint8_t trigger)
{
    return CardEntry(card, HelixRadiusMove, RadiusArc{radius, {end_x, end_y}, dir}, ArcEnd::AtPoint,
                     HelixEnd{end_z}, TArcRun(abs_flags, {start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_ArcXY_LineZ_Radius_move(uint8_t card, int32_t radius, int32_t end_x, int32_t end_y,
                                                       int32_t end_z, const uint8_t *abs_flags,
                                                       uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                       uint32_t s_ms, uint8_t dir, uint8_t trigger)
{
    return CardEntry(card, HelixTimes({start_speed, max_speed}, accel_ms, s_ms), SHelixRadiusMove,
                     RadiusArc{radius, {end_x, end_y}, dir}, ArcEnd::AtPoint, HelixEnd{end_z},
                     SArcRun(abs_flags, {start_speed, max_speed}, accel_ms, s_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_T_CirXY_LineZ_Radius_move(uint8_t card, int32_t radius, int32_t point_x,
                                                       int32_t point_y, int32_t end_z, const uint8_t *abs_flags,
                                                       uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                       uint8_t dir, uint8_t trigger)
{
    return CardEntry(card, HelixRadiusMove, RadiusArc{radius, {point_x, point_y}, dir}, ArcEnd::FullCircle,
                     HelixEnd{end_z}, TArcRun(abs_flags, {start_speed, max_speed}, accel_ms, trigger));
}

uint32_t TREVIK_CALL TrevikA_S_CirXY_LineZ_Radius_move(uint8_t card, int32_t radius, int32_t point_x,
                                                       int32_t point_y, int32_t end_z, const uint8_t *abs_flags,
                                                       uint32_t start_speed, uint32_t max_speed, uint32_t accel_ms,
                                                       uint32_t s_ms, uint8_t dir, uint8_t trigger)
{
    return CardEntry(card, HelixTimes({start_speed, max_speed}, accel_ms, s_ms), SHelixRadiusMove,
                     RadiusArc{radius, {point_x, point_y}, dir}, ArcEnd::FullCircle, HelixEnd{end_z},
                     SArcRun(abs_flags, {start_speed, max_speed}, accel_ms, s_ms, trigger));
}

// Continuous motion

uint32_t TREVIK_CALL TrevikA_continuous_flag_set(uint8_t card, uint8_t axis, uint8_t flag)
{
    return AxisEntry(card, axis, ContinuousFlagSet, flag);
}

uint32_t TREVIK_CALL TrevikA_continuous_buffer_read(uint8_t card, uint8_t axis, uint8_t *full)
{
    return AxisEntry(card, axis, ContinuousBufferRead, full);
}

uint32_t TREVIK_CALL TrevikA_continuous_buffer_no_read(uint8_t card, uint8_t axis, uint8_t *count)
{
    return AxisEntry(card, axis, ContinuousBufferCountRead, count);
}

// Status and positions

uint32_t TREVIK_CALL TrevikA_motion_status_read(uint8_t card, uint8_t axis, uint8_t kind, uint8_t *flag)
{
    return AxisEntry(card, axis, MotionStatusQuery, kind, flag);
}

uint32_t TREVIK_CALL TrevikA_current_position_read(uint8_t card, uint8_t axis, uint32_t *position)
{
    return AxisEntry(card, axis, CurrentPositionRead, position);
}

uint32_t TREVIK_CALL TrevikA_current_position_set(uint8_t card, uint8_t axis, uint32_t position)
{
    return AxisEntry(card, axis, CurrentPositionSet, position);
}

// Handwheel

uint32_t TREVIK_CALL TrevikA_pulser_mode_set(uint8_t card, uint8_t axis, uint8_t format, uint8_t option)
{
    return AxisEntry(card, axis, PulserModeSet, format, option);
}

uint32_t TREVIK_CALL TrevikA_pulser_mode_read(uint8_t card, uint8_t axis, uint8_t *format, uint8_t *option)
{
    return AxisEntry(card, axis, PulserModeRead, format, option);
}

uint32_t TREVIK_CALL TrevikA_pulser_counter_read(uint8_t card, uint8_t axis, uint32_t *counter)
{
    return AxisEntry(card, axis, PulserCounterRead, counter);
}

uint32_t TREVIK_CALL TrevikA_pulser_counter_set(uint8_t card, uint8_t axis, uint32_t counter)
{
    return AxisEntry(card, axis, PulserCounterSet, counter);
}

uint32_t TREVIK_CALL TrevikA_pulser_map_set(uint8_t card, uint8_t axis, uint8_t source, uint8_t reverse)
{
    return CardEntry(card, PulserMapSet, axis, source, reverse);
}

uint32_t TREVIK_CALL TrevikA_pulser_motion_enable(uint8_t card, uint8_t axis, uint8_t enable, uint16_t ratio)
{
    return CardEntry(card, PulserMotionEnable, axis, enable, ratio);
}

// Card initialisation

uint32_t TREVIK_CALL TrevikA_init_card(uint8_t card)
{
    return CardEntry(card, CardInit);
}

// Pulse formats

uint32_t TREVIK_CALL TrevikA_pulse_outmode_set(uint8_t card, uint8_t axis, uint8_t mode)
{
    return AxisEntry(card, axis, PulseOutmodeSet, mode);
}

uint32_t TREVIK_CALL TrevikA_pulse_outmode_read(uint8_t card, uint8_t axis, uint8_t *mode)
{
    return AxisEntry(card, axis, PulseOutmodeRead, mode);
}

uint32_t TREVIK_CALL TrevikA_pulse_inmode_set(uint8_t card, uint8_t axis, uint8_t format, uint8_t option)
{
    return AxisEntry(card, axis, PulseInmodeSet, format, option);
}

uint32_t TREVIK_CALL TrevikA_pulse_inmode_read(uint8_t card, uint8_t axis, uint8_t *format, uint8_t *option)
{
    return AxisEntry(card, axis, PulseInmodeRead, format, option);
}

// Signal pins

uint32_t TREVIK_CALL TrevikA_SD_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t optionA,
                                        uint8_t optionB, uint8_t optionC)
{
    return AxisEntry(card, axis, SDPinSet, enable, optionA, optionB, optionC);
}

uint32_t TREVIK_CALL TrevikA_SD_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *optionA,
                                         uint8_t *optionB, uint8_t *optionC, uint8_t *input)
{
    return AxisEntry(card, axis, SDPinRead, enable, optionA, optionB, optionC, input);
}

uint32_t TREVIK_CALL TrevikA_PCS_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic)
{
    return AxisEntry(card, axis, PCSPinSet, enable, logic);
}

uint32_t TREVIK_CALL TrevikA_PCS_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                          uint8_t *input)
{
    return AxisEntry(card, axis, PCSPinRead, enable, logic, input);
}

uint32_t TREVIK_CALL TrevikA_INP_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic)
{
    return AxisEntry(card, axis, INPPinSet, enable, logic);
}

uint32_t TREVIK_CALL TrevikA_INP_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                          uint8_t *input)
{
    return AxisEntry(card, axis, INPPinRead, enable, logic, input);
}

uint32_t TREVIK_CALL TrevikA_ERC_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic, uint8_t width,
                                         uint8_t offTime)
{
    return AxisEntry(card, axis, ERCPinSet, enable, logic, width, offTime);
}

uint32_t TREVIK_CALL TrevikA_ERC_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                          uint8_t *width, uint8_t *offTime, uint8_t *output)
{
    return AxisEntry(card, axis, ERCPinRead, enable, logic, width, offTime, output);
}

uint32_t TREVIK_CALL TrevikA_ALM_PIN_set(uint8_t card, uint8_t axis, uint8_t optionA, uint8_t optionB)
{
    return AxisEntry(card, axis, ALMPinSet, optionA, optionB);
}

uint32_t TREVIK_CALL TrevikA_ALM_PIN_read(uint8_t card, uint8_t axis, uint8_t *optionA, uint8_t *optionB,
                                          uint8_t *input)
{
    return AxisEntry(card, axis, ALMPinRead, optionA, optionB, input);
}

uint32_t TREVIK_CALL TrevikA_LTC_PIN_set(uint8_t card, uint8_t axis, uint8_t enable, uint8_t logic)
{
    return AxisEntry(card, axis, LTCPinSet, enable, logic);
}

uint32_t TREVIK_CALL TrevikA_LTC_PIN_read(uint8_t card, uint8_t axis, uint8_t *enable, uint8_t *logic,
                                          uint8_t *input)
{
    return AxisEntry(card, axis, LTCPinRead, enable, logic, input);
}

uint32_t TREVIK_CALL TrevikA_CMP_PIN_set(uint8_t card, uint8_t axis, uint8_t code)
{
    return AxisEntry(card, axis, CMPPinSet, code);
}

uint32_t TREVIK_CALL TrevikA_CMP_PIN_read(uint8_t card, uint8_t axis, uint8_t *code, uint8_t *output)
{
    return AxisEntry(card, axis, CMPPinRead, code, output);
}

uint32_t TREVIK_CALL TrevikA_EL_mode_set(uint8_t card, uint8_t axis, uint8_t mode)
{
    return AxisEntry(card, axis, ELModeSet, mode);
}

uint32_t TREVIK_CALL TrevikA_EL_mode_read(uint8_t card, uint8_t axis, uint8_t *mode)
{
    return AxisEntry(card, axis, ELModeRead, mode);
}

uint32_t TREVIK_CALL TrevikA_HOME_PIN_logic_set(uint8_t card, uint8_t axis, uint8_t logic)
{
    return AxisEntry(card, axis, HomePinLogicSet, logic);
}

uint32_t TREVIK_CALL TrevikA_HOME_PIN_logic_read(uint8_t card, uint8_t axis, uint8_t *logic)
{
    return AxisEntry(card, axis, HomePinLogicRead, logic);
}

uint32_t TREVIK_CALL TrevikA_EZ_PIN_logic_set(uint8_t card, uint8_t axis, uint8_t logic)
{
    return AxisEntry(card, axis, EZPinLogicSet, logic);
}

uint32_t TREVIK_CALL TrevikA_EZ_PIN_logic_read(uint8_t card, uint8_t axis, uint8_t *logic)
{
    return AxisEntry(card, axis, EZPinLogicRead, logic);
}

// General-purpose points

uint32_t TREVIK_CALL TrevikA_point_read(uint8_t card, uint8_t axis, uint8_t point, uint8_t *state)
{
    return AxisEntry(card, axis, PointRead, point, state);
}

uint32_t TREVIK_CALL TrevikA_point_set(uint8_t card, uint8_t axis, uint8_t point, uint8_t state)
{
    return AxisEntry(card, axis, PointSet, point, state);
}

uint32_t TREVIK_CALL TrevikA_TTL_IO_mode_set(uint8_t card, uint8_t mode)
{
    return CardEntry(card, TTLIOModeSet, mode);
}

uint32_t TREVIK_CALL TrevikA_TTL_IO_mode_read(uint8_t card, uint8_t *mode)
{
    return CardEntry(card, TTLIOModeRead, mode);
}

// Software limits

uint32_t TREVIK_CALL TrevikA_softlimit_config_set(uint8_t card, uint8_t axis, uint8_t counter, uint8_t action)
{
    return AxisEntry(card, axis, SoftlimitConfigSet, counter, action);
}

uint32_t TREVIK_CALL TrevikA_softlimit_config_read(uint8_t card, uint8_t axis, uint8_t *counter, uint8_t *action)
{
    return AxisEntry(card, axis, SoftlimitConfigRead, counter, action);
}

uint32_t TREVIK_CALL TrevikA_softlimit_data_set(uint8_t card, uint8_t axis, uint32_t first, uint32_t second)
{
    return AxisEntry(card, axis, SoftlimitDataSet, first, second);
}

uint32_t TREVIK_CALL TrevikA_softlimit_data_read(uint8_t card, uint8_t axis, uint32_t *first, uint32_t *second)
{
    return AxisEntry(card, axis, SoftlimitDataRead, first, second);
}

uint32_t TREVIK_CALL TrevikA_softlimit_enable_set(uint8_t card, uint8_t axis, uint8_t enable)
{
    return AxisEntry(card, axis, SoftlimitEnableSet, enable);
}

uint32_t TREVIK_CALL TrevikA_softlimit_enable_read(uint8_t card, uint8_t axis, uint8_t *enable)
{
    return AxisEntry(card, axis, SoftlimitEnableRead, enable);
}

uint32_t TREVIK_CALL TrevikA_softlimit_flag_read(uint8_t card, uint8_t axis, uint8_t *flagA, uint8_t *flagB)
{
    return AxisEntry(card, axis, SoftlimitFlagRead, flagA, flagB);
}

// Backlash, vibration, debounce

uint32_t TREVIK_CALL TrevikA_backlash_comp_set(uint8_t card, uint8_t axis, uint16_t amount, uint8_t mode,
                                               uint32_t speed)
{
    return AxisEntry(card, axis, BacklashCompSet, amount, mode, speed);
}

uint32_t TREVIK_CALL TrevikA_backlash_comp_read(uint8_t card, uint8_t axis, uint16_t *amount, uint8_t *mode,
                                                uint32_t *speed)
{
    return AxisEntry(card, axis, BacklashCompRead, amount, mode, speed);
}

uint32_t TREVIK_CALL TrevikA_suppress_vibration_set(uint8_t card, uint8_t axis, uint16_t first, uint16_t second)
{
    return AxisEntry(card, axis, SuppressVibrationSet, first, second);
}

uint32_t TREVIK_CALL TrevikA_suppress_vibration_read(uint8_t card, uint8_t axis, uint16_t *first, uint16_t *second)
{
    return AxisEntry(card, axis, SuppressVibrationRead, first, second);
}

uint32_t TREVIK_CALL TrevikA_debounce_set(uint8_t card, uint8_t axis, uint8_t value)
{
    return ACAxisEntry(card, axis, DebounceSet, value);
}

uint32_t TREVIK_CALL TrevikA_debounce_read(uint8_t card, uint8_t axis, uint8_t *value)
{
    return ACAxisEntry(card, axis, DebounceRead, value);
}

// Configuration file

uint32_t TREVIK_CALL TrevikA_config_file_set(uint8_t card, const char *fileName)
{
    return NumberEntry(card, ConfigFileSave, fileName);
}

uint32_t TREVIK_CALL TrevikA_config_file_read(uint8_t card, const char *fileName)
{
    return NumberEntry(card, ConfigFileLoad, fileName);
}

// Events and interrupts

uint32_t TREVIK_CALL TrevikA_event_factor_set(uint8_t card, uint8_t axis, int32_t factor)
{
    return AxisEntry(card, axis, EventFactorSet, factor);
}

uint32_t TREVIK_CALL TrevikA_event_flag_read(uint8_t card, uint8_t axis, uint32_t *flags)
{
    return AxisEntry(card, axis, EventFlagRead, flags);
}

uint32_t TREVIK_CALL TrevikA_error_flag_read(uint8_t card, uint8_t axis, uint32_t *flags)
{
    return AxisEntry(card, axis, ErrorFlagRead, flags);
}

uint32_t TREVIK_CALL TrevikA_IRQ_source_set(uint8_t card, uint8_t axis, int32_t errorSource, int32_t eventSource)
{
    return CardEntry(card, IRQSourceSet, axis, errorSource, eventSource);
}

uint32_t TREVIK_CALL TrevikA_IRQ_mask_set(uint8_t card, uint8_t source, uint8_t value)
{
    return CardEntry(card, IRQMaskSet, source, value);
}

uint32_t TREVIK_CALL TrevikA_IRQ_mask_read(uint8_t card, uint8_t *mask)
{
    return NumberEntry(card, IRQMaskRead, mask);
}

uint32_t TREVIK_CALL TrevikA_IRQ_enable(uint8_t card)
{
    return CardEntry(card, IRQEnable);
}

uint32_t TREVIK_CALL TrevikA_IRQ_disable(uint8_t card)
{
    return CardEntry(card, IRQDisable);
}

uint32_t TREVIK_CALL TrevikA_IRQ_process_link(uint8_t card, TrevikA_callback callback)
{
    return CardEntry(card, IRQProcessLink, callback);
}

uint32_t TREVIK_CALL TrevikA_IRQ_status_read(uint8_t card, uint8_t source, uint8_t *status, uint32_t *eventByte,
                                             uint32_t *errorByte)
{
    return CardEntry(card, IRQStatusRead, source, status, eventByte, errorByte);
}

// Feedback counter, latch, comparators

uint32_t TREVIK_CALL TrevikA_FB_counter_read(uint8_t card, uint8_t axis, uint32_t *counter)
{
    return AxisEntry(card, axis, FBCounterRead, counter);
}

uint32_t TREVIK_CALL TrevikA_FB_counter_set(uint8_t card, uint8_t axis, uint32_t counter)
{
    return AxisEntry(card, axis, FBCounterSet, counter);
}

uint32_t TREVIK_CALL TrevikA_FB_counter_latch_value_read(uint8_t card, uint8_t axis, uint32_t *counter)
{
    return AxisEntry(card, axis, FBCounterLatchValueRead, counter);
}

uint32_t TREVIK_CALL TrevikA_CMP_out_set(uint8_t card, uint8_t axis, uint8_t counter, uint8_t condition,
                                         uint8_t action)
{
    return AxisEntry(card, axis, CMPOutSet, counter, condition, action);
}

uint32_t TREVIK_CALL TrevikA_CMP_out_read(uint8_t card, uint8_t axis, uint8_t *counter, uint8_t *condition,
                                          uint8_t *action)
{
    return AxisEntry(card, axis, CMPOutRead, counter, condition, action);
}

uint32_t TREVIK_CALL TrevikA_CMP_data_set(uint8_t card, uint8_t axis, uint32_t value)
{
    return AxisEntry(card, axis, CMPDataSet, value);
}

uint32_t TREVIK_CALL TrevikA_CMP_data_read(uint8_t card, uint8_t axis, uint32_t *value)
{
    return AxisEntry(card, axis, CMPDataRead, value);
}

uint32_t TREVIK_CALL TrevikA_CMP_flag_read(uint8_t card, uint8_t axis, uint8_t *flag)
{
    return AxisEntry(card, axis, CMPFlagRead, flag);
}

uint32_t TREVIK_CALL TrevikA_compare_start_set(uint8_t card, uint8_t axis, uint8_t counter, uint8_t condition)
{
    return AxisEntry(card, axis, CompareStartSet, counter, condition);
}

uint32_t TREVIK_CALL TrevikA_compare_start_read(uint8_t card, uint8_t axis, uint8_t *counter, uint8_t *condition)
{
    return AxisEntry(card, axis, CompareStartRead, counter, condition);
}

uint32_t TREVIK_CALL TrevikA_compare_start_data_set(uint8_t card, uint32_t value)
{
    return CardEntry(card, CompareStartDataSet, value);
}

uint32_t TREVIK_CALL TrevikA_compare_start_data_read(uint8_t card, uint32_t *value)
{
    return CardEntry(card, CompareStartDataRead, value);
}

// Simultaneous start and stop, timers

uint32_t TREVIK_CALL TrevikA_CSTA_trigger(uint8_t card)
{
    return CardEntry(card, CSTATrigger);
}

uint32_t TREVIK_CALL TrevikA_CSTP_trigger(uint8_t card)
{
    return CardEntry(card, CSTPTrigger);
}

uint32_t TREVIK_CALL TrevikA_timer_set(uint8_t card, uint8_t timer, uint32_t value)
{
    return NumberEntry(card, TimerSet, timer, value);
}

uint32_t TREVIK_CALL TrevikA_timer_read(uint8_t card, uint8_t timer, uint32_t *value)
{
    return NumberEntry(card, TimerRead, timer, value);
}

uint32_t TREVIK_CALL TrevikA_timer_start(uint8_t card)
{
    return NumberEntry(card, TimerStart);
}

uint32_t TREVIK_CALL TrevikA_timer_stop(uint8_t card)
{
    return NumberEntry(card, TimerStop);
}

uint32_t TREVIK_CALL TrevikA_TC_set(uint8_t card, uint8_t item, uint32_t value)
{
    return NumberEntry(card, TCSet, item, value);
}

uint32_t TREVIK_CALL TrevikA_TC_read(uint8_t card, uint8_t, uint32_t *)
{
    return !SimulationOn() && manager.unsupported(card) ? TREVIK_ERR_MODEL : TREVIK_OK;
}

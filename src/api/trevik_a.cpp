// The current interface: one line an entry. Each names the operation that does the work, declared in its
// subsystem's header.
#include <trevik/TrevikA.h>

#include "api/arc_entry.h"
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

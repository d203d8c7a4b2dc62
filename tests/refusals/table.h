// Every exported function with representative arguments. Card 0 is an A card, card 1 an AC card.
#pragma once

#include "refusals/calls.h"

#include "api/card_manager.h"
#include "status/interrupts.h"

#include <trevik/Trevik.h>
#include <trevik/TrevikAC.h>

namespace trevik::test
{

// What would differ from call to call, or stay behind, is looked at and put away.

template <auto Enable>
std::uint32_t EnabledOnce(const double *arguments, Outs &outs)
{
    Outs event;
    const std::uint32_t result = Calling<Enable>::call(arguments, event);
    Card card;
    if (manager.numbered(static_cast<std::uint8_t>(arguments[0]), card) != Result::Ok)
        return result;
    os::CloseHandle(card.state().IrqEvent);
    *outs.next<std::uint8_t>() = card.state().IrqEvent != nullptr;
    return result;
}

template <auto Link>
std::uint32_t LinkedOnce(const double *arguments, Outs &outs)
{
    const std::uint32_t result = Calling<Link>::call(arguments, outs);
    Card card;
    if (manager.numbered(static_cast<std::uint8_t>(arguments[0]), card) != Result::Ok)
        return result;
    *outs.next<std::uint8_t>() = card.state().IrqIdle;
    JoinCallbacks(card);
    return result;
}

inline constexpr std::uint32_t no_result = 1; // stands for that of the handwheel's tick

inline std::uint32_t Tick(const double *, Outs &)
{
    manager.PulserFollowTick();
    return no_result;
}

// Plain data: a table with strings of its own takes minutes to compile.
inline constexpr Row calls[] = {
    {{F(TrevikA_dll_Simu_mode), F(Trevik_dll_Simu_mode)}, "", {0}},
    {{F(TrevikA_info)}, "", {0}},
    {{F(Trevik_info)}, "", {0}},

    // Single axis
    {{F(TrevikA_velocity_range_fix), F(Trevik_fix_speed_range)}, "", {0, 1, 5000}},
    {{F(TrevikA_velocity_range_unfix), F(Trevik_unfix_speed_range)}, "", {0, 1}},
    {{F(TrevikA_T_position_move)}, "a.c", {0, 1, 5000, 0, 500, 20000, 100, 100, 0}},
    {{F(TrevikA_T_position_move)}, "a.c", {0, 1, 5000, 1, 500, 20000, 100, 300, 2}, "l"},
    {{F(TrevikA_T_position_move)}, "a.c", {0, 1, 5000, 0, 500, 20000, 0, 0, 1}, "w"},
    {{F(TrevikA_T_position_move)}, "", {0, 1, -5000, 1, 500, 20000, 100, 100, 2}, "qr"},
    {{F(Trevik_T_curve_position_move)}, "a.c", {0, 1, 5000, 1, 500, 20000, 0.1, 0.3}},
    {{F(TrevikA_S_position_move)}, "a.c", {0, 1, 5000, 1, 500, 20000, 100, 300, 20, 30, 2}},
    {{F(TrevikA_S_position_move)}, "", {0, 1, 5000, 0, 500, 20000, 100, 300, 20, 30, 0}, "q"},
    {{F(Trevik_S_curve_position_move)}, "a.c", {0, 1, 5000, 0, 500, 20000, 0.1, 0.3, 3000, 2000}, "w"},
    {{F(Trevik_S1_curve_position_move)}, "a.c", {0, 1, 5000, 1, 500, 20000, 100, 300, 20, 30}},
    {{F(TrevikA_position_change), F(Trevik_position_change)}, "", {0, 1, 5000, 0}, "b"},
    {{F(TrevikA_position_change), F(Trevik_position_change)}, "", {0, 1, 5000, 1}, "b"},
    {{F(TrevikA_T_onLINE_change)}, "", {0, 1, 5000, 1, 500, 20000, 100, 100}, "b"},
    {{F(TrevikA_T_onLINE_change)}, "", {0, 1, 5000, 0, 500, 20000, 100, 0}, "bl"},
    {{F(Trevik_OnLine_T_curve_change)}, "", {0, 1, 5000, 1, 500, 20000, 0.1, 0.1}, "b"},
    {{F(TrevikA_S_onLINE_change)}, "", {0, 1, 5000, 1, 500, 20000, 100, 300, 20, 30}, "b"},
    {{F(TrevikA_T_velocity_move)}, "", {0, 1, 500, -20000, 100}},
    {{F(TrevikA_T_velocity_move)}, "", {0, 1, 20000, 500, 100}},
    {{F(Trevik_T_velocity_move)}, "", {0, 1, 500, -20000, 0.1}},
    {{F(TrevikA_S_velocity_move), F(Trevik_S1_velocity_move)}, "", {0, 1, 500, -20000, 100, 20}},
    {{F(Trevik_S_velocity_move)}, "", {0, 1, 500, -20000, 0.1, 3000}},
    {{F(TrevikA_velocity_change)}, "v", {0, 1, -3000, 100}},
    {{F(TrevikA_velocity_change)}, "v", {0, 1, 30000, 100}, "sr"},
    {{F(Trevik_velocity_change)}, "v", {0, 1, -3000, 0.1}},
    {{F(Trevik_S1_velocity_change)}, "", {0, 1, -3000, 100, 20}},
    {{F(Trevik_S1_velocity_change)}, "", {0, 1, 30000, 100, 20}, "s"},
    {{F(TrevikA_stop)}, "", {0, 5, 100}, "s"},
    {{F(TrevikA_stop)}, "..c.c", {0, 5, 0}},
    {{F(TrevikA_stop)}, "..x", {0, 9, 0}, "n"},
    {{F(Trevik_dec_stop)}, "", {0, 1, 0.1}},
    {{F(Trevik_imd_stop)}, "..c", {0, 1}},
    {{F(TrevikA_stop_emg), F(Trevik_emg_stop)}, "..c.c.c.c", {0}},
    {{F(TrevikA_velocity_read), F(Trevik_read_speed)}, "", {0, 1}},
    {{F(TrevikA_OneAxis_restart), F(Trevik_OneAxis_restart)}, "", {0, 1}},
    {{F(TrevikA_2Axis_restart), F(Trevik_2Axis_restart)}, "", {0, 4}},
    {{F(TrevikA_3Axis_restart), F(Trevik_3Axis_restart)}, "", {0, 1}},
    {{F(TrevikA_4Axis_restart), F(Trevik_4Axis_restart)}, "", {0}},
    {{F(TrevikA_home_mode_set), F(Trevik_config_home_mode)}, "", {0, 1, 3, 5}},
    {{F(TrevikA_home_start)}, "a", {0, 1, 500, 20000, 100, 1}},
    {{F(TrevikA_home_start)}, "", {0, 1, 500, 20000, 100, 0}, "qr"},
    {{F(Trevik_start_homing)}, "a", {0, 1, 500, 20000, 0.1, 1}},
    {{F(TrevikA_home_search)}, "a", {0, 1, 500, 20000, 100, 1, 700}},
    {{F(TrevikA_home_search)}, "", {0, 1, 500, 20000, 100, 0, 700}, "q"},
    {{F(Trevik_start_origin_search_homing)}, "a", {0, 1, 500, 20000, 0.1, 0, 700}},

    // Lines
    {{F(TrevikA_T_LINE2_move)}, "aa.c.c", {0, 4, 3000, 4000, 0, 500, 20000, 100, 100, 0}, "w"},
    {{F(TrevikA_T_LINE2_move)}, "aa.c.c", {0, 4, 3000, 4000, 2, 500, 20000, 100, 300, 2}},
    {{F(TrevikA_T_LINE2_move)}, "", {0, 4, 3000, 4000, 10, 500, 20000, 100, 100, 1}, "qr"},
    {{F(TrevikA_T_LINE3_move)}, "aaa.c.c.c", {0, 1, 3000, 4000, 500, 15, 500, 20000, 100, 100, 2}},
    {{F(TrevikA_T_LINE4_move)}, "aaaa.c.c.c.c", {0, 30, 40, 50, 60, 5, 500, 20000, 0, 100, 1}},
    {{F(TrevikA_S_LINE2_move)}, "aa.c.c", {0, 4, 3000, 4000, 10, 500, 20000, 100, 300, 20, 30, 2}},
    {{F(TrevikA_S_LINE3_move)}, "aaa.c.c.c", {0, 1, 300, 400, 50, 0, 500, 20000, 100, 300, 20, 30, 0}, "w"},
    {{F(TrevikA_S_LINE3_move)}, "", {0, 1, 300, 400, 50, 15, 500, 20000, 100, 300, 20, 30, 2}, "q"},
    {{F(TrevikA_S_LINE4_move)}, "aaaa.c.c.c.c", {0, 30, 40, 50, 60, 5, 500, 20000, 100, 300, 20, 30, 1}},
    {{F(Trevik_T_curve_move_LINE2)}, "aa.c.c", {0, 0, 3000, 4000, 1, 500, 20000, 0.1, 0.3}},
    {{F(Trevik_T_curve_move_LINE3)}, "aaa.c.c.c", {0, 2, 300, 400, 50, 0, 500, 20000, 0.1, 0.1}, "w"},
    {{F(Trevik_T_curve_move_LINE4)}, "aaaa.c.c.c.c", {0, 30, 40, 50, 60, 1, 500, 20000, 0.1, 0.1}},
    {{F(Trevik_S_curve_move_LINE2)}, "aa.c.c", {0, 3, 3000, 40, 0, 500, 20000, 0.1, 0.3, 3000, 2000}},
    {{F(Trevik_S_curve_move_LINE3)}, "aaa.c.c.c", {0, 0, 30, 40, 50, 1, 500, 20000, 0.1, 0.3, 300, 200}},
    {{F(Trevik_S_curve_move_LINE4)}, "aaaa.c.c.c.c", {0, 30, 40, 50, 60, 1, 500, 20000, 0.1, 0.3, 300, 200}},
    {{F(Trevik_S1_curve_move_LINE2)}, "aa.c.c", {0, 5, 3000, 40, 1, 500, 20000, 100, 300, 20, 30}},
    {{F(Trevik_S1_curve_move_LINE3)}, "aaa.c.c.c", {0, 3, 30, 40, 50, 1, 500, 20000, 100, 300, 20, 30}},
    {{F(Trevik_S1_curve_move_LINE4)}, "aaaa.c.c.c.c", {0, 30, 40, 50, 60, 0, 500, 20000, 100, 300, 20, 30}},
    {{F(Trevik_OnLine_T_curve_change_LINE2)}, "", {0, 4, 3000, 4000, 1, 500, 20000, 0.1, 0.3}, "b"},
    {{F(Trevik_OnLine_T_curve_change_LINE3)}, "", {0, 1, 3000, 4000, 500, 0, 500, 20000, 0.1, 0.1}, "b"},
    {{F(Trevik_OnLine_T_curve_change_LINE4)}, "", {0, 30, 40, 50, 60, 1, 500, 20000, 0.1, 0}, "b"},

    // Arcs. What would be a line: 308, or 311 for the circle over the way, whatever becomes of it.
    {{F(TrevikA_ARC_center_move), F(Trevik_ARC2_center_move)}, "aa.c.c", {0, 4, 900, 0, 1800, 0, 0, 5000, 0}},
    {{F(TrevikA_ARC_center_move), F(Trevik_ARC2_center_move)}, "aa.c.c", {0, 4, 900, 0, 1800, 0, 1, 5000, 1}},
    {{F(TrevikA_ARC_center_move), F(Trevik_ARC2_center_move)}, "", {0, 4, 900, 0, 1800, 0, 1, 5000, 1}, "qr"},
    {{F(Trevik_ARC_center_move_XY)}, "aa.c.c", {0, 900, 0, 1800, 0, 1, 5000, 0}},
    {{F(Trevik_ARC_center_move_ZA)}, "aa.c.c", {0, 900, 0, 1800, 0, 0, 5000, 1}, "w"},
    {{F(TrevikA_ARC_3P_move), F(Trevik_ARC2_3P_move)}, "aa.c.c", {0, 0, 900, 900, 1800, 0, 0, 5000}},
    {{F(TrevikA_ARC_3P_move), F(Trevik_ARC2_3P_move)}, "aa.c.c", {0, 0, 9, 9, 18, 18, 0, 5000}, "w", 308},
    {{F(TrevikA_CIR_3P_move), F(Trevik_CIR2_3P_move)}, "aa.c.c", {0, 0, 900, 900, 1800, 0, 1, 5000}},
    {{F(TrevikA_CIR_3P_move), F(Trevik_CIR2_3P_move)}, "aa.c.c", {0, 0, 9, 9, 18, 18, 0, 5000}, "", 311},
    {{F(TrevikA_ARC_radius_move), F(Trevik_ARC2_Radius_move)}, "aa.c.c", {0, 0, 1500, 1800, 90, 1, 5000, 1}},
    {{F(TrevikA_CIR_radius_move), F(Trevik_CIR2_radius_move)}, "aa.c.c", {0, 0, 1500, 1800, 90, 0, 5000, 0}},
    {{F(Trevik_ARC2_Radius_test)}, "", {0, 1800, 1500, 90, 1}},
    {{F(TrevikA_T_ARC_center_move)}, "aa.c.c", {0, 4, 900, 0, 1800, 0, 0, 500, 20000, 100, 0, 2}},
    {{F(TrevikA_T_ARC_center_move)}, "aa.c.c", {0, 4, 900, 0, 1800, 0, 8, 500, 20000, 100, 1, 0}},
    {{F(TrevikA_T_ARC_center_move)}, "", {0, 4, 900, 0, 1800, 0, 10, 500, 20000, 100, 1, 2}, "q"},
    {{F(TrevikA_S_ARC_center_move)}, "aa.c.c", {0, 4, 900, 0, 1800, 0, 10, 500, 20000, 100, 20, 1, 2}},
    {{F(TrevikA_T_ARC_3P_move)}, ".c.caa.c.c", {0, 0, 900, 900, 1800, 0, 3, 500, 20000, 100, 2}},
    {{F(TrevikA_T_ARC_3P_move)}, ".c.caa.c.c", {0, 0, 9, 9, 18, 18, 0, 500, 20000, 100, 1}, "", 308},
    {{F(TrevikA_T_CIR_3P_move)}, ".c.caa.c.c", {0, 0, 900, 900, 1800, 0, 0, 500, 20000, 100, 0}},
    {{F(TrevikA_T_CIR_3P_move)}, ".c.c", {0, 0, 9, 9, 18, 18, 0, 500, 20000, 100, 1}, "", 308},
    {{F(TrevikA_S_ARC_3P_move)}, ".c.caa.c.c", {0, 0, 900, 900, 1800, 0, 1, 500, 20000, 100, 20, 2}},
    {{F(TrevikA_S_ARC_3P_move)}, ".c.caa.c.c", {0, 0, 9, 9, 18, 18, 0, 500, 20000, 100, 20, 1}, "", 308},
    {{F(TrevikA_S_CIR_3P_move)}, ".c.caa.c.c", {0, 0, 900, 900, 1800, 0, 0, 500, 20000, 100, 20, 0}},
    {{F(TrevikA_S_CIR_3P_move)}, ".c.caa.c.c", {0, 0, 9, 9, 18, 18, 0, 500, 20000, 100, 20, 2}, "", 308},
    {{F(TrevikA_T_ARC_Radius_move)}, ".C.Caa.c.c", {0, 0, 1500, 1800, 90, 3, 500, 20000, 100, 1, 2}},
    {{F(TrevikA_T_CIR_Radius_move)}, ".C.Caa.c.c", {0, 0, 1500, 1800, 90, 0, 500, 20000, 100, 0, 0}},
    {{F(TrevikA_S_ARC_Radius_move)}, ".C.Caa.c.c", {0, 0, 1500, 1800, 90, 1, 500, 20000, 100, 20, 1, 1}},
    {{F(TrevikA_S_CIR_Radius_move)}, ".C.Caa.c.c", {0, 0, 1500, 1800, 90, 3, 500, 20000, 100, 20, 0, 2}},

    // Helices
    {{F(TrevikA_T_ArcXY_LineZ_center_move)}, "aaa.c.c.c", {0, 900, 0, 1800, 0, 70, 7, 500, 20000, 100, 0, 1}},
    {{F(TrevikA_T_ArcXY_LineZ_center_move)}, "", {0, 900, 0, 1800, 0, 70, 7, 500, 20000, 100, 0, 1}, "qr"},
    {{F(TrevikA_S_ArcXY_LineZ_center_move)}, "aaa.c.c.c", {0, 900, 0, 180, 0, 70, 0, 500, 20000, 100, 20, 1, 0}},
    {{F(TrevikA_T_ArcXY_LineZ_3P_move)}, ".c.caaa.c.c.c", {0, 900, 900, 180, 0, 70, 7, 500, 20000, 100, 1}},
    {{F(TrevikA_T_ArcXY_LineZ_3P_move)}, ".c.caaa.c.c.c", {0, 9, 9, 18, 18, 70, 0, 500, 2000, 100, 1}, "", 308},
    {{F(TrevikA_S_ArcXY_LineZ_3P_move)}, ".c.caaa.c.c.c", {0, 900, 900, 180, 0, 70, 7, 500, 20000, 100, 20, 0}},
    {{F(TrevikA_S_ArcXY_LineZ_3P_move)}, ".c.c", {0, 9, 9, 18, 18, 70, 0, 500, 20000, 100, 20, 0}, "", 308},
    {{F(TrevikA_T_CirXY_LineZ_3P_move)}, ".c.caaa.c.c.c", {0, 900, 900, 180, 0, 70, 4, 500, 20000, 100, 0}},
    {{F(TrevikA_T_CirXY_LineZ_3P_move)}, ".c.c", {0, 9, 9, 18, 18, 70, 0, 500, 20000, 100, 0}, "", 308},
    {{F(TrevikA_S_CirXY_LineZ_3P_move)}, ".c.caaa.c.c.c", {0, 900, 900, 180, 0, 70, 0, 500, 20000, 100, 20, 1}},
    {{F(TrevikA_S_CirXY_LineZ_3P_move)}, ".c.c", {0, 9, 9, 18, 18, 70, 0, 500, 20000, 100, 20, 0}, "", 308},
    {{F(TrevikA_T_ArcXY_LineZ_Radius_move)}, ".C.Caaa.c.c.c", {0, 1500, 1800, 90, 70, 7, 500, 20000, 100, 0, 1}},
    {{F(TrevikA_S_ArcXY_LineZ_Radius_move)}, ".C.Caaa.c.c.c", {0, 1500, 180, 90, 7, 0, 500, 2000, 100, 20, 1, 0}},
    {{F(TrevikA_T_CirXY_LineZ_Radius_move)}, ".C.Caaa.c.c.c", {0, 1500, 1800, 90, 70, 4, 500, 20000, 100, 0, 1}},
    {{F(TrevikA_S_CirXY_LineZ_Radius_move)}, ".C.Caaa.c.c.c", {0, 1500, 180, 90, 7, 3, 500, 2000, 100, 20, 1, 0}},

    // Buffer, status, positions
    {{F(TrevikA_continuous_flag_set), F(Trevik_set_continuous_flag)}, "", {0, 1, 2}},
    {{F(TrevikA_continuous_buffer_read), F(Trevik_check_continuous_buffer)}, "", {0, 1}},
    {{F(TrevikA_continuous_buffer_no_read), F(Trevik_read_conti_buffer_no)}, "", {0, 1}},
    {{F(TrevikA_motion_status_read), F(Trevik_read_motion_status)}, "", {0, 1, 0}},
    {{F(TrevikA_motion_status_read), F(Trevik_read_motion_status)}, "", {0, 1, 1}},
    {{F(TrevikA_motion_status_read), F(Trevik_read_motion_status)}, "", {0, 1, 2}},
    {{F(TrevikA_current_position_read), F(Trevik_read_current_position)}, "0", {0, 1}},
    {{F(TrevikA_current_position_set), F(Trevik_set_current_position)}, "a", {0, 1, 4321}},
    {{F(Trevik_correct_current_POS)}, ".t", {0, 1}},

    // Handwheel: axis 1 follows the one of axis 3
    {{F(TrevikA_pulser_mode_set), F(Trevik_config_pulser_mode)}, "", {0, 1, 2, 1}},
    {{F(TrevikA_pulser_mode_read), F(Trevik_readback_pulser_mode)}, "", {0, 1}},
    {{F(TrevikA_pulser_counter_read), F(Trevik_read_pulser_counter)}, "0", {0, 1}},
    {{F(TrevikA_pulser_counter_set), F(Trevik_set_pulser_counter)}, "f", {0, 3, 40}, "e"},
    {{F(TrevikA_pulser_map_set), F(Trevik_set_pulser_Map)}, "hu", {0, 1, 2, 0}},
    {{F(TrevikA_pulser_map_set), F(Trevik_set_pulser_Map)}, "hu", {0, 1, 2, 1}, "e"},
    {{F(TrevikA_pulser_motion_enable), F(Trevik_enable_pulser_motion)}, "hu", {0, 1, 1, 7}},
    {{F(TrevikA_pulser_motion_enable), F(Trevik_enable_pulser_motion)}, "", {0, 1, 1, 7}, "e"},
    {{F(Trevik_run_pulser_Vmove)}, "", {0, 1, 5000}},
    {{F(Trevik_run_pulser_Pmove)}, "a.c", {0, 1, 5000, 1, 5000}},
    {{{"the handwheel's tick", Tick}}, "g.........d", {0, 1}, "be", no_result},
    {{{"the handwheel's tick", Tick}}, "g.m.c", {0, 1}, "e", no_result},
    {{{"the handwheel's tick", Tick}}, "hu", {0, 1}, "eU", no_result},

    // Initialisation, formats, pins, points. Of an initialisation the last write of the TTL mode is reported.
    {{F(TrevikA_init_card), F(Trevik_init_card)},
     "..............................................c..c..c..c.........................r",
     {0}},
    {{F(TrevikA_pulse_outmode_set), F(Trevik_set_pulse_outmode)}, "", {0, 1, 5}},
    {{F(TrevikA_pulse_outmode_read), F(Trevik_readback_pulse_outmode)}, "", {0, 1}},
    {{F(TrevikA_pulse_inmode_set), F(Trevik_set_pulse_inmode)}, "", {0, 1, 2, 1}},
    {{F(TrevikA_pulse_inmode_read), F(Trevik_readback_pulse_inmode)}, "", {0, 1}},
    {{F(TrevikA_SD_PIN_set), F(Trevik_config_SD_PIN)}, "", {0, 1, 1, 0, 1, 0}},
    {{F(TrevikA_SD_PIN_read), F(Trevik_readback_SD_PIN)}, "", {0, 1}},
    {{F(TrevikA_PCS_PIN_set), F(Trevik_config_PCS_PIN)}, "", {0, 1, 1, 0}},
    {{F(TrevikA_PCS_PIN_read), F(Trevik_readback_PCS_PIN)}, "", {0, 1}},
    {{F(TrevikA_INP_PIN_set), F(Trevik_config_INP_PIN)}, "", {0, 1, 1, 0}},
    {{F(TrevikA_INP_PIN_read), F(Trevik_readback_INP_PIN)}, "", {0, 1}},
    {{F(TrevikA_ERC_PIN_set), F(Trevik_config_ERC_PIN)}, "", {0, 1, 1, 0, 2, 1}},
    {{F(TrevikA_ERC_PIN_read), F(Trevik_readback_ERC_PIN)}, "", {0, 1}},
    {{F(TrevikA_ALM_PIN_set), F(Trevik_config_ALM_PIN)}, "", {0, 1, 0, 1}},
    {{F(TrevikA_ALM_PIN_read), F(Trevik_readback_ALM_PIN)}, "", {0, 1}},
    {{F(TrevikA_LTC_PIN_set), F(Trevik_config_LTC_PIN)}, "", {0, 1, 0, 0}},
    {{F(TrevikA_LTC_PIN_read), F(Trevik_readback_LTC_PIN)}, "", {0, 1}},
    {{F(TrevikA_CMP_PIN_set), F(Trevik_config_CMP_OUT)}, "", {0, 1, 1}},
    {{F(TrevikA_CMP_PIN_read), F(Trevik_readback_CMP_OUT)}, "", {0, 1}},
    {{F(TrevikA_EL_mode_set), F(Trevik_config_EL_MODE)}, "", {0, 1, 0}},
    {{F(TrevikA_EL_mode_read), F(Trevik_readback_EL_MODE)}, "", {0, 1}},
    {{F(TrevikA_HOME_PIN_logic_set), F(Trevik_set_HOME_pin_logic)}, "", {0, 1, 0}},
    {{F(TrevikA_HOME_PIN_logic_read), F(Trevik_readback_HOME_pin_logic)}, "", {0, 1}},
    {{F(TrevikA_EZ_PIN_logic_set), F(Trevik_set_EZ_pin_logic)}, "", {0, 1, 0}},
    {{F(TrevikA_EZ_PIN_logic_read), F(Trevik_readback_EZ_pin_logic)}, "", {0, 1}},
    {{F(TrevikA_point_read), F(Trevik_read_point_status)}, "", {0, 1, 9}},
    {{F(TrevikA_point_read), F(Trevik_read_point_status)}, "", {0, 1, 4}},
    {{F(TrevikA_point_read), F(Trevik_read_point_status)}, "", {0, 1, 21}},
    {{F(TrevikA_point_read), F(Trevik_read_point_status)}, "", {0, 1, 25}},
    {{F(TrevikA_point_set), F(Trevik_write_output_point)}, "", {0, 1, 2, 1}},
    {{F(TrevikA_TTL_IO_mode_set), F(Trevik_config_TTL_IO_MODE)}, "", {0, 1}},
    {{F(TrevikA_TTL_IO_mode_read), F(Trevik_readback_TTL_IO_MODE)}, "", {0}},

    // Limits, compensation, configuration file
    {{F(TrevikA_softlimit_config_set), F(Trevik_config_softlimit)}, "", {0, 1, 1, 2}},
    {{F(TrevikA_softlimit_config_read), F(Trevik_readback_config_softlimit)}, "", {0, 1}},
    {{F(TrevikA_softlimit_data_set), F(Trevik_set_softlimit_data)}, "", {0, 1, 900, -900}},
    {{F(TrevikA_softlimit_data_read), F(Trevik_readback_softlimit_data)}, "01", {0, 1}},
    {{F(TrevikA_softlimit_enable_set), F(Trevik_enable_softlimit)}, "", {0, 1, 1}},
    {{F(TrevikA_softlimit_enable_read), F(Trevik_readback_enable_softlimit)}, "", {0, 1}},
    {{F(TrevikA_softlimit_flag_read), F(Trevik_read_softlimit_flag)}, "", {0, 1}},
    {{F(TrevikA_backlash_comp_set), F(Trevik_backlash_comp)}, "", {0, 1, 291, 5, 2500}},
    {{F(TrevikA_backlash_comp_read), F(Trevik_readback_backlash_comp)}, "", {0, 1}},
    {{F(TrevikA_suppress_vibration_set), F(Trevik_suppress_vibration)}, "", {0, 1, 41, 42}},
    {{F(TrevikA_suppress_vibration_read), F(Trevik_readback_suppress_vibration)}, "", {0, 1}},
    {{F(TrevikA_debounce_set), F(TrevikAC_debounce_set)}, "", {1, 1, 3}},
    {{F(TrevikA_debounce_read), F(TrevikAC_debounce_read)}, "", {1, 1}},
    {{F(TrevikA_config_file_set), F(Trevik_save_config2_file)}, "p*", {0, 0}},
    {{F(TrevikA_config_file_read), F(Trevik_load_config_from_file)}, "", {0, 1}},

    // Events and interrupts
    {{F(TrevikA_event_factor_set), F(Trevik_set_event_factor)}, "", {0, 1, -1}},
    {{F(TrevikA_event_flag_read), F(Trevik_read_event_flag)}, "0", {0, 1}},
    {{F(TrevikA_error_flag_read), F(Trevik_read_error_flag)}, "0", {0, 1}},
    {{F(TrevikA_IRQ_source_set), F(Trevik_set_INT_source)}, "", {0, 1, -1, -1}},
    {{F(TrevikA_IRQ_mask_set), F(Trevik_set_INT_mask)}, "", {0, 1, 1}},
    {{F(TrevikA_IRQ_mask_set)}, "", {0, 4, 1}},
    {{F(TrevikA_IRQ_mask_read)}, "", {0}},
    {{{"TrevikA_IRQ_enable", EnabledOnce<&TrevikA_IRQ_enable>},
      {"Trevik_enable_IRQ", EnabledOnce<&Trevik_enable_IRQ>}},
     "",
     {0}},
    {{F(TrevikA_IRQ_disable), F(Trevik_disable_IRQ)}, "", {0}},
    {{{"TrevikA_IRQ_process_link", LinkedOnce<&TrevikA_IRQ_process_link>},
      {"Trevik_link_IRQ_process", LinkedOnce<&Trevik_link_IRQ_process>}},
     "",
     {0}},
    {{F(TrevikA_IRQ_status_read), F(Trevik_read_INT_status)}, "s", {0, 2}},
    {{F(TrevikA_IRQ_status_read), F(Trevik_read_INT_status)}, "s", {0, 4}},
    {{F(TrevikA_IRQ_status_read), F(Trevik_read_INT_status)}, "s", {0, 5}, "", 301},

    // Counters, comparators, timers
    {{F(TrevikA_FB_counter_read), F(Trevik_read_FB_counter)}, "0", {0, 1}},
    {{F(TrevikA_FB_counter_set), F(Trevik_set_FB_counter)}, "", {0, 1, 41}},
    {{F(TrevikA_FB_counter_latch_value_read), F(Trevik_read_FBcounter_latch_value)}, "0", {0, 1}},
    {{F(TrevikA_CMP_out_set), F(Trevik_config_comparator_out)}, "", {0, 1, 1, 2, 1}},
    {{F(TrevikA_CMP_out_read), F(Trevik_readback_comparator_out)}, "", {0, 1}},
    {{F(TrevikA_CMP_data_set), F(Trevik_set_comparator_data)}, "", {0, 1, 41}},
    {{F(TrevikA_CMP_data_read), F(Trevik_readback_comparator_data)}, "0", {0, 1}},
    {{F(TrevikA_CMP_flag_read), F(Trevik_read_compare_flag)}, "", {0, 1}},
    {{F(TrevikA_compare_start_set)}, "", {0, 1, 2, 5}},
    {{F(TrevikA_compare_start_read)}, "", {0, 1}},
    {{F(TrevikA_compare_start_data_set)}, "", {0, 41}},
    {{F(TrevikA_compare_start_data_read)}, "0", {0}},
    {{F(TrevikA_CSTA_trigger), F(Trevik_trigger_CSTA_pulse)}, "", {0}},
    {{F(TrevikA_CSTP_trigger), F(Trevik_trigger_CSTP_pulse)}, "", {0}},
    {{F(TrevikA_timer_set)}, "", {0, 1, 74565}},
    {{F(TrevikA_timer_read)}, "", {0, 1}},
    {{F(TrevikA_timer_start)}, "", {0}},
    {{F(TrevikA_timer_stop)}, "", {0}},
    {{F(TrevikA_TC_set)}, "", {0, 0, 1}},
    {{F(TrevikA_TC_set)}, "", {0, 2, 74565}},
    {{F(TrevikA_TC_set)}, "", {0, 3, 1}},
    {{F(TrevikA_TC_read)}, "", {0, 1}},

    // The AC model
    {{F(TrevikAC_index_read)}, "0", {1, 1, 200}},
    {{F(TrevikAC_index_write)}, "", {1, 1, 200, 41}},
    {{F(TrevikAC_encoder_mode_set)}, "", {1, 1, 2, 4, 2}},
    {{F(TrevikAC_encoder_mode_read)}, "012", {1, 1}},
    {{F(TrevikAC_encoder_polarity_set)}, "", {1, 1, 63}},
    {{F(TrevikAC_encoder_polarity_read)}, "0", {1, 1}},
    {{F(TrevikAC_encoder_status_read)}, "0", {1, 1}},
    {{F(TrevikAC_pulse_swap_set)}, "", {1, 1, 1}},
    {{F(TrevikAC_pulse_swap_read)}, "", {1, 1}},
    {{F(TrevikAC_DA_set)}, "", {1, 1, -500}},
    {{F(TrevikAC_DA_read)}, "", {1, 1}},
    {{F(TrevikAC_PID_control_mode_set)}, "", {1, 4}},
    {{F(TrevikAC_PID_control_mode_read)}, "", {1}},
    {{F(TrevikAC_PID_set)}, "", {1, 1, 5, 3}},
    {{F(TrevikAC_PID_read)}, "0", {1, 1}},
    {{F(TrevikAC_PID_error_counter_read)}, "", {1, 1}},
    {{F(TrevikAC_PID_start)}, "", {1, 1}},
    {{F(TrevikAC_PID_stop)}, "", {1, 1}},
    {{F(TrevikAC_PID_error_detector_set)}, "", {1, 1, 1}},
    {{F(TrevikAC_PID_error_detector_read)}, "", {1, 1}},
    {{F(TrevikAC_PID_error_detector_clear)}, "", {1, 1}},
    {{F(TrevikAC_counter_simultaneous_read)}, ".0123", {1}},
};

} // namespace trevik::test

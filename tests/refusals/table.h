// Every exported function with representative arguments. Card 0 is an A card, card 1 an AC card.
#pragma once

#include "refusals/calls.h"

#include <doctest/doctest.h>

#include <regex>
#include <set>
#include <string>
#include <vector>

namespace trevik::test
{

// Arguments by their names; those that are not named are 0.
inline const std::string usual = R"(
    axis=1 axis_set=1 axis_pair=4 axes=5 group=1 mode=1 kind=1 source=2 timer=1 item=1 index=200 point=9 counter=1
    enable=1 logic=1 optionB=1 option=1 format=2 width=2 offTime=1 code=1 action=2 condition=2 state=1 swap=1 flag=2
    value=1 bits=63 s1=2 s2=4 s3=2 gain=5 amount=291 first=900 second=-900 factor=-1 eventSource=-1 errorSource=-1
    ratio=7 direction=1 dir=1 absolute=1 abs=1 abs_flags=5 position=5000 distance=5000
    pos_a=3000 pos_b=4000 pos_c=500 pos_0=30 pos_1=40 pos_2=50 pos_3=60
    radius=1500 center_a=900 mid_a=900 mid_b=900 p1_a=900 p1_b=900 p2_a=1800 point_a=1800 point_b=90 end_a=1800
    center_x=900 mid_x=900 mid_y=900 p1_x=900 p1_y=900 p2_x=1800 point_x=1800 point_y=90 end_x=1800 end_z=70
    speed=5000 startSpeed=500 start_speed=500 maxSpeed=20000 max_speed=20000 newSpeed=-3000
    time=100 linearTime=100 accelTime=100 accel_ms=100 accel_s=100 decelTime=300 decel_ms=300 decel_s=300
    sTime=20 s_ms=20 sAccelTime=20 s_accel_ms=20 sDecelTime=30 s_decel_ms=30
    sAccel=3000 sDecel=2000 s_accel=300 s_decel=200 )";
inline const std::string collinear = "mid_a=9 mid_b=9 mid_x=9 mid_y=9 p1_a=9 p1_b=9 p1_x=9 p1_y=9 p2_a=18 p2_b=18 "
                                     "p2_x=18 p2_y=18 end_a=18 end_b=18 end_x=18 end_y=18 abs=0 abs_flags=0 ";

// Calls of the functions whose counterpart's name matches, and what the refusal of their requests does: one letter
// for each of the first requests, '.' for the rest.
//
//   .  the value counts as 0; the call's result is the error if this is the last request and one that reports
//   a  may the axis move? as '.'; it may not, the result is 303 and nothing follows
//   m  as 'a' in the handwheel's tick, which has tried something else before
//   v  does the axis run at a speed? it does not, 305 and nothing follows
//   c  the position is not known: the bookkeeping of targets stays as it is
//   C  likewise, but the call returns the error once it has asked for the other axis
//   x  as 'c', and never reported
//   t  the target stays as it is
//   h  u  g  handwheel: count and position not known, the axis does not follow yet; a tick without a count
//   d  a tick whose change is refused tries a move, which an axis in motion is not allowed
//   f  the axes that follow the counter keep their base
//   p  the value of the register before it counts
//   r  reported though it is not the last
//   s  the snapshot counts as all zero, the result is 100
//   0 to 4   fills this out-value whole: it is not written
//
// A '*' repeats the letter before it for all the rest. States: see Sweep::reset. Functions that nothing here matches
// are called with the usual arguments; each of their requests is a '.'.
struct Rule {
    std::string functions;
    std::string letters;
    std::string arguments = ""; // other than the usual ones
    std::string state = "";
    std::uint32_t result = 0; // when nothing is refused; not 0: also whatever is refused
};

inline const Rule rules[] = {
    {".*_dll_Simu_mode", "", "mode=0"},

    // Single axis
    {".*_position_move", "a.c"},
    {".*_position_move", "a.c", "absolute=0 trigger=2 decelTime=100", "lw"},
    {".*_position_move", "", "distance=-5000 trigger=1", "qr"},
    {".*(_position|_[oO]n(LINE|Line_.*))_change.*", "", "", "b"},
    {".*(_position|_[oO]n(LINE|Line_.*))_change.*", "", "absolute=0 decelTime=100", "bl"},
    {".*_velocity_move", "", "maxSpeed=-20000"},
    {".*_velocity_move", "", "startSpeed=20000 maxSpeed=500"},
    {"TrevikA?_velocity_change", "v"},
    {"TrevikA?_velocity_change", "v", "newSpeed=30000", "sr"},
    {"Trevik_S1_velocity_change", "", "newSpeed=30000", "s"},
    {"TrevikA_stop", "", "", "s"},
    {"TrevikA_stop", "..c.c", "decelTime=0"},
    {"TrevikA_stop", "..x", "decelTime=0 axes=9", "n"},
    {"Trevik_imd_stop", "..c"},
    {"TrevikA_stop_emg", "..c.c.c.c"},
    {".*(_home_start|_home_search|_start_.*homing)", "a"},
    {".*(_home_start|_home_search|_start_.*homing)", "", "direction=0", "qr"},

    // Lines
    {".*(LINE2_move|move_LINE2)", "aa.c.c"},
    {".*(LINE2_move|move_LINE2)", "aa.c.c", "absolute=0 abs_flags=0 axis_set=4 trigger=2 decel_ms=100", "w"},
    {".*(LINE3_move|move_LINE3)", "aaa.c.c.c", "absolute=0 abs_flags=0 trigger=2 decel_ms=100", "w"},
    {".*(LINE4_move|move_LINE4)", "aaaa.c.c.c.c", "trigger=1"},
    {".*(LINE._move|move_LINE.)", "", "", "qr"},

    // Arcs and helices. What would be a line: 308, or 311 for the circle over the way, whatever becomes of it.
    {"TrevikA_((ARC|CIR).*|._ARC_center)_move|Trevik_ARC.*_move_.*", "aa.c.c"},
    {"TrevikA_((ARC|CIR).*|._ARC_center)_move|Trevik_ARC.*_move_.*", "aa.c.c",
     "dir=0 abs=0 abs_flags=0 trigger=2 axis_pair=0", "w"},
    {"TrevikA_(|._)ARC_center_move", "", "trigger=1", "qr"},
    {"TrevikA_ARC_3P_move", "aa.c.c", collinear, "w", 308},
    {"TrevikA_CIR_3P_move", "aa.c.c", collinear, "", 311},
    {"TrevikA_._(ARC|CIR)_3P_move", ".c.caa.c.c", "trigger=2"},
    {"TrevikA_._ARC_3P_move", ".c.caa.c.c", collinear + "trigger=1", "", 308},
    {"TrevikA_._CIR_3P_move", ".c.caa.c.c", collinear, "", 308},
    {"TrevikA_._(ARC|CIR)_Radius_move", ".C.Caa.c.c", "axis_pair=0 dir=0 abs_flags=3 trigger=1"},
    {"TrevikA_._ArcXY_LineZ_center_move", "aaa.c.c.c"},
    {"TrevikA_._ArcXY_LineZ_center_move", "", "abs_flags=7 trigger=1", "qr"},
    {"TrevikA_._(Arc|Cir)XY_LineZ_3P_move", ".c.caaa.c.c.c", "abs_flags=7 trigger=1"},
    {"TrevikA_T_ArcXY_LineZ_3P_move", ".c.caaa.c.c.c", collinear + "trigger=1", "", 308},
    {"TrevikA_(S_Arc|T_Cir|S_Cir)XY_LineZ_3P_move", ".c.c", collinear, "", 308},
    {"TrevikA_._(Arc|Cir)XY_LineZ_Radius_move", ".C.Caaa.c.c.c", "dir=0 trigger=1"},

    // Positions, status, what is handed out
    {"TrevikA_current_position_set", "a"},
    {"Trevik_correct_current_POS", ".t"},
    {"TrevikA_motion_status_read", ""},
    {"TrevikA_motion_status_read", "", "kind=0"},
    {"TrevikA_motion_status_read", "", "kind=2"},
    {"TrevikA_(current_position|pulser_counter|(event|error)_flag|FB_counter.*|CMP_data|compare_start_data)_read",
     "0"},
    {"TrevikAC_(index|encoder_polarity|encoder_status|PID)_read", "0"},
    {"TrevikA_softlimit_data_read", "01"},
    {"TrevikAC_encoder_mode_read", "012"},
    {"TrevikAC_counter_simultaneous_read", ".0123"},
    {"TrevikA_IRQ_status_read", "s"},
    {"TrevikA_IRQ_status_read", "s", "source=4"},
    {"TrevikA_IRQ_status_read", "s", "source=5", "", 301},

    // Handwheel: axis 1 follows the one of axis 3
    {"TrevikA_pulser_counter_set", "f", "axis=3 counter=40", "e"},
    {"TrevikA_pulser_map_set", "hu"},
    {"TrevikA_pulser_map_set", "hu", "reverse=1", "e"},
    {"TrevikA_pulser_motion_enable", "hu"},
    {"TrevikA_pulser_motion_enable", "", "", "e"},
    {"Trevik_run_pulser_Pmove", "a.c"},
    {"the handwheel's tick", "g.........d", "", "be", no_result},
    {"the handwheel's tick", "g.m.c", "", "e", no_result},
    {"the handwheel's tick", "hu", "", "eU", no_result},

    // Settings. Of an initialisation the last write of the TTL mode is reported.
    {"TrevikA_init_card", "..............................................c..c..c..c.........................r"},
    {"TrevikA_point_read", ""},
    {"TrevikA_point_read", "", "point=4"},
    {"TrevikA_point_read", "", "point=21"},
    {"TrevikA_point_read", "", "point=25"},
    {"TrevikA_config_file_set", "p*"},
    {"TrevikA_config_file_read", "", "fileName=1"},
    {"TrevikA_TC_set", "", "item=0"},
    {"TrevikA_TC_set", "", "item=2 value=74565"},
    {"TrevikA_TC_set", "", "item=3"},
};

struct Call {
    const Exported *function;
    Rule rule;
    Arguments arguments{};

    Call(const Exported &called, const Rule &by) : function(&called), rule(by)
    {
        const std::string all = " " + by.arguments + usual;
        for (std::size_t i = 0; i < most_parameters; ++i) {
            const std::string name = " " + std::string(called.parameters[i]) + "=";
            if (const std::size_t place = all.find(name); place != all.npos)
                arguments[i] = std::stod(all.substr(place + name.size()));
        }
        if (called.has("card"))
            arguments[0] = IsForAC(called.name) ? 1 : 0;
    }
};

// All but of the start-ups, which system_functions_test calls.
inline std::vector<Call> Calls()
{
    std::vector<Call> calls;
    std::set<const Exported *> unmatched;
    for (const Exported &function : exported)
        if (!function.name.ends_with("_initial") && !function.name.ends_with("_close"))
            unmatched.insert(&function);
    for (const Rule &rule : rules) {
        const std::size_t before = calls.size();
        const std::regex matches(rule.functions);
        for (const Exported &function : exported)
            if (std::regex_match(std::string(function.counterpart), matches)) {
                calls.emplace_back(function, rule);
                unmatched.erase(&function);
            }
        CHECK_MESSAGE(calls.size() != before, "no function is " << rule.functions);
    }
    for (const Exported *function : unmatched)
        calls.emplace_back(*function, Rule{});
    return calls;
}

} // namespace trevik::test

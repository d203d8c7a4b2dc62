#include "trevik-run/gcodes.h"

#include <algorithm>
#include <array>

namespace trevik_run
{
namespace
{

constexpr const char *plane = "only the XY plane is supported (G17); remove this word";
constexpr const char *compensation = "tool compensation is not supported; let the CAM system compute it";
constexpr const char *one_offset = "there is one work offset, G54; use G54 or G92";
constexpr const char *feed_mode = "only feed per minute is supported (G94)";

// In the order of the numbers: it is searched by halves.
constexpr std::array gcodes = {
    GCode{0, GAction::motion_rapid, GGroup::motion, nullptr},
    GCode{10, GAction::motion_feed, GGroup::motion, nullptr},
    GCode{20, GAction::motion_arc_clockwise, GGroup::motion, nullptr},
    GCode{30, GAction::motion_arc_counter, GGroup::motion, nullptr},
    GCode{40, GAction::dwell, GGroup::motion, nullptr},
    GCode{170, GAction::none, GGroup::plane, nullptr},
    GCode{180, GAction::refuse, GGroup::plane, plane},
    GCode{190, GAction::refuse, GGroup::plane, plane},
    GCode{200, GAction::inches, GGroup::units, nullptr},
    GCode{210, GAction::millimetres, GGroup::units, nullptr},
    GCode{280, GAction::home, GGroup::motion, nullptr},
    GCode{281, GAction::refuse, GGroup::none, "the home point is always machine zero; remove this word"},
    GCode{400, GAction::none, GGroup::none, nullptr},
    GCode{410, GAction::refuse, GGroup::none, compensation},
    GCode{420, GAction::refuse, GGroup::none, compensation},
    GCode{430, GAction::none, GGroup::none, nullptr}, // there is no tool table: every length is 0
    GCode{490, GAction::none, GGroup::none, nullptr},
    GCode{530, GAction::machine_coordinates, GGroup::none, nullptr},
    GCode{540, GAction::none, GGroup::none, nullptr},
    GCode{550, GAction::refuse, GGroup::none, one_offset},
    GCode{560, GAction::refuse, GGroup::none, one_offset},
    GCode{570, GAction::refuse, GGroup::none, one_offset},
    GCode{580, GAction::refuse, GGroup::none, one_offset},
    GCode{590, GAction::refuse, GGroup::none, one_offset},
    GCode{610, GAction::none, GGroup::path_mode, nullptr},
    GCode{640, GAction::none, GGroup::path_mode, nullptr},
    GCode{800, GAction::motion_cancel, GGroup::none, nullptr},
    GCode{900, GAction::absolute, GGroup::distance, nullptr},
    GCode{901, GAction::arc_absolute, GGroup::arc_distance, nullptr},
    GCode{910, GAction::relative, GGroup::distance, nullptr},
    GCode{911, GAction::arc_relative, GGroup::arc_distance, nullptr},
    GCode{920, GAction::offset_set, GGroup::offset, nullptr},
    GCode{921, GAction::offset_clear, GGroup::offset, nullptr},
    GCode{930, GAction::refuse, GGroup::feed_mode, feed_mode},
    GCode{940, GAction::none, GGroup::feed_mode, nullptr},
    GCode{950, GAction::refuse, GGroup::feed_mode, feed_mode},
};

static_assert(std::is_sorted(gcodes.begin(), gcodes.end(),
                             [](const GCode &a, const GCode &b) { return a.tenths < b.tenths; }));

} // namespace

const GCode *FindGCode(int tenths)
{
    const auto found = std::lower_bound(gcodes.begin(), gcodes.end(), tenths,
                                        [](const GCode &code, int wanted) { return code.tenths < wanted; });
    return found != gcodes.end() && found->tenths == tenths ? &*found : nullptr;
}

} // namespace trevik_run

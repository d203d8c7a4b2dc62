#include "trevik-run/card.h"

#include <fmt/format.h>
#include <trevik/TrevikA.h>

#include <algorithm>

#include "shared/result_text.h"

namespace trevik_run
{
namespace
{

constexpr std::array<std::uint8_t, axis_count> all_absolute = {1, 1, 1, 1};
constexpr std::uint8_t xy_pair = 0;
constexpr std::array<std::uint32_t, 6> line2_sets = {0b0011, 0b0101, 0b1001, 0b0110, 0b1010, 0b1100};
constexpr std::array<std::uint32_t, 4> line3_sets = {0b0111, 0b1011, 0b1101, 0b1110};

template <std::size_t size>
std::uint8_t SelectorOf(const std::array<std::uint32_t, size> &sets, std::uint32_t axes)
{
    return static_cast<std::uint8_t>(std::find(sets.begin(), sets.end(), axes) - sets.begin());
}

std::uint8_t DirectionOf(const CardMove &move)
{
    return move.clockwise ? 0 : 1;
}

} // namespace

std::string CardError::Message() const
{
    return fmt::format("{} returned {}: {}", call, code, trevik_tools::ResultText(code));
}

CardError OpenCard(std::uint8_t number, Pulses &position)
{
    if (const std::uint32_t result = TrevikA_initial(); result != TREVIK_OK) {
        return {"TrevikA_initial", result};
    }
    for (std::uint8_t axis = 0; axis < axis_count; ++axis) {
        std::uint32_t value = 0;
        const std::uint32_t result = TrevikA_current_position_read(number, axis, &value);
        if (result != TREVIK_OK) {
            return {"TrevikA_current_position_read", result};
        }
        position[axis] = static_cast<std::int32_t>(value);
    }
    return {};
}

Card::Card(std::uint8_t number, std::uint32_t axes) : number_(number)
{
    for (std::uint8_t axis = 0; axis < axis_count; ++axis) {
        if ((axes >> axis & 1U) != 0) {
            axis_[count_++] = axis;
        }
    }
    axis_set_ = count_ == 2 ? SelectorOf(line2_sets, axes) : SelectorOf(line3_sets, axes);
}

void Card::Fail(const char *call, std::uint32_t code)
{
    if (!error_) {
        error_ = {call, code};
    }
}

bool Card::Check(const char *call, std::uint32_t result)
{
    if (result != TREVIK_OK) {
        Fail(call, result);
    }
    return result == TREVIK_OK;
}

void Card::Prepare(double top_pps)
{
    for (std::size_t i = 0; i < count_; ++i) {
        const std::uint8_t axis = axis_[i];
        std::uint32_t position = 0;
        Check("TrevikA_current_position_read", TrevikA_current_position_read(number_, axis, &position));
        if (!error_) {
            // The library counts absolute targets from here on, whatever the card did before it was started.
            Check("TrevikA_current_position_set", TrevikA_current_position_set(number_, axis, position));
        }
        Check("TrevikA_continuous_flag_set", TrevikA_continuous_flag_set(number_, axis, 1));
        Check("TrevikA_velocity_range_fix",
              TrevikA_velocity_range_fix(number_, axis, static_cast<std::uint32_t>(top_pps)));
    }
}

void Card::Release()
{
    for (std::size_t i = 0; i < count_; ++i) {
        Check("TrevikA_continuous_flag_set", TrevikA_continuous_flag_set(number_, axis_[i], 0));
        Check("TrevikA_velocity_range_unfix", TrevikA_velocity_range_unfix(number_, axis_[i]));
    }
}

std::uint32_t Card::Line2(const CardMove &move, const char *&call) const
{
    const auto [a, b] = std::pair(move.target[axis_[0]], move.target[axis_[1]]);
    if (move.s_curve) {
        call = "TrevikA_S_LINE2_move";
        return TrevikA_S_LINE2_move(number_, axis_set_, a, b, all_absolute.data(), move.start_pps, move.max_pps,
                                    move.accel_ms, move.decel_ms, 0, 0, 0);
    }
    call = "TrevikA_T_LINE2_move";
    return TrevikA_T_LINE2_move(number_, axis_set_, a, b, all_absolute.data(), move.start_pps, move.max_pps,
                                move.accel_ms, move.decel_ms, 0);
}

std::uint32_t Card::Line3(const CardMove &move, const char *&call) const
{
    const std::int32_t a = move.target[axis_[0]];
    const std::int32_t b = move.target[axis_[1]];
    const std::int32_t c = move.target[axis_[2]];
    if (move.s_curve) {
        call = "TrevikA_S_LINE3_move";
        return TrevikA_S_LINE3_move(number_, axis_set_, a, b, c, all_absolute.data(), move.start_pps, move.max_pps,
                                    move.accel_ms, move.decel_ms, 0, 0, 0);
    }
    call = "TrevikA_T_LINE3_move";
    return TrevikA_T_LINE3_move(number_, axis_set_, a, b, c, all_absolute.data(), move.start_pps, move.max_pps,
                                move.accel_ms, move.decel_ms, 0);
}

std::uint32_t Card::Line4(const CardMove &move, const char *&call) const
{
    const Pulses &to = move.target;
    if (move.s_curve) {
        call = "TrevikA_S_LINE4_move";
        return TrevikA_S_LINE4_move(number_, to[0], to[1], to[2], to[3], all_absolute.data(), move.start_pps,
                                    move.max_pps, move.accel_ms, move.decel_ms, 0, 0, 0);
    }
    call = "TrevikA_T_LINE4_move";
    return TrevikA_T_LINE4_move(number_, to[0], to[1], to[2], to[3], all_absolute.data(), move.start_pps,
                                move.max_pps, move.accel_ms, move.decel_ms, 0);
}

std::uint32_t Card::Line(const CardMove &move, const char *&call) const
{
    return count_ == 2 ? Line2(move, call) : count_ == 3 ? Line3(move, call) : Line4(move, call);
}

std::uint32_t Card::Arc(const CardMove &move, const char *&call) const
{
    call = "TrevikA_ARC_center_move";
    return TrevikA_ARC_center_move(number_, xy_pair, move.center[0], move.center[1], move.target[0], move.target[1],
                                   1, move.max_pps, DirectionOf(move));
}

// With equal speeds it has no ramps.
std::uint32_t Card::Helix(const CardMove &move, const char *&call) const
{
    call = "TrevikA_T_ArcXY_LineZ_center_move";
    return TrevikA_T_ArcXY_LineZ_center_move(number_, move.center[0], move.center[1], move.target[0],
                                             move.target[1], move.target[2], all_absolute.data(), move.max_pps,
                                             move.max_pps, 0, DirectionOf(move), 0);
}

bool Card::Make(const CardMove &move)
{
    const char *call = nullptr;
    const std::uint32_t result = move.shape == Shape::line  ? Line(move, call)
                                 : move.shape == Shape::arc ? Arc(move, call)
                                                            : Helix(move, call);
    return result != TREVIK_ERR_QUEUE_FULL && Check(call, result);
}

bool Card::QueueFull()
{
    for (std::size_t i = 0; i < count_; ++i) {
        std::uint8_t full = 0;
        Check("TrevikA_continuous_buffer_read", TrevikA_continuous_buffer_read(number_, axis_[i], &full));
        if (full != 0) {
            return true;
        }
    }
    return false;
}

bool Card::Idle()
{
    for (std::size_t i = 0; i < count_; ++i) {
        std::uint8_t idle = 0;
        Check("TrevikA_motion_status_read", TrevikA_motion_status_read(number_, axis_[i], 0, &idle));
        if (idle == 0) {
            return false;
        }
    }
    return true;
}

bool Card::Stop(std::uint32_t decel_ms)
{
    std::array<std::uint8_t, axis_count> selected{};
    for (std::size_t i = 0; i < count_; ++i) {
        selected[axis_[i]] = 1;
    }
    return Check("TrevikA_stop", TrevikA_stop(number_, selected.data(), decel_ms));
}

void Card::ReadPosition(Pulses &position)
{
    for (std::size_t i = 0; i < count_; ++i) {
        std::uint32_t value = 0;
        if (Check("TrevikA_current_position_read", TrevikA_current_position_read(number_, axis_[i], &value))) {
            position[axis_[i]] = static_cast<std::int32_t>(value);
        }
    }
}

double Card::LongestAxisSpeed()
{
    double speed_pps = 0;
    Check("TrevikA_velocity_read", TrevikA_velocity_read(number_, axis_[0], &speed_pps));
    return speed_pps;
}

} // namespace trevik_run

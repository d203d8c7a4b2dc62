#include "trevik-run/card_moves.h"

#include <algorithm>
#include <cmath>

namespace trevik_run
{
namespace
{

constexpr double lower_peak = 0.97; // one try less, where the card's ramps turned out too long

std::uint32_t WholeSpeed(double pps)
{
    return std::max(1U, static_cast<std::uint32_t>(pps));
}

bool Above(double pps, double other_pps)
{
    return pps * same_speed > other_pps;
}

// The work of MakeCardMoves for one move.
class Splitter
{
  public:
    Splitter(const Pulses &from, const Pulses &to, const PathLine &line, const RampMaker &ramps,
             std::size_t first_axis, bool s_curve)
        : from_(from),
          to_(to),
          line_(line),
          piece_(MakePiece(from, to)),
          ramps_(ramps),
          s_curve_(s_curve),
          first_length_(std::fabs(piece_.delta[first_axis])),
          factor_(piece_.longest / piece_.length)
    {
    }

    CardMoves Make(const MoveSpeeds &speeds);

  private:
    double Peak(const MoveSpeeds &speeds) const;
    bool RampBothWays(double end_pps, double peak_pps);
    bool RampUp(double entry_pps, double peak_pps, double room, const Pulses &to);
    bool RampDown(double exit_pps, double peak_pps);
    bool RampDownInOne(RampKind kind, double exit_pps, double peak_pps);
    bool RampUpAndDown(const MoveSpeeds &speeds, double peak_pps);
    bool Ramped(const MoveSpeeds &speeds, double peak_pps);
    Pulses SplitPoint(double from_end) const;
    void Add(const Pulses &to, double start_pps, double max_pps, std::uint32_t accel_ms, std::uint32_t decel_ms,
             bool s_curve);

    const Pulses &from_;
    const Pulses &to_;
    const PathLine &line_;
    Piece piece_;
    const RampMaker &ramps_;
    bool s_curve_;
    double first_length_;
    double factor_;
    CardMoves out_;
};

CardMoves Splitter::Make(const MoveSpeeds &speeds)
{
    double peak = Peak(speeds);
    const double low = std::min(speeds.entry_pps, speeds.exit_pps);
    if (!Above(peak, low)) {
        Add(to_, peak, peak, 0, 0, false);
        return out_;
    }
    if (piece_.length < short_move_s * peak) {
        Add(to_, low, low, 0, 0, false);
        return out_;
    }
    for (; Above(peak, low); peak *= lower_peak) {
        if (Ramped(speeds, peak)) {
            return out_;
        }
    }
    Add(to_, low, low, 0, 0, false);
    return out_;
}

// The highest speed that can be reached and left again within the length.
double Splitter::Peak(const MoveSpeeds &speeds) const
{
    const double up = 1 / ramps_.AccelPps2();
    const double down = 1 / ramps_.DecelPps2();
    const double square =
        (2 * piece_.length + speeds.entry_pps * speeds.entry_pps * up + speeds.exit_pps * speeds.exit_pps * down) /
        (up + down);
    return std::min(speeds.limit_pps, std::sqrt(square));
}

bool Splitter::Ramped(const MoveSpeeds &speeds, double peak_pps)
{
    const bool up = Above(peak_pps, speeds.entry_pps);
    const bool down = Above(peak_pps, speeds.exit_pps);
    if (up && down) {
        const auto [low, high] = std::minmax(speeds.entry_pps, speeds.exit_pps);
        return Above(high, low) ? RampUpAndDown(speeds, peak_pps) : RampBothWays(low, peak_pps);
    }
    return up ? RampUp(speeds.entry_pps, peak_pps, piece_.longest, to_) : RampDown(speeds.exit_pps, peak_pps);
}

// Equal ramps leave the slow-down point to the chip, which needs no more room than the ramps themselves.
bool Splitter::RampBothWays(double end_pps, double peak_pps)
{
    const Ramp ramp = ramps_.Choose(RampKind::up, end_pps, peak_pps, factor_, piece_.longest / 2);
    if (ramp.time_ms != 0) {
        Add(to_, end_pps, peak_pps, ramp.time_ms, ramp.time_ms, s_curve_);
    }
    return ramp.time_ms != 0;
}

bool Splitter::RampUp(double entry_pps, double peak_pps, double room, const Pulses &to)
{
    const Ramp ramp = ramps_.Choose(RampKind::up, entry_pps, peak_pps, factor_, room);
    if (ramp.time_ms != 0) {
        Add(to, entry_pps, peak_pps, ramp.time_ms, 0, s_curve_);
    }
    return ramp.time_ms != 0;
}

bool Splitter::RampDown(double exit_pps, double peak_pps)
{
    if (s_curve_ && RampDownInOne(RampKind::down_s, exit_pps, peak_pps)) {
        return true;
    }
    if (RampDownInOne(RampKind::down, exit_pps, peak_pps)) {
        return true;
    }
    const Ramp ramp = ramps_.Choose(RampKind::down, exit_pps, peak_pps, factor_, piece_.longest);
    if (ramp.time_ms == 0) {
        return false;
    }
    const Pulses split = SplitPoint(ramp.needed_pulses);
    if (split != from_ && split != to_) {
        Add(split, peak_pps, peak_pps, 0, 0, false);
    }
    Add(to_, exit_pps, peak_pps, 0, ramp.time_ms, false);
    return true;
}

// Run and ramp down in one line: only where the first axis is long enough to show the card the full profile.
bool Splitter::RampDownInOne(RampKind kind, double exit_pps, double peak_pps)
{
    const Ramp ramp = ramps_.Choose(kind, exit_pps, peak_pps, factor_, piece_.longest);
    if (ramp.time_ms == 0 || ramp.needed_pulses + 1 >= first_length_) {
        return false;
    }
    Add(to_, exit_pps, peak_pps, 0, ramp.time_ms, kind == RampKind::down_s);
    return true;
}

bool Splitter::RampUpAndDown(const MoveSpeeds &speeds, double peak_pps)
{
    const Ramp down = ramps_.Choose(RampKind::down, speeds.exit_pps, peak_pps, factor_, piece_.longest);
    if (down.time_ms == 0) {
        return false;
    }
    const double room = piece_.longest - down.needed_pulses - 1;
    const Pulses split = SplitPoint(down.needed_pulses);
    if (split == from_ || !RampUp(speeds.entry_pps, peak_pps, room, split)) {
        return false;
    }
    Add(to_, speeds.exit_pps, peak_pps, 0, down.time_ms, false);
    return true;
}

// A point of the programmed line, rounded; at least so many pulses of the longest axis before its end.
Pulses Splitter::SplitPoint(double from_end) const
{
    const double share = std::fmax(0, 1 - std::ceil(from_end) / piece_.longest);
    Pulses point;
    for (std::size_t i = 0; i < axis_count; ++i) {
        point[i] = static_cast<std::int32_t>(std::lrint(line_.from[i] + line_.delta[i] * share));
    }
    return point;
}

void Splitter::Add(const Pulses &to, double start_pps, double max_pps, std::uint32_t accel_ms,
                   std::uint32_t decel_ms, bool s_curve)
{
    CardMove &move = out_.move[static_cast<std::size_t>(out_.count++)];
    move.target = to;
    move.start_pps = WholeSpeed(start_pps);
    move.max_pps = WholeSpeed(max_pps);
    move.accel_ms = accel_ms;
    move.decel_ms = decel_ms;
    move.s_curve = s_curve;
}

} // namespace

CardMoves MakeCardMoves(const Pulses &from, const Pulses &to, const PathLine &line, const MoveSpeeds &speeds,
                        const RampMaker &ramps, std::size_t first_axis, bool s_curve)
{
    return Splitter(from, to, line, ramps, first_axis, s_curve).Make(speeds);
}

} // namespace trevik_run

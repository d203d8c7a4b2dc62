#include "trevik-run/arc_moves.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "trevik-run/arc_fit.h"

namespace trevik_run
{
namespace
{

constexpr double shortest_arc = 4; // pulses; below it is a line
constexpr double flat = 0.05;      // pulses between arc and chord: below it is a line
constexpr double line_bulge = 0.1; // the most between arc and chord, where lines take the arc's place
constexpr double longest_turn = 1.5 * std::numbers::pi;
constexpr double nearly_whole_turn = 2 * std::numbers::pi - 1e-6;
constexpr double z_error = 0.03; // pulses; the card moves Z with the steps of the circle, not with its angle

int Treads(double low_pps, double high_pps, double jump_pps)
{
    return low_pps < high_pps * same_speed ? static_cast<int>(std::ceil((high_pps - low_pps) / jump_pps)) : 0;
}

// The work of MakeArcMoves for one arc.
class ArcCutter
{
  public:
    ArcCutter(const ProgrammedPath &path, const ArcRest &rest, const ArcLimits &limits,
              std::vector<CardMove> &moves)
        : path_(path), rest_(rest), limits_(limits), moves_(moves), at_(rest.from), share_(rest.from_share)
    {
        const double rise = std::fabs(path.Line().delta[2]);
        longest_share_ = longest_turn / std::fabs(path.Turn());
        if (rise > 0) {
            const double pitch = rise / std::fabs(path.Turn()); // pulses per radian
            longest_share_ = std::min(longest_share_, std::sqrt(8 * z_error / pitch) / std::fabs(path.Turn()));
        }
    }

    void Cut(const MoveSpeeds &speeds, const RampMaker &ramps);

  private:
    void Run(double steps, double pps);
    void RunTo(double share, double pps);
    void Climb(double from_pps, double to_pps, double jump_pps, double accel_pps2);
    void Descend(double from_pps, double to_pps, double jump_pps, double decel_pps2);
    void CutPiece(double from, double to, double pps);
    Pulses EndOf(double share) const;
    double Bulge(double turn, double length) const;
    bool AddArc(double from, double to, const Pulses &end, double pps);
    void AddLine(double from, double to, const Pulses &end, double pps);

    const ProgrammedPath &path_;
    const ArcRest &rest_;
    const ArcLimits &limits_;
    std::vector<CardMove> &moves_;
    Pulses at_;
    double share_;
    double longest_share_ = 1;
};

void ArcCutter::Cut(const MoveSpeeds &speeds, const RampMaker &ramps)
{
    const double highest = speeds.limit_pps / arc_speed_divisor;
    const double entry = std::min(highest, speeds.entry_pps * path_.Pace(share_));
    const double exit = std::min(highest, speeds.exit_pps * path_.Pace(1));
    const double up = 1 / ramps.AccelPps2();
    const double down = 1 / ramps.DecelPps2();
    const double steps = path_.Steps() * (1 - share_);
    const double peak =
        std::min(highest, std::sqrt((2 * steps + entry * entry * up + exit * exit * down) / (up + down)));
    const double jump = std::max(limits_.start_pps, short_move_s * ramps.AccelPps2());
    const double braking = std::max(0.0, (peak * peak - exit * exit) / 2 * down);
    Climb(entry, peak, jump, ramps.AccelPps2());
    RunTo(1 - braking / path_.Steps(), peak);
    Descend(peak, exit, jump, ramps.DecelPps2());
    RunTo(1, exit);
}

// Each tread at the speed that the ramp has at its slower end, so that the first is as slow as what came before.
void ArcCutter::Climb(double from_pps, double to_pps, double jump_pps, double accel_pps2)
{
    const int treads = Treads(from_pps, to_pps, jump_pps);
    double pps = from_pps;
    for (int i = 1; i <= treads; ++i) {
        const double next = from_pps + (to_pps - from_pps) * i / treads;
        Run((next * next - pps * pps) / (2 * accel_pps2), pps);
        pps = next;
    }
}

void ArcCutter::Descend(double from_pps, double to_pps, double jump_pps, double decel_pps2)
{
    const int treads = Treads(to_pps, from_pps, jump_pps);
    double pps = from_pps;
    for (int i = 1; i <= treads; ++i) {
        const double next = from_pps + (to_pps - from_pps) * i / treads;
        Run((pps * pps - next * next) / (2 * decel_pps2), next);
        pps = next;
    }
}

void ArcCutter::Run(double steps, double pps)
{
    RunTo(std::min(1.0, share_ + steps / path_.Steps()), pps);
}

// A last piece too short for a move of its own goes with the one before it.
void ArcCutter::RunTo(double share, double pps)
{
    const double end = (1 - share) * path_.Length() < 1 ? 1 : share;
    if (end > share_) {
        CutPiece(share_, end, pps);
        share_ = end;
    }
}

void ArcCutter::CutPiece(double from, double to, double pps)
{
    const double turn = std::fabs(path_.Turn()) * (to - from);
    const double length = path_.Length() * (to - from);
    const double bulge = Bulge(turn, length);
    const Pulses end = EndOf(to);
    const bool meets = end[0] == at_[0] && end[1] == at_[1];
    const bool closed = meets && turn >= nearly_whole_turn;
    const bool level = path_.Line().delta[2] == 0;
    if (end == at_ && length < shortest_arc) {
        return;
    }
    if (bulge <= flat || (length < shortest_arc && bulge <= line_bulge) || length < 2) {
        return AddLine(from, to, end, pps);
    }
    if ((level || limits_.helices) && length >= shortest_arc &&
        (closed ? level : !meets && to - from <= longest_share_) && AddArc(from, to, end, pps)) {
        return;
    }
    const double middle = (from + to) / 2;
    CutPiece(from, middle, pps);
    CutPiece(middle, to, pps);
}

// Between an arc and its chord, in pulses.
double ArcCutter::Bulge(double turn, double length) const
{
    return turn < 1 ? turn * length / 8 : length;
}

Pulses ArcCutter::EndOf(double share) const
{
    if (share == 1) {
        return rest_.to;
    }
    const Vec4 place = path_.At(share);
    Pulses end;
    for (std::size_t i = 0; i < axis_count; ++i) {
        end[i] = static_cast<std::int32_t>(std::lrint(place[i]));
    }
    return end;
}

bool ArcCutter::AddArc(double from, double to, const Pulses &end, double pps)
{
    PulseCircle circle;
    if (!FitCircle(path_, {from, to, at_, end}, circle)) {
        return false;
    }
    CardMove move;
    move.shape = end[2] == at_[2] ? Shape::arc : Shape::helix;
    const double asked = move.shape == Shape::arc ? pps * arc_speed_divisor : pps;
    move.target = end;
    move.center = circle.center;
    move.clockwise = path_.Turn() < 0;
    move.start_pps = move.max_pps = static_cast<std::uint32_t>(std::lround(std::max(1.0, asked)));
    move.end_share = to;
    moves_.push_back(move);
    at_ = end;
    return true;
}

void ArcCutter::AddLine(double from, double to, const Pulses &end, double pps)
{
    CardMove move;
    const double path_pps = std::min(max_speed_pps, pps / path_.Pace((from + to) / 2));
    move.target = end;
    move.start_pps = move.max_pps = static_cast<std::uint32_t>(std::lround(std::max(1.0, path_pps)));
    move.end_share = to;
    moves_.push_back(move);
    at_ = end;
}

} // namespace

void MakeArcMoves(const ProgrammedPath &path, const ArcRest &rest, const MoveSpeeds &speeds, const RampMaker &ramps,
                  const ArcLimits &limits, std::vector<CardMove> &moves)
{
    moves.clear();
    ArcCutter(path, rest, limits, moves).Cut(speeds, ramps);
}

} // namespace trevik_run

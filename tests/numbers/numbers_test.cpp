// Random motion of virtual cards against the reference, position by position.
//
//     TREVIK_NUMBERS="SEED SAMPLES"   from this seed on until so many positions are compared
//
// A case that fails is printed as the calls that it made.
#include "numbers/reference.h"
#include "support/virtual_machine.h"

#include "platform/host/driver_seam.h"

#include <cstdlib>
#include <cstring>
#include <sstream>

using namespace trevik::test;

namespace
{

#define CALL(function, ...) call(#function, function, __VA_ARGS__)

// A case's requests reach the virtual cards, and what they write the reference, too.
class Case : public VirtualMachine
{
  public:
    Draw draw;
    reference::Card expected;
    std::size_t samples = 0;
    bool failed = false;

    explicit Case(unsigned seed) : draw(seed)
    {
        told = &expected;
        TrevikHostDriver table = *trevik::host::BuiltInDriver();
        table.control = Control;
        TrevikHost_driver_set(&table);
        Quietly(TrevikA_initial);
        trevik::manager.StopPulserTicks();
    }
    ~Case() { TrevikHost_driver_set(nullptr); }

    template <class... P, class... A>
    std::uint32_t call(const char *name, std::uint32_t(TREVIK_CALL *function)(P...), A... arguments)
    {
        calls_ << "    " << name << "(";
        const char *comma = "";
        ((calls_ << std::exchange(comma, ", ") << Text(arguments)), ...);
        calls_ << ");\n";
        if (!expected.running())
            for (std::uint8_t axis = 0; axis < 4; ++axis)
                expected.stands[axis] = at(axis);
        return function(static_cast<P>(arguments)...);
    }
    void advance(std::int64_t ns)
    {
        calls_ << "    TrevikHost_advance(" << ns << "e-9);\n";
        TrevikHost_advance(static_cast<double>(ns) * 1e-9);
        expected.advance(static_cast<double>(ns) * 1e-9);
        compare();
    }
    // So many positions of what runs now, or until it has ended.
    void watch(std::uint32_t count)
    {
        while (count-- > 0 && !failed && (expected.running() || !idle(0)))
            advance(some_of(expected.running() ? expected.left_s() : 1e-6, 1 + count));
    }
    // To its end, or that of the patience with what creeps.
    void finish()
    {
        watch(12);
        for (int leg = 0; leg < 6 && expected.running() && expected.left_s() < longest_s && !failed; ++leg)
            advance(static_cast<std::int64_t>(expected.left_s() * 1e9) + 2000);
        if (expected.running() && !failed)
            CALL(TrevikA_stop, 0, all_axes, 0);
        compare();
    }
    std::string text() const { return calls_.str(); }

  private:
    static std::uint32_t Control(void *context, std::uint32_t device, std::uint32_t code, const void *in,
                                 std::uint32_t in_size, void *out, std::uint32_t out_size, std::uint32_t *returned)
    {
        std::array<std::uint32_t, 8> words{};
        if (in != nullptr)
            std::memcpy(words.data(), in, sizeof words);
        const std::uint32_t error =
            trevik::host::BuiltInDriver()->control(context, device, code, in, in_size, out, out_size, returned);
        if (code == 0x22209C)
            told->write(words[0], words[1], words[2]);
        if (code == 0x222088 && words[2] == 0)
            told->command(words[5] >> 8 & 0xF, words[5] & 0xFF);
        return error;
    }

    static std::string Text(const std::uint8_t *flags)
    {
        return flags == relative ? "relative" : flags == first_axis ? "first_axis" : "all_axes";
    }
    static std::string Text(long long number) { return std::to_string(number); }

    std::int64_t some_of(double seconds, std::uint32_t parts)
    {
        const double most = std::isfinite(seconds) ? std::min(seconds, longest_s) / parts : 0.02;
        return static_cast<std::int64_t>(2e9 * most * draw.between(0, 1000) / 1000) + 1;
    }

    void compare()
    {
        ++samples;
        std::array<std::int64_t, 4> is{};
        for (std::uint8_t axis = 0; axis < 4; ++axis)
            is[axis] = at(axis);
        if (!failed && !(expected.running() ? on_its_way(is) : stands_right(is)))
            fail(is);
    }
    bool stands_right(const std::array<std::int64_t, 4> &is)
    {
        bool right = expected.since_end_s() < 2e-6 || idle(0) || expected.queued();
        for (unsigned axis = 0; axis < 4; ++axis)
            right = right && std::abs(apart(is[axis], expected.stands[axis])) <= tolerance;
        return right;
    }
    // The leading axis within a pulse of the integral, the others exactly where they belong at one of its pulses there.
    bool on_its_way(const std::array<std::int64_t, 4> &is)
    {
        const double done = expected.done();
        for (std::int64_t pulses = static_cast<std::int64_t>(done) - tolerance;
             static_cast<double>(pulses) <= done + tolerance; ++pulses) {
            bool there = std::abs(static_cast<double>(pulses) - done) <= tolerance;
            for (unsigned axis = 0; axis < 4; ++axis)
                there = there && (!expected.moves(axis) || apart(is[axis], expected.at(axis, pulses)) == 0);
            if (there)
                return true;
        }
        return false;
    }
    std::int64_t where(unsigned axis) const
    {
        const bool moves = expected.running() && expected.moves(axis);
        return moves ? expected.at(axis, static_cast<std::int64_t>(expected.done())) : expected.stands[axis];
    }
    void fail(const std::array<std::int64_t, 4> &is)
    {
        failed = true;
        calls_ << "    // " << (expected.running() ? "running" : "ended");
        for (unsigned axis = 0; axis < 4; ++axis)
            calls_ << ", axis " << axis << " at " << is[axis] << ", expected " << where(axis);
        calls_ << "\n";
    }

    // Counters wrap.
    static std::int64_t apart(std::int64_t a, std::int64_t b)
    {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(a - b));
    }

    static constexpr double longest_s = 1000; // the clock of a process ends after 146 years
    static constexpr std::int64_t tolerance = 1;
    static inline reference::Card *told = nullptr; // the driver's context is the cards'
    std::ostringstream calls_;
};

struct Speeds {
    std::uint32_t start, max, up, down, s_up, s_down;

    explicit Speeds(Draw &draw)
        : start(draw.magnitude(1, 5000)),
          max(draw.between(0, 9) == 0 ? draw.magnitude(1, 6e6) : start + draw.magnitude(1, 5e5)),
          up(draw.between(0, 5) == 0 ? 0 : draw.between(1, 400)),
          down(draw.between(0, 5) == 0 ? 0 : draw.between(1, 900)),
          s_up(draw.between(0, 2) == 0 ? 0 : up * draw.between(0, 8) / 16),
          s_down(draw.between(0, 2) == 0 ? 0 : down * draw.between(0, 8) / 16)
    {
    }
};

void Move(Case &c, std::int32_t distance, const Speeds &s)
{
    if (c.draw.between(0, 1) != 0)
        c.CALL(TrevikA_T_position_move, 0, 0, distance, 0, s.start, s.max, s.up, s.down, 0);
    else
        c.CALL(TrevikA_S_position_move, 0, 0, distance, 0, s.start, s.max, s.up, s.down, s.s_up, s.s_down, 0);
}

// Some of what runs now; then, every third time, a stop of axis 0 or of all, and on.
void WatchAndPerhapsStop(Case &c)
{
    c.watch(c.draw.between(1, 20));
    if (c.draw.between(0, 2) != 0)
        return;
    c.CALL(TrevikA_stop, 0, c.draw.between(0, 1) != 0 ? first_axis : all_axes,
           c.draw.between(0, 1) * c.draw.between(1, 300));
    c.finish();
    if (!c.failed)
        c.CALL(TrevikA_4Axis_restart, 0);
}

void Positions(Case &c)
{
    Move(c, c.draw.distance(1, 1e6), Speeds(c.draw));
    WatchAndPerhapsStop(c);
}

void Changes(Case &c)
{
    Move(c, c.draw.distance(100, 1e6), Speeds(c.draw));
    for (std::uint32_t change = c.draw.between(1, 10); change > 0 && !c.failed; --change) {
        c.watch(c.draw.between(0, 8));
        const Speeds s(c.draw);
        const std::uint32_t absolute = c.draw.between(0, 1);
        const std::int32_t end = c.draw.distance(1, 1e6);
        const std::uint32_t way = c.draw.between(0, 2);
        if (way == 0)
            c.CALL(TrevikA_position_change, 0, 0, end, absolute);
        else if (way == 1)
            c.CALL(TrevikA_T_onLINE_change, 0, 0, end, absolute, s.start, s.max, s.up, s.down);
        else
            c.CALL(TrevikA_S_onLINE_change, 0, 0, end, absolute, s.start, s.max, s.up, s.down, s.s_up, s.s_down);
    }
}

void Velocities(Case &c)
{
    if (c.draw.between(0, 1) != 0)
        c.CALL(TrevikA_velocity_range_fix, 0, 0, c.draw.magnitude(1000, 1e6));
    for (std::uint32_t change = c.draw.between(1, 5); change > 0 && !c.failed; --change) {
        const Speeds s(c.draw);
        const std::int32_t speed = static_cast<std::int32_t>(s.max) * (c.draw.between(0, 1) != 0 ? 1 : -1);
        const std::uint32_t way = c.draw.between(0, 2);
        if (way == 0)
            c.CALL(TrevikA_T_velocity_move, 0, 0, s.start, speed, s.up);
        else if (way == 1)
            c.CALL(TrevikA_S_velocity_move, 0, 0, s.start, speed, s.up, s.s_up);
        else
            c.CALL(TrevikA_velocity_change, 0, 0, speed, s.up);
        c.watch(c.draw.between(1, 15));
    }
    c.CALL(TrevikA_stop, 0, first_axis, c.draw.between(0, 2) * c.draw.between(1, 300));
}

void Line(Case &c, std::uint32_t axes, const Speeds &s, double low, double high)
{
    std::array<std::int32_t, 4> d{};
    for (std::int32_t &distance : d)
        distance = c.draw.distance(low, high);
    if (axes == 4)
        c.CALL(TrevikA_T_LINE4_move, 0, d[0], d[1], d[2], d[3], relative, s.start, s.max, s.up, s.down, 0);
    else if (axes == 3)
        c.CALL(TrevikA_T_LINE3_move, 0, 0, d[0], d[1], d[2], relative, s.start, s.max, s.up, s.down, 0);
    else if (c.draw.between(0, 1) != 0)
        c.CALL(TrevikA_S_LINE2_move, 0, 0, d[0], d[1], relative, s.start, s.max, s.up, s.down, s.s_up, s.s_down, 0);
    else
        c.CALL(TrevikA_T_LINE2_move, 0, 0, d[0], d[1], relative, s.start, s.max, s.up, s.down, 0);
}

void Lines(Case &c)
{
    Line(c, c.draw.between(2, 4), Speeds(c.draw), 1, 1e6);
    WatchAndPerhapsStop(c);
}

void AnArc(Case &c, const Speeds &s)
{
    const std::int32_t x = c.draw.distance(1, 3000);
    const std::int32_t y = c.draw.distance(1, 3000);
    const std::vector<reference::Point> circle = reference::Arc({x, y}, {0, 0}, true);
    const reference::Point end = circle[c.draw.between(0, static_cast<std::uint32_t>(circle.size()) - 1)];
    const std::uint32_t direction = c.draw.between(0, 1);
    if (c.draw.between(0, 1) != 0)
        c.CALL(TrevikA_ARC_center_move, 0, 0, x, y, end.x, end.y, 0, s.max, direction);
    else
        c.CALL(TrevikA_S_ARC_center_move, 0, 0, x, y, end.x, end.y, relative, s.start, s.max, s.up, s.s_up,
               direction, 0);
}

void Arcs(Case &c)
{
    AnArc(c, Speeds(c.draw));
    WatchAndPerhapsStop(c);
}

// Moves of one kind or another behind one another, each queued while the one before it runs.
void Chains(Case &c)
{
    const std::uint32_t kind = c.draw.between(0, 2);
    for (std::uint8_t axis = 0; axis < 4; ++axis) {
        c.CALL(TrevikA_velocity_range_fix, 0, axis, c.draw.magnitude(1e4, 1e6));
        c.CALL(TrevikA_continuous_flag_set, 0, axis, 1);
    }
    for (std::uint32_t move = c.draw.between(2, 6); move > 0 && !c.failed; --move) {
        const Speeds s(c.draw);
        if (kind == 0)
            Move(c, c.draw.distance(1, 1e5), s);
        else if (kind == 1 || c.draw.between(0, 1) != 0)
            Line(c, 2, s, 1, 1e5);
        else
            AnArc(c, s);
        while (c.expected.queued() && !c.failed)
            c.watch(1);
        c.watch(c.draw.between(0, 5));
    }
}

constexpr void (*kinds[])(Case &) = {Positions, Changes, Velocities, Lines, Arcs, Chains};

} // namespace

TEST_CASE("positions over time are what the written registers describe")
{
    unsigned seed = 1;
    std::size_t wanted = 20'000;
    const char *const text = std::getenv("TREVIK_NUMBERS");
    if (text != nullptr)
        std::istringstream(text) >> seed >> wanted;
    std::size_t samples = 0;
    std::size_t cases = 0;
    for (; samples < wanted; ++seed, ++cases) {
        Case c(seed);
        kinds[seed % std::size(kinds)](c);
        c.finish();
        samples += c.samples;
        if (c.failed)
            FAIL("TREVIK_NUMBERS=\"" << seed << " 1\"\n" << c.text());
    }
    if (text != nullptr)
        MESSAGE(cases << " cases, " << samples << " positions compared");
}

// The pulse-generator chip of a virtual card: four axis sections with their registers, which really move.
//
// Time is a number of nanoseconds that the caller gives and that never goes back. The state at any time is computed
// from the running operations, however long ago the last request was; the work depends on how many operations ended
// and switches were passed since then, never on how many pulses that took. Basic arithmetic only: no allocation,
// exceptions, threads or library.
#pragma once

#include "driver/fields.h"
#include "driver/mode_word.h"
#include "driver/registers.h"
#include "virtual/arc_path.h"
#include "virtual/comparator.h"
#include "virtual/event.h"
#include "virtual/homing.h"
#include "virtual/input.h"
#include "virtual/moment.h"
#include "virtual/operation.h"
#include "virtual/speed_profile.h"
#include "virtual/surroundings.h"

#include <array>
#include <cstdint>

namespace trevik::virtual_card
{

inline constexpr unsigned chip_axes = 4;

class Chip
{
  public:
    // The driver's side. Axis numbers are 0 to 3 here; write codes 0x80 to 0xBF and read codes 0xC0 to 0xFF, others
    // are ignored and read as 0.
    std::uint32_t read(unsigned axis, std::uint32_t read_code, std::int64_t now_ns);
    void write(unsigned axis, std::uint32_t write_code, std::uint32_t value, std::int64_t now_ns);
    void command(unsigned axis_set, std::uint8_t code, std::int64_t now_ns);
    std::uint16_t main_status(unsigned axis, std::int64_t now_ns);
    std::uint16_t sub_status(unsigned axis, std::int64_t now_ns);

    // A register as it was written, which time does not change.
    std::uint32_t setting(unsigned axis, Register reg) const { return sections_[axis].reg(reg); }

    // What an axis raised since this was last asked, whether or not its flag registers were read; up to the time of
    // the last call that had one.
    struct Raised {
        std::uint32_t events = 0;
        std::uint32_t errors = 0;
    };
    unsigned raised_axes() const { return raised_axes_; }
    Raised take_raised(unsigned axis);

    // The machine's side.
    std::int32_t position(unsigned axis, std::int64_t now_ns);
    // False while the axis moves by itself.
    bool move_by_hand(unsigned axis, std::int32_t position, std::int64_t now_ns);
    double speed(unsigned axis, std::int64_t now_ns); // signed pulses/s
    bool input(unsigned axis, Input input, std::int64_t now_ns);
    void set_input(unsigned axis, Input input, bool active, std::int64_t now_ns);
    bool output(unsigned axis, Output output, std::int64_t now_ns);
    void turn_handwheel(unsigned axis, std::int32_t counts, double seconds, std::int64_t now_ns);
    // The encoder gives this many counts for every pulse of the machine's way, from here on; negative: the other way
    // round.
    void set_encoder_scale(unsigned axis, std::int32_t counts, std::int64_t now_ns);

    // For a position loop beside the chip.
    // Pulses move the machine the other way round.
    void set_reversed(unsigned axis, bool reversed, std::int64_t now_ns);
    // The encoder trails the pulses by this time at their speed.
    void set_feedback_trail(unsigned axis, double seconds, std::int64_t now_ns);
    // When an axis is this fast, from a time on that has come, if nothing happens before.
    std::int64_t time_as_fast(unsigned axis, double pps, std::int64_t from_ns);

    // Changes what stands around an axis.
    template <class Change>
    void rebuild(unsigned axis, std::int64_t now_ns, Change change)
    {
        advance(now_ns);
        change(sections_[axis].around);
        note_watched(axis);
        reconsider(axis, now_ns);
    }

    // Time at which the next thing happens by itself, after `now_ns`; never_ns: nothing will.
    std::int64_t next_event(std::int64_t now_ns);

  private:
    enum class State { Idle, Waiting, Running };

    static constexpr unsigned register_count = 0x40;

    // One axis.
    struct Section {
        std::array<std::uint32_t, register_count> registers{};
        std::uint32_t inputs = 0; // set by hand
        std::uint32_t events = 0; // since EVENT_FLAGS was read
        std::uint32_t errors = 0; // since ERROR_FLAGS was read
        Raised raised;
        std::uint32_t latched = 0;
        std::uint32_t ports = 0x87; // levels; points 1 to 3 are on at low level
        bool drive_cleared = false; // the output that clears the drive's deviation, which is point 0

        // Bits of the comparators that are on, and of those that were met at the last look.
        unsigned compares = 0;
        unsigned met = 0;
        std::int64_t wheel_seen_ns = 0; // time of the last look at the handwheel's count

        // Where the axis stands and the signed pulses that it has put out, without what the running operation has
        // done. The registers of the counters hold what they differ from these by.
        std::int64_t base_position = 0;
        std::uint32_t put_out = 0;

        State state = State::Idle;
        Kind kind = Kind::Unknown;
        std::uint8_t group = 0;  // axes of the operation, this one included
        std::uint8_t leader = 0; // the axis whose profile moves them
        StartKind start = StartKind::High;
        std::int64_t distance = 0; // signed pulses of the leg that is running: most operations have one
        std::int64_t target = 0;   // signed pulses to where the operation ends, from where the leg started
        std::int64_t origin = 0;   // signed pulses that the operation had done by then
        std::int64_t rest = 0;     // signed pulses that an interrupted operation has left
        bool interrupted = false;  // it can go on
        std::int8_t last_way = 0;  // direction of the last motion: 1, -1, 0 none yet
        std::uint32_t seen = 0;    // inputs at the last look
        std::uint32_t failed = 0;  // errors of the running operation

        bool preset_chosen = false; // PRESET_MODE was written later than MODE: the next start takes the preset set
        bool queued = false;        // a start command took it, and it waits
        std::uint8_t queued_group = 0;
        StartKind queued_start = StartKind::High;

        // Of the two axes of a circle: the one that holds the path, and which coordinate this axis is.
        std::uint8_t arc_axis = 0;
        bool arc_second = false;

        // Of a leader only.
        std::uint8_t source = 0; // the axis whose registers shape the profile
        bool turns_back = false; // its new end was passed already: it slows down and goes back
        bool stopping = false;   // a decelerating stop is under way
        bool correcting = false; // backlash is being taken up; the leg itself comes next
        bool slowed = false;     // by the slow-down input
        bool creeping = false;   // a homing phase at start speed
        std::int8_t ramp = 0;    // 1 or -1 while its speed rises or falls, if anybody wants to know
        Moment start_time;
        Moment due;                   // when its leg ends, or its comparator starts it
        Moment edge;                  // when one of its axes comes to a switch
        std::int64_t edge_pulses = 0; // its own pulses then
        std::int64_t passed = 0;      // up to here the switches have been looked at
        std::int64_t longest = 0;     // its own pulses in this leg
        SpeedProfile profile;
        HomingState homing;

        std::int64_t arc_done = 0; // steps of the circle before this leg
        ArcPath arc;               // of its first axis

        Surroundings around;
        bool reversed = false; // pulses move the machine the other way: positions here are the opposite of its own
        double trail_s = 0;    // by which the encoder trails the pulses
        Encoder encoder;
        std::int32_t encoder_counts = 1; // for every pulse, as the machine has it
        HandwheelTurn wheel;

        std::uint32_t reg(Register r) const { return registers[WriteCode(r) - 0x80u]; }
        std::uint32_t &reg(Register r) { return registers[WriteCode(r) - 0x80u]; }
        bool busy() const { return state != State::Idle || queued; }
        const Moment &next() const { return edge.before(due) ? edge : due; }
    };

    // A moment of a running operation, and what its leader has put out by then.
    struct Instant {
        Moment when;
        std::int64_t pulses = 0;
        bool arrived = false; // with this pulse; false: something else has changed
    };

    // What a look has found.
    struct Changes {
        std::uint32_t inputs_before = 0;
        unsigned met = 0; // comparators that have become met, or were passed
    };

    // The axes of a set that its operation codes tie together: lines, with the arcs of helices; and the two axes of
    // a circle.
    struct Groups {
        unsigned lines = 0;
        unsigned arcs = 0;

        unsigned of(unsigned bit) const { return (lines & bit) != 0 ? lines : (arcs & bit) != 0 ? arcs : bit; }
    };

    // The sections of a set, in axis order.
    template <class Function>
    void each(unsigned axis_set, Function function)
    {
        for (unsigned axis = 0; axis < chip_axes; ++axis)
            if ((axis_set >> axis & 1) != 0)
                function(axis, sections_[axis]);
    }
    unsigned axis_of(const Section &section) const { return static_cast<unsigned>(&section - sections_.data()); }
    Section &leader_of(const Section &section) { return sections_[section.leader]; }

    // Time passes: chip.cpp
    void advance(std::int64_t now_ns)
    {
        while (next_event_ns_ <= now_ns)
            next_thing();
    }
    void next_thing();
    void update_next_event(std::int64_t now_ns);
    void find_next_look(std::int64_t now_ns);
    void look_at_time(std::int64_t now_ns);
    std::int64_t leader_pulses(Section &leader, std::int64_t now_ns);
    std::int64_t share(const Section &section, std::int64_t pulses);
    std::int64_t pulses_at_step(const Section &section, std::int64_t step);
    int way(const Section &section, const Instant &now);
    double speed_of(const Section &section, std::int64_t now_ns);
    double part_of_speed(const Section &section, std::int64_t pulses);
    std::int64_t travelled(const Section &section, std::int64_t now_ns);
    static std::uint32_t counted(const Section &section, unsigned number, std::int64_t travelled,
                                 std::int64_t now_ns);
    std::uint32_t counter(const Section &section, unsigned number, std::int64_t now_ns);
    void scale_encoder(Section &section, std::int64_t now_ns);
    std::uint32_t status_register(Section &section, std::uint32_t read_code, std::int64_t now_ns);
    void written(Section &section, Register reg, std::uint32_t value, std::int64_t now_ns);

    // The encoder behind a position loop: chip_feedback.cpp
    std::uint32_t trailing_counts(const Section &section, std::int64_t now_ns);

    // Circles: chip_arc.cpp
    void plan_arc(unsigned group);
    std::int64_t arc_steps(const Section &section, std::int64_t pulses);
    std::int64_t arc_share(const Section &section, std::int64_t pulses);
    std::int64_t pulses_at_turn(const Section &section, std::int64_t pulses);

    // Comparators and what they do: chip_comparators.cpp
    static Comparator comparator(const Section &section, Compared compared);
    static StopAction action(const Section &section, Compared compared);
    template <class Function>
    static void each_comparator(const Section &section, Function function);
    void note_watched(unsigned axis);
    Changes observe(Section &section, std::int64_t from, std::int64_t to, const Moment &now);
    void met_now(Section &section, unsigned compared, const Moment &now);
    void latch(Section &section, std::int64_t travelled, std::int64_t now_ns);
    void latch_all(unsigned axis_set, std::int64_t now_ns);
    const Section *trigger_source(const Section &waiting);
    bool triggered(const Section &waiting);
    bool heed_comparators(Section &section, Section &leader, const Changes &changes, const Instant &now);
    static int counting(const Section &section, unsigned counter, int way);
    static std::int64_t steps_to_comparator(const Section &section, std::int64_t done, std::int64_t ahead);
    static std::int64_t wheel_edge(const Section &section);

    // Operations start and end: chip_operation.cpp
    void start(unsigned axis_set, StartKind kind, const Moment &now);
    void queue(unsigned axis_set, StartKind kind);
    void start_queued(const Moment &now);
    bool queue_ready(unsigned axis);
    Groups groups_of(unsigned axis_set, Register mode);
    unsigned choose_leader(unsigned group);
    void prepare(unsigned group, StartKind kind, const Moment &now);
    void begin(Section &leader, const Moment &now);
    void trigger_waiting(const Moment &now);
    void launch(Section &leader, const Moment &now);
    ProfileInput leg_input(const Section &leader);
    static std::int64_t own_pulses(const Section &leader);
    std::uint32_t slack(const Section &leader);
    static std::int64_t rest_of_operation(const Section &section);
    void settle_group(Section &leader, const Instant &now);
    void finish(Section &leader, const Moment &now);

    // Running operations change, stop and restart: chip_change.cpp
    void drop_queue(unsigned axis_set);
    void stop(unsigned axis_set, const Moment &now);
    void stop_at_once(unsigned axis_set, std::int64_t now_ns);
    void slow_down(Section &leader, const Section &rates, const Moment &now, double last_pps);
    void slow_to_start_speed(Section &leader, const Section &rates, const Moment &now);
    void replan(Section &leader, const Moment &now);
    void retarget(Section &section, const Moment &now);
    void mode_written(Section &section, const Moment &now);
    void line_changed(Section &section, const Moment &now);
    void distance_written(Section &section, const Moment &now);
    bool can_restart(const Section &leader, unsigned axis_set);
    void restart(unsigned axis_set, const Moment &now);

    // Events and errors: chip_events.cpp
    void raise_event(Section &section, Event event);
    void raise_error(Section &section, Error error);
    SpeedProfile::Ramp ramp_now(Section &leader, std::int64_t now_ns);
    void note_ramp(Section &leader, std::int64_t now_ns);
    void change_ramp(Section &leader, int way);
    void events_chosen(unsigned axis, std::int64_t now_ns);
    void raise_in_busy(unsigned axis_set, Error error);

    // Status of inputs and outputs: chip_ports.cpp
    std::uint32_t extended_inputs(const Section &section, std::int64_t now_ns);
    void switch_output(unsigned axis_set, unsigned code);

    // Inputs and what they do: chip_inputs.cpp
    std::uint32_t inputs_at(const Section &section, std::int64_t travelled);
    std::uint32_t inputs_now(const Section &section, std::int64_t now_ns);
    void reconsider(unsigned axis, std::int64_t now_ns);
    Instant here(Section &leader, std::int64_t now_ns);
    void find_edge(Section &leader, std::int64_t now_ns);
    std::int64_t next_edge(const Section &section, std::int64_t pulses, bool index);
    void look_again(unsigned axis, std::int64_t now_ns);
    void look(Section &leader, const Instant &now);
    void observe_group(Section &leader, const Instant &now, std::array<Changes, chip_axes> &changes);
    void act(Section &section, Section &leader, const Changes &changes, const Instant &now);
    static bool beyond_limit(const Section &section);
    bool protect(Section &section, Section &leader, const Instant &now);
    void fail(Section &section, Section &leader, Error error, bool slowly, const Instant &now);
    static bool asks_slow_down(const Section &section);
    bool slow_down_asked(const Section &leader);
    void heed_slow_down(Section &section, Section &leader, bool rising, const Instant &now);

    // Homing: chip_homing.cpp
    void begin_homing(Section &axis, const Moment &now);
    void begin_phase(Section &axis, const Instant &now);
    void end_phase(Section &axis, const Instant &now);
    bool expects_limit(const Section &axis);
    void look_for_home(Section &axis, std::uint32_t before, const Instant &now);
    bool index_counted(Section &axis, std::uint32_t rising, const Instant &now);
    void reach(Section &axis, const Instant &now);
    void travel_clearance(Section &axis, const Instant &now);

    std::array<Section, chip_axes> sections_;
    std::int64_t next_event_ns_ = never_ns;
    std::int64_t next_look_ns_ = never_ns; // at what only time brings about
    unsigned busy_axes_ = 0;               // not idle
    unsigned watched_axes_ = 0;            // with switches or comparators that depend on the position
    unsigned timed_axes_ = 0;              // with comparators or events that time brings about by itself
    unsigned raised_axes_ = 0;
};

} // namespace trevik::virtual_card

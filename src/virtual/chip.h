// The pulse-generator chip of a virtual card: four axis sections with their registers, which really move.
//
// Time is a number of nanoseconds that the caller gives and that never goes back. The state at any time is computed
// from the running operations, however long ago the last request was; the work depends on how many operations ended
// since then, never on how many pulses they had. Basic arithmetic only: no allocation, exceptions, threads or
// library.
#pragma once

#include "driver/mode_word.h"
#include "driver/registers.h"
#include "virtual/moment.h"
#include "virtual/speed_profile.h"

#include <array>
#include <cstdint>

namespace trevik::virtual_card
{

inline constexpr unsigned chip_axes = 4;

enum class Input : std::uint8_t {
    PlusLimit,
    MinusLimit,
    Home,
    Index,
    SlowDown,
    Alarm,
    InPosition,
    Latch,
    PositionChange,
    Count
};

class Chip
{
  public:
    // The driver's side. Axis numbers are 0 to 3 here; write codes 0x80 to 0xBF and read codes 0xC0 to 0xFF, others
    // are ignored and read as 0.
    std::uint32_t read(unsigned axis, std::uint32_t read_code, std::int64_t now_ns);
    void write(unsigned axis, std::uint32_t write_code, std::uint32_t value, std::int64_t now_ns);
    void command(unsigned axis_set, std::uint8_t code, std::int64_t now_ns);
    std::uint16_t main_status(unsigned axis, std::int64_t now_ns);
    std::uint16_t sub_status(unsigned axis) const;

    // The machine's side.
    std::int32_t position(unsigned axis, std::int64_t now_ns);
    bool move_by_hand(unsigned axis, std::int32_t position,
                      std::int64_t now_ns);           // false while the axis moves by itself
    double speed(unsigned axis, std::int64_t now_ns); // signed pulses/s
    bool input(unsigned axis, Input input) const;
    void set_input(unsigned axis, Input input, bool active);

    // Time at which the next thing happens by itself, after `now_ns`; never_ns: nothing will.
    std::int64_t next_event(std::int64_t now_ns);

  private:
    enum class State { Idle, Waiting, Running };

    static constexpr unsigned register_count = 0x40;

    // One axis.
    struct Section {
        std::array<std::uint32_t, register_count> registers{};
        std::uint32_t inputs = 0;

        // Where the axis stands, without what the running operation has done.
        std::int32_t base_position = 0;
        std::uint32_t base_counter1 = 0;

        State state = State::Idle;
        std::uint8_t group = 0;  // axes of the operation, this one included
        std::uint8_t leader = 0; // the axis whose profile moves them
        StartKind start = StartKind::High;
        std::int64_t distance = 0;   // signed pulses of the operation, from where it started last
        std::int64_t origin = 0;     // signed pulses that the operation had done by then
        bool turns_back = false;     // its new end was passed already: it slows down and goes back
        bool stopping = false;       // a decelerating stop is under way
        std::uint32_t remaining = 0; // pulses that a stopped operation has left

        bool preset_chosen = false; // PRESET_MODE was written later than MODE: the next start takes the preset set
        bool queued = false;        // a start command took it, and it waits
        std::uint8_t queued_group = 0;
        StartKind queued_start = StartKind::High;

        // Of a leader only.
        Moment start_time;
        Moment due;               // when its operation ends, or its comparator starts it
        std::int64_t longest = 0; // the leader's own pulses
        SpeedProfile profile;

        std::uint32_t reg(Register r) const { return registers[WriteCode(r) - 0x80u]; }
        std::uint32_t &reg(Register r) { return registers[WriteCode(r) - 0x80u]; }
        bool busy() const { return state != State::Idle || queued; }
    };

    // The sections of a set, in axis order.
    template <class Function>
    void each(unsigned axis_set, Function function)
    {
        for (unsigned axis = 0; axis < chip_axes; ++axis)
            if ((axis_set >> axis & 1) != 0)
                function(axis, sections_[axis]);
    }
    Section &leader_of(const Section &section) { return sections_[section.leader]; }

    // Time passes: chip.cpp
    void advance(std::int64_t now_ns)
    {
        while (next_event_ns_ <= now_ns)
            next_thing();
    }
    void next_thing();
    void update_next_event(std::int64_t now_ns);
    std::int64_t leader_pulses(Section &leader, std::int64_t now_ns);
    std::int64_t share(const Section &section, std::int64_t pulses);
    std::int64_t travelled(const Section &section, std::int64_t now_ns);
    std::uint32_t counter1(const Section &section, std::int64_t now_ns);
    std::uint32_t status_register(const Section &section, std::uint32_t read_code, std::int64_t now_ns);

    // The comparator start trigger: chip_trigger.cpp
    Moment comparator_time(const Section &waiting, std::int64_t now_ns);
    Moment time_of_count(const Section &source, std::uint32_t count, std::int64_t now_ns);

    // Operations start, change and end: chip_operation.cpp
    void start(unsigned axis_set, StartKind kind, const Moment &now);
    void queue(unsigned axis_set, StartKind kind);
    void start_queued(const Moment &now);
    bool queue_ready(unsigned axis);
    unsigned line_axes(unsigned axis_set, Register mode);
    void prepare(unsigned group, StartKind kind, const Moment &now);
    void launch(Section &leader, const Moment &now);
    void trigger_waiting(const Moment &now);
    void settle_group(Section &leader, std::int64_t pulses);
    void finish(Section &leader, const Moment &now);
    void drop_queue(unsigned axis_set);
    void stop(unsigned axis_set, std::int64_t now_ns);
    void stop_at_once(unsigned axis_set, std::int64_t now_ns);
    void change_distance(Section &section, std::int64_t now_ns);
    void slow_down(Section &leader, const Section &rates, std::int64_t now_ns);

    std::array<Section, chip_axes> sections_;
    std::int64_t next_event_ns_ = never_ns;
};

} // namespace trevik::virtual_card

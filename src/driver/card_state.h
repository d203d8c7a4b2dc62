// What the library remembers of its cards. The tables are fixed, indexed by card and axis number, and process-wide.
#pragma once

#include "driver/relaxed.h"
#include "platform/os.h"

#include <trevik/TrevikA.h>

#include <array>
#include <atomic>
#include <cstdint>

namespace trevik
{

inline constexpr unsigned card_count = 16;
inline constexpr unsigned axis_count = 4;

enum class CardModel : std::uint8_t { A = 0, AC = 1, Unsupported = 2, None = 255 };

// A card as the enumeration found it.
struct CardRecord {
    Relaxed<std::uint8_t> CardNumber; // the record's own index; 255: no card of that number
    Relaxed<CardModel> Model;
    Relaxed<std::uint32_t> ResourceValue; // kept, not interpreted
    Relaxed<std::uint16_t> ResourceWord;  // handed out by TrevikA_info
};

// What an axis's chip cannot tell back. All zero in a freshly loaded library; start_up gives the values that
// start-up writes.
struct AxisShadow {
    Relaxed<std::uint32_t> FixedMultiplier; // used while the speed range is fixed
    Relaxed<std::uint32_t> RangeFixed;      // flag
    Relaxed<std::uint32_t> ModeWord;        // last composed for MODE or PRESET_MODE
    Relaxed<std::uint8_t> ContinuousFlag;   // not 0: moves are queued in the preset registers
    Relaxed<std::uint32_t> LastTarget;      // signed pulses: where the last commanded move ends
    Relaxed<std::uint8_t> BacklashEnabled;
    Relaxed<std::uint32_t> CorrectionSpeed; // pulses/s
    Relaxed<std::uint8_t> MoveIssued;       // 1 once a move was issued
    Relaxed<std::uint8_t> ShortfallPending; // 1: ArcShortfall was measured and not used yet
    Relaxed<std::uint8_t> LastMoveWasArc;
    Relaxed<std::uint32_t> ArcShortfall; // signed pulses: LastTarget - position when last seen idle
    Relaxed<std::uint32_t> IrqSourceShadow;
    Relaxed<std::uint8_t> PulserEnabled;
    Relaxed<std::uint16_t> PulserRatio; // motion pulses per handwheel count
    Relaxed<std::uint8_t> PulserMap;    // axis whose handwheel counter drives this axis
    Relaxed<std::int32_t> PulserBase;   // counts times PulserDirection, as followed so far
    // Start-up leaves the rest as it is.
    Relaxed<std::int32_t> PulserDirection;              // 1 or -1; 0 until the axis is mapped: it does not follow
    std::array<Relaxed<std::int32_t>, 5> PulserHistory; // pulses a tick, newest first
    Relaxed<std::uint32_t> PulserTarget;                // signed pulses: the position that the axis is driven to
    Relaxed<std::int32_t> PulserLastSpeed;              // pulses/s: the last that was not 0
    Relaxed<bool> PulserUnsettled; // base and target are not known: a read for them was refused

    void start_up(std::uint8_t axis);
};

// A driver handle. Holds the complement, so that the tables are valid before any constructor has run: all zero
// means all handles invalid.
class HandleSlot
{
  public:
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is a number that the system calls a pointer
    os::HANDLE get() const { return reinterpret_cast<os::HANDLE>(~static_cast<std::uintptr_t>(complement_)); }
    void set(os::HANDLE handle) { complement_ = ~reinterpret_cast<std::uintptr_t>(handle); }
    bool open() const { return complement_ != 0; }

  private:
    Relaxed<std::uintptr_t> complement_;
};

using UserCallback = void(TREVIK_CALL *)(std::uint32_t card);

struct CardState;

// A thread that calls back, and what has to be closed when it has ended.
struct CallbackThread {
    CardState *card = nullptr;
    std::uint32_t number = 0;       // counts the links of the card
    os::HANDLE event = nullptr;     // null: it could not be created
    os::HANDLE IrqThread = nullptr; // likewise
    Relaxed<bool> left;             // the thread is about to return from the library's code for good
};

// What the callback threads of a card read. Links are numbered; those not closed yet are oldest to next - 1. Numbers
// wrap like the table's places do.
struct CallbackLink {
    Relaxed<std::uint8_t> CardNumber;
    Relaxed<UserCallback> Callback;
    std::atomic<os::HANDLE> LinkEvent;      // of the newest link; whoever takes it away may close it
    std::atomic<std::uint32_t> ended_below; // threads of earlier numbers were told to end
    Relaxed<std::uint32_t> oldest;
    std::atomic<std::uint32_t> next; // counted up after its link has cleared IrqIdle
    std::array<CallbackThread, 32> threads{};

    CallbackThread &thread(std::uint32_t number_of_link) { return threads[number_of_link % threads.size()]; }
    bool full() const { return next - oldest == threads.size(); }
};

// One card. Cards stand on cache lines of their own, so that threads on different cards do not slow each other.
struct alignas(64) CardState {
    HandleSlot DriverHandle;
    CardRecord Record;
    Relaxed<std::uint8_t> IrqIdle;          // 1: interrupt delivery is not enabled
    Relaxed<os::HANDLE> IrqEvent;           // of the last enable; never closed
    Relaxed<std::uint8_t> CompareStartAxis; // axis whose comparator gives the start trigger
    std::array<AxisShadow, axis_count> Axes;
    CallbackLink Link;
};

using CardTable = std::array<CardState, card_count>;

inline void AxisShadow::start_up(std::uint8_t axis)
{
    FixedMultiplier = 299; // a speed unit of 1 pulse/s
    RangeFixed = 0;
    ModeWord = 0x1000041;
    ContinuousFlag = std::uint8_t{0};
    LastTarget = 0;
    BacklashEnabled = std::uint8_t{0};
    CorrectionSpeed = 1000;
    MoveIssued = std::uint8_t{0};
    ShortfallPending = std::uint8_t{0};
    LastMoveWasArc = std::uint8_t{0};
    ArcShortfall = 0;
    IrqSourceShadow = 0;
    PulserEnabled = std::uint8_t{0};
    PulserRatio = std::uint16_t{1};
    PulserMap = axis;
    PulserBase = 0;
}

} // namespace trevik

// Timers and interrupts of a card, as its driver handles them: the requests are made directly.
#include "support/virtual_machine.h"

#include "platform/host/handles.h"

#include <array>
#include <chrono>
#include <semaphore>
#include <string>
#include <thread>
#include <vector>

using namespace trevik;
using namespace trevik::test;
using virtual_card::TheBus;

namespace
{

constexpr std::uint32_t process = 4711;
constexpr std::uint32_t move_ended = 1u << 0; // events
constexpr std::uint32_t plus_limit = 1u << 5; // errors
constexpr std::uint32_t port_state = 118;

using Reply = std::array<std::uint8_t, 84>;

template <std::size_t Size = 0>
std::array<std::uint8_t, Size> Request(unsigned card, ControlCode code, RequestBuffer<32> in,
                                       std::uint32_t in_size = 32)
{
    std::array<std::uint8_t, Size> out{};
    std::uint32_t returned = 0;
    CHECK(TheBus().hold(card)->control({static_cast<std::uint32_t>(code), in.data(), in_size, out.data(), Size},
                                       host::NowNanoseconds(), returned) == 0);
    CHECK(returned == Size);
    return out;
}

void Write(unsigned card, std::uint32_t port, std::uint32_t value)
{
    RequestBuffer<32> in;
    Request(card, ControlCode::IOCTL_PORT_WRITE, in.put(8, port).put(20, static_cast<std::uint16_t>(value)));
}

std::uint32_t Read(unsigned card, std::uint32_t port)
{
    RequestBuffer<32> in;
    return GetField<std::uint16_t>(Request<32>(card, ControlCode::IOCTL_PORT_READ, in.put(8, port)).data(), 20);
}

// The snapshot as text: "card 3 kinds 12 events 0 1 0 0 errors 0 0 0 0", numbers in hexadecimal.
std::string Snapshot(unsigned card = 0)
{
    const Reply reply = Request<84>(card, ControlCode::IOCTL_IRQ_STATUS, {}, 0);
    char text[120];
    const auto slot = [&reply](std::size_t at) { return GetField<std::uint32_t>(reply.data(), at); };
    std::snprintf(text, sizeof text, "card %x axes %x events %x %x %x %x errors %x %x %x %x", reply[0], reply[1],
                  slot(20), slot(24), slot(28), slot(32), slot(52), slot(56), slot(60), slot(64));
    return text;
}

const std::string nothing = "card 0 axes 0 events 0 0 0 0 errors 0 0 0 0";

// A program that waits for a card's interrupts.
class Waiting
{
  public:
    explicit Waiting(unsigned card = 0, bool enable = true) : card_(card)
    {
        link(process);
        if (enable)
            this->enable(true);
    }
    ~Waiting() { os::CloseHandle(event_); }
    Waiting(const Waiting &) = delete;
    Waiting &operator=(const Waiting &) = delete;

    void link(std::uint32_t of) const
    {
        const std::uint32_t event = host::HandleKey(event_);
        RequestBuffer<32> in;
        Request(card_, ControlCode::IOCTL_IRQ_LINK, in.put(16, of).put(24, event).put(28, event));
    }
    void enable(bool on) const
    {
        RequestBuffer<32> in;
        Request(card_, ControlCode::IOCTL_IRQ_ENABLE, in.put(16, process).put(20, static_cast<std::uint8_t>(on)));
    }
    void release(std::uint32_t by) const
    {
        RequestBuffer<32> in;
        Request(card_, ControlCode::IOCTL_RELEASE, in.put(16, by));
    }
    // True once for all signals since this was last asked.
    bool signalled() const { return os::WaitForSingleObject(event_, 0) == os::WaitObject0; }
    void wait() const { os::WaitForSingleObject(event_, os::Infinite); }

  private:
    unsigned card_;
    os::HANDLE event_ = os::CreateEventA(nullptr, 0, 0, nullptr);
};

bool AlarmSet()
{
    return host::clock_state.alarm_due_ns != virtual_card::never_ns;
}

// Axis 0 moves 100 pulses in 1 ms.
void Move(std::uint8_t card, std::uint8_t axis)
{
    CHECK(TrevikA_T_position_move(card, axis, 100, 0, 100000, 100000, 0, 0, 0) == TREVIK_OK);
}

// What a clock that looks each millisecond sees: a letter for each, '-' for no signal.
struct Watch {
    const Waiting &waiting;
    std::string seen;

    static void TREVIK_CALL Look(os::UINT, os::UINT, os::DWORD_PTR user, os::DWORD_PTR, os::DWORD_PTR)
    {
        Watch &watch = *reinterpret_cast<Watch *>(user); // NOLINT(performance-no-int-to-ptr)
        watch.seen += watch.waiting.signalled() ? 'x' : '-';
    }
    std::string over(double seconds)
    {
        seen.clear();
        const os::UINT timer =
            os::timeSetEvent(1, 0, Look, reinterpret_cast<os::DWORD_PTR>(this), os::TimePeriodic);
        TrevikHost_advance(seconds);
        os::timeKillEvent(timer);
        return seen;
    }
};

} // namespace

TEST_CASE_FIXTURE(VirtualMachine, "timers expire at each of their periods, in one step of the clock")
{
    const Waiting waiting;
    Watch watch{waiting, {}};
    Write(0, 78, 1);
    TrevikA_timer_set(0, 0, 1500);
    CHECK(watch.over(0.006) == "------"); // it stands
    Write(0, 68, 1);
    CHECK(next_event() == doctest::Approx(0.0015).epsilon(1e-9));
    CHECK(watch.over(0.009) == "-xx-xx-xx"); // at 1.5, 3, 4.5, ... ms
    TrevikA_timer_set(0, 1, 0x10000);        // 65.536 ms
    TrevikA_timer_set(0, 0, 0);
    CHECK(Snapshot() == "card 1 axes 0 events 0 0 0 0 errors 0 0 0 0");
    TrevikHost_advance(0.065535);
    CHECK(Snapshot() == nothing);
    TrevikHost_advance(0.000001);
    CHECK(Snapshot() == "card 2 axes 0 events 0 0 0 0 errors 0 0 0 0");
    CHECK((Read(0, 76) == 1 && Read(0, 74) == 0 && Read(0, 68) == 1));

    // The high half counts with the low half; a start begins both periods anew.
    TrevikA_timer_set(0, 0, 2000);
    TrevikA_timer_set(0, 1, 3000);
    TrevikHost_advance(0.001);
    Write(0, 72, 1);
    Write(0, 68, 1);
    Snapshot();
    waiting.signalled();
    CHECK(watch.over(0.006) == "-xxx-x"); // at 6 ms both, with one signal
    CHECK(Snapshot() == "card 3 axes 0 events 0 0 0 0 errors 0 0 0 0");
    Write(0, 68, 0);
    CHECK(watch.over(0.006) == "------");
    CHECK_FALSE(std::isfinite(next_event()));

    // A timer of a microsecond costs no more, however late the card is looked at.
    waiting.enable(false);
    TrevikA_timer_set(0, 0, 1);
    TrevikA_timer_set(0, 1, 0);
    Write(0, 68, 1);
    TrevikHost_advance(1e6);
    CHECK(Snapshot() == "card 1 axes 0 events 0 0 0 0 errors 0 0 0 0");
}

TEST_CASE_FIXTURE(VirtualMachine, "masked sources neither interrupt nor enter the snapshot")
{
    const Waiting waiting;
    CHECK(Read(0, port_state) == 0x00F);
    for (unsigned axis = 0; axis < 4; ++axis)
        WriteRegister(axis, Register::EVENT_ENABLE, move_ended);
    CHECK(TrevikVirtual_input_set(0, 3, TREVIK_VIRTUAL_PLUS_LIMIT, 1) == TREVIK_OK);
    TrevikA_timer_set(0, 0, 700);
    Write(0, 68, 1);
    TrevikA_IRQ_mask_set(0, 1, 0);
    CHECK(Read(0, port_state) == 0x00D);

    Move(0, 1);
    TrevikHost_advance(0.01);
    CHECK_FALSE(waiting.signalled());
    TrevikA_IRQ_mask_set(0, 1, 1);
    Write(0, 78, 1);
    CHECK(Read(0, port_state) == 0x01F);
    CHECK_FALSE(waiting.signalled()); // what is past stays past
    CHECK(Snapshot() == nothing);
    Write(0, 68, 0);

    Move(0, 1);
    TrevikHost_advance(0.0009);
    CHECK_FALSE(waiting.signalled());
    TrevikHost_advance(0.0001);
    CHECK(waiting.signalled());
    Move(0, 1); // a flag that is set already
    Move(0, 3);
    CHECK(waiting.signalled()); // the limit
    TrevikHost_advance(0.001);
    CHECK(waiting.signalled());
    CHECK_FALSE(waiting.signalled());
    CHECK(Read(0, port_state) == 0xA1F);
    CHECK(Snapshot() == "card 0 axes 84 events 0 1 0 0 errors 0 0 0 20");
    CHECK((Read(0, port_state) == 0x01F && Snapshot() == nothing));
    CHECK(ReadStatus(3, StatusRegister::ERROR_FLAGS) == plus_limit); // the chip's own flags are apart
}

TEST_CASE("two cards interrupt apart, and a link ends in each of its ways")
{
    const VirtualMachine machine("0:A,1:AC");
    const Waiting first(0);
    const Waiting second(1);
    for (const unsigned card : {0u, 1u}) {
        Write(card, 78, 1);
        TrevikA_timer_set(static_cast<std::uint8_t>(card), 0, 2000 + 1000 * card);
        Write(card, 68, 1);
    }
    Watch one{first, {}};
    Watch two{second, {}};
    CHECK(one.over(0.006) == "-x-x-x");
    CHECK(two.over(0.006) == "x-x--x"); // the first of them is from before
    first.release(process + 1);
    CHECK(one.over(0.004) == "xx-x");
    {
        const Waiting other(0); // takes the place
        TrevikHost_advance(0.002);
        CHECK((other.signalled() && !first.signalled()));
    }
    TrevikHost_advance(0.002); // its event is closed: signalled in vain
    first.link(process);
    first.enable(false);
    CHECK(one.over(0.004) == "----");
    CHECK(AlarmSet()); // for the second card
    second.release(process);
    CHECK(two.over(0.006) == "x-----");
    CHECK_FALSE(AlarmSet());
    first.enable(true);
    CHECK(one.over(0.004) == "-x-x");
    CHECK(TrevikA_close() == TREVIK_OK); // with the device
    CHECK(one.over(0.004) == "----");
    CHECK_FALSE(AlarmSet());
    CHECK(Quietly(TrevikA_initial) == TREVIK_OK);
    manager.StopPulserTicks();
    first.link(process);
    first.enable(true);
    CHECK(AlarmSet());
    CHECK(TrevikVirtual_cards_set("1:A") == TREVIK_OK); // with the card
    CHECK(one.over(0.004) == "----");
    CHECK_FALSE(AlarmSet());
}

namespace
{

// A program that starts each move in its callback for the end of the one before it.
class Chain
{
  public:
    explicit Chain(int rounds) : rounds_(rounds)
    {
        running = this;
        CHECK(TrevikA_event_factor_set(0, 0, move_ended) == TREVIK_OK);
        CHECK(TrevikA_IRQ_process_link(0, Callback) == TREVIK_OK);
        CHECK(TrevikA_IRQ_enable(0) == TREVIK_OK);
        Move(0, 0);
    }
    bool callback_ran() { return ran_.try_acquire_for(std::chrono::seconds(20)); }
    bool ended_right() const { return calls_ == rounds_ && wrong_ == 0; }

  private:
    static void TREVIK_CALL Callback(std::uint32_t) { running->next(); }
    void next()
    {
        ++calls_; // one too few or too many is one whose axis stands elsewhere
        std::uint8_t sources = 0;
        std::uint32_t events = 0;
        std::uint32_t errors = 0;
        TrevikA_IRQ_status_read(0, 0, &sources, &events, &errors);
        const bool right = VirtualMachine::at(0) == 100 * calls_ && sources == 1 && events == move_ended;
        wrong_ += right ? 0 : 1;
        if (calls_ < rounds_)
            Move(0, 0);
        ran_.release();
    }

    static inline Chain *running = nullptr;
    const int rounds_;
    int calls_ = 0;
    int wrong_ = 0;
    std::counting_semaphore<> ran_{0};
};

} // namespace

TEST_SUITE("concurrent")
{
    TEST_CASE("a callback for each of 10,000 moves, none twice")
    {
        const VirtualMachine machine;
        Chain chain(10'000);
        for (int i = 0; i < 10'000; ++i) {
            TrevikHost_advance(VirtualMachine::next_event());
            REQUIRE(chain.callback_ran());
        }
        TrevikA_close();
        CHECK(chain.ended_right());
    }

    TEST_CASE("in real time a callback follows its cause by itself, beside a thread that links another card")
    {
        const VirtualMachine machine("0:A,1:A", true);
        TrevikHost_clock_manual(0);
        Chain chain(300);
        for (int i = 0; i < 300; ++i) {
            const Waiting other(1);
            other.enable((i & 1) != 0);
            REQUIRE(chain.callback_ran());
        }
        TrevikA_close();
        CHECK(chain.ended_right());
    }
}

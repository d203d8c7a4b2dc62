// Timers and interrupts of a card, as its driver handles them.
#include "support/virtual_machine.h"

#include "driver/requests.h"

#include <string>
#include <utility>

using namespace trevik;
using namespace trevik::test;

namespace
{

constexpr std::uint32_t move_ended = 1u << 0; // events
constexpr std::uint32_t plus_limit = 1u << 5; // errors

os::HANDLE HandleOf(std::uint8_t card)
{
    Card checked;
    REQUIRE(manager.checked(card, checked) == Result::Ok);
    return checked.state().DriverHandle.get();
}

// The snapshot of card 0 as text, with the axes that have something in it: "card 3, axis 1: bits 1 event 1 error 0".
std::string Snapshot()
{
    InterruptSnapshot snapshot;
    CHECK(IrqStatusRequest(HandleOf(0), snapshot) == Result::Ok);
    std::string text = "card " + std::to_string(snapshot.card_level());
    for (unsigned axis = 0; axis < 4; ++axis)
        if (snapshot.axis_bits(axis) != 0)
            text += ", axis " + std::to_string(axis) + ": bits " + std::to_string(snapshot.axis_bits(axis)) +
                    " event " + std::to_string(snapshot.event_byte(axis)) + " error " +
                    std::to_string(snapshot.error_byte(axis));
    return text;
}

// A program that waits for a card's interrupts.
class Waiting
{
  public:
    explicit Waiting(std::uint8_t card = 0) : handle_(HandleOf(card))
    {
        link();
        enable(true);
    }
    ~Waiting() { os::CloseHandle(event_); }
    Waiting(const Waiting &) = delete;
    Waiting &operator=(const Waiting &) = delete;

    void link() const { IrqLinkRequest(handle_, os::GetCurrentProcessId(), event_); }
    void enable(bool on) const { IrqEnableRequest(handle_, on); }
    void release() const { ReleaseRequest(handle_); }
    // True once for all signals since this was last asked.
    bool signalled() const { return os::WaitForSingleObject(event_, 0) == os::WaitObject0; }

    // What is seen in the next milliseconds: a letter for each, '-' for no signal.
    std::string over(int milliseconds) const
    {
        std::string seen;
        for (; milliseconds > 0; --milliseconds) {
            TrevikHost_advance(0.001);
            seen += signalled() ? 'x' : '-';
        }
        return seen;
    }

  private:
    os::HANDLE handle_;
    os::HANDLE event_ = os::CreateEventA(nullptr, 0, 0, nullptr);
};

bool AlarmSet()
{
    return host::clock_state.alarm_due_ns != virtual_card::never_ns;
}

// An axis moves 100 pulses in 1 ms.
void Move(std::uint8_t axis)
{
    CHECK(TrevikA_T_position_move(0, axis, 100, 0, 100000, 100000, 0, 0, 0) == TREVIK_OK);
}

} // namespace

TEST_CASE_FIXTURE(VirtualMachine,
                  "timers expire at each of their periods, and signal once however late they are looked at")
{
    const Waiting program;
    TrevikA_IRQ_mask_set(0, 4, 1);
    TrevikA_timer_set(0, 0, 1500);
    CHECK(program.over(6) == "------"); // it stands
    TrevikA_timer_start(0);
    CHECK(program.over(9) == "-xx-xx-xx"); // at 1.5, 3, 4.5, ... ms
    TrevikA_timer_set(0, 0, 2000);
    TrevikA_timer_set(0, 1, 3000);
    TrevikHost_advance(0.001);
    TrevikA_timer_start(0); // begins both periods anew
    CHECK(program.over(6) == "-xxx-x");
    CHECK(Snapshot() == "card 3");
    TrevikA_timer_stop(0);
    CHECK(program.over(6) == "------");

    // A timer of a microsecond costs no more, however late the card is looked at; the other one has 65.536 ms.
    program.enable(false);
    TrevikA_timer_set(0, 0, 1);
    TrevikA_timer_set(0, 1, 0x10000);
    TrevikA_timer_start(0);
    CHECK(next_event() == doctest::Approx(1e-6));
    for (const auto &[seconds, expired] : {std::pair{0.065535, 1}, {0.000001, 3}, {1e6, 3}}) {
        TrevikHost_advance(seconds);
        CHECK(Snapshot() == "card " + std::to_string(expired));
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "masked sources neither interrupt nor enter the snapshot")
{
    const Waiting program;
    for (unsigned axis = 0; axis < 4; ++axis)
        WriteRegister(axis, Register::EVENT_ENABLE, move_ended);
    TrevikVirtual_input_set(0, 3, TREVIK_VIRTUAL_PLUS_LIMIT, 1);
    TrevikA_timer_set(0, 0, 700);
    TrevikA_timer_start(0);
    TrevikA_IRQ_mask_set(0, 1, 0);
    Move(1);
    TrevikHost_advance(0.01);
    CHECK(Value(TrevikA_IRQ_mask_read, 0) == 0x0D);
    TrevikA_IRQ_mask_set(0, 1, 1);
    TrevikA_IRQ_mask_set(0, 4, 1);
    CHECK((Value(TrevikA_IRQ_mask_read, 0) == 0x1F && Snapshot() == "card 0" &&
           !program.signalled())); // what is past stays past
    TrevikA_timer_stop(0);

    Move(1);
    CHECK(program.over(2) == "x-");
    Move(1); // a flag that is set already
    Move(3);
    CHECK(program.signalled()); // the limit
    CHECK(program.over(2) == "x-");
    CHECK(Snapshot() == "card 0, axis 1: bits 1 event 1 error 0, axis 3: bits 2 event 0 error 32");
    CHECK(Snapshot() == "card 0");
    CHECK(ReadStatus(3, StatusRegister::ERROR_FLAGS) == plus_limit); // the chip's own flags are apart
}

TEST_CASE("two cards interrupt apart, and a link ends in each of its ways")
{
    const VirtualMachine machine("0:A,1:AC");
    const Waiting first(0);
    const Waiting second(1);
    for (const std::uint8_t card : {std::uint8_t{0}, std::uint8_t{1}}) {
        TrevikA_IRQ_mask_set(card, 4, 1);
        TrevikA_timer_set(card, 0, 2000u + 1000u * card);
        TrevikA_timer_start(card);
    }
    CHECK(first.over(6) == "-x-x-x");
    CHECK(second.over(6) == "x-x--x"); // the first of them is from before
    first.enable(false);
    CHECK(first.over(4) == "x---");
    CHECK(AlarmSet()); // for the second card
    second.release();
    CHECK(second.over(6) == "x-----");
    CHECK_FALSE(AlarmSet());
    first.enable(true);
    {
        const Waiting other(0); // takes the place
        CHECK((other.over(4) == "-x-x" && !first.signalled()));
    }
    TrevikHost_advance(0.002); // its event is closed: signalled in vain
    first.link();
    CHECK(first.over(4) == "-x-x");
    CHECK(TrevikVirtual_cards_set("1:A") == TREVIK_OK); // with the card
    CHECK(first.over(4) == "----");
    CHECK_FALSE(AlarmSet());
}

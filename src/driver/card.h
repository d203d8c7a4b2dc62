// A card and an axis as an operation sees them: handed out checked by the CardManager, they carry the driver
// requests and the shadow. Cheap to copy; valid for the life of the library.
#pragma once

#include "driver/card_state.h"
#include "driver/fields.h"
#include "driver/registers.h"
#include "driver/requests.h"
#include "driver/result.h"
#include "driver/simulation.h"

#include <concepts>
#include <cstdint>

namespace trevik
{

class Axis;

class Card
{
  public:
    Card() = default;
    Card(CardState &state, std::uint8_t number) : state_(&state), number_(number) {}

    CardState &state() const { return *state_; }
    std::uint8_t number() const { return number_; }
    Axis axis(std::uint8_t number) const;

    // Sends a command to a set of axes. Simulation mode: Ok, nothing sent. Not open any more: Handle.
    Result command(std::uint8_t axis_set, Command command) const
    {
        if (SimulationOn())
            return Result::Ok;
        if (!state_->DriverHandle.open())
            return Result::Handle;
        const auto word = static_cast<std::uint16_t>(unsigned{axis_set} << 8 | static_cast<unsigned>(command));
        return PortWrite(state_->DriverHandle.get(), static_cast<std::uint32_t>(Port::Command), word);
    }

    // 16-bit ports, which report no refusal: the value of a refused read is 0. They do not look at the handle.
    Result read(Port port, std::uint16_t &value) const
    {
        return PortRead(state_->DriverHandle.get(), static_cast<std::uint32_t>(port), value);
    }
    Result write(Port port, std::uint16_t value) const
    {
        return PortWrite(state_->DriverHandle.get(), static_cast<std::uint32_t>(port), value);
    }

    // False for a card of another model than A and AC, and for none.
    bool supported() const
    {
        const CardModel model = state_->Record.Model;
        return model == CardModel::A || model == CardModel::AC;
    }

  private:
    CardState *state_ = nullptr;
    std::uint8_t number_ = 0;
};

class Axis
{
  public:
    Axis() = default;
    Axis(Card card, std::uint8_t number) : card_(card), number_(number) {}

    Card card() const { return card_; }
    std::uint8_t number() const { return number_; }
    std::uint8_t bit() const { return AxisBit(number_); }
    AxisShadow &shadow() const { return card_.state().Axes[number_]; }

    // A refused read leaves `value` as it was: start from the value that is to count then.
    Result read(Register reg, std::uint32_t &value) const
    {
        return RegisterRead(handle(), number_, ReadCode(reg), value);
    }
    Result read(StatusRegister reg, std::uint32_t &value) const
    {
        return RegisterRead(handle(), number_, ReadCode(reg), value);
    }
    Result write(Register reg, std::uint32_t value) const
    {
        return RegisterWrite(handle(), number_, WriteCode(reg), value);
    }
    Result command(Command command) const { return card_.command(bit(), command); }

    // Simulation mode: Ok, `status` not written. A refused read gives the status 0.
    Result read(StatusWord word, std::uint16_t &status) const
    {
        if (SimulationOn())
            return Result::Ok;
        if (!card_.state().DriverHandle.open())
            return Result::Handle;
        return PortRead(handle(), StatusPort(number_, word), status);
    }
    Result read(StatusWord word, std::uint32_t &status) const
    {
        std::uint16_t half = 0;
        const Result result = read(word, half);
        status = half;
        return result;
    }
    Result read(MainStatus &status) const { return read(StatusWord::Main, status.word); }

  private:
    os::HANDLE handle() const { return card_.state().DriverHandle.get(); }

    Card card_;
    std::uint8_t number_ = 0;
};

inline Axis Card::axis(std::uint8_t number) const
{
    return {*this, number};
}

// Changes fields of a register and leaves the others: one read, which counts as 0 when it is refused, and one
// write, whose result is returned.
template <Register Reg, std::same_as<Setting<Reg>>... More>
Result Modify(const Axis &axis, Setting<Reg> first, More... more)
{
    std::uint32_t word = 0;
    axis.read(Reg, word);
    word = first.in(word);
    ((word = more.in(word)), ...);
    return axis.write(Reg, word);
}

// Reads a register, or a status word, once and takes fields out of it; 0 when the read is refused.
template <auto Reg, class... Values>
Result Fetch(const Axis &axis, Readout<Reg, Values>... fields)
{
    std::uint32_t word = 0;
    const Result result = axis.read(Reg, word);
    (fields.from(word), ...);
    return result;
}

// True when one of the pointers that an operation would write through is null.
template <class... Values>
constexpr bool AnyNull(const Values *...pointers)
{
    return ((pointers == nullptr) || ...);
}

} // namespace trevik

// A card and an axis as an operation sees them: handed out checked by the CardManager, they carry the driver
// requests and the shadow. Cheap to copy; valid for the life of the library.
#pragma once

#include "driver/card_state.h"
#include "driver/registers.h"
#include "driver/requests.h"
#include "driver/result.h"
#include "driver/simulation.h"

#include <cstdint>

namespace trevik
{

class Axis;

class Card
{
  public:
    Card() = default;
    explicit Card(CardState &state) : state_(&state) {}

    CardState &state() const { return *state_; }
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

  private:
    CardState *state_ = nullptr;
};

class Axis
{
  public:
    Axis() = default;
    Axis(CardState &state, std::uint8_t number) : card_(state), number_(number) {}

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
    Result read(MainStatus &status) const
    {
        if (SimulationOn())
            return Result::Ok;
        if (!card_.state().DriverHandle.open())
            return Result::Handle;
        return PortRead(handle(), MainStatusPort(number_), status.word);
    }

  private:
    os::HANDLE handle() const { return card_.state().DriverHandle.get(); }

    Card card_;
    std::uint8_t number_ = 0;
};

inline Axis Card::axis(std::uint8_t number) const
{
    return {*state_, number};
}

} // namespace trevik

// The requests that the library sends to a card's kernel driver, one function each. All are synchronous; nothing is
// cached and nothing is merged.
#pragma once

#include "driver/registers.h"
#include "driver/request_buffer.h"
#include "driver/result.h"
#include "platform/os.h"

#include <cstdint>

namespace trevik
{

// A handle as 32-bit programs and drivers see it: its low 32 bits.
inline std::uint32_t HandleNumber(os::HANDLE handle)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle));
}

struct ResourceReply {
    std::uint16_t word;
    std::uint8_t card;
    std::uint32_t value;
};

// Registers of one axis. Simulation mode: Ok, nothing sent, `value` not written. Axis above 3: Axis. Invalid
// handle: Handle. Refused: the driver's error, `value` not written.
Result RegisterRead(os::HANDLE handle, std::uint16_t axis, std::uint16_t read_code, std::uint32_t &value);
Result RegisterWrite(os::HANDLE handle, std::uint16_t axis, std::uint16_t write_code, std::uint32_t value);

// 16-bit ports. Always Ok: a refused request is not reported; the value of a refused read is 0.
Result PortRead(os::HANDLE handle, std::uint32_t offset, std::uint16_t &value);
Result PortWrite(os::HANDLE handle, std::uint32_t offset, std::uint16_t value);

// Index registers of the AC model. Refused: the driver's error, `value` not written.
Result IndexRead(os::HANDLE handle, std::uint8_t axis, std::uint8_t index, std::uint16_t &value);
Result IndexWrite(os::HANDLE handle, std::uint8_t axis, std::uint8_t index, std::uint16_t value);

// Card number and resources of the card behind a freshly opened handle. Refused: the driver's error.
Result ResourceRequest(os::HANDLE handle, ResourceReply &reply);

// What the driver last saw of the card's interrupts: all zero when it refused.
class InterruptSnapshot
{
  public:
    unsigned card_level() const { return reply_.get<std::uint8_t>(0); }
    // Two bits.
    unsigned axis_bits(unsigned axis) const { return reply_.get<std::uint8_t>(1) >> (2 * axis) & 3u; }
    // The low bytes of an axis's event and error flags.
    std::uint8_t event_byte(unsigned axis) const { return reply_.get<std::uint8_t>(20 + 4 * axis); }
    std::uint8_t error_byte(unsigned axis) const { return reply_.get<std::uint8_t>(52 + 4 * axis); }

  private:
    friend Result IrqStatusRequest(os::HANDLE handle, InterruptSnapshot &snapshot);

    RequestBuffer<84> reply_;
};

// Interrupts of a card. Enable and link report no refusal; a refused status: Handle, the snapshot as it was.
void IrqEnableRequest(os::HANDLE handle, bool enable);
void IrqLinkRequest(os::HANDLE handle, std::uint32_t process, os::HANDLE event);
Result IrqStatusRequest(os::HANDLE handle, InterruptSnapshot &snapshot);

// Tells the driver that this process lets go of the card.
void ReleaseRequest(os::HANDLE handle);

} // namespace trevik

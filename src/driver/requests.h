// The requests that the library sends to a card's kernel driver, one function each. All are synchronous; nothing is
// cached and nothing is merged.
#pragma once

#include "driver/registers.h"
#include "driver/result.h"
#include "platform/os.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace trevik
{

enum class ControlCode : std::uint32_t {
    IOCTL_GET_RESOURCE = 0x222000,
    IOCTL_PORT_READ = 0x222048,
    IOCTL_REG_READ = 0x22205C,
    IOCTL_PORT_WRITE = 0x222088,
    IOCTL_REG_WRITE = 0x22209C,
    IOCTL_IRQ_LINK = 0x2220C0,
    IOCTL_IRQ_STATUS = 0x2220C4,
    IOCTL_INDEX_WRITE = 0x222214,
    IOCTL_INDEX_READ = 0x222218,
    IOCTL_IRQ_ENABLE = 0x222240,
    IOCTL_RELEASE = 0x222248,
};

// A request or reply as the driver lays it out. Bytes that nobody names are 0; numbers are little-endian, as every
// machine that these cards fit in is.
template <std::size_t Size>
class RequestBuffer
{
  public:
    static constexpr std::uint32_t size = Size;

    template <class T>
    RequestBuffer &put(std::size_t offset, T value)
    {
        std::memcpy(bytes_.data() + offset, &value, sizeof value);
        return *this;
    }

    template <class T>
    T get(std::size_t offset) const
    {
        T value;
        std::memcpy(&value, bytes_.data() + offset, sizeof value);
        return value;
    }

    void *data() { return bytes_.data(); }

  private:
    alignas(8) std::array<std::uint8_t, Size> bytes_{};
};

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

// Tells the driver that this process lets go of the card.
void ReleaseRequest(os::HANDLE handle);

} // namespace trevik

// Requests and replies as the driver lays them out. Bytes that nobody names are 0; numbers are little-endian, as
// every machine that these cards fit in is.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace trevik
{

// Device I/O control codes: device type 0x22, buffered, any access.
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

// Fields of a block of bytes, wherever it lies. Blocks need no alignment.
template <class T>
T GetField(const void *block, std::size_t offset)
{
    T value;
    std::memcpy(&value, static_cast<const std::uint8_t *>(block) + offset, sizeof value);
    return value;
}

template <class T>
void PutField(void *block, std::size_t offset, T value)
{
    std::memcpy(static_cast<std::uint8_t *>(block) + offset, &value, sizeof value);
}

template <std::size_t Size>
class RequestBuffer
{
  public:
    static constexpr std::uint32_t size = Size;

    template <class T>
    RequestBuffer &put(std::size_t offset, T value)
    {
        PutField(bytes_.data(), offset, value);
        return *this;
    }

    template <class T>
    T get(std::size_t offset) const
    {
        return GetField<T>(bytes_.data(), offset);
    }

    void *data() { return bytes_.data(); }

  private:
    alignas(8) std::array<std::uint8_t, Size> bytes_{};
};

} // namespace trevik

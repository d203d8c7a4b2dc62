#include "virtual/card.h"

#include <cstring>

namespace trevik::virtual_card
{
namespace
{

struct RequestSize {
    std::uint32_t in;
    std::uint32_t out;
};

// Sizes of a request's buffers; none for a code that no card knows.
constexpr RequestSize SizesOf(ControlCode code)
{
    switch (code) {
    case ControlCode::IOCTL_GET_RESOURCE:
    case ControlCode::IOCTL_PORT_READ:
    case ControlCode::IOCTL_INDEX_WRITE:
    case ControlCode::IOCTL_INDEX_READ:
        return {32, 32};
    case ControlCode::IOCTL_REG_READ:
    case ControlCode::IOCTL_REG_WRITE:
        return {32, 16};
    case ControlCode::IOCTL_PORT_WRITE:
    case ControlCode::IOCTL_IRQ_LINK:
    case ControlCode::IOCTL_IRQ_ENABLE:
    case ControlCode::IOCTL_RELEASE:
        return {32, 0};
    case ControlCode::IOCTL_IRQ_STATUS:
        return {0, 84};
    }
    return {0, 0};
}

constexpr Register Counter(unsigned counter)
{
    return static_cast<Register>(WriteCode(Register::COUNTER1) + counter - 1);
}

} // namespace

void Card::reset(std::uint8_t number, Model model)
{
    *this = Card();
    number_ = number;
    index_registers_[0][model_index] = model == Model::A ? model_word_A : model_word_AC;
}

bool Card::refused(std::uint32_t &error)
{
    if (refusal_.count == 0)
        return false;
    if (refusal_.skip != 0) {
        --refusal_.skip;
        return false;
    }
    --refusal_.count;
    error = refusal_.error;
    return true;
}

std::uint32_t Card::control(const ControlRequest &request, double now_s, std::uint32_t &returned)
{
    returned = 0;
    std::uint32_t error = 0;
    if (refused(error))
        return error;
    const auto code = static_cast<ControlCode>(request.code);
    const RequestSize sizes = SizesOf(code);
    if (sizes.in == 0 && sizes.out == 0)
        return error_invalid_function;
    if (request.in_size != sizes.in || request.out_size != sizes.out)
        return error_invalid_parameter;
    In in;
    Out out;
    std::memcpy(in.data(), request.in, request.in_size);
    error = answer(code, in, out, now_s);
    if (error == 0 && sizes.out != 0) {
        std::memcpy(request.out, out.data(), sizes.out);
        returned = sizes.out;
    }
    return error;
}

std::uint32_t Card::answer(ControlCode code, const In &in, Out &out, double now_s)
{
    switch (code) {
    case ControlCode::IOCTL_REG_READ:
    case ControlCode::IOCTL_REG_WRITE:
        return register_request(code, in, out, now_s);
    case ControlCode::IOCTL_PORT_READ:
        out.put(20, read_port(in.get<std::uint32_t>(8), now_s));
        return 0;
    case ControlCode::IOCTL_PORT_WRITE:
        write_port(in.get<std::uint32_t>(8), in.get<std::uint16_t>(20), now_s);
        return 0;
    case ControlCode::IOCTL_INDEX_READ:
    case ControlCode::IOCTL_INDEX_WRITE:
        return index_request(code, in, out);
    case ControlCode::IOCTL_GET_RESOURCE:
        out.put(0, static_cast<std::uint16_t>(0xE000 + 0x100 * number_)).put(3, number_);
        return 0;
    default:
        return 0; // interrupt requests and the release: accepted; nothing on this card raises interrupts
    }
}

std::uint32_t Card::register_request(ControlCode code, const In &in, Out &out, double now_s)
{
    const auto axis = in.get<std::uint32_t>(0);
    const auto reg = in.get<std::uint32_t>(4);
    if (axis >= chip_axes)
        return error_invalid_parameter;
    if (code == ControlCode::IOCTL_REG_READ)
        out.put(0, chip_.read(axis, reg, now_s));
    else
        chip_.write(axis, reg, in.get<std::uint32_t>(8), now_s);
    return 0;
}

std::uint32_t Card::index_request(ControlCode code, const In &in, Out &out)
{
    const auto index = in.get<std::uint32_t>(8);
    const auto axis = in.get<std::uint32_t>(12);
    if (axis >= chip_axes || index >= index_registers_[0].size())
        return error_invalid_parameter;
    std::uint16_t &value = index_registers_[axis][index];
    if (code == ControlCode::IOCTL_INDEX_READ)
        out.put(20, value);
    else if (axis != 0 || index != model_index)
        value = in.get<std::uint16_t>(20);
    return 0;
}

std::uint16_t Card::read_port(std::uint32_t offset, double now_s)
{
    if (offset < MainStatusPort(chip_axes)) {
        const unsigned axis = offset / 8;
        if (offset == MainStatusPort(axis))
            return chip_.main_status(axis, now_s);
        return offset == SubStatusPort(axis) ? chip_.sub_status(axis) : std::uint16_t{0};
    }
    return offset / 2 < ports_.size() ? ports_[offset / 2] : std::uint16_t{0};
}

void Card::write_port(std::uint32_t offset, std::uint16_t value, double now_s)
{
    if (offset == static_cast<std::uint32_t>(Port::Command))
        chip_.command(value >> 8, static_cast<std::uint8_t>(value), now_s);
    else if (offset >= MainStatusPort(chip_axes) && offset / 2 < ports_.size())
        ports_[offset / 2] = value;
}

std::int32_t Card::counter(unsigned axis, unsigned counter, double now_s)
{
    return static_cast<std::int32_t>(chip_.read(axis, ReadCode(Counter(counter)), now_s));
}

void Card::set_counter(unsigned axis, unsigned counter, std::int32_t value, double now_s)
{
    chip_.write(axis, WriteCode(Counter(counter)), static_cast<std::uint32_t>(value), now_s);
}

} // namespace trevik::virtual_card

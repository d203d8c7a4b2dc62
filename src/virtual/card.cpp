#include "virtual/card.h"

#include <cstring>
#include <new>
#include <type_traits>

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

// Interrupt sources: bits 0 to 3 the axes, bit 4 the card.
constexpr unsigned card_source = 1u << chip_axes;
constexpr unsigned every_source = card_source | all_axes;

constexpr auto axis_masked = signal_config1::interrupts_masked;

constexpr std::uint32_t PortOffset(Port port)
{
    return static_cast<std::uint32_t>(port);
}

constexpr Register Counter(unsigned counter)
{
    return static_cast<Register>(WriteCode(Register::COUNTER1) + counter - 1);
}

} // namespace

static_assert(std::is_trivially_destructible_v<Card>);

void Card::reset(std::uint8_t number, Model model)
{
    new (this) Card(); // in place: a driver's stack has no room for another card
    number_ = number;
    model_ = model;
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

std::uint32_t Card::control(const ControlRequest &request, std::int64_t now_ns, std::uint32_t &returned)
{
    returned = 0;
    std::uint32_t error = 0;
    if (refused(error))
        return error;
    const RequestSize sizes = SizesOf(static_cast<ControlCode>(request.code));
    if (sizes.in == 0 && sizes.out == 0)
        return error_invalid_function;
    if (request.in_size != sizes.in || request.out_size != sizes.out)
        return error_invalid_parameter;
    pass(now_ns);
    error = answer(request, now_ns);
    if (error == 0)
        returned = sizes.out;
    return error;
}

// Fields are read and written where the caller has them: a copy of a block that was just filled field by field
// would wait for all of them to arrive.
std::uint32_t Card::answer(const ControlRequest &request, std::int64_t now_ns)
{
    const auto code = static_cast<ControlCode>(request.code);
    const void *in = request.in;
    void *out = request.out;
    switch (code) {
    case ControlCode::IOCTL_REG_READ:
        return register_read(in, out, now_ns);
    case ControlCode::IOCTL_REG_WRITE:
        return register_write(in, now_ns);
    case ControlCode::IOCTL_PORT_READ:
        PutField(out, 20, read_port(GetField<std::uint32_t>(in, 8), now_ns));
        return 0;
    case ControlCode::IOCTL_PORT_WRITE:
        write_port(GetField<std::uint32_t>(in, 8), GetField<std::uint16_t>(in, 20), now_ns);
        return 0;
    case ControlCode::IOCTL_INDEX_READ:
    case ControlCode::IOCTL_INDEX_WRITE:
        return index_request(code, in, out, now_ns);
    case ControlCode::IOCTL_GET_RESOURCE:
        PutField(out, 0, static_cast<std::uint16_t>(0xE000 + 0x100 * number_));
        PutField(out, 3, number_);
        PutField(out, 4, std::uint32_t{0});
        return 0;
    default:
        return interrupt_request(code, in, out, now_ns);
    }
}

std::uint32_t Card::interrupt_request(ControlCode code, const void *in, void *out, std::int64_t now_ns)
{
    constexpr std::size_t process_at = 16;
    collect(now_ns);
    switch (code) {
    case ControlCode::IOCTL_IRQ_STATUS:
        std::memset(out, 0, SizesOf(code).out);
        interrupts_.take_snapshot(out);
        break;
    case ControlCode::IOCTL_IRQ_LINK:
        interrupts_.link(GetField<std::uint32_t>(in, process_at), GetField<std::uint32_t>(in, 24));
        break;
    case ControlCode::IOCTL_IRQ_ENABLE:
        interrupts_.enable(GetField<std::uint32_t>(in, process_at), GetField<std::uint8_t>(in, 20) != 0);
        break;
    default:
        interrupts_.release(GetField<std::uint32_t>(in, process_at));
        break;
    }
    return 0;
}

std::uint32_t Card::register_read(const void *in, void *out, std::int64_t now_ns)
{
    const auto axis = GetField<std::uint32_t>(in, 0);
    if (axis >= chip_axes)
        return error_invalid_parameter;
    PutField(out, 0, chip_.read(axis, GetField<std::uint32_t>(in, 4), now_ns));
    return 0;
}

std::uint32_t Card::register_write(const void *in, std::int64_t now_ns)
{
    const auto axis = GetField<std::uint32_t>(in, 0);
    if (axis >= chip_axes)
        return error_invalid_parameter;
    const auto write_code = GetField<std::uint32_t>(in, 4);
    if (write_code == WriteCode(Register::SIGNAL_CONFIG1))
        collect(now_ns); // what happened so far, under the mask so far
    chip_.write(axis, write_code, GetField<std::uint32_t>(in, 8), now_ns);
    return 0;
}

std::uint32_t Card::index_request(ControlCode code, const void *in, void *out, std::int64_t now_ns)
{
    constexpr std::uint32_t index_count = 256;
    const auto index = GetField<std::uint32_t>(in, 8);
    const auto axis = GetField<std::uint32_t>(in, 12);
    if (axis >= chip_axes || index >= index_count)
        return error_invalid_parameter;
    if (code == ControlCode::IOCTL_INDEX_READ)
        PutField(out, 20, index_register(axis, index, now_ns));
    else if (model_ == Model::AC && index != model_index)
        ac_.write(axis, index, GetField<std::uint16_t>(in, 20), chip_, now_ns);
    return 0;
}

std::uint16_t Card::index_register(unsigned axis, unsigned index, std::int64_t now_ns)
{
    if (axis == 0 && index == model_index)
        return model_ == Model::A ? model_word_A : model_word_AC;
    return model_ == Model::AC ? ac_.read(axis, index, chip_, now_ns) : std::uint16_t{0};
}

std::uint16_t Card::read_port(std::uint32_t offset, std::int64_t now_ns)
{
    if (offset < MainStatusPort(chip_axes)) {
        const unsigned axis = offset / 8;
        if (offset == MainStatusPort(axis))
            return chip_.main_status(axis, now_ns);
        return offset == SubStatusPort(axis) ? chip_.sub_status(axis, now_ns) : std::uint16_t{0};
    }
    if (offset == PortOffset(Port::InterruptState)) {
        collect(now_ns);
        return static_cast<std::uint16_t>(unmasked(every_source) | interrupts_.pending() << 8);
    }
    if (CardTimers::owns(offset))
        return timers_.read(offset);
    return offset / 2 < ports_.size() ? ports_[offset / 2] : std::uint16_t{0};
}

void Card::write_port(std::uint32_t offset, std::uint16_t value, std::int64_t now_ns)
{
    if (offset == PortOffset(Port::Command)) {
        chip_.command(value >> 8, static_cast<std::uint8_t>(value), now_ns);
        return;
    }
    collect(now_ns); // before a timer or the mask changes
    if (CardTimers::owns(offset))
        timers_.write(offset, value, now_ns);
    else if (offset >= MainStatusPort(chip_axes) && offset / 2 < ports_.size())
        ports_[offset / 2] = value;
}

// Which of the sources may interrupt. A waiting program is woken the sooner, the fewer axes are looked at before.
unsigned Card::unmasked(unsigned among) const
{
    unsigned sources = (ports_[PortOffset(Port::InterruptMask) / 2] & 1) != 0 ? among & card_source : 0;
    for (unsigned axis = 0; axis < chip_axes; ++axis)
        if ((among >> axis & 1) != 0 && axis_masked.get(chip_.setting(axis, Register::SIGNAL_CONFIG1)) == 0)
            sources |= 1u << axis;
    return sources;
}

// What has happened up to now and may interrupt enters the snapshot.
void Card::collect(std::int64_t now_ns)
{
    pass(now_ns);
    chip_.next_event(now_ns); // time passes for the chip
    const unsigned expired = timers_.take_expired(now_ns);
    const unsigned raised_axes = chip_.raised_axes();
    const unsigned sources = unmasked(raised_axes | (expired != 0 ? card_source : 0));
    if ((sources & card_source) != 0)
        interrupts_.raise_card(expired << timer0_cause);
    for (unsigned axis = 0; raised_axes >> axis != 0; ++axis) {
        if ((raised_axes >> axis & 1) == 0)
            continue;
        const Chip::Raised raised = chip_.take_raised(axis);
        if ((sources >> axis & 1) != 0)
            interrupts_.raise_axis(axis, raised);
    }
}

void Card::pass_detectors(std::int64_t now_ns)
{
    const unsigned tripped = ac_.pass(chip_, now_ns);
    const unsigned sources = unmasked(tripped);
    for (unsigned axis = 0; axis < chip_axes; ++axis)
        if ((sources & 1u << axis) != 0)
            interrupts_.raise_axis(axis, {0, 1u << detector_error});
}

std::uint32_t Card::take_signal(std::int64_t now_ns)
{
    collect(now_ns);
    return interrupts_.take_signal();
}

std::int64_t Card::next_interrupt(std::int64_t now_ns)
{
    const unsigned sources = unmasked(every_source);
    const std::int64_t axes_ns = (sources & all_axes) != 0 ? next_of_axes(now_ns) : never_ns;
    const std::int64_t timers_ns = (sources & card_source) != 0 ? timers_.next(now_ns) : never_ns;
    return Smaller(axes_ns, timers_ns);
}

std::int64_t Card::next_of_axes(std::int64_t now_ns)
{
    pass(now_ns);
    return Smaller(chip_.next_event(now_ns), ac_.next_trip(chip_));
}

std::int64_t Card::next_event(std::int64_t now_ns)
{
    return Smaller(next_of_axes(now_ns), timers_.next(now_ns));
}

std::int32_t Card::counter(unsigned axis, unsigned counter, std::int64_t now_ns)
{
    return static_cast<std::int32_t>(chip_.read(axis, ReadCode(Counter(counter)), now_ns));
}

void Card::set_counter(unsigned axis, unsigned counter, std::int32_t value, std::int64_t now_ns)
{
    chip_.write(axis, WriteCode(Counter(counter)), static_cast<std::uint32_t>(value), now_ns);
}

} // namespace trevik::virtual_card

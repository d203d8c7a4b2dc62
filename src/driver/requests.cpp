#include "driver/requests.h"

#include "driver/simulation.h"

namespace trevik
{
namespace
{

using Request = RequestBuffer<32>;

// Sends one request. `out` may be null when the request has no reply.
Result Send(os::HANDLE handle, ControlCode code, void *in, std::uint32_t in_size, void *out, std::uint32_t out_size)
{
    os::DWORD returned = 0;
    const os::BOOL accepted =
        os::DeviceIoControl(handle, static_cast<os::DWORD>(code), in, in_size, out, out_size, &returned, nullptr);
    return accepted ? Result::Ok : static_cast<Result>(os::GetLastError());
}

template <std::size_t OutSize>
Result Send(os::HANDLE handle, ControlCode code, Request &in, RequestBuffer<OutSize> &out)
{
    return Send(handle, code, in.data(), Request::size, out.data(), RequestBuffer<OutSize>::size);
}

Result Send(os::HANDLE handle, ControlCode code, Request &in)
{
    return Send(handle, code, in.data(), Request::size, nullptr, 0);
}

// What register and index requests check before they are sent.
Result AxisRequestCheck(os::HANDLE handle, std::uint32_t axis)
{
    if (axis > 3)
        return Result::Axis;
    return handle == os::InvalidHandle() ? Result::Handle : Result::Ok;
}

// Filled where they are used: to copy a block that was just filled field by field would wait for all of them to
// arrive.
Request PortRequest(std::uint32_t offset)
{
    constexpr std::uint8_t word_access = 1;
    Request request;
    request.put(2, word_access).put(8, offset);
    return request;
}

Request IndexRequest(std::uint8_t axis, std::uint8_t index)
{
    Request request;
    request.put(8, std::uint32_t{index}).put(12, std::uint32_t{axis});
    return request;
}

Request ProcessRequest()
{
    Request request;
    request.put(16, std::uint32_t{os::GetCurrentProcessId()});
    return request;
}

} // namespace

Result RegisterRead(os::HANDLE handle, std::uint16_t axis, std::uint16_t read_code, std::uint32_t &value)
{
    if (SimulationOn())
        return Result::Ok;
    if (const Result check = AxisRequestCheck(handle, axis); check != Result::Ok)
        return check;
    Request request;
    request.put(0, std::uint32_t{axis}).put(4, std::uint32_t{read_code});
    RequestBuffer<16> reply;
    const Result result = Send(handle, ControlCode::IOCTL_REG_READ, request, reply);
    if (result == Result::Ok)
        value = reply.get<std::uint32_t>(0);
    return result;
}

Result RegisterWrite(os::HANDLE handle, std::uint16_t axis, std::uint16_t write_code, std::uint32_t value)
{
    if (SimulationOn())
        return Result::Ok;
    if (const Result check = AxisRequestCheck(handle, axis); check != Result::Ok)
        return check;
    Request request;
    request.put(0, std::uint32_t{axis}).put(4, std::uint32_t{write_code}).put(8, value);
    RequestBuffer<16> reply;
    return Send(handle, ControlCode::IOCTL_REG_WRITE, request, reply);
}

Result PortRead(os::HANDLE handle, std::uint32_t offset, std::uint16_t &value)
{
    Request request = PortRequest(offset);
    Request reply;
    const Result result = Send(handle, ControlCode::IOCTL_PORT_READ, request, reply);
    value = result == Result::Ok ? reply.get<std::uint16_t>(20) : std::uint16_t{0};
    return Result::Ok;
}

Result PortWrite(os::HANDLE handle, std::uint32_t offset, std::uint16_t value)
{
    Request request = PortRequest(offset);
    request.put(20, value);
    Send(handle, ControlCode::IOCTL_PORT_WRITE, request);
    return Result::Ok;
}

Result IndexRead(os::HANDLE handle, std::uint8_t axis, std::uint8_t index, std::uint16_t &value)
{
    if (const Result check = AxisRequestCheck(handle, axis); check != Result::Ok)
        return check;
    Request request = IndexRequest(axis, index);
    Request reply;
    const Result result = Send(handle, ControlCode::IOCTL_INDEX_READ, request, reply);
    if (result == Result::Ok)
        value = reply.get<std::uint16_t>(20);
    return result;
}

Result IndexWrite(os::HANDLE handle, std::uint8_t axis, std::uint8_t index, std::uint16_t value)
{
    if (const Result check = AxisRequestCheck(handle, axis); check != Result::Ok)
        return check;
    Request request = IndexRequest(axis, index);
    request.put(20, value);
    Request reply;
    return Send(handle, ControlCode::IOCTL_INDEX_WRITE, request, reply);
}

Result ResourceRequest(os::HANDLE handle, ResourceReply &reply)
{
    Request request = ProcessRequest();
    Request answer;
    const Result result = Send(handle, ControlCode::IOCTL_GET_RESOURCE, request, answer);
    if (result == Result::Ok)
        reply = {answer.get<std::uint16_t>(0), answer.get<std::uint8_t>(3), answer.get<std::uint32_t>(4)};
    return result;
}

void IrqEnableRequest(os::HANDLE handle, bool enable)
{
    Request request = ProcessRequest();
    request.put(20, static_cast<std::uint8_t>(enable));
    Send(handle, ControlCode::IOCTL_IRQ_ENABLE, request);
}

void IrqLinkRequest(os::HANDLE handle, std::uint32_t process, os::HANDLE event)
{
    const std::uint32_t number = HandleNumber(event);
    Request request;
    request.put(16, process).put(24, number).put(28, number);
    Send(handle, ControlCode::IOCTL_IRQ_LINK, request);
}

Result IrqStatusRequest(os::HANDLE handle, InterruptSnapshot &snapshot)
{
    RequestBuffer<84> reply;
    if (Send(handle, ControlCode::IOCTL_IRQ_STATUS, nullptr, 0, reply.data(), reply.size) != Result::Ok)
        return Result::Handle;
    snapshot.reply_ = reply;
    return Result::Ok;
}

void ReleaseRequest(os::HANDLE handle)
{
    Request request = ProcessRequest();
    Send(handle, ControlCode::IOCTL_RELEASE, request);
}

} // namespace trevik

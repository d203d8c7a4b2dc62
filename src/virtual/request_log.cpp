#include "virtual/request_log.h"

#include "driver/requests.h"
#include "platform/host/driver_seam.h"
#include "platform/host/system.h"

#include <array>
#include <cerrno>
#include <cinttypes>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <map>
#include <mutex>

namespace trevik
{
namespace
{

struct NamedCode {
    std::uint32_t code;
    const char *name;
};

#define TREVIK_NAMED(name, code) {code, #name},
constexpr NamedCode register_names[] = {TREVIK_REGISTERS(TREVIK_NAMED)};
constexpr NamedCode status_register_names[] = {TREVIK_STATUS_REGISTERS(TREVIK_NAMED)};
constexpr NamedCode command_names[] = {TREVIK_COMMANDS(TREVIK_NAMED)};
#undef TREVIK_NAMED

template <std::size_t Size>
const char *Find(const NamedCode (&names)[Size], std::uint32_t code)
{
    for (const NamedCode &named : names)
        if (named.code == code)
            return named.name;
    return "";
}

__attribute__((format(printf, 1, 2))) std::string Format(const char *format, ...)
{
    std::array<char, 160> line{};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line.data(), line.size(), format, arguments);
    va_end(arguments);
    return line.data();
}

// The bytes of a request, read as its layout says.
using Words = RequestBuffer<96>;

Words Copy(const void *bytes, std::uint32_t size)
{
    Words words;
    if (size != 0)
        std::memcpy(words.data(), bytes, size < Words::size ? size : Words::size);
    return words;
}

std::string NameOr(const char *name, std::uint32_t code)
{
    return *name != '\0' ? name : Format("register 0x%02" PRIX32, code);
}

// Distances, positions and targets are signed; mode and configuration words are bit fields; the rest are numbers.
std::string Value(std::uint32_t code, std::uint32_t value)
{
    const std::uint32_t write_code = code >= 0xC0 ? code - 0x40 : code;
    switch (static_cast<Register>(write_code)) {
    case Register::PRESET_DISTANCE:
    case Register::DISTANCE:
    case Register::PRESET_CENTER:
    case Register::CENTER:
    case Register::COUNTER1:
    case Register::COUNTER2:
    case Register::COUNTER3:
    case Register::COUNTER4:
        return Format("%" PRId32, static_cast<std::int32_t>(value));
    default:
        break;
    }
    const bool bits =
        write_code == WriteCode(Register::PRESET_MODE) || write_code == WriteCode(Register::MODE) ||
        (write_code >= WriteCode(Register::SIGNAL_CONFIG1) &&
         write_code <= WriteCode(Register::VIBRATION_CONFIG)) ||
        (code >= ReadCode(StatusRegister::LATCH_DATA) && code <= ReadCode(StatusRegister::EVENT_FLAGS));
    return bits ? Format("0x%08" PRIX32, value) : Format("%" PRIu32, value);
}

std::string PortText(std::uint32_t offset)
{
    constexpr std::uint32_t status_ports = MainStatusPort(4);
    if (offset < status_ports && offset % 8 == 0)
        return Format("axis %" PRIu32 "  main status", offset / 8);
    if (offset < status_ports && offset % 8 == 2)
        return Format("axis %" PRIu32 "  sub status", offset / 8);
    return Format("port %" PRIu32, offset);
}

std::string PortWriteText(const Words &in)
{
    const auto offset = in.get<std::uint32_t>(8);
    const auto value = in.get<std::uint16_t>(20);
    if (offset != static_cast<std::uint32_t>(Port::Command))
        return Format("write  %s = 0x%04X", PortText(offset).c_str(), value);
    const char *name = CommandName(value & 0xFFu);
    if (*name == '\0')
        return Format("command axes 0x%X  0x%02X", value >> 8, value & 0xFFu);
    return Format("command axes 0x%X  %s", value >> 8, name);
}

std::string IndexText(const Words &in)
{
    return Format("axis %" PRIu32 "  index %" PRIu32, in.get<std::uint32_t>(12), in.get<std::uint32_t>(8));
}

std::string Accepted(ControlCode code, const Words &in, const Words &out)
{
    const auto axis = in.get<std::uint32_t>(0);
    const auto reg = in.get<std::uint32_t>(4);
    switch (code) {
    case ControlCode::IOCTL_REG_READ:
        return Format("read   axis %" PRIu32 "  %s -> %s", axis, NameOr(RegisterName(reg), reg).c_str(),
                      Value(reg, out.get<std::uint32_t>(0)).c_str());
    case ControlCode::IOCTL_REG_WRITE:
        return Format("write  axis %" PRIu32 "  %s = %s", axis, NameOr(RegisterName(reg), reg).c_str(),
                      Value(reg, in.get<std::uint32_t>(8)).c_str());
    case ControlCode::IOCTL_PORT_READ:
        return Format("read   %s -> 0x%04X", PortText(in.get<std::uint32_t>(8)).c_str(),
                      out.get<std::uint16_t>(20));
    case ControlCode::IOCTL_PORT_WRITE:
        return PortWriteText(in);
    case ControlCode::IOCTL_INDEX_READ:
        return Format("read   %s -> 0x%04X", IndexText(in).c_str(), out.get<std::uint16_t>(20));
    case ControlCode::IOCTL_INDEX_WRITE:
        return Format("write  %s = 0x%04X", IndexText(in).c_str(), in.get<std::uint16_t>(20));
    case ControlCode::IOCTL_GET_RESOURCE:
        return Format("get resource -> card %u, word 0x%04X", out.get<std::uint8_t>(3), out.get<std::uint16_t>(0));
    case ControlCode::IOCTL_IRQ_LINK:
        return "link interrupts";
    case ControlCode::IOCTL_IRQ_STATUS:
        return "read interrupt status";
    case ControlCode::IOCTL_IRQ_ENABLE:
        return Format("%s interrupts", in.get<std::uint8_t>(20) != 0 ? "enable" : "disable");
    case ControlCode::IOCTL_RELEASE:
        return "release";
    }
    return Format("request 0x%06" PRIX32, static_cast<std::uint32_t>(code));
}

// The driver that writes requests down and passes them on.
class LoggingDriver
{
  public:
    LoggingDriver(const TrevikHostDriver *inner, std::FILE *file) : inner_(inner), file_(file) {}

    TrevikHostDriver table() { return {this, DeviceCount, DevicePath, Open, Control, Close}; }

  private:
    static LoggingDriver &self(void *context) { return *static_cast<LoggingDriver *>(context); }

    static std::uint32_t DeviceCount(void *context)
    {
        return self(context).inner_->device_count(self(context).inner_->context);
    }
    static const char *DevicePath(void *context, std::uint32_t index)
    {
        return self(context).inner_->device_path(self(context).inner_->context, index);
    }
    static std::uint32_t Open(void *context, const char *path, std::uint32_t *device)
    {
        const std::uint32_t error = self(context).inner_->open(self(context).inner_->context, path, device);
        self(context).line(std::string("open ") + path + (error != 0 ? Format("  refused: %" PRIu32, error) : ""));
        return error;
    }
    static std::uint32_t Control(void *context, std::uint32_t device, std::uint32_t code, const void *in,
                                 std::uint32_t in_size, void *out, std::uint32_t out_size, std::uint32_t *returned);
    static void Close(void *context, std::uint32_t device)
    {
        self(context).line(self(context).card_of(device) + "close");
        self(context).inner_->close(self(context).inner_->context, device);
    }

    // Cards are known by the number in their resource reply.
    void learn(std::uint32_t device, std::uint8_t card)
    {
        const std::lock_guard lock(mutex_);
        cards_[device] = card;
    }
    std::string card_of(std::uint32_t device)
    {
        const std::lock_guard lock(mutex_);
        const auto found = cards_.find(device);
        return found != cards_.end() ? Format("card %u  ", found->second) : Format("device %" PRIu32 "  ", device);
    }
    void line(const std::string &text)
    {
        std::fprintf(file_, "%s\n", text.c_str());
        std::fflush(file_); // a program that crashes has its last request on file
    }

    const TrevikHostDriver *inner_;
    std::FILE *file_;
    std::mutex mutex_;
    std::map<std::uint32_t, std::uint8_t> cards_;
};

std::uint32_t LoggingDriver::Control(void *context, std::uint32_t device, std::uint32_t code, const void *in,
                                     std::uint32_t in_size, void *out, std::uint32_t out_size,
                                     std::uint32_t *returned)
{
    LoggingDriver &log = self(context);
    const std::uint32_t error =
        log.inner_->control(log.inner_->context, device, code, in, in_size, out, out_size, returned);
    const auto card_number = 3;
    if (error == 0 && code == static_cast<std::uint32_t>(ControlCode::IOCTL_GET_RESOURCE))
        log.learn(device, static_cast<const std::uint8_t *>(out)[card_number]);
    log.line(log.card_of(device) + DescribeRequest({code, in, in_size, out, out_size, error}));
    return error;
}

// The file of TREVIK_REQUEST_LOG, opened once; null: no log.
std::FILE *LogFile()
{
    static std::FILE *file = []() -> std::FILE * {
        const std::string name = host::Environment("TREVIK_REQUEST_LOG").value_or("");
        if (name.empty())
            return nullptr;
        std::FILE *opened = host::NewTextFile(name.c_str());
        if (opened == nullptr)
            std::fprintf(stderr, "TREVIK_REQUEST_LOG: cannot write \"%s\": %s\n", name.c_str(),
                         std::strerror(errno));
        return opened;
    }();
    return file;
}

} // namespace

const char *RegisterName(std::uint32_t code)
{
    if (const char *status = Find(status_register_names, code); *status != '\0')
        return status;
    return Find(register_names, code >= 0xC0 ? code - 0x40 : code);
}

const char *CommandName(std::uint32_t code)
{
    return Find(command_names, code);
}

std::string DescribeRequest(const LoggedRequest &request)
{
    const Words in = Copy(request.in, request.in_size);
    const Words out = Copy(request.out, request.error == 0 ? request.out_size : 0);
    const std::string text = Accepted(static_cast<ControlCode>(request.code), in, out);
    return request.error == 0 ? text : text + Format("  refused: %" PRIu32, request.error);
}

} // namespace trevik

namespace trevik::host
{

const TrevikHostDriver *WithRequestLog(const TrevikHostDriver *driver)
{
    std::FILE *file = LogFile();
    if (file == nullptr)
        return driver;
    // Both live for ever: devices opened through them may outlast any other driver.
    auto *log = new LoggingDriver(driver, file);
    return new TrevikHostDriver(log->table());
}

} // namespace trevik::host

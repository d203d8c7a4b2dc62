#include "config/config_file.h"

#include "driver/request_buffer.h"

#include <array>
#include <cstdio>
#include <memory>
#include <optional>

namespace trevik
{
namespace
{

// In the order of the file.
constexpr std::array saved_registers = {
    Register::SIGNAL_CONFIG1,     Register::SIGNAL_CONFIG2,      Register::HOME_CONFIG,
    Register::LIMIT_CONFIG,       Register::START_TRIGGER_ENV,   Register::MOTION_CONFIG,
    Register::VIBRATION_CONFIG,   Register::SOFTLIMIT1,          Register::SOFTLIMIT2,
    Register::COMPARE_START_DATA, Register::COMPARATOR_DATA_AUX, Register::COMPARATOR_DATA,
};

constexpr std::size_t register_bytes = saved_registers.size() * axis_count * std::size_t{4};
constexpr std::size_t speeds_at = register_bytes;
constexpr std::size_t modes_at = speeds_at + std::size_t{axis_count} * 4;
constexpr std::size_t record_size = modes_at + axis_count;
static_assert(record_size == 212);

using Record = RequestBuffer<record_size>;

constexpr int carriage_return = 0x0D;
constexpr int line_feed = 0x0A;
constexpr int end_of_text = 0x1A;

struct Close {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

// Calls an operation with every saved register of every axis and its place in the record. Result: the last one's.
template <class Operation>
Result EachRegister(const Card &card, Operation operation)
{
    Result result = Result::Ok;
    std::size_t offset = 0;
    for (const Register reg : saved_registers)
        for (std::uint8_t axis = 0; axis < axis_count; ++axis, offset += 4)
            result = operation(card.axis(axis), reg, offset);
    return result;
}

bool Write(File file, const Record &record)
{
    for (std::size_t i = 0; i < record_size; ++i) {
        const int byte = record.get<std::uint8_t>(i);
        if (byte == line_feed)
            std::fputc(carriage_return, file.get());
        std::fputc(byte, file.get());
    }
    const bool written = std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0;
    return std::fclose(file.release()) == 0 && written;
}

// The next byte of the text, EOF at its end.
int NextByte(std::FILE *file)
{
    const int byte = std::fgetc(file);
    if (byte == end_of_text)
        return EOF;
    if (byte != carriage_return)
        return byte;
    const int next = std::fgetc(file);
    if (next == line_feed)
        return line_feed;
    if (next != EOF)
        std::ungetc(next, file);
    return carriage_return;
}

std::optional<Record> Read(const char *name)
{
    const File file(std::fopen(name, "rb"));
    if (!file)
        return std::nullopt;
    Record record;
    for (std::size_t i = 0; i < record_size; ++i) {
        const int byte = NextByte(file.get());
        if (byte == EOF)
            return std::nullopt;
        record.put(i, static_cast<std::uint8_t>(byte));
    }
    return record;
}

} // namespace

// A register that cannot be read is saved with the value of the one before it.
Result ConfigFileSave(const Card &card, const char *name)
{
    File file(name != nullptr ? std::fopen(name, "wb") : nullptr);
    if (!file)
        return Result::File;
    Record record;
    std::uint32_t value = 0;
    const Result result = EachRegister(card, [&](const Axis &axis, Register reg, std::size_t offset) {
        const Result read = axis.read(reg, value);
        record.put(offset, value);
        return read;
    });
    for (std::uint8_t n = 0; n < axis_count; ++n) {
        const AxisShadow &shadow = card.state().Axes[n];
        record.put(speeds_at + std::size_t{n} * 4, std::uint32_t{shadow.CorrectionSpeed});
        record.put(modes_at + n, std::uint8_t{shadow.BacklashEnabled});
    }
    return Write(std::move(file), record) ? result : Result::File;
}

Result ConfigFileLoad(const Card &card, const char *name)
{
    const std::optional<Record> record = name != nullptr ? Read(name) : std::nullopt;
    if (!record)
        return Result::File;
    const Result result = EachRegister(card, [&](const Axis &axis, Register reg, std::size_t offset) {
        return axis.write(reg, record->get<std::uint32_t>(offset));
    });
    for (std::uint8_t n = 0; n < axis_count; ++n) {
        AxisShadow &shadow = card.state().Axes[n];
        shadow.CorrectionSpeed = record->get<std::uint32_t>(speeds_at + std::size_t{n} * 4);
        shadow.BacklashEnabled = record->get<std::uint8_t>(modes_at + n);
    }
    return result;
}

} // namespace trevik

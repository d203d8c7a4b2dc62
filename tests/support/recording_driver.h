// A driver for tests: it remembers every request, answers from a small register file, and refuses what it is told
// to.
#pragma once

#include "driver/registers.h"
#include "driver/requests.h"
#include "virtual/request_log.h"

#include <trevik/TrevikHost.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace trevik::test
{

struct Device {
    std::string path = "device";
    std::uint8_t card = 0;
    std::uint16_t resource_word = 0x1234;
    std::uint16_t model_word = model_word_A;
    std::uint32_t open_error = 0;
};

// One request, byte for byte.
struct RawRequest {
    std::uint32_t code;
    std::vector<std::uint8_t> in;
    std::uint32_t out_size;
};

class RecordingDriver
{
  public:
    // In place from here to its destruction, with one A card, number 0, unless told otherwise.
    RecordingDriver() : RecordingDriver({Device{}}) {}
    explicit RecordingDriver(std::vector<Device> devices) : devices_(std::move(devices))
    {
        for (std::uint32_t axis = 0; axis < 4; ++axis)
            port(MainStatusPort(axis)) = MainStatus::idle_bit;
        const TrevikHostDriver table = {this, DeviceCount, DevicePath, Open, Control, Close};
        TrevikHost_driver_set(&table);
    }
    ~RecordingDriver()
    {
        TrevikA_close();
        TrevikHost_driver_set(nullptr);
    }
    RecordingDriver(const RecordingDriver &) = delete;
    RecordingDriver &operator=(const RecordingDriver &) = delete;

    std::vector<Device> &devices() { return devices_; }

    // What reads answer, the same for every card. Writes change it only when they are to be remembered.
    void remember_writes() { remembers_ = true; }
    std::uint16_t &port(std::uint32_t offset) { return ports_[offset]; }
    template <class Code>
    std::uint32_t &reg(std::uint32_t axis, Code code)
    {
        return registers_[{axis, ReadCode(code)}];
    }

    // What the read of a register was answered.
    std::uint32_t register_of(const RawRequest &read)
    {
        return registers_[{GetField<std::uint32_t>(read.in.data(), 0), GetField<std::uint32_t>(read.in.data(), 4)}];
    }

    std::uint16_t &index(std::uint32_t axis, std::uint32_t number) { return index_registers_[{axis, number}]; }
    std::array<std::uint8_t, 84> &snapshot() { return snapshot_; }

    // The event of the last interrupt link.
    std::uint32_t linked_event() const { return linked_event_; }

    // Refuses the request of this number (0 is the first from now) with `error`.
    void refuse(std::size_t number, std::uint32_t error) { refusals_[total_ + number] = error; }
    // Refuses every request with `error`; 0: none but those of refuse().
    void refuse_all(std::uint32_t error) { refuses_all_ = error; }

    // Answers the read of this number with `value`; a snapshot is all zeros then.
    void reply(std::size_t number, std::uint32_t value) { replies_[total_ + number] = value; }

    // The requests since the last time this was asked, a line each; and byte for byte.
    std::string log()
    {
        raw_.clear();
        return std::exchange(log_, {});
    }
    const std::vector<RawRequest> &raw() const { return raw_; }
    void forget() { log(); }
    std::size_t requests() const { return raw_.size(); }

    int opened() const { return opened_; }
    int closed() const { return closed_; }

  private:
    static RecordingDriver &self(void *context) { return *static_cast<RecordingDriver *>(context); }

    static std::uint32_t DeviceCount(void *context)
    {
        return static_cast<std::uint32_t>(self(context).devices_.size());
    }
    static const char *DevicePath(void *context, std::uint32_t index)
    {
        const std::string &path = self(context).devices_[index].path;
        return path.empty() ? nullptr : path.c_str();
    }
    static std::uint32_t Open(void *context, const char *path, std::uint32_t *device)
    {
        RecordingDriver &driver = self(context);
        for (std::uint32_t i = 0; i < driver.devices_.size(); ++i)
            if (driver.devices_[i].path == path) {
                *device = i;
                driver.opened_ += driver.devices_[i].open_error == 0 ? 1 : 0;
                return driver.devices_[i].open_error;
            }
        return 2;
    }
    static void Close(void *context, std::uint32_t) { ++self(context).closed_; }

    static std::uint32_t Control(void *context, std::uint32_t device, std::uint32_t code, const void *in,
                                 std::uint32_t in_size, void *out, std::uint32_t out_size, std::uint32_t *returned)
    {
        RecordingDriver &driver = self(context);
        const auto *bytes = static_cast<const std::uint8_t *>(in);
        driver.raw_.push_back({code, {bytes, bytes + in_size}, out_size});
        const std::size_t number = driver.total_++;
        std::uint32_t error = driver.refuses_all_;
        if (const auto refusal = driver.refusals_.find(number); refusal != driver.refusals_.end())
            error = refusal->second;
        if (error == 0)
            driver.answer(device, code, bytes, out, number);
        driver.log_ += DescribeRequest({code, in, in_size, out, out_size, error}) + "\n";
        *returned = error == 0 ? out_size : 0;
        return error;
    }

    void answer(std::uint32_t device, std::uint32_t code, const std::uint8_t *in, void *out, std::size_t number)
    {
        std::array<std::uint32_t, 8> words{};
        if (in != nullptr)
            std::memcpy(words.data(), in, sizeof words);
        const auto reply = replies_.find(number);
        const auto or_reply = [&]<class T>(T value) {
            return reply == replies_.end() ? value : static_cast<T>(reply->second);
        };
        switch (static_cast<ControlCode>(code)) {
        case ControlCode::IOCTL_REG_READ:
            return put(out, 0, or_reply(registers_[{words[0], words[1]}]));
        case ControlCode::IOCTL_PORT_READ:
            return put(out, 20, or_reply(ports_[words[2]]));
        case ControlCode::IOCTL_INDEX_READ:
            if (words[2] == model_index && words[3] == 0)
                return put(out, 20, devices_[device].model_word);
            return put(out, 20, or_reply(index_registers_[{words[3], words[2]}]));
        case ControlCode::IOCTL_IRQ_STATUS:
            return put(out, 0, reply == replies_.end() ? snapshot_ : decltype(snapshot_){});
        case ControlCode::IOCTL_IRQ_LINK:
            linked_event_ = words[6];
            return;
        case ControlCode::IOCTL_REG_WRITE:
            if (remembers_)
                registers_[{words[0], words[1] + 0x40}] = words[2];
            return;
        case ControlCode::IOCTL_INDEX_WRITE:
            if (remembers_)
                index_registers_[{words[3], words[2]}] = static_cast<std::uint16_t>(words[5]);
            return;
        case ControlCode::IOCTL_GET_RESOURCE:
            put(out, 0, devices_[device].resource_word);
            return put(out, 3, devices_[device].card);
        default:
            return;
        }
    }

    template <class T>
    static void put(void *out, std::size_t offset, T value)
    {
        std::memcpy(static_cast<std::uint8_t *>(out) + offset, &value, sizeof value);
    }

    std::vector<Device> devices_;
    std::map<std::uint32_t, std::uint16_t> ports_;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> registers_;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint16_t> index_registers_;
    std::array<std::uint8_t, 84> snapshot_{};
    std::uint32_t linked_event_ = 0;
    bool remembers_ = false;
    std::map<std::size_t, std::uint32_t> refusals_;
    std::map<std::size_t, std::uint32_t> replies_;
    std::uint32_t refuses_all_ = 0;
    std::size_t total_ = 0;
    std::string log_;
    std::vector<RawRequest> raw_;
    int opened_ = 0;
    int closed_ = 0;
};

} // namespace trevik::test

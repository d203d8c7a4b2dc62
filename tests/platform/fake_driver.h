// A driver that writes down what reaches it, in place as long as it lives.
#pragma once

#include <trevik/TrevikHost.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

struct FakeDriver {
    std::array<const char *, 2> paths = {"first", "second"};
    std::vector<std::string> log;
    uint32_t refusal = 0; // error number of every open and control

    FakeDriver()
    {
        const TrevikHostDriver driver{this, Count, Path, Open, Control, Close};
        TrevikHost_driver_set(&driver);
    }
    FakeDriver(const FakeDriver &) = delete;
    FakeDriver &operator=(const FakeDriver &) = delete;
    ~FakeDriver() { TrevikHost_driver_set(nullptr); }

  private:
    static FakeDriver &Self(void *context) { return *static_cast<FakeDriver *>(context); }

    static uint32_t Count(void *context) { return static_cast<uint32_t>(Self(context).paths.size()); }
    static const char *Path(void *context, uint32_t index) { return Self(context).paths[index]; }
    static uint32_t Open(void *context, const char *path, uint32_t *device)
    {
        FakeDriver &self = Self(context);
        self.log.push_back(std::string("open ") + path);
        *device = 100 + static_cast<uint32_t>(self.log.size());
        return self.refusal;
    }
    // Answers with the request's bytes in reverse order.
    static uint32_t Control(void *context, uint32_t device, uint32_t code, const void *in, uint32_t in_size,
                            void *out, uint32_t out_size, uint32_t *returned)
    {
        FakeDriver &self = Self(context);
        std::string bytes(static_cast<const char *>(in), in_size);
        self.log.push_back("control " + std::to_string(device) + " " + std::to_string(code) + " " + bytes + " " +
                           std::to_string(out_size));
        bytes.assign(bytes.rbegin(), bytes.rend());
        std::memcpy(out, bytes.data(), bytes.size());
        *returned = in_size;
        return self.refusal;
    }
    static void Close(void *context, uint32_t device)
    {
        Self(context).log.push_back("close " + std::to_string(device));
    }
};

// A whole exported call on a driver that does nothing, and the same requests made on it directly.
#include "driver/registers.h"
#include "driver/requests.h"

#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace
{

using namespace trevik;

constexpr std::uint32_t requests_of_move = 13; // once the axis has moved before

// Accepts everything; every axis is idle, every card is number 0 and an A model.
std::uint32_t NullControl(void *, std::uint32_t, std::uint32_t code, const void *, std::uint32_t, void *out,
                          std::uint32_t out_size, std::uint32_t *returned)
{
    *returned = out_size;
    if (code == static_cast<std::uint32_t>(ControlCode::IOCTL_PORT_READ)) {
        const std::uint16_t status = MainStatus::idle_bit;
        std::memcpy(static_cast<char *>(out) + 20, &status, sizeof status);
    } else if (code == static_cast<std::uint32_t>(ControlCode::IOCTL_INDEX_READ)) {
        std::memcpy(static_cast<char *>(out) + 20, &model_word_A, sizeof model_word_A);
    }
    return 0;
}

constexpr TrevikHostDriver null_driver = {
    nullptr,
    [](void *) { return std::uint32_t{1}; },
    [](void *, std::uint32_t) { return "null"; },
    [](void *, const char *, std::uint32_t *device) {
        *device = 0;
        return std::uint32_t{0};
    },
    NullControl,
    [](void *, std::uint32_t) {},
};

void call_T_position(benchmark::State &state)
{
    TrevikHost_driver_set(&null_driver);
    TrevikA_initial();
    TrevikA_T_position_move(0, 0, 1, 0, 500, 20000, 100, 100, 0);
    std::uint32_t i = 0;
    for (auto _ : state) {
        const std::uint32_t v = ++i % 64;
        benchmark::DoNotOptimize(TrevikA_T_position_move(0, 0, 10000 + v, 0, 500 + v, 20000 + v, 100, 100, 0));
    }
    TrevikA_close();
    TrevikHost_driver_set(nullptr);
    state.counters["requests"] = requests_of_move;
}
BENCHMARK(call_T_position);

// The same requests, each from a zeroed buffer as a program without the library would send them.
void call_bare_requests(benchmark::State &state)
{
    const auto control = null_driver.control;
    std::uint32_t value = 0;
    const auto send = [&](ControlCode code, std::uint32_t out_size) {
        RequestBuffer<32> in;
        in.put(0, std::uint32_t{0}).put(4, std::uint32_t{0x90}).put(8, value++);
        RequestBuffer<32> out;
        std::uint32_t returned = 0;
        benchmark::DoNotOptimize(
            control(nullptr, 0, static_cast<std::uint32_t>(code), in.data(), 32, out.data(), out_size, &returned));
        benchmark::DoNotOptimize(out);
    };
    for (auto _ : state) {
        send(ControlCode::IOCTL_PORT_READ, 32);
        send(ControlCode::IOCTL_PORT_READ, 32);
        send(ControlCode::IOCTL_REG_READ, 16);
        for (int i = 0; i < 9; ++i)
            send(ControlCode::IOCTL_REG_WRITE, 16);
        send(ControlCode::IOCTL_PORT_WRITE, 0);
    }
    state.counters["requests"] = requests_of_move;
}
BENCHMARK(call_bare_requests);

} // namespace

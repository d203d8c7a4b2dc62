// A whole exported call on a driver that does nothing, and the same requests made on it directly.
#include "null_driver.h"

#include "api/card_manager.h"
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

// Runs `call` with a changing number on a started library.
template <class Call>
void RunCalls(benchmark::State &state, std::uint32_t requests, Call call)
{
    TrevikHost_driver_set(&bench::null_driver);
    TrevikA_initial();
    TrevikA_T_position_move(0, 0, 1, 0, 500, 20000, 100, 100, 0);
    std::uint32_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(call(++i % 64));
    TrevikA_close();
    manager.StopPulserTicks();
    TrevikHost_driver_set(nullptr);
    state.counters["requests"] = requests;
}

void call_T_position(benchmark::State &state)
{
    RunCalls(state, requests_of_move, [](std::uint32_t v) {
        return TrevikA_T_position_move(0, 0, 10000 + v, 0, 500 + v, 20000 + v, 100, 100, 0);
    });
}
BENCHMARK(call_T_position);

void call_S_position(benchmark::State &state)
{
    RunCalls(state, requests_of_move + 2, [](std::uint32_t v) {
        return TrevikA_S_position_move(0, 0, 10000 + v, 0, 500 + v, 20000 + v, 100, 100, 20, 30, 0);
    });
}
BENCHMARK(call_S_position);

void call_T_ARC_center(benchmark::State &state)
{
    constexpr std::uint32_t requests_of_arc = 2 + 4 + 4 + 18 + 1; // status, position, MOTION_CONFIG, load, start
    static const std::uint8_t relative[4] = {0, 0, 0, 0};
    RunCalls(state, requests_of_arc, [](std::uint32_t v) {
        const auto wide = static_cast<std::int32_t>(v);
        return TrevikA_T_ARC_center_move(0, 0, 1000 + wide, 300, 2000, 400, relative, 500, 10000 + v, 100, 0, 0);
    });
}
BENCHMARK(call_T_ARC_center);

// The same requests, each from a zeroed buffer as a program without the library would send them.
void call_bare_requests(benchmark::State &state)
{
    const auto control = bench::null_driver.control;
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

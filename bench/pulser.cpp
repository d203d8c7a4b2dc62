// The handwheel's periodic task: what one tick of 64 following axes costs, and how late ticks come in real time.
#include "null_driver.h"

#include "api/card_manager.h"
#include "platform/host/clock.h"
#include "platform/os.h"

#include <trevik/TrevikA.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>
#include <vector>

namespace
{

using namespace trevik;

constexpr std::uint32_t requests_of_tick = 11; // of one axis that moves

// 16 cards on the null driver, every axis following its own handwheel; the axes move.
class Followers
{
  public:
    explicit Followers(const TrevikHostDriver &driver)
    {
        bench::null_cards = card_count;
        bench::null_status = 0;
        TrevikHost_driver_set(&driver);
        TrevikA_initial();
        for (std::uint8_t card = 0; card < card_count; ++card)
            for (std::uint8_t axis = 0; axis < axis_count; ++axis) {
                TrevikA_pulser_map_set(card, axis, axis, 0);
                TrevikA_pulser_motion_enable(card, axis, 1, 3);
            }
    }
    ~Followers()
    {
        manager.StopPulserTicks();
        TrevikA_close();
        TrevikHost_driver_set(nullptr);
        bench::null_cards = 1;
        bench::null_status = MainStatus::idle_bit;
    }
    Followers(const Followers &) = delete;
    Followers &operator=(const Followers &) = delete;
};

void pulser_tick_64(benchmark::State &state)
{
    const Followers followers(bench::null_driver);
    manager.StopPulserTicks(); // this thread makes the ticks
    for (auto _ : state)
        manager.PulserFollowTick();
    state.counters["requests"] = requests_of_tick * card_count * axis_count;
}
BENCHMARK(pulser_tick_64);

// The same requests through the system's call, each from a zeroed buffer, as a program without the library would
// make them.
void pulser_bare_requests_64(benchmark::State &state)
{
    TrevikHost_driver_set(&bench::null_driver);
    os::HANDLE handle =
        os::CreateFileA("0", os::GenericReadWrite, 0, nullptr, os::OpenExisting, os::FileAttributeNormal, nullptr);
    std::uint32_t value = 0;
    const auto send = [&](ControlCode code, std::uint32_t out_size) {
        RequestBuffer<32> in;
        in.put(0, std::uint32_t{0}).put(4, std::uint32_t{0x90}).put(8, value++);
        RequestBuffer<32> out;
        os::DWORD returned = 0;
        benchmark::DoNotOptimize(os::DeviceIoControl(handle, static_cast<os::DWORD>(code), in.data(), 32,
                                                     out.data(), out_size, &returned, nullptr));
        benchmark::DoNotOptimize(out);
    };
    for (auto _ : state) {
        for (unsigned axis = 0; axis < card_count * axis_count; ++axis) {
            send(ControlCode::IOCTL_REG_READ, 16);
            send(ControlCode::IOCTL_PORT_READ, 32);
            for (unsigned i = 2; i < requests_of_tick; ++i)
                send(ControlCode::IOCTL_REG_WRITE, 16);
        }
    }
    os::CloseHandle(handle);
    TrevikHost_driver_set(nullptr);
    state.counters["requests"] = requests_of_tick * card_count * axis_count;
}
BENCHMARK(pulser_bare_requests_64);

// Lateness in real time.

constexpr std::int64_t period_ns = 20'000'000;
constexpr std::size_t ticks_measured = 100;

// Times at which ticks began: the first request of the first axis.
std::array<std::int64_t, ticks_measured> tick_times;
std::atomic<std::size_t> ticks_seen;

std::uint32_t NoteTicks(void *context, std::uint32_t device, std::uint32_t code, const void *in,
                        std::uint32_t in_size, void *out, std::uint32_t out_size, std::uint32_t *returned)
{
    const bool counter = code == static_cast<std::uint32_t>(ControlCode::IOCTL_REG_READ) &&
                         GetField<std::uint32_t>(in, 4) == ReadCode(Register::COUNTER4);
    if (counter && device == 0 && GetField<std::uint32_t>(in, 0) == 0 && ticks_seen < ticks_measured)
        tick_times[ticks_seen++] = host::NowNanoseconds();
    return bench::NullControl(context, device, code, in, in_size, out, out_size, returned);
}

using Lateness = std::vector<std::int64_t>;

void MeasureTicks(Lateness &late)
{
    TrevikHostDriver driver = bench::null_driver;
    driver.control = NoteTicks;
    ticks_seen = ticks_measured; // not yet
    const Followers followers(driver);
    manager.StopPulserTicks();
    ticks_seen = 0;
    TrevikA_initial(); // the timer starts at its end
    const std::int64_t start_ns = host::NowNanoseconds();
    for (std::uint8_t axis = 0; axis < axis_count; ++axis)
        TrevikA_pulser_motion_enable(0, axis, 1, 3);
    ticks_seen = 0; // without the reads of switching on
    while (ticks_seen < ticks_measured)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    for (std::size_t i = 0; i < ticks_measured; ++i)
        late.push_back(tick_times[i] - start_ns - static_cast<std::int64_t>(i + 1) * period_ns);
}

void MeasureSleeps(Lateness &late)
{
    std::thread sleeper([&late] {
        const auto start = std::chrono::steady_clock::now();
        for (std::size_t i = 1; i <= ticks_measured; ++i) {
            const auto due = start + std::chrono::nanoseconds(static_cast<std::int64_t>(i) * period_ns);
            std::this_thread::sleep_until(due);
            late.push_back((std::chrono::steady_clock::now() - due).count());
        }
    });
    sleeper.join();
}

double MedianMicroseconds(Lateness &late)
{
    std::nth_element(late.begin(), late.begin() + static_cast<std::ptrdiff_t>(late.size() / 2), late.end());
    return static_cast<double>(late[late.size() / 2]) / 1000;
}

// Ticks and bare absolute sleeps of the same period, by turns.
void pulser_tick_lateness(benchmark::State &state)
{
    Lateness ticks;
    Lateness sleeps;
    for (auto _ : state)
        for (int turn = 0; turn < 3; ++turn) {
            MeasureSleeps(sleeps);
            MeasureTicks(ticks);
        }
    state.counters["tick_us"] = MedianMicroseconds(ticks);
    state.counters["sleep_us"] = MedianMicroseconds(sleeps);
    state.counters["ratio"] = MedianMicroseconds(ticks) / MedianMicroseconds(sleeps);
}
BENCHMARK(pulser_tick_lateness)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace

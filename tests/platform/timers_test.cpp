#include "platform/host/clock.h"
#include "platform/os.h"

#include <doctest/doctest.h>

#include <cmath>
#include <tuple>
#include <utility>
#include <vector>

using namespace trevik;

namespace
{

// Callbacks as they ran: which timer, and when since the start, ns.
using Call = std::pair<char, std::int64_t>;

struct Record {
    char name = 'a';
    std::int64_t start_ns = host::NowNanoseconds();
    std::vector<Call> *calls = nullptr;
    void (*also)() = nullptr;
};

void TREVIK_CALL Note(os::UINT, os::UINT, os::DWORD_PTR user, os::DWORD_PTR, os::DWORD_PTR)
{
    const Record &record = *reinterpret_cast<const Record *>(user); // NOLINT(performance-no-int-to-ptr)
    record.calls->emplace_back(record.name, host::NowNanoseconds() - record.start_ns);
    if (record.also != nullptr)
        record.also();
}

os::UINT Start(os::UINT delay_ms, const Record &record, os::UINT flags)
{
    return os::timeSetEvent(delay_ms, 1, Note, reinterpret_cast<os::DWORD_PTR>(&record), flags);
}

} // namespace

TEST_SUITE("host clock and timers")
{
    TEST_CASE("the manual clock moves by exactly the sum of its moves")
    {
        const std::tuple<double, int, std::int64_t> table[] = {{0.0003, 1, 300'000},
                                                               {1e-7 / 3, 1'000'000, 33'333'333},
                                                               {0.1, 10, 1'000'000'000},
                                                               {0.25e-9, 4, 1},
                                                               {-1.0, 3, 0},
                                                               {3600.0, 24, 86'400'000'000'000},
                                                               {0.0, 5, 0},
                                                               {std::nan(""), 1, 0}};
        for (const auto &row : table) {
            const auto &[seconds, times, sum_ns] = row;
            CAPTURE(std::get<0>(row));
            TrevikHost_clock_manual(0); // a fresh start, with no remainder
            TrevikHost_clock_manual(1);
            const std::int64_t start_ns = host::NowNanoseconds();
            for (int i = 0; i < times; ++i)
                TrevikHost_advance(seconds);
            CHECK(host::NowNanoseconds() - start_ns == sum_ns);
        }
        TrevikHost_clock_manual(0);
    }

    TEST_CASE("switching keeps the time, and a clock that runs by itself is not moved")
    {
        TrevikHost_clock_manual(1);
        TrevikHost_advance(1000.0);
        const std::int64_t manual_ns = host::NowNanoseconds();
        TrevikHost_clock_manual(0);
        TrevikHost_advance(1000.0);
        const std::int64_t real_ns = host::NowNanoseconds();
        CHECK((real_ns >= manual_ns && real_ns < manual_ns + 500'000'000'000));
        TrevikHost_clock_manual(1);
        CHECK((host::NowNanoseconds() >= real_ns && host::NowNanoseconds() < manual_ns + 500'000'000'000));
        TrevikHost_clock_manual(0);
    }

    TEST_CASE("callbacks run at their times exactly, then in order of creation, however the clock is moved")
    {
        TrevikHost_clock_manual(1);
        for (const int moves : {1, 7, 1000}) {
            CAPTURE(moves);
            std::vector<Call> calls;
            const Record a{.name = 'a', .calls = &calls};
            const Record b{.name = 'b', .calls = &calls};
            const Record c{.name = 'c', .calls = &calls};
            const os::UINT timers[] = {Start(3, a, os::TimePeriodic), Start(2, b, os::TimePeriodic),
                                       Start(6, c, os::TimeOneShot)};
            for (int i = 0; i < moves; ++i)
                TrevikHost_advance(0.012 / moves);
            TrevikHost_advance(1e-9); // what rounding left
            constexpr std::int64_t ms = 1'000'000;
            const std::vector<Call> expected = {{'b', 2 * ms},  {'a', 3 * ms},  {'b', 4 * ms}, {'a', 6 * ms},
                                                {'b', 6 * ms},  {'c', 6 * ms},  {'b', 8 * ms}, {'a', 9 * ms},
                                                {'b', 10 * ms}, {'a', 12 * ms}, {'b', 12 * ms}};
            CHECK((calls == expected));
            CHECK(os::timeKillEvent(timers[0]) == os::TimerNoError);
            CHECK(os::timeKillEvent(timers[0]) == os::TimerNoCanDo);
            CHECK(os::timeKillEvent(timers[1]) == os::TimerNoError);
            CHECK(os::timeKillEvent(timers[2]) == os::TimerNoCanDo);
            TrevikHost_advance(1.0);
            CHECK(calls.size() == 11);
        }
        TrevikHost_clock_manual(0);
    }

    TEST_CASE("what a callback may do: kill its timer, start one, move the clock in vain")
    {
        static os::UINT own;
        static std::vector<Call> calls;
        static Record second;
        TrevikHost_clock_manual(1);
        second = {.name = 'b', .start_ns = host::NowNanoseconds(), .calls = &calls};
        const Record first{.calls = &calls, .also = [] {
                               TrevikHost_advance(5.0);
                               CHECK(os::timeKillEvent(own) == os::TimerNoError);
                               CHECK(Start(5, second, os::TimeOneShot) != 0);
                           }};
        own = Start(10, first, os::TimePeriodic);
        TrevikHost_advance(0.1);
        CHECK((calls == std::vector<Call>{{'a', 10'000'000}, {'b', 15'000'000}}));
        TrevikHost_clock_manual(0);
    }

    TEST_CASE("arguments that make no timer")
    {
        CHECK(os::timeSetEvent(0, 1, Note, 0, os::TimePeriodic) == 0);
        CHECK(os::timeSetEvent(20, 1, nullptr, 0, os::TimePeriodic) == 0);
        CHECK(os::timeSetEvent(20, 1, Note, 0, 0x10) == 0);
        CHECK(os::timeKillEvent(0) == os::TimerNoCanDo);
    }

    TEST_CASE("in real time a period does not drift, and a switched clock takes the timers along")
    {
        std::vector<Call> calls;
        const Record record{.calls = &calls};
        const os::UINT timer = Start(5, record, os::TimePeriodic);
        os::HANDLE nothing = os::CreateEventA(nullptr, 0, 0, nullptr);
        os::WaitForSingleObject(nothing, 303);
        TrevikHost_clock_manual(1);
        TrevikHost_advance(0.0); // waits for a callback that still runs, runs what is late
        const std::int64_t stopped_ns = host::NowNanoseconds() - record.start_ns;
        const std::size_t real_calls = calls.size();
        TrevikHost_advance(0.1);
        TrevikHost_clock_manual(0);
        CHECK(os::timeKillEvent(timer) == os::TimerNoError);
        os::CloseHandle(nothing);
        REQUIRE(real_calls >= 60);
        CHECK(calls[real_calls / 2].second < stopped_ns);                           // the timer ran by itself
        CHECK(static_cast<std::int64_t>(real_calls) >= stopped_ns / 5'000'000 - 1); // none left out
        for (std::size_t i = 0; i < real_calls; ++i)
            REQUIRE(calls[i].second >= (static_cast<std::int64_t>(i) + 1) * 5'000'000); // none early
        CHECK(calls.size() >= real_calls + 20);
    }
}

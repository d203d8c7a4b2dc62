// Interrupt delivery: requests, events, and the life of the callback threads.
#include "support/captured_output.h"
#include "support/started_library.h"
#include "support/system.h"

#include "platform/host/handles.h"
#include "platform/host/system.h"
#include "status/interrupts.h"

#include <trevik/Trevik.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace trevik;
using namespace trevik::test;

namespace
{

constexpr const char *closing = "thread close-------------";

// Notes what callbacks and debugger lines tell.
struct Linked : StartedLibrary {
    std::mutex mutex;
    std::condition_variable more;
    std::vector<std::string> lines;
    std::vector<std::uint32_t> calls; // card, + 1000 for the second callback
    static inline Linked *current = nullptr;

    Linked()
    {
        current = this;
        TrevikHost_debug_output_set([](void *, const char *text) { current->note(current->lines, text); }, nullptr);
    }
    ~Linked()
    {
        join();
        TrevikHost_debug_output_set(nullptr, nullptr);
    }

    template <class List, class Item>
    void note(List &list, Item item)
    {
        const std::lock_guard lock(mutex);
        list.emplace_back(item);
        more.notify_all();
    }
    // Ends all callback threads.
    static void join()
    {
        Card card;
        manager.numbered(0, card);
        JoinCallbacks(card);
    }
    void signal() const { CHECK(TrevikHost_event_signal(driver.linked_event()) == 0); }
    void wait_for_calls(std::size_t count)
    {
        std::unique_lock lock(mutex);
        more.wait(lock, [&] { return calls.size() >= count; });
    }
    void signal_and_wait(std::size_t count)
    {
        for (std::size_t call = 1; call <= count; ++call) {
            signal();
            wait_for_calls(call);
        }
    }
    // Returns how many there are by then.
    long wait_for_ends(long count)
    {
        std::unique_lock lock(mutex);
        long ends = 0;
        more.wait(lock, [&] { return (ends = std::count(lines.begin(), lines.end(), closing)) >= count; });
        return ends;
    }
};

void TREVIK_CALL First(std::uint32_t card)
{
    Linked::current->note(Linked::current->calls, card);
}
void TREVIK_CALL Second(std::uint32_t card)
{
    First(card + 1000);
}
// A callback that links again and closes the library, from its own thread.
void TREVIK_CALL CallsBackIn(std::uint32_t card)
{
    std::uint32_t position = 0;
    const bool read = TrevikA_current_position_read(static_cast<std::uint8_t>(card), 0, &position) == TREVIK_OK;
    const bool linked = TrevikA_IRQ_process_link(static_cast<std::uint8_t>(card), Second) == TREVIK_OK;
    const bool closed = TrevikA_close() == TREVIK_OK;
    First(read && linked && closed ? 1 : 0);
}

} // namespace

TEST_SUITE("concurrent")
{
    TEST_CASE_FIXTURE(Linked, "a link: its request, its lines, a callback for each signal, its end")
    {
        const auto pid = host::ProcessId();
        CHECK(TrevikA_IRQ_enable(0) == TREVIK_OK);
        CHECK(TrevikA_IRQ_process_link(0, First) == TREVIK_OK);
        REQUIRE(driver.requests() == 2);
        const std::uint32_t event = driver.linked_event();
        using Words = std::array<std::uint32_t, 8>;
        CHECK((driver.raw()[0].code == 0x222240 && driver.raw()[1].code == 0x2220C0));
        CHECK(GetField<Words>(driver.raw()[0].in.data(), 0) == Words{0, 0, 0, 0, pid, 1, 0, 0});
        CHECK(GetField<Words>(driver.raw()[1].in.data(), 0) == Words{0, 0, 0, 0, pid, 0, event, event});
        signal_and_wait(50);
        CHECK(TrevikA_IRQ_disable(0) == TREVIK_OK);
        CHECK(driver.requests() == 2);
        signal();
        wait_for_ends(1);
        CHECK(calls == std::vector<std::uint32_t>(50, 0));
        CHECK(lines[0].starts_with("callbackAddr1 = "));
        CHECK(lines[1].starts_with("current thread id = "));
        CHECK(lines[2] == "thread dddddddddddddd-------------");
        CHECK(lines.size() == 2 + 50 + 1);
        while (TrevikHost_event_signal(event) == 0) // the thread closes it
            std::this_thread::yield();
    }

    TEST_CASE_FIXTURE(Linked, "two links of a card: one call a signal, to the newer callback; both end")
    {
        TrevikA_IRQ_process_link(0, First);
        TrevikA_IRQ_process_link(0, Second);
        signal_and_wait(100);
        CHECK(calls == std::vector<std::uint32_t>(100, 1000));
        TrevikA_IRQ_disable(0);
        signal();
        wait_for_ends(2);
        CHECK(calls.size() == 100);
    }

    TEST_CASE_FIXTURE(Linked,
                      "no thread ends without a signal, none that one has ended calls back, whatever is enabled")
    {
        for (int round = 0; round < 200; ++round) {
            TrevikA_IRQ_process_link(0, First);
            TrevikA_IRQ_process_link(0, First); // wakes the thread of the first
            TrevikA_IRQ_disable(0);
            std::this_thread::yield();
            TrevikA_IRQ_enable(0);
            CHECK(wait_for_ends(0) == 2 * round);
            TrevikA_IRQ_disable(0);
            signal();
            wait_for_ends(2 * round + 1);
            TrevikA_IRQ_enable(0);
            wait_for_ends(2 * round + 2);
        }
        CHECK(calls.empty());
    }

    TEST_CASE_FIXTURE(Linked,
                      "disabled and enabled again before a signal, a link goes on; linked again, the old one ends")
    {
        TrevikA_IRQ_process_link(0, First);
        TrevikA_IRQ_disable(0);
        TrevikA_IRQ_enable(0);
        signal_and_wait(1);
        for (int ends = 1; ends <= 20; ++ends) { // whoever is faster
            TrevikA_IRQ_disable(0);
            TrevikA_IRQ_process_link(0, Second);
            wait_for_ends(ends); // without a signal of its own
        }
        signal();
        wait_for_calls(2);
        CHECK(calls == std::vector<std::uint32_t>{0, 1000});
    }

    TEST_CASE_FIXTURE(Linked, "a callback may call anything, closing the library included")
    {
        TrevikA_IRQ_process_link(0, CallsBackIn);
        signal_and_wait(1);
        CHECK(calls.front() == 1);
        wait_for_ends(2);
        CHECK(TrevikA_IRQ_disable(0) == TREVIK_ERR_HANDLE);
    }
}

TEST_CASE_FIXTURE(Linked, "a card takes 32 links, and those that have ended leave nothing behind")
{
    const std::size_t handles = host::OpenHandleCount();
    for (int round = 0; round < 10; ++round) {
        for (int link = 0; link < 32; ++link)
            CHECK(TrevikA_IRQ_process_link(0, First) == TREVIK_OK);
        CHECK(TrevikA_IRQ_process_link(0, First) == 1450);
        TrevikA_IRQ_disable(0); // they all end for a new one
    }
    signal();
    join();
    CHECK(calls.empty());
    CHECK(host::OpenHandleCount() == handles);
    CHECK(TrevikHost_event_signal(driver.linked_event()) != 0);
}

TEST_CASE("the events of cards are named by their number")
{
    RecordingDriver driver({Device{"a", 0}, Device{"b", 3}});
    TrevikA_initial();
    std::uint32_t events[3] = {};
    for (std::uint32_t &event : events) // made, opened, and that of another card
        CHECK(Trevik_enable_IRQ(&event == &events[2] ? 0 : 3, &event) == TREVIK_OK);
    const os::HANDLE own = os::OpenEventA(os::EventAllAccess, 0, "\x03TrevikA");
    REQUIRE(own != nullptr);
    for (const std::uint32_t event : events) {
        TrevikHost_event_signal(event);
        CHECK(os::WaitForSingleObject(own, 0) ==
              (event == events[2] ? os::WaitTimeout : os::WaitObject0)); // resets it
        CHECK(os::CloseHandle(host::HandleOf(event)) == 1);
    }
    CHECK(os::CloseHandle(own) == 1);
    CHECK(Trevik_enable_IRQ(3, nullptr) == TREVIK_ERR_PARAM);
}

namespace
{

// Loads the library, uses it and unloads it with a callback linked and the handwheel's timer running.
void LoadLinkUnload()
{
    void *library = LoadLibraryFile(TREVIK_LIBRARY);
    REQUIRE(library != nullptr);
    const auto initial = reinterpret_cast<decltype(&TrevikA_initial)>(FunctionOf(library, "TrevikA_initial"));
    const auto link =
        reinterpret_cast<decltype(&TrevikA_IRQ_process_link)>(FunctionOf(library, "TrevikA_IRQ_process_link"));
    CHECK(initial() == TREVIK_OK);
    CHECK(link(0, First) == TREVIK_OK);
    UnloadLibraryFile(library);
    CHECK_FALSE(LibraryFileIsLoaded(TREVIK_LIBRARY));
}

} // namespace

TEST_CASE("unloading a thousand times leaves no thread, no handle and no byte")
{
    constexpr std::size_t rounds = 1000;
    const std::size_t threads = ThreadCount();
    std::size_t handles = 0;
    std::size_t bytes = 0;
    Printed([&] {
        for (std::size_t round = 0; round < rounds; ++round) {
            if (round == 20) { // what the system keeps from the first rounds on is its own
                handles = OpenHandles();
                bytes = HeapBytes();
            }
            LoadLinkUnload();
        }
    });
    // Where threads cannot end before their library is gone, they do so now.
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (ThreadCount() != threads && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
    CHECK(ThreadCount() == threads);
    CHECK(OpenHandles() <= handles);
    CHECK(HeapBytes() < bytes + rounds); // the system keeps some bytes for threads, but none for each round
}

// Interrupt delivery: requests, events, and the life of the callback threads.
#include "support/captured_output.h"
#include "support/started_library.h"
#include "support/system.h"

#include "platform/host/faults.h"
#include "platform/host/handles.h"
#include "platform/host/system.h"
#include "status/interrupts.h"

#include <trevik/Trevik.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace trevik;
using namespace trevik::test;

namespace
{

// What callbacks and debugger lines have told so far.
struct Told {
    std::mutex mutex;
    std::condition_variable more;
    std::vector<std::string> lines;
    std::vector<std::uint32_t> calls; // card, + 1000 for the second callback

    template <class Condition>
    void wait(Condition condition)
    {
        std::unique_lock lock(mutex);
        more.wait(lock, condition);
    }
    std::size_t count(const char *line)
    {
        return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
    }
    void call(std::uint32_t number)
    {
        const std::lock_guard lock(mutex);
        calls.push_back(number);
        more.notify_all();
    }
};

Told *told = nullptr;

void TREVIK_CALL First(std::uint32_t card)
{
    told->call(card);
}
void TREVIK_CALL Second(std::uint32_t card)
{
    told->call(card + 1000);
}
// A callback that links again and closes the library, from its own thread.
void TREVIK_CALL CallsBackIn(std::uint32_t card)
{
    std::uint32_t position = 0;
    const bool read = TrevikA_current_position_read(static_cast<std::uint8_t>(card), 0, &position) == TREVIK_OK;
    const bool linked = TrevikA_IRQ_process_link(static_cast<std::uint8_t>(card), Second) == TREVIK_OK;
    const bool closed = TrevikA_close() == TREVIK_OK;
    told->call(read && linked && closed ? 1 : 0);
}

constexpr const char *closing = "thread close-------------";

struct Linked : StartedLibrary {
    Told story;

    Linked()
    {
        told = &story;
        TrevikHost_debug_output_set(
            [](void *context, const char *text) {
                auto &listener = *static_cast<Told *>(context);
                const std::lock_guard lock(listener.mutex);
                listener.lines.emplace_back(text);
                listener.more.notify_all();
            },
            &story);
    }
    ~Linked()
    {
        join();
        TrevikHost_debug_output_set(nullptr, nullptr);
    }

    // Ends all callback threads.
    void join()
    {
        Card card;
        manager.numbered(0, card);
        JoinCallbacks(card);
    }
    void signal() const { CHECK(TrevikHost_event_signal(driver.linked_event()) == 0); }
    void wait_for_calls(std::size_t count)
    {
        story.wait([&] { return story.calls.size() >= count; });
    }
    void wait_for_ends(std::size_t count)
    {
        story.wait([&] { return story.count(closing) >= count; });
    }
};

} // namespace

TEST_SUITE("concurrent")
{
    TEST_CASE_FIXTURE(Linked, "a link: its request, its lines, a callback for each signal, its end")
    {
        const auto pid = host::ProcessId();
        CHECK(TrevikA_IRQ_enable(0) == TREVIK_OK);
        CHECK(TrevikA_IRQ_process_link(0, First) == TREVIK_OK);
        REQUIRE(driver.requests() == 2);
        std::vector<std::uint8_t> enable(32, 0);
        std::memcpy(&enable[16], &pid, 4);
        std::vector<std::uint8_t> link = enable;
        enable[20] = 1;
        const std::uint32_t event = driver.linked_event();
        std::memcpy(&link[24], &event, 4);
        std::memcpy(&link[28], &event, 4);
        CHECK((driver.raw()[0].code == 0x222240 && driver.raw()[0].in == enable && driver.raw()[0].out_size == 0));
        CHECK((driver.raw()[1].code == 0x2220C0 && driver.raw()[1].in == link && driver.raw()[1].out_size == 0));
        for (std::size_t calls = 1; calls <= 50; ++calls) {
            signal();
            wait_for_calls(calls);
        }
        CHECK(TrevikA_IRQ_disable(0) == TREVIK_OK);
        CHECK(driver.requests() == 2);
        signal();
        wait_for_ends(1);
        CHECK(story.calls == std::vector<std::uint32_t>(50, 0));
        std::array<char, 64> address{};
        std::snprintf(address.data(), address.size(), "callbackAddr1 = %lx",
                      static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(First)));
        CHECK(story.lines[0] == address.data());
        CHECK(story.lines[1].starts_with("current thread id = "));
        CHECK(story.lines[2] == "thread dddddddddddddd-------------");
        CHECK(story.lines.size() == 2 + 50 + 1);
        while (TrevikHost_event_signal(event) == 0) // the thread closes it
            std::this_thread::yield();
    }

    TEST_CASE_FIXTURE(Linked, "two links of a card: one call a signal, to the newer callback; both end")
    {
        TrevikA_IRQ_process_link(0, First);
        const std::uint32_t first_event = driver.linked_event();
        TrevikA_IRQ_process_link(0, Second);
        CHECK(driver.linked_event() != first_event);
        for (std::size_t calls = 1; calls <= 100; ++calls) {
            signal();
            wait_for_calls(calls);
        }
        CHECK(story.calls == std::vector<std::uint32_t>(100, 1000));
        TrevikA_IRQ_disable(0);
        signal();
        wait_for_ends(2);
        CHECK(story.calls.size() == 100);
    }

    TEST_CASE_FIXTURE(Linked,
                      "disabled and enabled again before a signal, a link goes on; linked again, the old one ends")
    {
        TrevikA_IRQ_process_link(0, First);
        TrevikA_IRQ_disable(0);
        TrevikA_IRQ_enable(0);
        signal();
        wait_for_calls(1);
        TrevikA_IRQ_disable(0);
        TrevikA_IRQ_process_link(0, Second);
        wait_for_ends(1); // without a signal of its own
        signal();
        wait_for_calls(2);
        CHECK(story.calls == std::vector<std::uint32_t>{0, 1000});
    }

    TEST_CASE_FIXTURE(Linked, "a thousand links, disabled and signalled, leave nothing behind")
    {
        const std::size_t handles = host::OpenHandleCount();
        for (int round = 0; round < 1000; ++round) {
            CHECK(TrevikA_IRQ_process_link(0, First) == TREVIK_OK);
            TrevikA_IRQ_disable(0);
            signal();
            if (round % 100 == 99)
                wait_for_ends(static_cast<std::size_t>(round + 1));
        }
        join();
        CHECK(story.calls.empty());
        CHECK(host::OpenHandleCount() == handles);
        CHECK(TrevikHost_event_signal(driver.linked_event()) != 0);
    }

    TEST_CASE_FIXTURE(Linked, "a callback may call anything, closing the library included")
    {
        TrevikA_IRQ_process_link(0, CallsBackIn);
        signal();
        wait_for_calls(1);
        CHECK(story.calls.front() == 1);
        wait_for_ends(2);
        CHECK(TrevikA_IRQ_disable(0) == TREVIK_ERR_HANDLE);
    }
}

TEST_CASE_FIXTURE(Linked, "a thread that cannot be created does not stop a link, too many links do")
{
    using host::FailNext;
    using host::Function;
    FailNext(Function::CreateThread, 8);
    CHECK(TrevikA_IRQ_process_link(0, First) == TREVIK_OK);
    const std::size_t handles = host::OpenHandleCount();
    std::uint32_t result = TREVIK_OK;
    int links = 0;
    for (; result == TREVIK_OK && links < 100; ++links)
        result = TrevikA_IRQ_process_link(0, First);
    CHECK((result == 1450 && links == 33));
    TrevikA_IRQ_disable(0); // they all end for a new one
    CHECK(TrevikA_IRQ_process_link(0, First) == TREVIK_OK);
    TrevikA_IRQ_disable(0);
    signal();
    TrevikA_close();
    join();
    CHECK(story.calls.empty());
    CHECK(host::OpenHandleCount() < handles);
}

TEST_CASE("the events of cards are named by their number")
{
    RecordingDriver driver({Device{"a", 0, 0, model_word_A, 0}, Device{"b", 3, 0, model_word_A, 0}});
    TrevikA_initial();
    CHECK(os::OpenEventA(os::EventAllAccess, 0, "\x03TrevikA") == nullptr);
    std::uint32_t event = 0;
    CHECK(Trevik_enable_IRQ(3, &event) == TREVIK_OK);
    const os::HANDLE own = os::OpenEventA(os::EventAllAccess, 0, "\x03TrevikA");
    REQUIRE(own != nullptr);
    TrevikHost_event_signal(event);
    CHECK(os::WaitForSingleObject(own, 0) == os::WaitObject0);
    CHECK(os::WaitForSingleObject(own, 0) == os::WaitTimeout); // auto-reset
    std::uint32_t again = 0;
    CHECK(Trevik_enable_IRQ(3, &again) == TREVIK_OK); // opens the same
    TrevikHost_event_signal(again);
    CHECK(os::WaitForSingleObject(own, 0) == os::WaitObject0);
    CHECK(Trevik_enable_IRQ(3, nullptr) == TREVIK_ERR_PARAM);
    CHECK(Trevik_enable_IRQ(0, &again) == TREVIK_OK);
    for (const std::uint32_t handle : {event, HandleNumber(own), again})
        CHECK(os::CloseHandle(host::HandleOf(handle)) == 1);
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

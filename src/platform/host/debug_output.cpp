// The lines of OutputDebugStringA: to the caller's sink, else to standard error when TREVIK_DEBUG=1.
#include "platform/host/immortal.h"
#include "platform/host/system.h"
#include "platform/os.h"

#include <atomic>
#include <cstdio>
#include <mutex>
#include <string_view>

namespace trevik::host
{
namespace
{

struct DebugSink {
    void (*write)(void *context, const char *text) = nullptr;
    void *context = nullptr;
};

struct DebugOutput {
    std::mutex mutex;
    DebugSink sink;
};

// Callback threads write a line before each callback: where nobody listens they find out without the mutex.
enum class Listener : int { Unknown, None, Somebody };
std::atomic<Listener> listener{Listener::Unknown};

DebugOutput &TheDebugOutput()
{
    static Immortal<DebugOutput> output;
    return output.get();
}

bool DebugWanted()
{
    static const bool wanted = Environment("TREVIK_DEBUG") == "1";
    return wanted;
}

// The mutex is held.
void NoteListener(const DebugSink &sink)
{
    listener = sink.write != nullptr || DebugWanted() ? Listener::Somebody : Listener::None;
}

DebugSink CurrentSink()
{
    DebugOutput &output = TheDebugOutput();
    const std::lock_guard lock(output.mutex);
    NoteListener(output.sink);
    return output.sink;
}

} // namespace
} // namespace trevik::host

namespace trevik::os
{

void OutputDebugStringA(LPCSTR text)
{
    if (text == nullptr || host::listener == host::Listener::None)
        return;
    if (const host::DebugSink sink = host::CurrentSink(); sink.write != nullptr) {
        sink.write(sink.context, text); // outside the mutex: a sink may set another one
    } else if (host::DebugWanted()) {
        std::fprintf(stderr, std::string_view(text).ends_with('\n') ? "%s" : "%s\n", text);
    }
}

} // namespace trevik::os

void TrevikHost_debug_output_set(void (*sink)(void *context, const char *text), void *context)
{
    using namespace trevik::host;
    DebugOutput &output = TheDebugOutput();
    const std::lock_guard lock(output.mutex);
    output.sink = {sink, context};
    NoteListener(output.sink);
}

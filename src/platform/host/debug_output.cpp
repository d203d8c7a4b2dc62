// The lines of OutputDebugStringA: to the caller's sink, else to standard error when TREVIK_DEBUG=1.
#include "platform/host/immortal.h"
#include "platform/host/system.h"
#include "platform/os.h"

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

DebugOutput &TheDebugOutput()
{
    static Immortal<DebugOutput> output;
    return output.get();
}

DebugSink CurrentSink()
{
    DebugOutput &output = TheDebugOutput();
    const std::lock_guard lock(output.mutex);
    return output.sink;
}

bool DebugWanted()
{
    static const bool wanted = Environment("TREVIK_DEBUG") == "1";
    return wanted;
}

} // namespace
} // namespace trevik::host

namespace trevik::os
{

void OutputDebugStringA(LPCSTR text)
{
    if (text == nullptr)
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
    trevik::host::DebugOutput &output = trevik::host::TheDebugOutput();
    const std::lock_guard lock(output.mutex);
    output.sink = {sink, context};
}

#include "platform/os.h"

#include <doctest/doctest.h>

#include <string>

TEST_CASE("debug lines go to the sink that is set")
{
    std::string lines;
    const auto append = [](void *context, const char *text) { static_cast<std::string *>(context)->append(text); };
    TrevikHost_debug_output_set(append, &lines);
    trevik::os::OutputDebugStringA("one\n");
    trevik::os::OutputDebugStringA("two %s");
    TrevikHost_debug_output_set(nullptr, nullptr);
    trevik::os::OutputDebugStringA("three");
    CHECK(lines == "one\ntwo %s");
}

// What differs between the systems that the host layer itself runs on, one folder for each: posix, windows.
#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace trevik::host
{

// A variable of the environment as it is now; nothing: it is not set.
std::optional<std::string> Environment(const char *name);

// An empty file, lines ending with a single line feed. Others may rename and remove it meanwhile. Null, and errno says
// why: it cannot be written.
std::FILE *NewTextFile(const char *name);

std::uint32_t ProcessId();

// Waits with a timeout end within a millisecond of it from the first to the last of these pairs.
void BeginExactWaits();
void EndExactWaits();

} // namespace trevik::host

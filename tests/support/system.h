// What the systems that the tests run on do in different ways: one file for each, in posix and windows.
#pragma once

#include <trevik/TrevikA.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <tuple>

namespace trevik::test
{

// The parameters of a pointer to an exported function. In 32-bit Windows its calling convention belongs to its type.
template <class Pointer>
struct Signature;
template <class... P>
struct Signature<std::uint32_t(TREVIK_CALL *)(P...)> {
    using Parameters = std::tuple<P...>;
};
#ifdef _WIN32
template <class... P>
struct Signature<std::uint32_t (*)(P...)> {
    using Parameters = std::tuple<P...>;
};
#endif

// Turns standard output to `file` and gives what TurnOutputBack needs.
int TurnOutputTo(std::FILE *file);
void TurnOutputBack(int former);

// Runs a command line in the system's shell: its exit status, and what it wrote on standard output.
int RunCommand(const std::string &command, std::string &output);

// True when an SVG reader takes the file.
bool SvgIsReadable(const std::string &name);

void *LoadLibraryFile(const char *name);
void UnloadLibraryFile(void *library);
bool LibraryFileIsLoaded(const char *name);
void *FunctionOf(void *library, const char *name);

// Threads of this process.
std::size_t ThreadCount();

// Open files, or handles, of this process; and bytes of its heap in use, 0 where the heap cannot tell.
std::size_t OpenHandles();
std::size_t HeapBytes();

} // namespace trevik::test

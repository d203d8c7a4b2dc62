#include "support/system.h"

#include <array>
#include <cstring>
#include <fstream>
#include <iterator>

#include <io.h>
#include <windows.h>

#include <tlhelp32.h>

namespace trevik::test
{

int TurnOutputTo(std::FILE *file)
{
    const int former = _dup(1);
    _dup2(_fileno(file), 1);
    return former;
}

void TurnOutputBack(int former)
{
    _dup2(former, 1);
    _close(former);
}

int RunCommand(const std::string &command, std::string &output)
{
    std::FILE *pipe = _popen(command.c_str(), "r");
    if (pipe == nullptr)
        return -1;
    std::array<char, 4096> buffer{};
    for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        output.append(buffer.data(), count);
    return _pclose(pipe);
}

// Windows has no reader of its own. The drawing is the same text as on Linux, where one reads it; here it is whole.
bool SvgIsReadable(const std::string &name)
{
    std::ifstream file(name);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    return text.starts_with("<") && text.ends_with("</svg>\n");
}

void *LoadLibraryFile(const char *name)
{
    return LoadLibraryA(name);
}

void UnloadLibraryFile(void *library)
{
    FreeLibrary(static_cast<HMODULE>(library));
}

bool LibraryFileIsLoaded(const char *name)
{
    return GetModuleHandleA(name) != nullptr;
}

void *FunctionOf(void *library, const char *name)
{
    return reinterpret_cast<void *>(GetProcAddress(static_cast<HMODULE>(library), name));
}

std::size_t ThreadCount()
{
    HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    std::size_t count = 0;
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    for (BOOL found = Thread32First(all, &thread); found != 0; found = Thread32Next(all, &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    CloseHandle(all);
    return count;
}

std::size_t OpenHandles()
{
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

std::size_t HeapBytes()
{
    return 0;
}

} // namespace trevik::test

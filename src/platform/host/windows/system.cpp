#include "platform/host/system.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <mmsystem.h>

namespace trevik::host
{

// Not getenv: a program with a C runtime of its own sets variables that this library's would not see.
std::optional<std::string> Environment(const char *name)
{
    std::array<char, 32767> value{}; // the longest there is
    SetLastError(ERROR_SUCCESS);
    const DWORD size = GetEnvironmentVariableA(name, value.data(), static_cast<DWORD>(value.size()));
    if (size == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND)
        return std::nullopt;
    return std::string(value.data(), size);
}

// Not fopen: its files are removed by nobody while they are open.
std::FILE *NewTextFile(const char *name)
{
    HANDLE file = CreateFileA(name, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        errno = GetLastError() == ERROR_ACCESS_DENIED ? EACCES : ENOENT;
        return nullptr;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_BINARY);
    std::FILE *stream = descriptor >= 0 ? _fdopen(descriptor, "wb") : nullptr;
    if (descriptor < 0)
        CloseHandle(file);
    else if (stream == nullptr)
        _close(descriptor);
    return stream;
}

std::uint32_t ProcessId()
{
    return GetCurrentProcessId();
}

// The system's clock otherwise ticks 64 times a second.
void BeginExactWaits()
{
    timeBeginPeriod(1);
}

void EndExactWaits()
{
    timeEndPeriod(1);
}

} // namespace trevik::host

#include "support/system.h"

#include <array>
#include <cstdlib>
#include <filesystem>

#include <dlfcn.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace trevik::test
{

int TurnOutputTo(std::FILE *file)
{
    const int former = dup(STDOUT_FILENO);
    dup2(fileno(file), STDOUT_FILENO);
    return former;
}

void TurnOutputBack(int former)
{
    dup2(former, STDOUT_FILENO);
    close(former);
}

int RunCommand(const std::string &command, std::string &output)
{
    std::FILE *pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return -1;
    std::array<char, 4096> buffer{};
    for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        output.append(buffer.data(), count);
    return WEXITSTATUS(pclose(pipe));
}

bool SvgIsReadable(const std::string &name)
{
    return std::system(("rsvg-convert " + name + " -o " + name + ".png").c_str()) == 0;
}

void *LoadLibraryFile(const char *name)
{
    return dlopen(name, RTLD_NOW | RTLD_LOCAL);
}

void UnloadLibraryFile(void *library)
{
    dlclose(library);
}

bool LibraryFileIsLoaded(const char *name)
{
    return dlopen(name, RTLD_NOW | RTLD_NOLOAD) != nullptr;
}

void *FunctionOf(void *library, const char *name)
{
    return dlsym(library, name);
}

std::size_t ThreadCount()
{
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return static_cast<std::size_t>(std::distance(begin(tasks), end(tasks)));
}

std::size_t OpenHandles()
{
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

std::size_t HeapBytes()
{
    return mallinfo2().uordblks;
}

} // namespace trevik::test

#include "platform/host/system.h"

#include <cstdlib>

#include <unistd.h>

namespace trevik::host
{

std::optional<std::string> Environment(const char *name)
{
    const char *value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::FILE *NewTextFile(const char *name)
{
    return std::fopen(name, "w");
}

std::uint32_t ProcessId()
{
    return static_cast<std::uint32_t>(getpid());
}

void BeginExactWaits() {}
void EndExactWaits() {}

} // namespace trevik::host

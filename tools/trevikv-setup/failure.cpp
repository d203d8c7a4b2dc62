#include "failure.h"

#include <windows.h>

#include <array>

namespace trevikv_setup
{
namespace
{

std::string TextOf(DWORD error)
{
    std::array<char, 512> text{};
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                  text.data(), static_cast<DWORD>(text.size()), nullptr);
    while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r' || text[length - 1] == '.'))
        --length;
    return length > 0 ? std::string(text.data(), length) : "no text for it";
}

const char *AdviceFor(DWORD error)
{
    constexpr DWORD no_signature = 0xE0000247;
    constexpr DWORD no_catalog = 0xE000022F;
    switch (error) {
    case ERROR_ACCESS_DENIED:
        return " Run it as an administrator.";
    case no_signature:
    case no_catalog:
        return " Windows wants a signature here: sign the driver's folder, or allow unsigned drivers.";
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return " Keep trevikv.sys, trevikv.inf, trevikv.cat and this program in one folder.";
    case ERROR_SERVICE_MARKED_FOR_DELETE:
        return " End the programs that use cards, and do it again.";
    default:
        return "";
    }
}

} // namespace

Failure SystemFailure(const std::string &what)
{
    return SystemFailure(what, GetLastError());
}

Failure SystemFailure(const std::string &what, unsigned long error)
{
    return Failure(what + " failed: " + TextOf(error) + " (error " + std::to_string(error) + ")." +
                   AdviceFor(error));
}

} // namespace trevikv_setup

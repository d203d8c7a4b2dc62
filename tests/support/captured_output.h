// What a call prints on standard output.
#pragma once

#include <cstdio>
#include <string>
#include <unistd.h>

namespace trevik::test
{

template <class Call>
std::string Printed(Call call)
{
    std::FILE *file = std::tmpfile();
    std::fflush(stdout);
    const int standard_output = dup(STDOUT_FILENO);
    dup2(fileno(file), STDOUT_FILENO);
    call();
    std::fflush(stdout);
    dup2(standard_output, STDOUT_FILENO);
    ::close(standard_output);
    std::string text(4096, '\0');
    text.resize(static_cast<std::size_t>(pread(fileno(file), text.data(), text.size(), 0)));
    std::fclose(file);
    return text;
}

// Start-up, which prints, in silence.
template <class Initial>
std::uint32_t Quietly(Initial initial)
{
    std::uint32_t result = 0;
    Printed([&] { result = initial(); });
    return result;
}

} // namespace trevik::test

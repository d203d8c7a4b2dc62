// What a call prints on standard output.
#pragma once

#include "support/system.h"

#include <cstdio>
#include <string>

namespace trevik::test
{

template <class Call>
std::string Printed(Call call)
{
    std::FILE *file = std::tmpfile();
    std::fflush(stdout);
    const int former = TurnOutputTo(file);
    call();
    std::fflush(stdout);
    TurnOutputBack(former);
    std::rewind(file);
    std::string text(4096, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file));
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

// Driver requests in words: one line each, with the names of registers and commands.
//
//     open \\.\TrevikVirtual0
//     card 0  write  axis 1  DISTANCE = 10000
//     card 0  read   axis 1  COUNTER1 -> 0
//     card 0  read   axis 1  main status -> 0x0008
//     card 0  command axes 0x2  CMD_START_ACC_DEC
#pragma once

#include <cstdint>
#include <string>

namespace trevik
{

// One request and what came of it.
struct LoggedRequest {
    std::uint32_t code;
    const void *in;
    std::uint32_t in_size;
    const void *out;
    std::uint32_t out_size;
    std::uint32_t error; // 0: accepted
};

// The line of a request, without the card it went to and without a line end.
std::string DescribeRequest(const LoggedRequest &request);

// Name of a register by its write code or read code, of a command by its code; empty: no name.
const char *RegisterName(std::uint32_t code);
const char *CommandName(std::uint32_t code);

} // namespace trevik

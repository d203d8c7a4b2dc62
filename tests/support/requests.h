// Request logs in short, as tests write them.
#pragma once

#include <doctest/doctest.h>

#include <sstream>
#include <string>

namespace trevik::test
{

inline std::string RequestLines(const std::string &verb, char axis, const std::string &item)
{
    const std::string where = std::string("axis ") + axis + "  ";
    if (verb == "command")
        return std::string("command axes 0x") + "1248"[axis - '0'] + "  " + item + "\n";
    if (verb == "modify") {
        std::string name, before, arrow, after;
        std::istringstream(item) >> name >> before >> arrow >> after;
        return RequestLines("read", axis, name + " -> " + before) +
               RequestLines("write", axis, name + " = " + after);
    }
    return (verb == "read" ? "read   " : "write  ") + where + item + "\n";
}

// The lines of a log from
//     read axis 13: main status -> 0x0008                           for axis 1, then for axis 3
//     write axis 1: DISTANCE = 5, MODE = 0x01000041,                a comma goes on in the next line
//     modify axis 0: MOTION_CONFIG 0xFFFFFFFF -> 0xFFFFCFFF         read, then written
//     command axis 01: CMD_OUTPUT_OFF                               one for each axis
// and other lines as they are. Indentation does not count.
inline std::string Requests(const std::string &text)
{
    std::istringstream lines(text);
    std::string log;
    for (std::string line; std::getline(lines >> std::ws, line);) {
        const std::size_t colon = line.find(": ");
        if (colon == std::string::npos) {
            log += line + "\n";
            continue;
        }
        for (std::string next; line.back() == ',' && std::getline(lines >> std::ws, next);)
            line += next;
        std::string verb, axis_word, axes;
        std::istringstream(line) >> verb >> axis_word >> axes;
        axes.pop_back(); // the colon
        for (const char axis : axes) {
            std::istringstream items(line.substr(colon + 1));
            for (std::string item; std::getline(items >> std::ws, item, ',');)
                log += RequestLines(verb, axis, item);
        }
    }
    return log;
}

// True when the log has all lines of `text`, in their order. They may leave out how a line begins.
inline bool Includes(const std::string &log, const std::string &text)
{
    std::istringstream lines(Requests(text));
    std::size_t place = 0;
    for (std::string line; std::getline(lines, line); place += line.size()) {
        place = log.find(line + "\n", place);
        if (place == std::string::npos) {
            MESSAGE("no \"" << line << "\" in\n" << log);
            return false;
        }
    }
    return true;
}

} // namespace trevik::test
